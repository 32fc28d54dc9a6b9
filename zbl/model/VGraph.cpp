#include "zbl/model/VGraph.h"
#include "zbl/model/ZblSession.h"

#include "report/model/TemperatureCompensation.h"
#include "shell/model/NumberText.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/YieldHook.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblTestRecord.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quenby {

namespace {

const QString MicroOhm = QStringLiteral("\u00B5Ohm");
const QString MilliOhm = QStringLiteral("mOhm");

bool isChannelA(const QString& channel)
{
    return channel == QLatin1String(ChannelA);
}

// The table of a channel name: "CHANNEL_A" the table A, any other the table B.
const ZblRowNumbers& tableOf(const QString& channel)
{
    auto& record = zblTestRecord();
    return isChannelA(channel) ? record.tabChannelA : record.tabChannelB;
}

double element(const ZblRowNumbers& table, int i)
{
    if (i < 0 || i >= ZblRowSlots)
        throw RuntimeError(err::SubscriptOutOfRange, QStringLiteral("tabChannel"));
    return table[static_cast<std::size_t>(i)];
}

} // namespace

QString& GraphChannel()
{
    return zblSession().GraphChannel;
}

Dynamic GetZBLResistanceInOhm(int i, const QString& channel)
{
    // The cell, not the record: the graph shows what the report shows, edits
    // and compensation included.
    const auto column = isChannelA(channel) ? ZblReportColumn::ResA : ZblReportColumn::ResB;
    const QString& text = zblBasicReport().cell(column, i);
    const QString unit = FindUnitInString(text);
    const double number = leadingNumber(text);
    if (unit == MicroOhm)
        return Dynamic(number / 1000000.0);
    if (unit == MilliOhm)
        return Dynamic(number / 1000.0);
    // "Ohm" as it stands, and "OFF" too, whose leading number is 0.
    return Dynamic(number);
}

void FillZBLChannelTables(int rowCount)
{
    auto& record = zblTestRecord();
    // The last row of the count is left out.
    for (int i = 0; i <= rowCount - 2; ++i) {
        if (i >= ZblRowSlots)
            throw RuntimeError(err::SubscriptOutOfRange, QStringLiteral("tabChannelA"));
        const auto slot = static_cast<std::size_t>(i);
        record.tabChannelA[slot] = GetZBLResistanceInOhm(i, QLatin1String(ChannelA)).toNumber();
        record.tabChannelB[slot] = GetZBLResistanceInOhm(i, QLatin1String(ChannelB)).toNumber();
        letSystemBreathe();
    }
}

Int16 ScanTabChannel(const QString& channel)
{
    const auto& table = tableOf(channel);
    // Element 0 is not looked at: a curve of no points still gives 1.
    int i = 1;
    while (element(table, i) > 0.0)
        ++i;
    return static_cast<Int16>(i);
}

double ScanTabChannelPeak(const QString& channel)
{
    const auto& table = tableOf(channel);
    double peak = 0.0;
    // The end is scanned anew on every step, yielding each time; element 0
    // takes no part.
    for (int i = 1; i < ScanTabChannel(channel); ++i) {
        if (peak < element(table, i))
            peak = element(table, i);
        letSystemBreathe();
    }
    return peak;
}

double ScanTabChannelLow(const QString& channel)
{
    const auto& table = tableOf(channel);
    double low = VGraphLowCeiling;
    for (int i = 1; i < ScanTabChannel(channel); ++i) {
        if (low > element(table, i))
            low = element(table, i);
        letSystemBreathe();
    }
    return low;
}

double vGraphTickValue(double minimum, double maximum, int tickCount, int i)
{
    if (tickCount < 2)
        return minimum;
    // The chart's own placing, so that a label computed here is the one it
    // draws.
    return minimum + (i * (maximum - minimum) / (tickCount - 1));
}

QStringList vGraphTickLabels(double minimum, double maximum, int tickCount, int decimals)
{
    QStringList labels;
    for (int i = 0; i < tickCount; ++i)
        labels.append(
            QString::number(vGraphTickValue(minimum, maximum, tickCount, i), 'f', decimals));
    return labels;
}

int vGraphTickDecimals(double minimum, double maximum, int tickCount)
{
    if (tickCount < 2 || !std::isfinite(minimum) || !std::isfinite(maximum) || minimum == maximum)
        return 0;
    for (int decimals = 0; decimals < VGraphMaxTickDecimals; ++decimals) {
        QStringList labels = vGraphTickLabels(minimum, maximum, tickCount, decimals);
        labels.removeDuplicates();
        if (labels.size() == tickCount)
            return decimals;
    }
    return VGraphMaxTickDecimals;
}

int vGraphXTickCount(double minimum, double maximum)
{
    const double span = std::abs(maximum - minimum);
    const bool whole =
        std::isfinite(span) && std::floor(minimum) == minimum && std::floor(maximum) == maximum;
    if (whole && span >= 1.0 && span < VGraphXTickCount - 1)
        return static_cast<int>(span) + 1;
    return VGraphXTickCount;
}

namespace {
// The bounds of an axis, lower first, whichever way round it is given.
std::pair<double, double> boundsOf(const GraphAxis& axis)
{
    return std::minmax(axis.minimum, axis.maximum);
}
} // namespace

bool vGraphPointOnPlot(const VGraphChartState& graph, double x, double y)
{
    const auto [xLow, xHigh] = boundsOf(graph.x);
    const auto [yLow, yHigh] = boundsOf(graph.y);
    return x >= xLow && x <= xHigh && y >= yLow && y <= yHigh;
}

QPointF vGraphPointKeptOnPlot(const VGraphChartState& graph, double x, double y)
{
    const auto [xLow, xHigh] = boundsOf(graph.x);
    const auto [yLow, yHigh] = boundsOf(graph.y);
    return QPointF(std::clamp(x, xLow, xHigh), std::clamp(y, yLow, yHigh));
}

bool vGraphCursorDrawn(const VGraphChartState& graph)
{
    return graph.cursor.visible && graph.plot1.columns() > 0 &&
           vGraphPointOnPlot(graph, graph.cursor.x, graph.cursor.y);
}

VGraph::VGraph()
{
    window.CWGraph1.trackMode = TrackDragCursor;
    window.lbUnZoomVisible = false;
}

void VGraph::openChannel(const QString& letter, const VGraphHead& head, const QString& winding,
                         const QString& channelCaption, int rowCount)
{
    window.head = head;
    // The winding of the first row stands for the whole curve.
    window.CWGraph1.caption = winding;
    GraphChannel() = letter;
    FillZBLChannelTables(rowCount);
    SendZBLTapInfoToChart(GraphChannel());
    window.lbCHAN = channelCaption;
    changed();
}

VGraphHead vGraphHeadOfReport()
{
    const ZblBasicReportModel& report = zblBasicReport();
    VGraphHead head;
    head.lbTexteFileName1 = report.lbTexteFileName1;
    head.lbTexteDate1 = report.lbTexteDate1;
    head.lbTexteInstrumentSN1 = report.lbTexteInstrumentSN1;
    head.txtNotes = report.txtNotes;
    head.txtCompany = report.txtCompany;
    head.txtDesignator = report.txtDesignator;
    head.txtXFRSerialNumber = report.txtXFRSerialNumber;
    head.txtTemperature = report.txtTemperature;
    head.txtStation = report.txtStation;
    head.txtManufacturer = report.txtManufacturer;
    head.txtOperator = report.txtOperator;
    return head;
}

void VGraph::openChannelFromReport(const QString& letter, const QString& channelCaption)
{
    // The winding of the first row names the whole curve.
    const auto winding =
        letter == QLatin1String("A") ? ZblReportColumn::WindingA : ZblReportColumn::WindingB;
    openChannel(letter, vGraphHeadOfReport(), zblBasicReport().cell(winding, 0), channelCaption,
                CheckNumberOfTAPInFiles());
}

PlotArray VGraph::Vgraph(const QString& channel)
{
    const int nA = ScanTabChannel(QLatin1String(ChannelA)) - 1;
    const int nB = ScanTabChannel(QLatin1String(ChannelB)) - 1;
    const auto& record = zblTestRecord();
    PlotArray* built = nullptr;
    int n = 0;
    const ZblRowNumbers* table = nullptr;
    if (channel == QLatin1String(ChannelA)) {
        built = &VGraphA;
        n = nA;
        table = &record.tabChannelA;
    } else if (channel == QLatin1String(ChannelB)) {
        built = &VGraphB;
        n = nB;
        table = &record.tabChannelB;
    }
    if (built == nullptr)
        return {};
    // Columns 0 to n: the 1-based position and the resistance of each row.
    built->x.assign(static_cast<std::size_t>(n + 1), 0.0);
    built->y.assign(static_cast<std::size_t>(n + 1), 0.0);
    for (int i = 0; i <= ZblRowsUsed - 1; ++i) {
        if (i <= n) {
            const auto column = static_cast<std::size_t>(i);
            built->x[column] = i + 1;
            built->y[column] = (*table)[column];
        }
        letSystemBreathe();
    }
    changed();
    return *built;
}

void VGraph::scaleChannel(const QString& channel)
{
    PeakScale = Dynamic(ScanTabChannelPeak(channel) * VGraphScaleMargin);
    LowScale = Dynamic(ScanTabChannelLow(channel) / VGraphScaleMargin);
    const PlotArray& array = isChannelA(channel) ? VGraphA : VGraphB;
    window.CWGraph1.x.minimum = array.at(0, 0);
    window.CWGraph1.x.maximum = ScanTabChannel(channel);
}

void VGraph::SendZBLTapInfoToChart(const QString& letter)
{
    // Both arrays, whichever the channel on show.
    VGraphA = Vgraph(QLatin1String(ChannelA));
    VGraphB = Vgraph(QLatin1String(ChannelB));

    if (letter == QLatin1String("A")) {
        window.CWGraph1.plot1 = VGraphA;
        window.CWGraph1.plotPerRow = 0.1;
        print.CWGraph1.plot1 = VGraphA;
        print.CWGraph1.plotPerRow = 0.1;
        scaleChannel(QLatin1String(ChannelA));
        print.CWGraph1.x.minimum = window.CWGraph1.x.minimum;
        print.CWGraph1.x.maximum = window.CWGraph1.x.maximum;
    } else if (letter == QLatin1String("B")) {
        window.CWGraph1.plot1 = VGraphB;
        window.CWGraph1.plotPerRow = 0.001;
        print.CWGraph1.plot1 = VGraphB;
        print.CWGraph1.plotPerRow = 0.001;
        scaleChannel(QLatin1String(ChannelB));
        // The print twin keeps the X axis it had for channel B; the printed
        // page depends on this, so it stays as it is.
    }

    window.CWGraph1.y.maximum = PeakScale.toNumber();
    window.CWGraph1.y.minimum = LowScale.toNumber();
    print.CWGraph1.y.maximum = window.CWGraph1.y.maximum;
    print.CWGraph1.y.minimum = window.CWGraph1.y.minimum;
    changed();
}

void VGraph::ckZoom_Click(bool ticked)
{
    window.ckZoom = ticked;
    if (ticked) {
        SavedXMax = window.CWGraph1.x.maximum;
        SavedYMax = window.CWGraph1.y.maximum;
        SavedXMin = window.CWGraph1.x.minimum;
        SavedYMin = window.CWGraph1.y.minimum;
        window.CWGraph1.trackMode = TrackZoomRectangle;
        window.lbUnZoomVisible = true;
    }
    changed();
}

void VGraph::zoomTo(double xMin, double xMax, double yMin, double yMax)
{
    window.CWGraph1.x.minimum = xMin;
    window.CWGraph1.x.maximum = xMax;
    window.CWGraph1.y.minimum = yMin;
    window.CWGraph1.y.maximum = yMax;
    changed();
}

void VGraph::CWGraph1_Click()
{
    window.CWGraph1.trackMode = TrackDragCursor;
    window.ckZoom = false;
    changed();
}

void VGraph::CWGraph1_DblClick()
{
    window.lbUnZoomVisible = false;
    if (GraphChannel() == QLatin1String("A"))
        scaleChannel(QLatin1String(ChannelA));
    else if (GraphChannel() == QLatin1String("B"))
        scaleChannel(QLatin1String(ChannelB));
    window.CWGraph1.y.maximum = PeakScale.toNumber();
    window.CWGraph1.y.minimum = LowScale.toNumber();
    window.CWGraph1.trackMode = TrackDragCursor;
    window.ckZoom = false;
    changed();
}

void VGraph::CWGraph1_CursorChange(double& x, double& y, const QString& currentCaption)
{
    window.CWGraph1.cursor.x = x;
    window.CWGraph1.cursor.y = y;
    // Milliohms from here on; the caller sees the changed value. The two
    // labels once named volts and current and now show a resistance and a
    // position.
    y = y * 1000.0;
    window.lbVolts = formatNumber(y, u"0.000") + QStringLiteral("mohm");
    window.lbCurrent = currentCaption + QLatin1Char(' ') + formatNumber(x, u"0");
    changed();
}

void VGraph::mnuPrint_Click(std::optional<int> copies,
                            const std::function<void(const VGraphForm&)>& printForm)
{
    // Not on paper.
    window.lbUnZoomVisible = false;
    changed();
    if (!copies)
        return; // cancelled: lbUnZoom stays hidden, the twin stays loaded
    print.lbCHAN = window.lbCHAN;
    print.head = window.head;
    print.lbVolts = window.lbVolts;
    print.lbCurrent = window.lbCurrent;
    print.CWGraph1.caption = window.CWGraph1.caption;
    for (int copy = 1; copy <= *copies; ++copy) {
        if (printForm)
            printForm(print);
    }
    if (window.ckZoom)
        window.lbUnZoomVisible = true;
    unloadPrint();
}

void VGraph::unloadPrint()
{
    print = VGraphForm{};
    changed();
}

VGraph& zblVGraph()
{
    return zblSession().vGraph;
}

} // namespace quenby
