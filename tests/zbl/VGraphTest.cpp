// The V graph: cells to ohms, the channel tables and their scans, the scale
// rule, the cursor labels, zoom and unzoom, and the print twin.
#include "zbl/model/VGraph.h"
#include "shell/model/RuntimeError.h"
#include "tests/support/TestFiles.h"
#include "tests/zbl/ZblTestSupport.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblBasicReportView.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <clocale>
#include <limits>
#include <string>
#include <vector>

namespace quenby::testing {
namespace {

class VGraphTest : public ZblFixture
{
protected:
    void SetUp() override
    {
        ZblFixture::SetUp();
        zblBasicReport() = ZblBasicReportModel{};
        zblVGraph() = VGraph{};
        GraphChannel().clear();
    }

    // Channel tables straight from ohms; the rest stays 0.0, the end mark.
    static void setTable(ZblRowNumbers& table, const std::vector<double>& ohms)
    {
        table = ZblRowNumbers{};
        for (std::size_t i = 0; i < ohms.size(); ++i)
            table[i] = ohms[i];
    }

    static void setCells(ZblReportColumn column, const QStringList& texts)
    {
        for (int i = 0; i < texts.size(); ++i)
            zblBasicReport().cell(column, i) = texts[i];
    }

    static int reportRowCount() { return CheckNumberOfTAPInFiles(); }

    // The report's resistance cells from what the reader filled.
    void copyResistanceCells()
    {
        for (int i = 0; i < ZblRowsUsed; ++i) {
            zblBasicReport().cell(ZblReportColumn::ResA, i) =
                report().cell(ZblReportColumn::ResA, i);
            zblBasicReport().cell(ZblReportColumn::ResB, i) =
                report().cell(ZblReportColumn::ResB, i);
        }
    }

    VGraph& graph() { return zblVGraph(); }
};

const QString A = QStringLiteral("CHANNEL_A");
const QString B = QStringLiteral("CHANNEL_B");

TEST_F(VGraphTest, CellsInEachUnitGiveOhms)
{
    setCells(ZblReportColumn::ResA, {QString::fromUtf8("500 µOhm"), QStringLiteral("1.5 mOhm"),
                                     QStringLiteral("2 Ohm"), QStringLiteral("OFF"), QString()});
    EXPECT_DOUBLE_EQ(GetZBLResistanceInOhm(0, A).toNumber(), 0.0005);
    EXPECT_DOUBLE_EQ(GetZBLResistanceInOhm(1, A).toNumber(), 0.0015);
    EXPECT_DOUBLE_EQ(GetZBLResistanceInOhm(2, A).toNumber(), 2.0);
    EXPECT_DOUBLE_EQ(GetZBLResistanceInOhm(3, A).toNumber(), 0.0);
    EXPECT_DOUBLE_EQ(GetZBLResistanceInOhm(4, A).toNumber(), 0.0);
}

TEST_F(VGraphTest, AnyChannelNameButAReadsChannelB)
{
    zblBasicReport().cell(ZblReportColumn::ResA, 0) = QStringLiteral("1 Ohm");
    zblBasicReport().cell(ZblReportColumn::ResB, 0) = QStringLiteral("3 mOhm");
    EXPECT_DOUBLE_EQ(GetZBLResistanceInOhm(0, A).toNumber(), 1.0);
    EXPECT_DOUBLE_EQ(GetZBLResistanceInOhm(0, B).toNumber(), 0.003);
    EXPECT_DOUBLE_EQ(GetZBLResistanceInOhm(0, QStringLiteral("B")).toNumber(), 0.003);
}

TEST_F(VGraphTest, FillLeavesOutTheLastCountedRowAndDoesNotClear)
{
    record().tabChannelA[5] = 9.0; // from an earlier fill of the same file
    setCells(ZblReportColumn::ResA, {QStringLiteral("1 mOhm"), QStringLiteral("2 mOhm"),
                                     QStringLiteral("3 mOhm"), QStringLiteral("4 mOhm")});
    setCells(ZblReportColumn::ResB, {QStringLiteral("5 Ohm"), QStringLiteral("OFF"),
                                     QStringLiteral("7 Ohm"), QStringLiteral("8 Ohm")});
    m_breaths = 0;
    FillZBLChannelTables(4);
    EXPECT_DOUBLE_EQ(record().tabChannelA[0], 0.001);
    EXPECT_DOUBLE_EQ(record().tabChannelA[2], 0.003);
    EXPECT_DOUBLE_EQ(record().tabChannelA[3], 0.0);
    EXPECT_DOUBLE_EQ(record().tabChannelA[5], 9.0);
    EXPECT_DOUBLE_EQ(record().tabChannelB[0], 5.0);
    EXPECT_DOUBLE_EQ(record().tabChannelB[1], 0.0);
    EXPECT_EQ(m_breaths, 3);
}

TEST_F(VGraphTest, FirstValueIsPlottedButIgnoredByPeakAndLow)
{
    setTable(record().tabChannelA, {0.5, 0.4, 0.45});
    EXPECT_EQ(ScanTabChannel(A), 3);
    EXPECT_DOUBLE_EQ(ScanTabChannelPeak(A), 0.45);
    EXPECT_DOUBLE_EQ(ScanTabChannelLow(A), 0.4);

    graph().SendZBLTapInfoToChart(QStringLiteral("A"));
    const VGraphChartState& chart = graph().window.CWGraph1;
    EXPECT_DOUBLE_EQ(chart.y.maximum, 0.45 * 1.05);
    EXPECT_DOUBLE_EQ(chart.y.maximum, 0.4725);
    EXPECT_DOUBLE_EQ(chart.y.minimum, 0.4 / 1.05);
    EXPECT_DOUBLE_EQ(chart.x.minimum, 1.0);
    EXPECT_DOUBLE_EQ(chart.x.maximum, 3.0);
    EXPECT_EQ(chart.plot1.x, (std::vector<double>{1.0, 2.0, 3.0}));
    EXPECT_EQ(chart.plot1.y, (std::vector<double>{0.5, 0.4, 0.45}));
    EXPECT_DOUBLE_EQ(chart.plotPerRow, 0.1);
    EXPECT_EQ(graph().print.CWGraph1.plot1, chart.plot1);
    EXPECT_DOUBLE_EQ(graph().PeakScale.toNumber(), 0.45 * 1.05);
}

TEST_F(VGraphTest, ChannelAllOffGivesOnePointAndAnInvertedScale)
{
    setTable(record().tabChannelA, {0.5, 0.4});
    // Every row of B "OFF": the table stays zero.
    EXPECT_EQ(ScanTabChannel(B), 1);
    EXPECT_DOUBLE_EQ(ScanTabChannelPeak(B), 0.0);
    EXPECT_DOUBLE_EQ(ScanTabChannelLow(B), 100.0);

    const PlotArray array = graph().Vgraph(B);
    EXPECT_EQ(array.columns(), 1); // n is 0: column 0 alone
    EXPECT_DOUBLE_EQ(array.at(0, 0), 1.0);
    EXPECT_DOUBLE_EQ(array.at(1, 0), 0.0);

    graph().SendZBLTapInfoToChart(QStringLiteral("B"));
    const VGraphChartState& chart = graph().window.CWGraph1;
    EXPECT_DOUBLE_EQ(chart.y.minimum, 100.0 / 1.05);
    EXPECT_DOUBLE_EQ(chart.y.maximum, 0.0);
    EXPECT_DOUBLE_EQ(chart.x.minimum, 1.0);
    EXPECT_DOUBLE_EQ(chart.x.maximum, 1.0);
    EXPECT_DOUBLE_EQ(chart.plotPerRow, 0.001);
}

TEST_F(VGraphTest, OffRowInTheMiddleEndsTheCurve)
{
    setTable(record().tabChannelA, {0.5, 0.4, 0.0, 0.45, 0.6});
    EXPECT_EQ(ScanTabChannel(A), 2);
    EXPECT_DOUBLE_EQ(ScanTabChannelPeak(A), 0.4);
    const PlotArray array = graph().Vgraph(A);
    EXPECT_EQ(array.columns(), 2);
    EXPECT_EQ(array.y, (std::vector<double>{0.5, 0.4}));
}

TEST_F(VGraphTest, NegativeValueEndsTheCurveToo)
{
    setTable(record().tabChannelA, {0.5, 0.4, -1.0, 0.45});
    EXPECT_EQ(ScanTabChannel(A), 2);
}

TEST_F(VGraphTest, FirstElementIsNotLookedAt)
{
    setTable(record().tabChannelA, {0.0, 0.4, 0.3});
    EXPECT_EQ(ScanTabChannel(A), 3);
}

TEST_F(VGraphTest, CurveAbove100OhmsKeepsTheFixedLowCeiling)
{
    setTable(record().tabChannelB, {150.0, 120.0, 110.0, 130.0});
    EXPECT_DOUBLE_EQ(ScanTabChannelLow(B), 100.0);
    graph().SendZBLTapInfoToChart(QStringLiteral("B"));
    const VGraphChartState& chart = graph().window.CWGraph1;
    EXPECT_DOUBLE_EQ(chart.y.minimum, 100.0 / 1.05);
    EXPECT_DOUBLE_EQ(chart.y.maximum, 130.0 * 1.05);
    // Every point from the second on lies within the axis; the first takes
    // no part in the scale and is drawn above the top here.
    for (int i = 1; i < chart.plot1.columns(); ++i) {
        EXPECT_GE(chart.plot1.at(1, i), chart.y.minimum);
        EXPECT_LE(chart.plot1.at(1, i), chart.y.maximum);
    }
    EXPECT_GT(chart.plot1.at(1, 0), chart.y.maximum);
}

TEST_F(VGraphTest, ReadingPastTheLastElementIsSubscriptOutOfRange)
{
    ZblRowNumbers& table = record().tabChannelA;
    table.fill(1.0);
    EXPECT_EQ(failureOf([] { ScanTabChannel(A); }), err::SubscriptOutOfRange);
    table[122] = 0.0;
    EXPECT_EQ(ScanTabChannel(A), 122);
    EXPECT_EQ(graph().Vgraph(A).columns(), 122);
}

TEST_F(VGraphTest, ScansYieldOnEveryStep)
{
    setTable(record().tabChannelA, {0.5, 0.4, 0.45, 0.6});
    m_breaths = 0;
    ScanTabChannelPeak(A);
    EXPECT_EQ(m_breaths, 3);
    m_breaths = 0;
    graph().Vgraph(A);
    EXPECT_EQ(m_breaths, 122);
}

TEST_F(VGraphTest, BothArraysAreBuiltWhicheverTheLetter)
{
    setTable(record().tabChannelA, {0.5, 0.4, 0.45});
    setTable(record().tabChannelB, {0.7, 0.6});
    graph().SendZBLTapInfoToChart(QStringLiteral("A"));
    EXPECT_EQ(graph().VGraphA.columns(), 3);
    EXPECT_EQ(graph().VGraphB.columns(), 2);
    EXPECT_EQ(graph().window.CWGraph1.plot1, graph().VGraphA);
    graph().SendZBLTapInfoToChart(QStringLiteral("B"));
    EXPECT_EQ(graph().window.CWGraph1.plot1, graph().VGraphB);
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.y.maximum, 0.6 * 1.05);
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.y.minimum, 0.6 / 1.05);
    EXPECT_TRUE(graph().Vgraph(QStringLiteral("A")).x.empty());
}

TEST_F(VGraphTest, PrintTwinKeepsItsXAxisForChannelB)
{
    setTable(record().tabChannelA, {0.5, 0.4, 0.45});
    setTable(record().tabChannelB, {0.7, 0.6, 0.65, 0.8, 0.9});
    graph().SendZBLTapInfoToChart(QStringLiteral("A"));
    EXPECT_DOUBLE_EQ(graph().print.CWGraph1.x.minimum, 1.0);
    EXPECT_DOUBLE_EQ(graph().print.CWGraph1.x.maximum, 3.0);

    graph().SendZBLTapInfoToChart(QStringLiteral("B"));
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.x.maximum, 5.0);
    EXPECT_DOUBLE_EQ(graph().print.CWGraph1.x.maximum, 3.0); // still channel A's
    // The Y axis follows on both.
    EXPECT_DOUBLE_EQ(graph().print.CWGraph1.y.maximum, 0.9 * 1.05);
    EXPECT_DOUBLE_EQ(graph().print.CWGraph1.y.minimum, 0.6 / 1.05);

    // After a print unloads the twin, B leaves it at its loaded axis.
    graph().mnuPrint_Click(1, {});
    graph().SendZBLTapInfoToChart(QStringLiteral("B"));
    EXPECT_EQ(graph().print.CWGraph1.x, VGraphChartState{}.x);
}

TEST_F(VGraphTest, CursorAtPoint4OhmsReads400Milliohms)
{
    double x = 3.0;
    double y = 0.4;
    graph().CWGraph1_CursorChange(x, y, QStringLiteral("Position"));
    EXPECT_DOUBLE_EQ(y, 400.0);
    EXPECT_EQ(graph().window.lbVolts, QStringLiteral("400.000mohm"));
    EXPECT_EQ(graph().window.lbCurrent, QStringLiteral("Position 3"));
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.cursor.y, 0.4);
    EXPECT_TRUE(graph().window.CWGraph1.cursor.visible);
}

TEST_F(VGraphTest, LoadedWindowDragsTheCursorWithUnzoomHidden)
{
    EXPECT_EQ(graph().window.CWGraph1.trackMode, TrackDragCursor);
    EXPECT_FALSE(graph().window.lbUnZoomVisible);
    EXPECT_FALSE(graph().window.ckZoom);
}

TEST_F(VGraphTest, ZoomSavesTheAxesAndClickKeepsTheZoom)
{
    setTable(record().tabChannelA, {0.5, 0.4, 0.45, 0.6});
    GraphChannel() = QStringLiteral("A");
    graph().SendZBLTapInfoToChart(QStringLiteral("A"));

    graph().ckZoom_Click(true);
    EXPECT_EQ(graph().window.CWGraph1.trackMode, TrackZoomRectangle);
    EXPECT_TRUE(graph().window.lbUnZoomVisible);
    EXPECT_DOUBLE_EQ(graph().SavedXMax, 4.0);
    EXPECT_DOUBLE_EQ(graph().SavedYMax, 0.6 * 1.05);
    EXPECT_DOUBLE_EQ(graph().SavedXMin, 1.0);
    EXPECT_DOUBLE_EQ(graph().SavedYMin, 0.4 / 1.05);

    graph().zoomTo(2.0, 3.0, 0.41, 0.5);
    graph().CWGraph1_Click();
    EXPECT_EQ(graph().window.CWGraph1.trackMode, TrackDragCursor);
    EXPECT_FALSE(graph().window.ckZoom);
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.x.minimum, 2.0);
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.y.maximum, 0.5);

    // Unticking does nothing of its own.
    graph().ckZoom_Click(true);
    graph().ckZoom_Click(false);
    EXPECT_EQ(graph().window.CWGraph1.trackMode, TrackZoomRectangle);
}

TEST_F(VGraphTest, DoubleClickRestoresTheFullCurve)
{
    setTable(record().tabChannelB, {0.5, 0.4, 0.45, 0.6});
    GraphChannel() = QStringLiteral("B");
    graph().SendZBLTapInfoToChart(QStringLiteral("B"));
    graph().ckZoom_Click(true);
    graph().zoomTo(2.0, 3.0, 0.41, 0.5);

    graph().CWGraph1_DblClick();
    const VGraphChartState& chart = graph().window.CWGraph1;
    EXPECT_FALSE(graph().window.lbUnZoomVisible);
    EXPECT_DOUBLE_EQ(chart.x.minimum, 1.0);
    EXPECT_DOUBLE_EQ(chart.x.maximum, 4.0);
    EXPECT_DOUBLE_EQ(chart.y.maximum, 0.6 * 1.05);
    EXPECT_DOUBLE_EQ(chart.y.minimum, 0.4 / 1.05);
    EXPECT_EQ(chart.trackMode, TrackDragCursor);
    EXPECT_FALSE(graph().window.ckZoom);
}

TEST_F(VGraphTest, DoubleClickWithNoChannelOnlyResetsTheYAxis)
{
    graph().PeakScale = Dynamic(2.0);
    graph().LowScale = Dynamic(1.0);
    graph().zoomTo(2.0, 3.0, 0.41, 0.5);
    graph().CWGraph1_DblClick();
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.x.minimum, 2.0);
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.y.maximum, 2.0);
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.y.minimum, 1.0);
}

TEST_F(VGraphTest, ZoomedGraphPrintsTheUnzoomedTwin)
{
    setTable(record().tabChannelA, {0.5, 0.4, 0.45, 0.6});
    GraphChannel() = QStringLiteral("A");
    graph().SendZBLTapInfoToChart(QStringLiteral("A"));
    graph().window.lbCHAN = QStringLiteral("CHANNEL A");
    graph().window.CWGraph1.caption = QStringLiteral("H1-H2");
    double x = 2.0;
    double y = 0.4;
    graph().CWGraph1_CursorChange(x, y, QStringLiteral("Pos"));
    graph().ckZoom_Click(true);
    graph().zoomTo(2.0, 3.0, 0.41, 0.5);

    std::vector<VGraphForm> printed;
    bool unZoomShownOnPaper = true;
    graph().mnuPrint_Click(2, [&](const VGraphForm& form) {
        printed.push_back(form);
        unZoomShownOnPaper = graph().window.lbUnZoomVisible;
    });
    ASSERT_EQ(printed.size(), 2U);
    EXPECT_FALSE(unZoomShownOnPaper);
    const VGraphForm& page = printed[0];
    EXPECT_DOUBLE_EQ(page.CWGraph1.x.minimum, 1.0);
    EXPECT_DOUBLE_EQ(page.CWGraph1.x.maximum, 4.0);
    EXPECT_DOUBLE_EQ(page.CWGraph1.y.maximum, 0.6 * 1.05);
    EXPECT_EQ(page.lbCHAN, QStringLiteral("CHANNEL A"));
    EXPECT_EQ(page.CWGraph1.caption, QStringLiteral("H1-H2"));
    EXPECT_EQ(page.lbVolts, QStringLiteral("400.000mohm"));
    EXPECT_EQ(page.CWGraph1.plot1, graph().VGraphA);
    // The box is still ticked: the hint comes back; the twin is unloaded.
    EXPECT_TRUE(graph().window.lbUnZoomVisible);
    EXPECT_EQ(graph().print, VGraphForm{});
}

TEST_F(VGraphTest, CancelledPrintLeavesUnzoomHiddenAndTheTwinLoaded)
{
    setTable(record().tabChannelA, {0.5, 0.4, 0.45});
    graph().SendZBLTapInfoToChart(QStringLiteral("A"));
    graph().ckZoom_Click(true);
    int pages = 0;
    graph().mnuPrint_Click(std::nullopt, [&](const VGraphForm&) { ++pages; });
    EXPECT_EQ(pages, 0);
    EXPECT_FALSE(graph().window.lbUnZoomVisible);
    EXPECT_DOUBLE_EQ(graph().print.CWGraph1.x.maximum, 3.0);
}

TEST_F(VGraphTest, OpeningAChannelFillsTheWindowFromTheReport)
{
    setCells(ZblReportColumn::ResA, {QStringLiteral("500 mOhm"), QStringLiteral("400 mOhm"),
                                     QStringLiteral("450 mOhm"), QStringLiteral("closing")});
    setCells(ZblReportColumn::ResB, {QStringLiteral("OFF"), QStringLiteral("OFF"),
                                     QStringLiteral("OFF"), QStringLiteral("closing")});
    VGraphHead head;
    head.lbTexteFileName1 = QStringLiteral("t.zbl");
    head.txtCompany = QStringLiteral("Test Co");
    graph().openChannel(QStringLiteral("A"), head, QStringLiteral("H1-H2"),
                        QStringLiteral("CHANNEL A"), 4);
    EXPECT_EQ(GraphChannel(), QStringLiteral("A"));
    EXPECT_EQ(graph().window.head, head);
    EXPECT_EQ(graph().window.CWGraph1.caption, QStringLiteral("H1-H2"));
    EXPECT_EQ(graph().window.lbCHAN, QStringLiteral("CHANNEL A"));
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.x.maximum, 3.0);
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.y.maximum, 0.4725);

    graph().openChannel(QStringLiteral("B"), head, QStringLiteral("X1-X2"),
                        QStringLiteral("CHANNEL B"), 4);
    EXPECT_EQ(ScanTabChannel(B), 1);
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.y.minimum, 100.0 / 1.05);
    EXPECT_DOUBLE_EQ(graph().print.CWGraph1.x.maximum, 3.0);
}

TEST_F(VGraphTest, OpeningFromTheReportTakesItsHeadWindingAndRowCount)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-manual-19-rows.zbl"))), 0);
    copyResistanceCells();
    ZblBasicReportModel& report = zblBasicReport();
    report.lbTexteFileName1 = QStringLiteral("zbl-manual-19-rows.zbl");
    report.txtCompany = QStringLiteral("Test Co");
    report.txtTemperature = QStringLiteral("20 C");
    report.cell(ZblReportColumn::WindingB, 0) = QStringLiteral("X1-X2");
    report.cell(ZblReportColumn::WindingB, 1) = QStringLiteral("X2-X3");

    graph().openChannelFromReport(QStringLiteral("B"), QStringLiteral("CHANNEL B"));
    EXPECT_EQ(graph().window.head.lbTexteFileName1, QStringLiteral("zbl-manual-19-rows.zbl"));
    EXPECT_EQ(graph().window.head.txtCompany, QStringLiteral("Test Co"));
    EXPECT_EQ(graph().window.head.txtTemperature, QStringLiteral("20 C"));
    EXPECT_EQ(graph().window.CWGraph1.caption, QStringLiteral("X1-X2"));
    EXPECT_EQ(graph().window.lbCHAN, QStringLiteral("CHANNEL B"));
    EXPECT_EQ(GraphChannel(), QStringLiteral("B"));
    EXPECT_EQ(graph().window.CWGraph1.plot1.columns(), 19);
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.x.maximum, 19.0);
}

TEST_F(VGraphTest, SampleWithChannelBOffDrawsAFullCurveForAAndNoneForB)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-manual-24-rows-channel-b-off.zbl"))), 0);
    copyResistanceCells();
    const int n = reportRowCount();
    ASSERT_EQ(n, 25); // 24 rows and the closing rule
    FillZBLChannelTables(n);
    EXPECT_EQ(ScanTabChannel(A), 24);
    EXPECT_EQ(ScanTabChannel(B), 1);
    for (int i = 0; i < 24; ++i) {
        const double expected = GetZBLResistanceInOhm(i, A).toNumber();
        EXPECT_DOUBLE_EQ(record().tabChannelA[static_cast<std::size_t>(i)], expected);
        EXPECT_GT(expected, 0.0);
    }
    graph().SendZBLTapInfoToChart(QStringLiteral("A"));
    EXPECT_EQ(graph().window.CWGraph1.plot1.columns(), 24);
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.x.maximum, 24.0);
}

TEST_F(VGraphTest, SampleInMicroAndMilliohmsConvertsEachRow)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-manual-19-rows.zbl"))), 0);
    copyResistanceCells();
    FillZBLChannelTables(reportRowCount());
    // Row 15 of the file's lines is table row 0: 436.49 mOhm and 845.30 µOhm.
    EXPECT_DOUBLE_EQ(record().tabChannelA[0], 0.43649);
    EXPECT_DOUBLE_EQ(record().tabChannelB[0], 0.0008453);
    EXPECT_EQ(ScanTabChannel(A), 19);
    EXPECT_EQ(ScanTabChannel(B), 19);
}

// ---- the labels of the Y axis ----------------------------------------------

// Whether the labels of the axis read all differently.
bool labelsDiffer(double minimum, double maximum, int ticks, int decimals)
{
    QStringList labels = vGraphTickLabels(minimum, maximum, ticks, decimals);
    labels.removeDuplicates();
    return labels.size() == ticks;
}

TEST(VGraphTicks, TicksRunEvenlyFromBottomToTop)
{
    EXPECT_DOUBLE_EQ(vGraphTickValue(0.5, 0.7, 5, 0), 0.5);
    EXPECT_DOUBLE_EQ(vGraphTickValue(0.5, 0.7, 5, 1), 0.55);
    EXPECT_DOUBLE_EQ(vGraphTickValue(0.5, 0.7, 5, 4), 0.7);
    EXPECT_DOUBLE_EQ(vGraphTickValue(0.5, 0.7, 1, 0), 0.5);
}

TEST(VGraphTicks, ScalesOfCurvesTakeTheDecimalsTheirStepsNeed)
{
    struct Curve
    {
        const char* what;
        double low;  // the lowest value of the curve, or the low ceiling
        double peak; // the highest
        int decimals;
        QStringList labels;
    };
    const Curve curves[] = {
        // A scale from 0.5286 to 0.7324, ticks 0.051 apart: one decimal reads
        // 0.5, 0.6, 0.6, 0.7, 0.7.
        {"V around 600 mOhm", 0.555, 0.6975, 2, {"0.53", "0.58", "0.63", "0.68", "0.73"}},
        // Above 100 ohms the low keeps the fixed ceiling: 95.2 to 315.
        {"curve above 100 Ohm", VGraphLowCeiling, 300.0, 0, {"95", "150", "205", "260", "315"}},
        // 805.0 to 947.2 µOhm, ticks 35.5 µOhm apart.
        {"V in microohms",
         0.0008453,
         0.0009021,
         5,
         {"0.00081", "0.00084", "0.00088", "0.00091", "0.00095"}},
    };
    for (const Curve& curve : curves) {
        SCOPED_TRACE(curve.what);
        const double low = curve.low / VGraphScaleMargin;
        const double peak = curve.peak * VGraphScaleMargin;
        ASSERT_EQ(vGraphTickDecimals(low, peak, VGraphYTickCount), curve.decimals);
        EXPECT_EQ(vGraphTickLabels(low, peak, VGraphYTickCount, curve.decimals), curve.labels);
        if (curve.decimals > 0) {
            EXPECT_FALSE(labelsDiffer(low, peak, VGraphYTickCount, curve.decimals - 1));
        }
    }
}

TEST(VGraphTicks, DecimalsAreTheFewestThatTellEveryTickApart)
{
    // Bottoms and widths from nanohms to kilohms, as a zoom may leave them.
    for (const double bottom : {0.0, 0.0004, 0.43, 1.0, 7.5, 95.238, 1234.5}) {
        for (const double width : {1e-8, 3e-7, 2e-5, 0.0013, 0.05, 0.21, 3.7, 48.0, 900.0}) {
            for (const int ticks : {2, 3, VGraphYTickCount, 11}) {
                const int decimals = vGraphTickDecimals(bottom, bottom + width, ticks);
                SCOPED_TRACE(::testing::Message() << bottom << " + " << width << ", " << ticks);
                ASSERT_GE(decimals, 0);
                ASSERT_LE(decimals, VGraphMaxTickDecimals);
                EXPECT_TRUE(labelsDiffer(bottom, bottom + width, ticks, decimals));
                if (decimals > 0) {
                    EXPECT_FALSE(labelsDiffer(bottom, bottom + width, ticks, decimals - 1));
                }
            }
        }
    }
}

TEST(VGraphTicks, TicksCloserThanANanohmStopAtTheMostDecimals)
{
    EXPECT_EQ(vGraphTickDecimals(1.0, 1.0 + 1e-12, VGraphYTickCount), VGraphMaxTickDecimals);
    EXPECT_FALSE(labelsDiffer(1.0, 1.0 + 1e-12, VGraphYTickCount, VGraphMaxTickDecimals));
}

TEST(VGraphTicks, NothingToTellApartTakesNoDecimals)
{
    EXPECT_EQ(vGraphTickDecimals(0.4, 0.4, VGraphYTickCount), 0);
    EXPECT_EQ(vGraphTickDecimals(0.4, 0.5, 1), 0);
    EXPECT_EQ(vGraphTickDecimals(0.4, std::numeric_limits<double>::infinity(), 5), 0);
    EXPECT_EQ(vGraphTickDecimals(std::numeric_limits<double>::quiet_NaN(), 0.5, 5), 0);
}

TEST(VGraphTicks, UpsideDownAxisOfAChannelAllOffTellsItsTicksApart)
{
    const double top = VGraphLowCeiling / VGraphScaleMargin;
    EXPECT_EQ(vGraphTickDecimals(top, 0.0, VGraphYTickCount), 0);
    EXPECT_EQ(vGraphTickLabels(top, 0.0, VGraphYTickCount, 0),
              QStringList({"95", "71", "48", "24", "0"}));
}

TEST(VGraphTicks, LabelsKeepThePointUnderAnyLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const QLocale qtBefore;
    for (const char* name : {"fr_FR.UTF-8", "pl_PL.UTF-8"}) {
        std::setlocale(LC_ALL, name);
        QLocale::setDefault(QLocale(QString::fromLatin1(name).left(5)));
        EXPECT_EQ(vGraphTickLabels(0.5, 0.7, 3, 2), QStringList({"0.50", "0.60", "0.70"}));
        EXPECT_EQ(vGraphTickLabels(1000.0, 3000.0, 3, 1),
                  QStringList({"1000.0", "2000.0", "3000.0"}));
    }
    QLocale::setDefault(qtBefore);
    std::setlocale(LC_ALL, before.c_str());
}

// ---- where the cursor is drawn ----------------------------------------------

TEST_F(VGraphTest, PointsOnThePlotLieWithinBothAxesBoundsIncluded)
{
    VGraphChartState state;
    state.x = GraphAxis{QString(), 1.0, 121.0, false};
    state.y = GraphAxis{QString(), 0.5, 0.7, false};
    EXPECT_TRUE(vGraphPointOnPlot(state, 60.0, 0.6));
    EXPECT_TRUE(vGraphPointOnPlot(state, 1.0, 0.5));
    EXPECT_TRUE(vGraphPointOnPlot(state, 121.0, 0.7));
    // Left of the Y axis, right of the last row, above and below.
    EXPECT_FALSE(vGraphPointOnPlot(state, 0.0, 0.6));
    EXPECT_FALSE(vGraphPointOnPlot(state, 121.5, 0.6));
    EXPECT_FALSE(vGraphPointOnPlot(state, 60.0, 0.71));
    EXPECT_FALSE(vGraphPointOnPlot(state, 60.0, 0.49));

    EXPECT_EQ(vGraphPointKeptOnPlot(state, -3.0, 0.8), QPointF(1.0, 0.7));
    EXPECT_EQ(vGraphPointKeptOnPlot(state, 200.0, 0.1), QPointF(121.0, 0.5));
    EXPECT_EQ(vGraphPointKeptOnPlot(state, 60.0, 0.6), QPointF(60.0, 0.6));

    // The inverted scale of a channel all "OFF" counts from its lower bound.
    state.y = GraphAxis{QString(), VGraphLowCeiling / VGraphScaleMargin, 0.0, false};
    EXPECT_TRUE(vGraphPointOnPlot(state, 1.0, 50.0));
    EXPECT_EQ(vGraphPointKeptOnPlot(state, 1.0, 120.0),
              QPointF(1.0, VGraphLowCeiling / VGraphScaleMargin));
}

TEST_F(VGraphTest, CursorIsDrawnOnlyOnThePlot)
{
    // Loaded, the cursor stands at (0, 0) and there is no curve.
    EXPECT_TRUE(graph().window.CWGraph1.cursor.visible);
    EXPECT_FALSE(vGraphCursorDrawn(graph().window.CWGraph1));

    setTable(record().tabChannelA, {0.5, 0.4, 0.45, 0.6, 0.55});
    GraphChannel() = QStringLiteral("A");
    graph().SendZBLTapInfoToChart(QStringLiteral("A"));
    // (0, 0) lies left of the first row and below the low scale.
    EXPECT_FALSE(vGraphCursorDrawn(graph().window.CWGraph1));

    double x = 2.0;
    double y = 0.45;
    graph().CWGraph1_CursorChange(x, y, QStringLiteral("Position"));
    EXPECT_TRUE(vGraphCursorDrawn(graph().window.CWGraph1));

    // A zoom that leaves the point out hides the cursor; the unzoom brings it
    // back where it was.
    graph().zoomTo(3.0, 5.0, 0.5, 0.6);
    EXPECT_FALSE(vGraphCursorDrawn(graph().window.CWGraph1));
    EXPECT_DOUBLE_EQ(graph().window.CWGraph1.cursor.x, 2.0);
    graph().CWGraph1_DblClick();
    EXPECT_TRUE(vGraphCursorDrawn(graph().window.CWGraph1));

    graph().window.CWGraph1.cursor.visible = false;
    EXPECT_FALSE(vGraphCursorDrawn(graph().window.CWGraph1));
}

TEST(VGraphTicks, ANarrowZoomOnWholePositionsTakesOneTickAPosition)
{
    EXPECT_EQ(vGraphXTickCount(3, 5), 3);
    EXPECT_EQ(vGraphTickLabels(3, 5, vGraphXTickCount(3, 5), vGraphTickDecimals(3, 5, 3)),
              (QStringList{"3", "4", "5"}));
    EXPECT_EQ(vGraphXTickCount(7, 8), 2);
    EXPECT_EQ(vGraphXTickCount(1, 4), 4);
    // Four positions apart and more: the usual five ticks.
    EXPECT_EQ(vGraphXTickCount(1, 5), VGraphXTickCount);
    EXPECT_EQ(vGraphXTickCount(1, 122), VGraphXTickCount);
    // Ends between positions, or an axis of no width: the usual count.
    EXPECT_EQ(vGraphXTickCount(2.5, 4), VGraphXTickCount);
    EXPECT_EQ(vGraphXTickCount(4, 4), VGraphXTickCount);
    // The whole table of 122 rows reads in whole positions, each distinct.
    const int ticks = vGraphXTickCount(1, 122);
    const QStringList whole = vGraphTickLabels(1, 122, ticks, vGraphTickDecimals(1, 122, ticks));
    EXPECT_EQ(whole.size(), 5);
    EXPECT_EQ(whole.front(), QStringLiteral("1"));
    EXPECT_EQ(whole.back(), QStringLiteral("122"));
    // A zoom between positions takes the digits its ticks need: never two
    // labels alike.
    QStringList between = vGraphTickLabels(2.5, 4, 5, vGraphTickDecimals(2.5, 4, 5));
    const auto count = between.size();
    between.removeDuplicates();
    EXPECT_EQ(between.size(), count);
}

} // namespace
} // namespace quenby::testing
