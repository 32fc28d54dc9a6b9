// frmTestExcelChart's own graph and its two small handlers, without a
// screen. The window holds the plotting logic of the report graph (KneeGraph.h)
// and is never shown by any command; its graph, its plot button and its two
// position labels are kept as a development aid, reachable from tests.
#pragma once

#include "kvx/model/KneeGraph.h"

#include <QString>

namespace quenby {

// The track mode cmdPlotData2 gives the report's graph.
inline constexpr int TestChartReportTrackMode = 2;

// The two position labels of the window.
struct TestExcelChartLabels
{
    QString lblXPos;
    QString lblYPos;
};

// A position as the labels show it, "##0.0#": at least one and at most two
// decimals, halves away from zero, "." as the point whatever the desktop's
// language (12.345 "12.35", 12 "12.0").
QString testChartPositionText(double value);

// cmdPlotData2: the report graph's track mode becomes 2; the window's stored
// array, the chart array of the first tap on the report (names(1)), or the
// empty "ERASE" array before any drawing, goes onto plot 1 of the window's
// own graph; and as the report graph has cursors, they are cleared: each is
// hidden at (0, 0), as a fresh graph has them.
void TestExcelChart_cmdPlotData2_Click(TestExcelChart& chart, KneeGraph& reportGraph);

// A cursor of the window's graph moved to (x, y): both labels take the
// position formatted.
void TestExcelChart_CWGraph1_CursorChange(TestExcelChartLabels& labels, double x, double y);

// The mouse over the window's graph at (x, y): the labels take the raw
// values, then the same formatted, which is what stays.
void TestExcelChart_CWGraph1_MouseMove(TestExcelChartLabels& labels, double x, double y);

} // namespace quenby
