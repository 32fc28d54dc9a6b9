#include "kvx/ui/KvxKneeChart.h"

#include "kvx/model/KneeGraph.h"

#include <QChart>
#include <QGraphicsItem>
#include <QGraphicsLineItem>
#include <QGraphicsRectItem>
#include <QLegend>
#include <QLegendMarker>
#include <QLineSeries>
#include <QLogValueAxis>
#include <QMouseEvent>
#include <QPainter>
#include <QPen>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace quenby {

namespace {

// Ten colours that stay apart from each other on white paper and in a
// grey-scale print-out, in plot order.
constexpr std::array<QRgb, KvxKneeChart::PlotCount> PlotColours = {
    0x1f4e9c, 0xc62828, 0x2e7d32, 0xef6c00, 0x6a1b9a,
    0x00838f, 0x8d6e63, 0xad1457, 0x827717, 0x37474f,
};

// Drawn above the curves and the grid.
constexpr qreal CursorZ = 1000;
constexpr qreal GuideZ = 999;

QColor plotColour(int n)
{
    return QColor::fromRgb(PlotColours[static_cast<std::size_t>(n - 1)]);
}

QLogValueAxis* makeLogAxis(const QString& caption)
{
    auto* axis = new QLogValueAxis;
    axis->setBase(10.0);
    axis->setRange(KneeAxisMinimum, KneeAxisMaximum);
    axis->setLabelFormat(QStringLiteral("%g"));
    axis->setMinorTickCount(8); // 2 to 9 within each decade
    axis->setTitleText(caption);
    axis->setGridLineColor(QColor(0xb0, 0xb0, 0xb0));
    axis->setMinorGridLineColor(QColor(0xe4, 0xe4, 0xe4));
    axis->setLinePenColor(Qt::black);
    axis->setLabelsColor(Qt::black);
    axis->setTitleBrush(Qt::black);
    return axis;
}

// A log axis puts its labels on the powers of its base, so zoomed inside
// less than a decade it shows none at all. Below two decades the base
// becomes a root of ten, 10^(1/m), with m chosen for about five labels: the
// labels then fall on preferred numbers (10, 15.8, 25.1, 39.8, 63.1, 100 for
// m = 5) and on every decade in range. Two decades or more keep base 10 with
// the minor lines of each decade.
void keepLabelsInRange(QLogValueAxis* axis, qreal min, qreal max)
{
    if (min <= 0 || max <= min)
        return;
    const qreal decades = std::log10(max / min);
    if (decades < 2.0) {
        constexpr qreal WantedLabels = 5.0;
        const qreal m = std::clamp(std::round(WantedLabels / decades), 1.0, 10000.0);
        axis->setBase(std::pow(10.0, 1.0 / m));
        axis->setLabelFormat(QStringLiteral("%.3g"));
        axis->setMinorTickCount(0);
    } else {
        axis->setBase(10.0);
        axis->setLabelFormat(QStringLiteral("%g"));
        axis->setMinorTickCount(8);
    }
}

} // namespace

// A knee cursor: a small crosshair with a ring at its centre, in the colour of
// the plot of the same number, with a white halo so that it stays readable
// over a curve of another colour.
class KneeCursorItem final : public QGraphicsItem
{
public:
    static constexpr qreal Arm = 9.0;
    static constexpr qreal Ring = 3.5;

    KneeCursorItem(const QColor& colour, QGraphicsItem* parent)
        : QGraphicsItem(parent), m_colour(colour)
    {
        setZValue(CursorZ);
        setAcceptedMouseButtons(Qt::NoButton); // the view does the dragging
    }

    const QColor& colour() const { return m_colour; }

    QRectF boundingRect() const override
    {
        const qreal r = Arm + 2;
        return QRectF(-r, -r, 2 * r, 2 * r);
    }

    void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) override
    {
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setBrush(Qt::NoBrush);
        QPen halo(Qt::white, 3.5);
        halo.setCapStyle(Qt::RoundCap);
        painter->setPen(halo);
        drawCross(*painter);
        QPen pen(m_colour, 1.6);
        pen.setCapStyle(Qt::FlatCap);
        painter->setPen(pen);
        drawCross(*painter);
    }

private:
    static void drawCross(QPainter& painter)
    {
        painter.drawLine(QPointF(-Arm, 0), QPointF(-Ring, 0));
        painter.drawLine(QPointF(Ring, 0), QPointF(Arm, 0));
        painter.drawLine(QPointF(0, -Arm), QPointF(0, -Ring));
        painter.drawLine(QPointF(0, Ring), QPointF(0, Arm));
        painter.drawEllipse(QPointF(0, 0), Ring, Ring);
    }

    QColor m_colour;
};

QString kvxPlotName(int n)
{
    return QStringLiteral("Plot-%1").arg(n);
}

QString kvxCursorName(int n)
{
    return QStringLiteral("Cursor-%1").arg(n);
}

KvxKneeChart::KvxKneeChart(QWidget* parent) : QChartView(parent)
{
    setObjectName(QStringLiteral("CWGraph1"));
    setRenderHint(QPainter::Antialiasing);
    setFrameShape(QFrame::NoFrame);
    viewport()->setMouseTracking(true);

    QChart* c = chart();
    c->setBackgroundRoundness(0);
    c->setBackgroundBrush(Qt::white);
    c->setMargins(QMargins(4, 4, 8, 4));

    const KneeGraph design;
    m_axisX = makeLogAxis(design.axis(KneeGraph::AxisX).caption);
    m_axisY = makeLogAxis(design.axis(KneeGraph::AxisY).caption);
    c->addAxis(m_axisX, Qt::AlignBottom);
    c->addAxis(m_axisY, Qt::AlignLeft);
    for (QLogValueAxis* axis : {m_axisX, m_axisY}) {
        connect(axis, &QLogValueAxis::rangeChanged, this, [this, axis](qreal min, qreal max) {
            keepLabelsInRange(axis, min, max);
            placeCursors();
        });
    }

    for (int n = 1; n <= PlotCount; ++n) {
        auto* plot = new QLineSeries(c);
        plot->setName(kvxPlotName(n));
        plot->setObjectName(plot->name());
        QPen pen(plotColour(n));
        pen.setWidthF(1.6);
        // The repaired tail of a short curve repeats its last point; with a
        // flat cap those empty segments leave no dot at the line's end.
        pen.setCapStyle(Qt::FlatCap);
        pen.setJoinStyle(Qt::RoundJoin);
        plot->setPen(pen);
        c->addSeries(plot);
        plot->attachAxis(m_axisX);
        plot->attachAxis(m_axisY);
        m_plots[static_cast<std::size_t>(n - 1)] = plot;
    }

    // Intended: plots are packed (plot n is the n-th tap present) while
    // cursors are not (cursor k is the knee of tap slot k), and cursor k takes
    // the colour of plot k. With a tap missing ahead of it a cursor therefore
    // sits on a curve of another colour, at the right coordinates.
    m_plotClip = new QGraphicsRectItem(c);
    m_plotClip->setPen(Qt::NoPen);
    m_plotClip->setBrush(Qt::NoBrush);
    m_plotClip->setFlag(QGraphicsItem::ItemClipsChildrenToShape);
    m_plotClip->setAcceptedMouseButtons(Qt::NoButton);
    m_plotClip->setZValue(CursorZ);
    for (int n = 1; n <= CursorCount; ++n) {
        auto* item = new KneeCursorItem(plotColour(n), m_plotClip);
        item->setVisible(false);
        m_cursors[static_cast<std::size_t>(n - 1)].item = item;
    }
    QPen guide(QColor(0x50, 0x50, 0x50));
    guide.setStyle(Qt::DashLine);
    guide.setWidthF(1.0);
    for (QGraphicsLineItem** line : {&m_guideX, &m_guideY}) {
        *line = new QGraphicsLineItem(c);
        (*line)->setPen(guide);
        (*line)->setZValue(GuideZ);
        (*line)->setVisible(false);
    }
    connect(c, &QChart::plotAreaChanged, this, [this] { placeCursors(); });
    viewport()->setCursor(Qt::ArrowCursor);

    // The legend names the curves by their tap pair; plots without a tap of
    // the test stay out of it.
    QLegend* legend = c->legend();
    legend->setAlignment(Qt::AlignBottom);
    legend->setLabelColor(Qt::black);
    legend->show();
    for (QLineSeries* plot : m_plots)
        for (QLegendMarker* marker : legend->markers(plot))
            marker->setVisible(false);

    setTrackMode(TrackDragCursor);
}

KvxKneeChart::~KvxKneeChart() = default;

QLineSeries* KvxKneeChart::plot(int n) const
{
    return m_plots.at(static_cast<std::size_t>(n - 1));
}

QPointF KvxKneeChart::cursorValue(int n) const
{
    return m_cursors.at(static_cast<std::size_t>(n - 1)).value;
}

bool KvxKneeChart::cursorVisible(int n) const
{
    return m_cursors.at(static_cast<std::size_t>(n - 1)).visible;
}

bool KvxKneeChart::cursorDrawn(int n) const
{
    return m_cursors.at(static_cast<std::size_t>(n - 1)).item->isVisible();
}

QColor KvxKneeChart::cursorColour(int n) const
{
    return m_cursors.at(static_cast<std::size_t>(n - 1)).item->colour();
}

const QGraphicsItem* KvxKneeChart::cursorItem(int n) const
{
    return m_cursors.at(static_cast<std::size_t>(n - 1)).item;
}

void KvxKneeChart::mirror(const KneeGraph& graph, const std::array<QString, PlotCount>& legends)
{
    for (int n = 1; n <= PlotCount; ++n) {
        const auto i = static_cast<std::size_t>(n - 1);
        const PlotArray& data = graph.plot(n).data;
        if (data.x != m_drawnX[i] || data.y != m_drawnY[i]) {
            // A log axis drops a whole series that holds a point at or below
            // zero, so such points (column 0, erased plots) stay out.
            QList<QPointF> points;
            points.reserve(data.columns());
            for (int col = 0; col < data.columns(); ++col) {
                const double x = data.x[static_cast<std::size_t>(col)];
                const double y = data.y[static_cast<std::size_t>(col)];
                if (x > 0.0 && y > 0.0)
                    points.append(QPointF(x, y));
            }
            m_plots[i]->replace(points);
            m_drawnX[i] = data.x;
            m_drawnY[i] = data.y;
        }
        const QString& legend = legends[i];
        m_plots[i]->setName(legend.isEmpty() ? kvxPlotName(n) : legend);
        for (QLegendMarker* marker : chart()->legend()->markers(m_plots[i]))
            marker->setVisible(!legend.isEmpty());
    }

    const GraphAxis& x = graph.axis(KneeGraph::AxisX);
    const GraphAxis& y = graph.axis(KneeGraph::AxisY);
    m_axisX->setTitleText(x.caption);
    m_axisY->setTitleText(y.caption);
    if (m_axisX->min() != x.minimum || m_axisX->max() != x.maximum)
        m_axisX->setRange(x.minimum, x.maximum);
    if (m_axisY->min() != y.minimum || m_axisY->max() != y.maximum)
        m_axisY->setRange(y.minimum, y.maximum);

    for (int n = 1; n <= CursorCount; ++n) {
        CursorState& c = m_cursors[static_cast<std::size_t>(n - 1)];
        const GraphCursor& model = graph.cursor(n);
        c.value = QPointF(model.x, model.y);
        c.visible = model.visible;
    }
    placeCursors();
    setTrackMode(graph.trackMode());
}

void KvxKneeChart::placeCursors()
{
    // The axes as they are drawn: a rubber band zooms them before the model
    // hears of it.
    const GraphAxis shownX{QString(), m_axisX->min(), m_axisX->max(), true};
    const GraphAxis shownY{QString(), m_axisY->min(), m_axisY->max(), true};
    m_plotClip->setRect(chart()->plotArea());
    for (CursorState& c : m_cursors) {
        const bool inside = kneePointOnPlot(c.value.x(), c.value.y(), shownX, shownY);
        if (c.visible && inside)
            c.item->setPos(chart()->mapToPosition(c.value, m_plots[0]));
        c.item->setVisible(c.visible && inside);
    }
    placeGuides();
}

void KvxKneeChart::placeGuides()
{
    const bool show = m_dragged > 0 && cursorDrawn(m_dragged);
    m_guideX->setVisible(show);
    m_guideY->setVisible(show);
    if (!show)
        return;
    const QRectF area = chart()->plotArea();
    const QPointF at = m_cursors[static_cast<std::size_t>(m_dragged - 1)].item->pos();
    m_guideX->setLine(QLineF(area.left(), at.y(), area.right(), at.y()));
    m_guideY->setLine(QLineF(at.x(), area.top(), at.x(), area.bottom()));
}

void KvxKneeChart::setTrackMode(int mode)
{
    // The mirror runs on every step of a drag; the pointer of the drag stays.
    if (mode == m_trackMode)
        return;
    m_trackMode = mode;
    setRubberBand(mode == TrackZoomRectangle ? QChartView::RectangleRubberBand
                                             : QChartView::NoRubberBand);
    viewport()->setCursor(mode == TrackZoomRectangle ? Qt::CrossCursor : Qt::ArrowCursor);
}

QPoint KvxKneeChart::viewportPoint(QPointF value) const
{
    const QPointF inChart = chart()->mapToPosition(value, m_plots[0]);
    return mapFromScene(chart()->mapToScene(inChart));
}

QPointF KvxKneeChart::valueAt(QPoint viewportPos) const
{
    return chart()->mapToValue(chart()->mapFromScene(mapToScene(viewportPos)), m_plots[0]);
}

QPointF KvxKneeChart::clampedValueAt(QPoint viewportPos) const
{
    // A dragged cursor stays on the graph.
    const QRectF area = chart()->plotArea();
    const QPointF inChart = chart()->mapFromScene(mapToScene(viewportPos));
    const QPointF kept(std::clamp(inChart.x(), area.left(), area.right()),
                       std::clamp(inChart.y(), area.top(), area.bottom()));
    const QPointF value = chart()->mapToValue(kept, m_plots[0]);
    return QPointF(std::clamp(value.x(), m_axisX->min(), m_axisX->max()),
                   std::clamp(value.y(), m_axisY->min(), m_axisY->max()));
}

int KvxKneeChart::cursorNear(QPoint viewportPos) const
{
    // The nearest drawn cursor within reach; the later one wins a tie, as it
    // is drawn on top.
    int best = 0;
    qreal bestDistance = GrabRadius;
    for (int n = 1; n <= CursorCount; ++n) {
        const KneeCursorItem* item = m_cursors[static_cast<std::size_t>(n - 1)].item;
        if (!item->isVisible())
            continue;
        const QPointF centre = mapFromScene(item->scenePos());
        const qreal distance = QLineF(centre, QPointF(viewportPos)).length();
        if (distance <= bestDistance) {
            best = n;
            bestDistance = distance;
        }
    }
    return best;
}

void KvxKneeChart::updatePointer(QPoint viewportPos)
{
    if (m_trackMode == TrackZoomRectangle)
        viewport()->setCursor(Qt::CrossCursor);
    else if (m_dragged > 0)
        viewport()->setCursor(Qt::ClosedHandCursor);
    else if (cursorNear(viewportPos) > 0)
        viewport()->setCursor(Qt::OpenHandCursor);
    else
        viewport()->setCursor(Qt::ArrowCursor);
}

void KvxKneeChart::mousePressEvent(QMouseEvent* event)
{
    // The right button does nothing here: a zoom is undone by a double click
    // only.
    if (event->button() == Qt::RightButton) {
        event->accept();
        return;
    }
    if (event->button() != Qt::LeftButton) {
        QChartView::mousePressEvent(event);
        return;
    }
    if (m_trackMode == TrackZoomRectangle) {
        m_zoomPressed = true;
        QChartView::mousePressEvent(event);
        return;
    }
    m_dragged = cursorNear(event->position().toPoint());
    updatePointer(event->position().toPoint());
    placeGuides();
    event->accept();
}

void KvxKneeChart::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    if (m_dragged > 0) {
        const QPointF value = clampedValueAt(at);
        Q_EMIT cursorDragged(m_dragged, value.x(), value.y());
        event->accept();
        return;
    }
    updatePointer(at);
    QChartView::mouseMoveEvent(event);
}

void KvxKneeChart::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton) {
        event->accept();
        return;
    }
    if (event->button() == Qt::LeftButton && m_dragged > 0) {
        const QPointF value = clampedValueAt(event->position().toPoint());
        const int n = m_dragged;
        m_dragged = 0;
        placeGuides();
        updatePointer(event->position().toPoint());
        Q_EMIT cursorDragged(n, value.x(), value.y());
        event->accept();
        return;
    }
    if (event->button() == Qt::LeftButton && m_zoomPressed) {
        m_zoomPressed = false;
        const qreal before[4] = {m_axisX->min(), m_axisX->max(), m_axisY->min(), m_axisY->max()};
        QChartView::mouseReleaseEvent(event);
        const qreal after[4] = {m_axisX->min(), m_axisX->max(), m_axisY->min(), m_axisY->max()};
        // A click that drew no rectangle zooms nothing and leaves the graph
        // waiting for one.
        if (!std::equal(std::begin(before), std::end(before), std::begin(after)))
            Q_EMIT zoomEnded(after[0], after[1], after[2], after[3]);
        return;
    }
    QChartView::mouseReleaseEvent(event);
}

void KvxKneeChart::wheelEvent(QWheelEvent* event)
{
    // The graph has no wheel zoom: the wheel goes on to the page, which
    // scrolls.
    event->ignore();
}

void KvxKneeChart::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->accept();
        return;
    }
    m_dragged = 0;
    m_zoomPressed = false;
    placeGuides();
    Q_EMIT doubleClicked();
    event->accept();
}

} // namespace quenby
