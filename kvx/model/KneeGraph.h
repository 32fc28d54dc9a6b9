// Excitation curves and knee marks of the open KVX test, without any screen.
//
// The report shows the ten excitation curves on one graph with a cursor on
// each curve at its knee. The knee is not derived from the curve: the test
// file carries three knee voltages for each tap, one for each standard, and
// the mark sits on the first measured point, in file order, at or above the
// chosen standard's voltage. There is no interpolation; the mark takes that
// point's voltage and current, and the current is written back into the
// record as the tap's knee current text (in milliamperes).
//
// KneeGraph is the report's graph `CWGraph1` as the logic sees it: numbered
// plots, numbered cursors, two logarithmic axes and a track mode. The report
// window only mirrors kvxReportGraph(); every value it shows is computed here.
//
// The operations keep the names they have in the two windows that hold them
// and are never shown: flushGraph, FindKneepoint, FindISat and
// TreatVisibleKneepoint of `frmGraph`, free functions here; and
// ScanTabVXToFindEnd, GenerateTemsionVsCourant and cmdPlotData_Click of
// `frmTestExcelChart`, members of the chart container, which also owns the
// eleven plot arrays.
#pragma once

#include "kvx/model/KvxTestRecord.h"
#include "report/model/GraphTypes.h"
#include "shell/model/Checked.h"
#include "shell/model/Dynamic.h"

#include <QString>

#include <array>
#include <cstdint>
#include <vector>

namespace quenby {

// The three values of appState().KneeStandard. Any other text is read as the
// third.
inline constexpr auto KneeStandardIeee30 = "IEEE 30";
inline constexpr auto KneeStandardIeee45 = "IEEE 45";
inline constexpr auto KneeStandardIec1050 = "AINSI/IEC10/50";

// ---- The graph --------------------------------------------------------------

// The full range of both axes, to which a double click on the report's graph
// returns.
inline constexpr double KneeAxisMinimum = 1.0;
inline constexpr double KneeAxisMaximum = 2000.0;

class KneeGraph
{
public:
    static constexpr int PlotCount = 10;
    static constexpr int CursorCount = 10;
    static constexpr int AxisX = 1; // current
    static constexpr int AxisY = 2; // voltage

    // Ten empty plots, ten hidden cursors at (0, 0), both axes logarithmic
    // from 1 to 2000 with their default captions, track mode 1.
    KneeGraph();

    // n from 1 to 10 (axes 1 to 2); any other is Subscript out of range.
    const GraphPlot& plot(int n) const;
    const GraphCursor& cursor(int n) const;
    const GraphAxis& axis(int n) const;
    int trackMode() const { return m_trackMode; }

    // Draws `rows` on plot n: row 0 as X, row 1 as Y. The plot keeps a copy.
    void PlotXvsY(int n, const PlotArray& rows);
    void setCursorPosition(int n, double x, double y);
    void setCursorX(int n, double x);
    void setCursorY(int n, double y);
    void setCursorVisible(int n, bool visible);
    void setAxisRange(int n, double minimum, double maximum);
    void setAxisCaption(int n, const QString& caption);
    void setTrackMode(int mode);

    // Grows by one with every change, so that a window mirroring the graph
    // can tell whether it must redraw.
    std::uint64_t revision() const { return m_revision; }

private:
    std::array<GraphPlot, PlotCount> m_plots;
    std::array<GraphCursor, CursorCount> m_cursors;
    std::array<GraphAxis, 2> m_axes;
    int m_trackMode = TrackDragCursor;
    std::uint64_t m_revision = 0;
};

// The graph of the condensed report, `CWGraph1` of frmKVXCondensedReport.
KneeGraph& kvxReportGraph();

// Whether a point (mA, V) lies on the plot: within both axes as they stand,
// bounds included. A knee cursor is drawn there only, as a point of a plot
// outside the axes is not: the knee of an empty text lies at 0.0001 and shows
// nothing, and a zoom hides the cursors it leaves out.
bool kneePointOnPlot(double x, double y, const GraphAxis& axisX, const GraphAxis& axisY);

// ---- frmGraph ---------------------------------------------------------------

// Zeroes the ten volts and ten current arrays of the record, index 0 to 119.
void flushGraph();

// The factor of a knee text by its last character: "k" 1000, "m" 0.001,
// anything else 1. An empty text gives an empty value, which counts as 0 in
// a product.
Dynamic GetUnitFactor(const QString& text);

// For the current KneeStandard: the knee voltage of each slot from the
// file's text, then FindISat, then the knee current of each slot from the
// current text. Fills all ten knee markers of the record.
void FindKneepoint();

// One pass over the point index 0 to 119 for all ten slots at once: the first
// point whose voltage reaches the marker's voltage becomes the marker's
// voltage, and its current is written as the slot's current text of
// KneeStandard. Lets the system breathe after each index.
void FindISat();

// Hides the ten cursors of the report's graph, then shows cursor k for each
// slot k whose marker current is not 0.
void TreatVisibleKneepoint();

// ---- frmTestExcelChart ------------------------------------------------------

// The code of the chart array that clears a plot.
inline constexpr auto EraseCode = "ERASE";
// Columns of a chart array, 0 to 100; column 0 carries no data.
inline constexpr int ChartArrayColumns = 101;

class TestExcelChart
{
public:
    static constexpr int ArrayCount = KvxSlotCount + 1; // ten tap codes, then "ERASE"

    TestExcelChart();

    // The end of the curve of `tapCode` ("X1X2" to "X4X5"): the first n from 3
    // on at which volts[n-1] is not positive, or 120. 3 for any other code.
    void ScanTabVXToFindEnd(const QString& tapCode, Int16& result);

    // Rebuilds the chart array of `tapCode` from its curve (or all zeros for
    // "ERASE"): column i holds current[i-1] in row 0 and volts[i-1] in row 1,
    // for i from 1 to 100. `result` is always 0. Another code changes nothing.
    void GenerateTemsionVsCourant(const QString& tapCode, Int16& result);

    // The whole drawing: the eleven arrays, the present taps packed on plots
    // 1 up, the knee marks, the cursors. Runs at the end of each report fill.
    void cmdPlotData_Click();

    // The chart array of a tap code or "ERASE"; any other code is Subscript
    // out of range.
    const PlotArray& plotArray(const QString& code) const;
    // The point count GenerateTemsionVsCourant keeps for a code.
    Int16 pointCount(const QString& code) const;
    // names(1) to names(10) of the last cmdPlotData_Click: the codes drawn on
    // plots 1 to 10, empty where nothing was drawn. Index 0 is names(1).
    const std::array<QString, KvxSlotCount>& names() const { return m_names; }

    // The container's own graph, which nobody sees.
    KneeGraph CWGraph1;

private:
    std::array<PlotArray, ArrayCount> m_arrays;
    std::array<Int16, ArrayCount> m_pointCounts{};
    std::array<QString, KvxSlotCount> m_names;
};

// The one chart container of the run.
TestExcelChart& frmTestExcelChart();

} // namespace quenby
