#include "zbl/ui/frmZBLVGraph.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/Services.h"
#include "shell/ui/FormPrinter.h"
#include "shell/ui/PrintPages.h"
#include "zbl/ui/frmPrintVGraph.h"

#include "localisation/model/LanguageLookup.h"

#include <algorithm>
#include <utility>

#include <QChartView>
#include <QCheckBox>
#include <QFrame>
#include <QGraphicsEllipseItem>
#include <QGraphicsRectItem>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLineSeries>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPen>
#include <QRubberBand>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <QValueAxis>
#include <optional>

#include <memory>

namespace quenby {

namespace {
// The page, in twips: a little narrower than a letter sheet.
constexpr int PageWidthTwips = 11000;
constexpr int PageHeightTwips = 15000;
constexpr int MarginTwips = 1000;
// One step of VScroll1 moves the page by this much.
constexpr int ScrollStepTwips = 20;
// A press and release closer than this, in pixels, is a click, not a
// rectangle.
constexpr int ClickSlopPixels = 3;
} // namespace

namespace {
frmZBLVGraph* made = nullptr; // made on first touch, lives until the process ends
} // namespace

frmZBLVGraph& frmZBLVGraph::instance()
{
    if (!made)
        new frmZBLVGraph;
    return *made;
}

frmZBLVGraph* frmZBLVGraph::existing()
{
    return made;
}

frmZBLVGraph::frmZBLVGraph()
{
    made = this; // the logo's load asks for the windows there are
    setObjectName(QStringLiteral("frmZBLVGraph"));
    setWindowTitle(QStringLiteral("V-Graph"));

    // Print is a command of the menu bar itself, with nothing under it.
    auto* print = new QAction(QStringLiteral("Print"), this);
    print->setObjectName(QStringLiteral("mnuPrint"));
    menuBar()->addAction(print);
    connect(print, &QAction::triggered, this, [this] { mnuPrint_Click(); });

    auto* central = new QWidget(this);
    auto* row = new QHBoxLayout(central);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    // The page is placed by hand on a clipping viewport: the scroll bar moves
    // it by its top edge.
    auto* viewport = new QWidget(central);
    viewport->setMinimumWidth(pixelsOfTwips(PageWidthTwips));
    row->addWidget(viewport, 1);
    auto* scroll = new QScrollBar(Qt::Vertical, central);
    scroll->setObjectName(QStringLiteral("VScroll1"));
    scroll->setRange(0, 0);
    row->addWidget(scroll);
    setCentralWidget(central);

    // The page slides up by its top edge; the scroll range covers the part
    // of it below the window.
    scroll->setRange(0, (PageHeightTwips - MarginTwips) / ScrollStepTwips);
    m_viewport = viewport;
    m_scroll = scroll;
    m_pageLogo.designRoom(logoRoom());
    loadLogoIfAny(LogoLeftTwips, LogoTopTwips);
    resize(pixelsOfTwips(PageWidthTwips) + scroll->sizeHint().width(), 760);
}

void frmZBLVGraph::buildControls()
{
    QWidget* viewport = m_viewport;
    QScrollBar* scroll = m_scroll;
    QFrame* page = makeFrame(viewport, QStringLiteral("frZBLVGraph"));
    makePaper(*page);
    page->setGeometry(0, 0, pixelsOfTwips(PageWidthTwips), pixelsOfTwips(PageHeightTwips));
    auto* lines = new QVBoxLayout(page);
    const int margin = pixelsOfTwips(MarginTwips);
    lines->setContentsMargins(0, 0, 0, margin / 2);
    lines->setSpacing(6);
    lines->addWidget(makeTestHead(page, HeadKind::Graph, pixelsOfTwips(PageWidthTwips), margin));

    auto* body = new QVBoxLayout;
    body->setContentsMargins(margin, 0, margin, 0);
    body->addWidget(makeChannelLabel(page));

    m_graph = makeVGraphChart(page);
    body->addWidget(m_graph.view, 1);

    // The cursor read-out: a resistance in the "volts" label and a row
    // position in the "current" one, names kept from an older use.
    auto* readout = new QHBoxLayout;
    readout->addWidget(makeLabel(page, QStringLiteral("lbCurseur"), QStringLiteral("Cursor:")));
    readout->addWidget(makeLabel(page, QStringLiteral("lbVolts"), QStringLiteral("---")));
    readout->addSpacing(24);
    readout->addWidget(makeLabel(page, QStringLiteral("lbCurrent"), QStringLiteral("Position")));
    readout->addStretch(1);
    auto* zoom = new QCheckBox(QStringLiteral("Zoom"), page);
    zoom->setObjectName(QStringLiteral("ckZoom"));
    readout->addWidget(zoom);
    body->addLayout(readout);

    QLabel* unzoom = makeLabel(page, QStringLiteral("lbUnZoom"),
                               QStringLiteral("***Double-click on graph for full size graph."));
    // Shown only while the graph is zoomed.
    unzoom->hide();
    body->addWidget(unzoom);
    lines->addLayout(body, 1);

    // The cursor: a ring over the point the operator reads, drawn inside the
    // plot area only, never over the axes and their labels.
    QChart* chart = m_graph.view->chart();
    m_plotClip = new QGraphicsRectItem(chart);
    m_plotClip->setPen(Qt::NoPen);
    m_plotClip->setBrush(Qt::NoBrush);
    m_plotClip->setFlag(QGraphicsItem::ItemClipsChildrenToShape);
    m_plotClip->setAcceptedMouseButtons(Qt::NoButton);
    m_plotClip->setZValue(10);
    m_cursor = new QGraphicsEllipseItem(-5, -5, 10, 10, m_plotClip);
    m_cursor->setPen(QPen(Qt::red, 1.5));
    m_cursor->setAcceptedMouseButtons(Qt::NoButton);
    m_cursor->hide();
    // The chart lays itself out after the axes change, and again when the
    // window is resized: the ring follows its point.
    connect(chart, &QChart::plotAreaChanged, this, [this] { placeCursor(); });

    m_pageLogo.attach(makeLogo(page));
    m_pageLogo.imgLogo().raise();

    connect(zoom, &QCheckBox::clicked, this, [this](bool ticked) {
        zblVGraph().ckZoom_Click(ticked);
        mirrorModel();
    });
    connect(scroll, &QScrollBar::valueChanged, page,
            [page](int value) { page->move(0, -pixelsOfTwips(value * ScrollStepTwips)); });
    // The view's own mouse handling would zoom the chart behind the model's
    // back (and zoom out on a right click): the window takes the mouse first.
    m_graph.view->viewport()->installEventFilter(this);

    // The language's texts for the page, fitted.
    putKeptTexts(*this);
    if (!m_axisXCaption.isNull())
        m_graph.axisX->setTitleText(m_axisXCaption);
    fitTestHeadTitles(*this, pixelsOfTwips(PageWidthTwips), pixelsOfTwips(MarginTwips));
}

namespace {

template <typename Widget> void setTextOf(QWidget& page, const QString& name, const QString& text)
{
    if (auto* widget = page.findChild<Widget*>(name))
        widget->setText(text);
}

// The Y axis over `y`, its labels with as many decimals as tell its ticks
// apart. The chart measures an axis for its labels only once it has been laid
// out: a range set on a page not yet shown leaves the axis as wide as its old
// labels, and the new ones would be cut short. Showing the labels anew has it
// measure them again.
void showYAxis(QValueAxis& axis, const GraphAxis& y)
{
    const int decimals = vGraphTickDecimals(y.minimum, y.maximum, VGraphYTickCount);
    const QString format = QStringLiteral("%.") + QString::number(decimals) + QLatin1Char('f');
    if (axis.min() == y.minimum && axis.max() == y.maximum && axis.labelFormat() == format)
        return;
    axis.setRange(y.minimum, y.maximum);
    axis.setLabelFormat(format);
    axis.setLabelsVisible(false);
    axis.setLabelsVisible(true);
}

} // namespace

void mirrorVGraphPage(QWidget& page, const VGraphChart& chart, const VGraphForm& form)
{
    const VGraphHead& head = form.head;
    setTextOf<QLabel>(page, indexedName(QStringLiteral("lbTexteFileName"), 1),
                      head.lbTexteFileName1);
    setTextOf<QLabel>(page, indexedName(QStringLiteral("lbTexteDate"), 1), head.lbTexteDate1);
    setTextOf<QLabel>(page, indexedName(QStringLiteral("lbTexteInstrumentSN"), 1),
                      head.lbTexteInstrumentSN1);
    setTextOf<QLineEdit>(page, QStringLiteral("txtNotes"), head.txtNotes);
    setTextOf<QLineEdit>(page, QStringLiteral("txtCompany"), head.txtCompany);
    setTextOf<QLineEdit>(page, QStringLiteral("txtDesignator"), head.txtDesignator);
    setTextOf<QLineEdit>(page, QStringLiteral("txtXFRSerialNumber"), head.txtXFRSerialNumber);
    setTextOf<QLineEdit>(page, QStringLiteral("txtTemperature"), head.txtTemperature);
    setTextOf<QLineEdit>(page, QStringLiteral("txtStation"), head.txtStation);
    setTextOf<QLineEdit>(page, QStringLiteral("txtManufacturer"), head.txtManufacturer);
    setTextOf<QLineEdit>(page, QStringLiteral("txtOperator"), head.txtOperator);
    setTextOf<QLabel>(page, QStringLiteral("lbCHAN"), form.lbCHAN);

    const VGraphChartState& state = form.CWGraph1;
    chart.view->chart()->setTitle(state.caption);
    QList<QPointF> points;
    const auto columns = std::min(state.plot1.x.size(), state.plot1.y.size());
    points.reserve(static_cast<qsizetype>(columns));
    for (std::size_t i = 0; i < columns; ++i)
        points.append(QPointF(state.plot1.x[i], state.plot1.y[i]));
    chart.plot->replace(points);
    // An axis turned upside down (a channel with no points) is drawn as the
    // model says; the chart accepts any pair.
    chart.axisX->setRange(state.x.minimum, state.x.maximum);
    // Tap positions: whole labels where the zoom allows, and never two alike.
    const int xTicks = vGraphXTickCount(state.x.minimum, state.x.maximum);
    chart.axisX->setTickCount(xTicks);
    chart.axisX->setLabelFormat(
        QStringLiteral("%.") +
        QString::number(vGraphTickDecimals(state.x.minimum, state.x.maximum, xTicks)) +
        QLatin1Char('f'));
    showYAxis(*chart.axisY, state.y);
}

const VGraphChart& frmZBLVGraph::CWGraph1() const
{
    const_cast<frmZBLVGraph*>(this)->makeControls();
    return m_graph;
}

const QGraphicsEllipseItem* frmZBLVGraph::cursorRing() const
{
    const_cast<frmZBLVGraph*>(this)->makeControls();
    return m_cursor;
}

void frmZBLVGraph::mirror(const VGraphForm& form)
{
    // The graph is about to be shown: its page is made now if need be.
    makeControls();
    mirrorVGraphPage(*this, m_graph, form);
    const VGraphChartState& state = form.CWGraph1;
    m_cursorAt = QPointF(state.cursor.x, state.cursor.y);
    m_cursorDrawn = vGraphCursorDrawn(state);
    placeCursor();
    setTextOf<QLabel>(*this, QStringLiteral("lbVolts"), form.lbVolts);
    setTextOf<QLabel>(*this, QStringLiteral("lbCurrent"), form.lbCurrent);
    if (auto* unzoom = findChild<QLabel*>(QStringLiteral("lbUnZoom")))
        unzoom->setVisible(form.lbUnZoomVisible);
    if (auto* zoom = findChild<QCheckBox*>(QStringLiteral("ckZoom"))) {
        // The box follows the model; it must not click again on the way.
        const QSignalBlocker quiet(zoom);
        zoom->setChecked(form.ckZoom);
    }
    // Drag-cursor or rectangle zoom on the view.
    m_graph.view->setRubberBand(form.CWGraph1.trackMode == TrackZoomRectangle
                                    ? QChartView::RectangleRubberBand
                                    : QChartView::NoRubberBand);
}

void frmZBLVGraph::mnuPrint_Click()
{
    const CommandScope scope(QStringLiteral("mnuPrint_Click"));
    // A cancelled dialog, or a printer that cannot start, ends the print
    // with nothing on paper and no word.
    const PrintAnswer answer = showPrinterDialog(PrintRequest{});
    std::unique_ptr<PrintPages> pages = answer.cancelled ? nullptr : openPrintPages(answer);
    std::optional<int> copies;
    if (pages && pages->begin())
        copies = answer.copies;
    frmPrintVGraph& paper = frmPrintVGraph::instance();
    bool firstPage = true;
    zblVGraph().mnuPrint_Click(copies, [&](const VGraphForm& form) {
        paper.mirror(form);
        if (!firstPage)
            pages->newPage();
        firstPage = false;
        printForm(paper, *pages);
    });
    if (copies)
        pages->end();
    paper.mirror(zblVGraph().print);
    mirrorModel();
}

void frmZBLVGraph::mirrorModel()
{
    mirror(zblVGraph().window);
}

void frmZBLVGraph::placeCursor()
{
    QChart* chart = m_graph.view->chart();
    m_plotClip->setRect(chart->plotArea());
    if (m_cursorDrawn)
        m_cursor->setPos(chart->mapToPosition(m_cursorAt, m_graph.plot));
    m_cursor->setVisible(m_cursorDrawn);
}

QPointF frmZBLVGraph::valueAt(const QPoint& viewportPos) const
{
    QChart* chart = m_graph.view->chart();
    return chart->mapToValue(chart->mapFromScene(m_graph.view->mapToScene(viewportPos)),
                             m_graph.plot);
}

void frmZBLVGraph::dragCursorTo(const QPoint& viewportPos)
{
    const QPointF at = valueAt(viewportPos);
    const QPointF value = vGraphPointKeptOnPlot(zblVGraph().window.CWGraph1, at.x(), at.y());
    double x = value.x();
    double y = value.y();
    zblVGraph().CWGraph1_CursorChange(x, y, GetLanguageText(QLatin1String(VGraphCurrentKey)));
    mirrorModel();
}

bool frmZBLVGraph::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_graph.view->viewport())
        return QMainWindow::eventFilter(watched, event);
    const int mode = zblVGraph().window.CWGraph1.trackMode;
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton)
            return true; // a right click neither zooms out nor moves the cursor
        m_pressedAt = mouse->position().toPoint();
        if (mode == TrackDragCursor) {
            // The cursor jumps to a press on the plot and follows the drag; a
            // press on the axes or around them leaves it where it is.
            const QPointF at = valueAt(*m_pressedAt);
            if (vGraphPointOnPlot(zblVGraph().window.CWGraph1, at.x(), at.y())) {
                m_draggingCursor = true;
                dragCursorTo(*m_pressedAt);
            }
            return true;
        }
        return false; // the view starts its rubber band
    }
    case QEvent::MouseMove: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (m_draggingCursor && (mouse->buttons() & Qt::LeftButton)) {
            dragCursorTo(mouse->position().toPoint());
            return true;
        }
        return false;
    }
    case QEvent::MouseButtonRelease: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton)
            return true;
        const std::optional<QPoint> from = std::exchange(m_pressedAt, std::nullopt);
        m_draggingCursor = false;
        const QPoint to = mouse->position().toPoint();
        if (mode == TrackZoomRectangle && from &&
            ((to - *from).manhattanLength() > ClickSlopPixels)) {
            // The drawn rectangle goes to the model, not to the chart's own
            // zoom: the rubber band is only the picture of it.
            if (auto* band = m_graph.view->findChild<QRubberBand*>())
                band->hide();
            const QPointF a = valueAt(*from);
            const QPointF b = valueAt(to);
            zblVGraph().zoomTo(std::min(a.x(), b.x()), std::max(a.x(), b.x()),
                               std::min(a.y(), b.y()), std::max(a.y(), b.y()));
        } else {
            zblVGraph().CWGraph1_Click();
        }
        mirrorModel();
        return true;
    }
    case QEvent::MouseButtonDblClick: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton)
            return true;
        m_draggingCursor = false;
        zblVGraph().CWGraph1_DblClick();
        mirrorModel();
        return true;
    }
    default:
        return false;
    }
}

void frmZBLVGraph::FillTextsZblVGraph()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsZblVGraph"));
    if (controlsMade())
        fitTestHeadTitles(*this, pixelsOfTwips(PageWidthTwips), pixelsOfTwips(MarginTwips));
}

void frmZBLVGraph::applyWindowText(const WindowTextEntry& entry, const QString& text)
{
    // The y axis has no caption of its own.
    if (entry.target != TextTarget::AxisXCaption)
        return;
    m_axisXCaption = text;
    if (controlsMade())
        m_graph.axisX->setTitleText(text);
}

} // namespace quenby
