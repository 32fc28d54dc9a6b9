// The excitation graph of the KVX report: voltage against magnetising current
// of up to ten taps, one plot each, on two logarithmic axes, with one knee
// cursor for each tap slot. This is the chart as a set of parts; what it shows
// comes from the report's graph model.
#pragma once

#include <QString>

#include <array>

class QChartView;
class QLineSeries;
class QLogValueAxis;
class QScatterSeries;
class QWidget;

namespace quenby {

struct KvxKneeChart
{
    static constexpr int PlotCount = 10;
    // Both axes span this range, in milliamperes and in volts, until zoomed.
    static constexpr double AxisMin = 1.0;
    static constexpr double AxisMax = 2000.0;

    QChartView* view = nullptr;     // named "CWGraph1"
    QLogValueAxis* axisX = nullptr; // current, mA
    QLogValueAxis* axisY = nullptr; // voltage, V
    // Plot n + 1 ("Plot-1" to "Plot-10"): the n-th tap present in the test.
    std::array<QLineSeries*, PlotCount> plots{};
    // Cursor n + 1 ("Cursor-1" to "Cursor-10"): the knee of tap slot n + 1,
    // one point, hidden until the knee logic places it.
    std::array<QScatterSeries*, PlotCount> cursors{};
};

// Builds the graph as a child of `parent`.
KvxKneeChart makeKvxKneeChart(QWidget* parent);

// "Plot-3", "Cursor-3": the names the graph gives its plots and cursors.
QString kvxPlotName(int n);
QString kvxCursorName(int n);

} // namespace quenby
