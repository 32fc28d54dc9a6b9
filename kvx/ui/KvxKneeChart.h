// The excitation graph of the KVX report, CWGraph1: voltage against
// magnetising current of up to ten taps, one plot each, on two logarithmic
// axes, with one knee cursor for each tap slot drawn as a crosshair.
//
// The chart mirrors the report's graph model (kvxReportGraph()): plots,
// cursors, axis ranges and captions, track mode. What the operator does on it
// comes back as signals for the model to act on: a cursor dragged (track mode
// 1), a rectangle zoom that ended (track mode 6), a double click. The chart
// changes nothing of the model itself.
#pragma once

#include <QChartView>
#include <QPointF>
#include <QString>

#include <array>
#include <vector>

class QGraphicsItem;
class QGraphicsLineItem;
class QGraphicsRectItem;
class QLineSeries;
class QLogValueAxis;

namespace quenby {

class KneeGraph;
class KneeCursorItem;

class KvxKneeChart final : public QChartView
{
    Q_OBJECT

public:
    static constexpr int PlotCount = 10;
    static constexpr int CursorCount = 10;
    // A press this close to a cursor's centre, in pixels, takes the cursor.
    static constexpr double GrabRadius = 7.0;

    explicit KvxKneeChart(QWidget* parent = nullptr);
    ~KvxKneeChart() override;

    // Copies the graph model. `legends` names plots 1 to 10; a plot with an
    // empty legend stays out of the legend.
    void mirror(const KneeGraph& graph, const std::array<QString, PlotCount>& legends);

    QLogValueAxis* axisX() const { return m_axisX; } // current, mA
    QLogValueAxis* axisY() const { return m_axisY; } // voltage, V
    // Plot n, 1 to 10 ("Plot-1" to "Plot-10").
    QLineSeries* plot(int n) const;
    int trackMode() const { return m_trackMode; }

    // Cursor n, 1 to 10: where it stands in mA and V, whether the model shows
    // it, and whether it is drawn (shown and inside the axes).
    QPointF cursorValue(int n) const;
    bool cursorVisible(int n) const;
    bool cursorDrawn(int n) const;
    QColor cursorColour(int n) const;
    // The item that draws cursor n; it is drawn clipped to the plot area.
    const QGraphicsItem* cursorItem(int n) const;
    // The cursor being dragged, 0 when none.
    int draggedCursor() const { return m_dragged; }

    // Viewport pixels of a value (mA, V) and back.
    QPoint viewportPoint(QPointF value) const;
    QPointF valueAt(QPoint viewportPos) const;

Q_SIGNALS:
    void cursorDragged(int n, double x, double y);
    void zoomEnded(double xMin, double xMax, double yMin, double yMax);
    void doubleClicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    struct CursorState
    {
        KneeCursorItem* item = nullptr;
        QPointF value;
        bool visible = false;
    };

    void placeCursors();
    void placeGuides();
    void setTrackMode(int mode);
    int cursorNear(QPoint viewportPos) const;
    void updatePointer(QPoint viewportPos);
    QPointF clampedValueAt(QPoint viewportPos) const;

    QLogValueAxis* m_axisX = nullptr;
    QLogValueAxis* m_axisY = nullptr;
    std::array<QLineSeries*, PlotCount> m_plots{};
    std::array<std::vector<double>, PlotCount> m_drawnX; // what each plot last took
    std::array<std::vector<double>, PlotCount> m_drawnY;
    std::array<CursorState, CursorCount> m_cursors{};
    // The plot area: the cursors are its children and are drawn inside it
    // only, never over the axes and their labels.
    QGraphicsRectItem* m_plotClip = nullptr;
    QGraphicsLineItem* m_guideX = nullptr; // crosshair of the cursor being dragged
    QGraphicsLineItem* m_guideY = nullptr;
    int m_trackMode = 1;
    int m_dragged = 0;
    bool m_zoomPressed = false;
};

// "Plot-3", "Cursor-3": the names the graph gives its plots and cursors.
QString kvxPlotName(int n);
QString kvxCursorName(int n);

} // namespace quenby
