#include "kvx/model/TestExcelChartView.h"

#include "shell/model/NumberText.h"

namespace quenby {

QString testChartPositionText(double value)
{
    return formatNumber(value, u"##0.0#");
}

void TestExcelChart_cmdPlotData2_Click(TestExcelChart& chart, KneeGraph& reportGraph)
{
    reportGraph.setTrackMode(TestChartReportTrackMode);
    const QString& first = chart.names()[0];
    chart.CWGraph1.PlotXvsY(1, chart.plotArray(first.isEmpty() ? QLatin1String(EraseCode) : first));
    // The graph always has its ten cursors, so the count is above 0.
    for (int n = 1; n <= KneeGraph::CursorCount; ++n) {
        reportGraph.setCursorPosition(n, 0.0, 0.0);
        reportGraph.setCursorVisible(n, false);
    }
}

void TestExcelChart_CWGraph1_CursorChange(TestExcelChartLabels& labels, double x, double y)
{
    labels.lblXPos = testChartPositionText(x);
    labels.lblYPos = testChartPositionText(y);
}

void TestExcelChart_CWGraph1_MouseMove(TestExcelChartLabels& labels, double x, double y)
{
    labels.lblXPos = numberText(x);
    labels.lblYPos = numberText(y);
    TestExcelChart_CWGraph1_CursorChange(labels, x, y);
}

} // namespace quenby
