// The V graph window: the resistance of one channel of the open ZBL test
// against the position of its row, under the head of the test. A tap changer
// stepped through its positions draws a V. The operator reads points with a
// cursor, zooms into a rectangle, and prints the page through its print twin
// frmPrintVGraph. The page lies on the frame frZBLVGraph, which VScroll1 moves.
#pragma once

#include "localisation/ui/WindowTexts.h"
#include "report/ui/ReportWindow.h"
#include "zbl/model/VGraph.h"
#include "zbl/ui/ZblPageParts.h"

#include <QMainWindow>
#include <QPoint>
#include <QPointF>

#include <optional>

class QGraphicsEllipseItem;
class QGraphicsRectItem;
class QScrollBar;

namespace quenby {

class frmZBLVGraph final : public ModalWindow, public WindowTextReceiver, public KeptControlTexts
{
    Q_OBJECT

public:
    // The logo's box and the head label it centres on.
    LogoTarget& logoTarget() { return m_pageLogo; }
    // The window if it has been made, else none.
    static frmZBLVGraph* existing();
    // The one instance, made on first touch; closing only hides it.
    static frmZBLVGraph& instance();

    void FillTextsZblVGraph();
    void applyWindowText(const WindowTextEntry& entry, const QString& text) override;

    // CWGraph1 with its axes and its one plot.
    const VGraphChart& CWGraph1() const;

    // Shows what the model holds for this window: head, channel, plot, axes,
    // cursor, read-out labels, the zoom box and the unzoom hint.
    void mirror(const VGraphForm& form);

    // mnuPrint: the printer dialog, then frmPrintVGraph, filled from the
    // graph, printed once for each copy, a page each.
    void mnuPrint_Click();

    // The cursor's ring. It is shown only while its point lies on the plot,
    // and drawn clipped to the plot area.
    const QGraphicsEllipseItem* cursorRing() const;

protected:
    // The page (head, graph, read-out) is made when the graph is first
    // filled or shown, or asked for (makeControls); until then the window
    // keeps the language's texts for it. Start-up needs none of it.
    void buildControls() override;
    // The mouse on the graph: a click, a double click, the cursor drag and
    // the rectangle of a zoom, each handed to the model.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    frmZBLVGraph();

    // A point of the viewport of CWGraph1 in the values of its axes.
    QPointF valueAt(const QPoint& viewportPos) const;
    // The cursor taken to a point of the viewport, through the model.
    void dragCursorTo(const QPoint& viewportPos);
    // The model's graph window on screen, after each event it took.
    void mirrorModel();
    // The ring over the cursor's point and its clip over the plot area, again
    // after each change of the chart's layout.
    void placeCursor();

    VGraphChart m_graph;
    // The plot area: the ring is its child and is drawn inside it only.
    QGraphicsRectItem* m_plotClip = nullptr;
    QGraphicsEllipseItem* m_cursor = nullptr;
    QPointF m_cursorAt;         // the model's cursor, row position and ohms
    bool m_cursorDrawn = false; // the model draws it: shown and on the plot
    // Where the left button went down on the graph, while it is held.
    std::optional<QPoint> m_pressedAt;
    bool m_draggingCursor = false;
    DesignedLogo m_pageLogo;
    QWidget* m_viewport = nullptr;
    QScrollBar* m_scroll = nullptr;
    QString m_axisXCaption; // from the language, kept for a page made later
};

// The common part of the mirror of both V graph pages: the head, lbCHAN and
// the graph with its axes, but not the cursor, which only the window has.
void mirrorVGraphPage(QWidget& page, const VGraphChart& chart, const VGraphForm& form);

} // namespace quenby
