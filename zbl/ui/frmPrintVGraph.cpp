#include "zbl/ui/frmPrintVGraph.h"

#include "zbl/ui/frmZBLVGraph.h"

#include <QChartView>
#include <QLabel>
#include <QVBoxLayout>
#include <QValueAxis>

namespace quenby {

namespace {
// The sheet, in twips: the width of a letter page.
constexpr int PageWidthTwips = 12240;
constexpr int PageHeightTwips = 12672;
constexpr int MarginTwips = 1000;
} // namespace

namespace {
frmPrintVGraph* made = nullptr; // made on first touch, lives until the process ends
} // namespace

frmPrintVGraph& frmPrintVGraph::instance()
{
    if (!made)
        new frmPrintVGraph;
    return *made;
}

frmPrintVGraph* frmPrintVGraph::existing()
{
    return made;
}

frmPrintVGraph::frmPrintVGraph()
{
    made = this; // the logo's load asks for the windows there are
    setObjectName(QStringLiteral("frmPrintVGraph"));
    setWindowTitle(QStringLiteral("V-Graph"));
    makePaper(*this);
    setFixedSize(pixelsOfTwips(PageWidthTwips), pixelsOfTwips(PageHeightTwips));

    auto* lines = new QVBoxLayout(this);
    const int margin = pixelsOfTwips(MarginTwips);
    lines->setContentsMargins(0, 0, 0, margin / 2);
    lines->setSpacing(6);
    lines->addWidget(
        makeTestHead(this, HeadKind::GraphPaper, pixelsOfTwips(PageWidthTwips), margin));

    auto* body = new QVBoxLayout;
    body->setContentsMargins(margin, 0, margin, 0);
    body->addWidget(makeChannelLabel(this));

    m_graph = makeVGraphChart(this);
    body->addWidget(m_graph.view, 1);
    lines->addLayout(body, 1);

    m_pageLogo.design(makeLogo(this))->raise();
    loadLogoIfAny(LogoLeftTwips, LogoTopTwips);
}

void frmPrintVGraph::mirror(const VGraphForm& form)
{
    mirrorVGraphPage(*this, m_graph, form);
}

void frmPrintVGraph::FillTextsPrintVGraph()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsPrintVGraph"));
    fitTestHeadTitles(*this, pixelsOfTwips(PageWidthTwips), pixelsOfTwips(MarginTwips));
}

void frmPrintVGraph::applyWindowText(const WindowTextEntry& entry, const QString& text)
{
    if (entry.target == TextTarget::AxisXCaption)
        m_graph.axisX->setTitleText(text);
}

} // namespace quenby
