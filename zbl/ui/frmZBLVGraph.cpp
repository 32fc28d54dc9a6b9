#include "zbl/ui/frmZBLVGraph.h"

#include <QChartView>
#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QValueAxis>

namespace quenby {

namespace {
// The page, in twips: a little narrower than a letter sheet.
constexpr int PageWidthTwips = 11000;
constexpr int PageHeightTwips = 15000;
constexpr int MarginTwips = 1000;
} // namespace

frmZBLVGraph& frmZBLVGraph::instance()
{
    static frmZBLVGraph* window = new frmZBLVGraph; // lives until the process ends
    return *window;
}

frmZBLVGraph::frmZBLVGraph()
{
    setObjectName(QStringLiteral("frmZBLVGraph"));
    setWindowTitle(QStringLiteral("V-Graph"));

    // Print is a command of the menu bar itself, with nothing under it.
    auto* print = new QAction(QStringLiteral("Print"), this);
    print->setObjectName(QStringLiteral("mnuPrint"));
    menuBar()->addAction(print);

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

    makeLogo(page)->raise();
    resize(pixelsOfTwips(PageWidthTwips) + scroll->sizeHint().width(), 760);
}

void frmZBLVGraph::FillTextsZblVGraph()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsZblVGraph"));
}

void frmZBLVGraph::applyWindowText(const WindowTextEntry& entry, const QString& text)
{
    // The y axis has no caption of its own.
    if (entry.target == TextTarget::AxisXCaption)
        m_graph.axisX->setTitleText(text);
}

} // namespace quenby
