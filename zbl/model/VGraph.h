// The V graph of the open ZBL test, without any screen.
//
// The graph plots the resistance of one channel against the 1-based position
// of its row: a tap changer stepped through its positions draws a V, falling
// to the neutral position and climbing again. The resistances come from the
// report's cells (lbResA, lbResB), not from the record, so that the graph
// shows what the report shows; they are converted to ohms into the record's
// tabChannelA and tabChannelB, where the value 0.0 doubles as the end mark.
//
// VGraph is the window frmZBLVGraph with its members as the logic sees it,
// together with its hidden print twin frmPrintVGraph. Both windows only
// mirror zblVGraph(); every value they show is computed here.
#pragma once

#include "report/model/GraphTypes.h"
#include "shell/model/Checked.h"
#include "shell/model/Dynamic.h"

#include <QPointF>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>

namespace quenby {

inline constexpr auto ChannelA = "CHANNEL_A";
inline constexpr auto ChannelB = "CHANNEL_B";

// The growth of the Y axis around the curve: the top is peak times this, the
// bottom low divided by it, a margin of 5 per cent of each bound.
inline constexpr double VGraphScaleMargin = 1.05;
// The fixed start of the low scan: a curve wholly above it keeps it as low.
inline constexpr double VGraphLowCeiling = 100.0;

// The Y axis carries this many evenly spaced ticks, each with its label, the
// first at the bottom of the axis and the last at its top.
inline constexpr int VGraphYTickCount = 5;
// The X axis counts tap positions with this many ticks, unless a narrow
// zoom between whole positions asks for fewer (vGraphXTickCount).
inline constexpr int VGraphXTickCount = 5;
// The most digits a Y label shows behind the point: a nanohm. Ticks that lie
// closer together than that may read alike.
inline constexpr int VGraphMaxTickDecimals = 9;

// The head of the report as the graph shows it.
struct VGraphHead
{
    QString lbTexteFileName1;
    QString lbTexteDate1;
    QString lbTexteInstrumentSN1;
    QString txtNotes;
    QString txtCompany;
    QString txtDesignator;
    QString txtXFRSerialNumber;
    QString txtTemperature;
    QString txtStation;
    QString txtManufacturer;
    QString txtOperator;
    bool operator==(const VGraphHead&) const = default;
};

// `CWGraph1` of either window: one X-Y plot, two linear axes, one cursor
// and a track mode.
struct VGraphChartState
{
    QString caption;         // the winding of the first row
    PlotArray plot1;         // row 0 the positions, row 1 the ohms
    double plotPerRow = 0.0; // the "per row" argument of the last plot call
    GraphAxis x{QString(), 0.0, 10.0, false};
    GraphAxis y{QString(), 0.0, 10.0, false};
    GraphCursor cursor{QStringLiteral("Cursor-1"), 0.0, 0.0, true};
    int trackMode = TrackDragCursor;
    bool operator==(const VGraphChartState&) const = default;
};

// What one of the two windows shows.
struct VGraphForm
{
    VGraphHead head;
    QString lbCHAN;
    QString lbVolts;   // the cursor's resistance, "400.000mohm"
    QString lbCurrent; // the cursor's row position
    bool lbUnZoomVisible = false;
    bool ckZoom = false; // only the graph window has the box
    VGraphChartState CWGraph1;
    bool operator==(const VGraphForm&) const = default;
};

inline constexpr auto VGraphUnZoomText = "***Double-click on graph for full size graph.";
inline constexpr auto VGraphUnZoomKey = "frmZBLVGraph.lbUnZoom.Caption";
inline constexpr auto VGraphCurrentKey = "frmZBLVGraph.lbCurrent";
inline constexpr auto VGraphAxisXKey = "frmZBLVGraph.CWGraph1.Axes.x";

// The head of the report as its cells hold it.
VGraphHead vGraphHeadOfReport();

// The channel on show, "A" or "B".
QString& GraphChannel();

// The report cell lbResA(i) for "CHANNEL_A", lbResB(i) for any other text, in
// ohms: "µOhm" divides its leading number by 1000000, "mOhm" by 1000, and any
// other unit or none ("Ohm", "OFF") leaves it as it stands, so "OFF" gives 0.
Dynamic GetZBLResistanceInOhm(int i, const QString& channel);

// Both tables from the report cells of rows 0 to rowCount - 2, rowCount being
// the report's row count. The tables are not cleared: opening a file does.
void FillZBLChannelTables(int rowCount);

// The end of the curve of a channel's table ("CHANNEL_A" the table A, any
// other the table B): the first i from 1 up whose element is not positive.
// Element 0 is not looked at. Reading past element 122 is Subscript out of
// range.
Int16 ScanTabChannel(const QString& channel);
// The highest of elements 1 up to the end of the curve, from 0.0.
double ScanTabChannelPeak(const QString& channel);
// The lowest of elements 1 up to the end of the curve, from 100.0.
double ScanTabChannelLow(const QString& channel);

// Tick i (0 up to tickCount - 1) of a linear axis from minimum to maximum,
// where the chart draws it. Fewer than two ticks stand at the minimum.
double vGraphTickValue(double minimum, double maximum, int tickCount, int i);
// The labels of those ticks, bottom to top, each with `decimals` digits behind
// the point in the plain form "0.625", whatever the desktop's number format.
QStringList vGraphTickLabels(double minimum, double maximum, int tickCount, int decimals);
// The fewest digits behind the point, from 0 up to VGraphMaxTickDecimals,
// with which no two tick labels read alike; the most when even they do not
// tell the ticks apart. An axis of no width, a non-finite bound or fewer than
// two ticks leave nothing to tell apart and take 0.
int vGraphTickDecimals(double minimum, double maximum, int tickCount);

// The ticks of the X axis from minimum to maximum: one a position when both
// ends are whole positions fewer than VGraphXTickCount - 1 apart, so that a
// zoom on three taps reads "3", "4", "5"; else VGraphXTickCount. Its labels
// take the digits vGraphTickDecimals gives for that count.
int vGraphXTickCount(double minimum, double maximum);

// Whether (x, y) lies on the plot: within both axes of `graph`, bounds
// included, an axis given upside down counting from its lower bound. The
// cursor is drawn only there, as a point of the plot outside the axes is not.
bool vGraphPointOnPlot(const VGraphChartState& graph, double x, double y);
// The nearest point to (x, y) on the plot: each value held between the bounds
// of its axis. A drag that leaves the plot keeps the cursor at its edge.
QPointF vGraphPointKeptOnPlot(const VGraphChartState& graph, double x, double y);
// Whether the window draws the cursor: shown, over a curve that has points,
// and on the plot.
bool vGraphCursorDrawn(const VGraphChartState& graph);

class VGraph
{
public:
    // Both windows as loaded: drag-cursor, lbUnZoom hidden.
    VGraph();

    // mnuVGraphA_Click and mnuVGraphB_Click by their letter, "A" or "B": the
    // head and the caption (the winding of the first row of the channel)
    // onto the graph window, GraphChannel, the tables, the drawing, then
    // lbCHAN from `channelCaption` (lbTexteCHANA or lbTexteCHANB).
    void openChannel(const QString& letter, const VGraphHead& head, const QString& winding,
                     const QString& channelCaption, int rowCount);

    // The same from the report: its head, the winding cell of its first row
    // for the channel, and its row count.
    void openChannelFromReport(const QString& letter, const QString& channelCaption);

    // Builds VGraphA for "CHANNEL_A" or VGraphB for "CHANNEL_B", resized to
    // the end of its curve, and gives it. Any other channel builds nothing
    // and gives an empty array.
    PlotArray Vgraph(const QString& channel);

    // Draws and scales the graph of "A" or "B" on both windows.
    void SendZBLTapInfoToChart(const QString& letter);

    // The zoom box; ticking it saves the axes and enters zoom by rectangle.
    void ckZoom_Click(bool ticked);
    // The rectangle the operator drew while zooming: the graph window's axes
    // take it. The print twin is never zoomed.
    void zoomTo(double xMin, double xMax, double yMin, double yMax);
    // A click leaves the zoom mode but keeps the zoom on screen.
    void CWGraph1_Click();
    // A double click restores the full curve of GraphChannel.
    void CWGraph1_DblClick();
    // The cursor moved to (x, y), y in ohms. y becomes milliohms in place;
    // the labels show it and the position. `currentCaption` is the language
    // text of key frmZBLVGraph.lbCurrent.
    void CWGraph1_CursorChange(double& x, double& y, const QString& currentCaption);

    // mnuPrint_Click: `copies` is none when the printer dialog was cancelled.
    // `printForm` prints the print twin once per copy.
    void mnuPrint_Click(std::optional<int> copies,
                        const std::function<void(const VGraphForm&)>& printForm);

    // The print twin as loaded again, after a print.
    void unloadPrint();

    VGraphForm window; // frmZBLVGraph
    VGraphForm print;  // frmPrintVGraph

    PlotArray VGraphA;
    PlotArray VGraphB;
    Dynamic PeakScale;
    Dynamic LowScale;
    // The axes at the moment the zoom was ticked; never read back, since the
    // unzoom recomputes.
    double SavedXMax = 0.0;
    double SavedYMax = 0.0;
    double SavedXMin = 0.0;
    double SavedYMin = 0.0;

    // Grows with every change, so that a window mirroring the graph can tell
    // whether it must redraw.
    std::uint64_t revision() const { return m_revision; }

private:
    // Peak, low and the X axis of the graph window for one channel.
    void scaleChannel(const QString& channel);
    void changed() { ++m_revision; }

    std::uint64_t m_revision = 0;
};

// The one V graph of the run.
VGraph& zblVGraph();

} // namespace quenby
