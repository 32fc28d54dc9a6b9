#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxSession.h"

#include "shell/model/AppState.h"
#include "shell/model/NumberText.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/YieldHook.h"

namespace quenby {

namespace {

[[noreturn]] void outOfRange(const char* where)
{
    throw RuntimeError(err::SubscriptOutOfRange, QString::fromLatin1(where));
}

std::size_t checkedIndex(int n, int count, const char* where)
{
    if (n < 1 || n > count)
        outOfRange(where);
    return static_cast<std::size_t>(n - 1);
}

// The record's text fields that one knee standard works with.
struct KneeColumns
{
    QString KvxTapResult::*voltage;
    QString KvxTapResult::*current;
    QString KvxTapResult::*notAvailable; // the text FindKneepoint tests for "NA"
};

KneeColumns kneeColumns(const QString& standard)
{
    // "IEEE 30" is tested first, then "IEEE 45"; every other text, a
    // misspelt one included, falls to the third.
    if (standard == QLatin1String(KneeStandardIeee30))
        return {&KvxTapResult::vsIeee30, &KvxTapResult::isIeee30, &KvxTapResult::isIeee30};
    if (standard == QLatin1String(KneeStandardIeee45))
        // Intended: this branch tests the voltage text for "NA", where the
        // other two test the current text. The program has always done so.
        return {&KvxTapResult::vsIeee45, &KvxTapResult::isIeee45, &KvxTapResult::vsIeee45};
    return {&KvxTapResult::vsIec1050, &KvxTapResult::isIec1050, &KvxTapResult::isIec1050};
}

// Index of a chart array: 0 to 9 for the tap codes in slot order, 10 for
// "ERASE", -1 for any other code.
int chartIndex(const QString& code)
{
    for (int slot = 1; slot <= KvxSlotCount; ++slot)
        if (code == kvxSlotShortCode(slot))
            return slot - 1;
    if (code == QLatin1String(EraseCode))
        return KvxSlotCount;
    return -1;
}

void setCell(std::vector<double>& row, int column, double value)
{
    if (column < 0 || column >= static_cast<int>(row.size()))
        outOfRange("GenerateTemsionVsCourant");
    row[static_cast<std::size_t>(column)] = value;
}

} // namespace

// ---- The graph --------------------------------------------------------------

KneeGraph::KneeGraph()
{
    for (int n = 1; n <= PlotCount; ++n)
        m_plots[static_cast<std::size_t>(n - 1)].name = QStringLiteral("Plot-%1").arg(n);
    for (int n = 1; n <= CursorCount; ++n)
        m_cursors[static_cast<std::size_t>(n - 1)].name = QStringLiteral("Cursor-%1").arg(n);
    // The report's fill puts the language's captions in later.
    m_axes[0].caption = QStringLiteral("Current (mA)");
    m_axes[1].caption = QStringLiteral("Voltage (Volts)");
}

const GraphPlot& KneeGraph::plot(int n) const
{
    return m_plots[checkedIndex(n, PlotCount, "Plots")];
}

const GraphCursor& KneeGraph::cursor(int n) const
{
    return m_cursors[checkedIndex(n, CursorCount, "Cursors")];
}

const GraphAxis& KneeGraph::axis(int n) const
{
    return m_axes[checkedIndex(n, 2, "Axes")];
}

void KneeGraph::PlotXvsY(int n, const PlotArray& rows)
{
    m_plots[checkedIndex(n, PlotCount, "Plots")].data = rows;
    ++m_revision;
}

void KneeGraph::setCursorPosition(int n, double x, double y)
{
    GraphCursor& c = m_cursors[checkedIndex(n, CursorCount, "Cursors")];
    c.x = x;
    c.y = y;
    ++m_revision;
}

void KneeGraph::setCursorX(int n, double x)
{
    m_cursors[checkedIndex(n, CursorCount, "Cursors")].x = x;
    ++m_revision;
}

void KneeGraph::setCursorY(int n, double y)
{
    m_cursors[checkedIndex(n, CursorCount, "Cursors")].y = y;
    ++m_revision;
}

void KneeGraph::setCursorVisible(int n, bool visible)
{
    m_cursors[checkedIndex(n, CursorCount, "Cursors")].visible = visible;
    ++m_revision;
}

void KneeGraph::setAxisRange(int n, double minimum, double maximum)
{
    GraphAxis& a = m_axes[checkedIndex(n, 2, "Axes")];
    a.minimum = minimum;
    a.maximum = maximum;
    ++m_revision;
}

void KneeGraph::setAxisCaption(int n, const QString& caption)
{
    m_axes[checkedIndex(n, 2, "Axes")].caption = caption;
    ++m_revision;
}

void KneeGraph::setTrackMode(int mode)
{
    m_trackMode = mode;
    ++m_revision;
}

KneeGraph& kvxReportGraph()
{
    return kvxSession().graph;
}

bool kneePointOnPlot(double x, double y, const GraphAxis& axisX, const GraphAxis& axisY)
{
    return x >= axisX.minimum && x <= axisX.maximum && y >= axisY.minimum && y <= axisY.maximum;
}

// ---- frmGraph ---------------------------------------------------------------

void flushGraph()
{
    // The same zeroing as the open command's flush; the report's OK command
    // reaches it under this name.
    FlushKvxCurves();
}

Dynamic GetUnitFactor(const QString& text)
{
    if (text.isEmpty())
        return Dynamic();
    const QChar last = text.back();
    if (last == u'k')
        return Dynamic(1000.0);
    if (last == u'm')
        return Dynamic(0.001);
    return Dynamic(1.0);
}

void FindKneepoint()
{
    KvxTestRecord& r = kvxTestRecord();
    const KneeColumns columns = kneeColumns(appState().KneeStandard);

    // A text the reader emptied ("---", or no row for the tap) gives a knee
    // of 0, which FindISat then meets at index 0.
    for (std::size_t k = 0; k < r.taps.size(); ++k) {
        const QString& text = r.taps[k].*columns.voltage;
        r.knees[k].voltage = GetUnitFactor(text).toNumber() * leadingNumber(text);
    }

    FindISat();

    // A knee never reached leaves the current text as it was, and
    // ClearKvxRecord keeps these texts, so the current of an earlier file or
    // standard reappears here. Intended.
    for (std::size_t k = 0; k < r.taps.size(); ++k)
        r.knees[k].current = leadingNumber(r.taps[k].*columns.current);

    // The reader already empties "NA", so this test changes nothing for
    // data from a file. Kept as it stands.
    for (std::size_t k = 0; k < r.taps.size(); ++k)
        if (r.taps[k].*columns.notAvailable == QLatin1String("NA"))
            r.knees[k].current = 0.0;
}

void FindISat()
{
    KvxTestRecord& r = kvxTestRecord();
    const KneeColumns columns = kneeColumns(appState().KneeStandard);
    std::array<bool, KvxSlotCount> done{};

    // All 120 entries are scanned, the flat tail of the repair included; it
    // repeats the last measured point and so adds no new level. Ties go to the
    // lower index, and what a curve does after the first point that reaches
    // the knee does not matter.
    for (int i = 1; i <= KvxCurvePoints; ++i) {
        const auto p = static_cast<std::size_t>(i - 1);
        for (std::size_t k = 0; k < r.taps.size(); ++k) {
            if (done[k])
                continue;
            const KvxTapCurve& curve = r.curves[k];
            if (curve.volts[p] >= r.knees[k].voltage) {
                // The mark sits on the measured point: its voltage replaces
                // the file's knee voltage. The text is in milliamperes.
                r.knees[k].voltage = curve.volts[p];
                r.taps[k].*columns.current = numberText(curve.current[p]);
                done[k] = true;
            }
        }
        letSystemBreathe();
    }
}

void TreatVisibleKneepoint()
{
    KneeGraph& graph = kvxReportGraph();
    const KvxTestRecord& r = kvxTestRecord();
    for (int n = 1; n <= KneeGraph::CursorCount; ++n)
        graph.setCursorVisible(n, false);
    // Cursor k belongs to slot k, present or not. A marker at (0.0001,
    // 0.0001), the knee of an empty text, counts as visible; it lies outside
    // the axes and so shows nothing.
    for (int k = 1; k <= KvxSlotCount; ++k)
        if (r.knees[static_cast<std::size_t>(k - 1)].current != 0.0)
            graph.setCursorVisible(k, true);
}

// ---- frmTestExcelChart ------------------------------------------------------

TestExcelChart::TestExcelChart() = default;

void TestExcelChart::ScanTabVXToFindEnd(const QString& tapCode, Int16& result)
{
    const int index = chartIndex(tapCode);
    if (index < 0 || index >= KvxSlotCount) {
        result = 3;
        return;
    }
    const KvxTapCurve& curve = kvxTestRecord().curves[static_cast<std::size_t>(index)];
    // The first test reads index 2, so a curve whose index 2 is empty gives
    // 3 whatever lies below it.
    Int16 n = 3;
    while (curve.volts[static_cast<std::size_t>(n - 1)] > 0.0 && n < KvxCurvePoints)
        n = add16(n, 1);
    result = n;
}

void TestExcelChart::GenerateTemsionVsCourant(const QString& tapCode, Int16& result)
{
    for (int slot = 1; slot <= KvxSlotCount; ++slot) {
        Int16 end = 0;
        ScanTabVXToFindEnd(kvxSlotShortCode(slot), end);
        m_pointCounts[static_cast<std::size_t>(slot - 1)] = sub16(end, 1);
    }
    // Intended: every count becomes 100, which throws away the ends just
    // found. A plot always carries indices 0 to 99, whatever the curve's
    // length; FindISat still scans all 120.
    m_pointCounts.fill(100);

    const int index = chartIndex(tapCode);
    if (index >= 0) {
        // Sizing the array empties it; column 0 is never written and stays 0.
        PlotArray& a = m_arrays[static_cast<std::size_t>(index)];
        a.x.assign(ChartArrayColumns, 0.0);
        a.y.assign(ChartArrayColumns, 0.0);
        const Int16 count = m_pointCounts[static_cast<std::size_t>(index)];
        const bool erase = index == KvxSlotCount;
        for (int i = 1; i <= KvxCurvePoints && i <= count; ++i) {
            if (erase) {
                setCell(a.y, i, 0.0);
                setCell(a.x, i, 0.0);
            } else {
                const KvxTapCurve& curve = kvxTestRecord().curves[static_cast<std::size_t>(index)];
                const auto p = static_cast<std::size_t>(i - 1);
                setCell(a.y, i, curve.volts[p]);
                setCell(a.x, i, curve.current[p]);
            }
        }
    }
    result = 0;
}

void TestExcelChart::cmdPlotData_Click()
{
    CWGraph1.setTrackMode(TrackDragCursor);

    Int16 result = 0;
    for (int slot = 1; slot <= KvxSlotCount; ++slot)
        GenerateTemsionVsCourant(kvxSlotShortCode(slot), result);
    GenerateTemsionVsCourant(QLatin1String(EraseCode), result);

    // Intended: a code is written at n whenever its array starts with a
    // non-zero current, but n moves on only for a present tap. After the
    // repair the test always holds, so names lists the present taps in slot
    // order and the entry behind them ends up with the last absent code,
    // "X4X5" when that tap is absent, whose flat curve at 0.0001 lies outside
    // the axes.
    const KvxTestRecord& r = kvxTestRecord();
    m_names = {};
    Int16 n = 1;
    for (int slot = 1; slot <= KvxSlotCount; ++slot) {
        const QString code = kvxSlotShortCode(slot);
        if (plotArray(code).at(0, 1) != 0.0)
            m_names[checkedIndex(n, KvxSlotCount, "names")] = code;
        if (!r.taps[static_cast<std::size_t>(slot - 1)].tapName.isEmpty())
            n = add16(n, 1);
    }
    // The same test for "ERASE", whose array is all 0: it never writes.
    if (plotArray(QLatin1String(EraseCode)).at(0, 1) != 0.0)
        m_names[checkedIndex(n, KvxSlotCount, "names")] = QLatin1String(EraseCode);

    // The program passes 0.01 as the graph's "per row" flag, which counts as
    // true: row 0 is X and row 1 is Y.
    KneeGraph& graph = kvxReportGraph();
    const PlotArray& erase = plotArray(QLatin1String(EraseCode));
    for (int plot = 1; plot <= KneeGraph::PlotCount; ++plot)
        graph.PlotXvsY(plot, erase);

    // Plots are packed: the n-th present tap goes on plot n. The cursors
    // below are not packed, so a cursor's colour may differ from its curve's;
    // its coordinates are right all the same. Intended.
    for (int plot = 1; plot <= KneeGraph::PlotCount; ++plot) {
        const QString& code = m_names[static_cast<std::size_t>(plot - 1)];
        if (!code.isEmpty())
            graph.PlotXvsY(plot, plotArray(code));
        letSystemBreathe();
    }

    FindKneepoint();
    TreatVisibleKneepoint();

    for (int k = 1; k <= KvxSlotCount; ++k) {
        const KvxKneeMarker& m = r.knees[static_cast<std::size_t>(k - 1)];
        graph.setCursorX(k, m.current);
        graph.setCursorY(k, m.voltage);
    }
}

const PlotArray& TestExcelChart::plotArray(const QString& code) const
{
    const int index = chartIndex(code);
    if (index < 0)
        outOfRange("plotArray");
    return m_arrays[static_cast<std::size_t>(index)];
}

Int16 TestExcelChart::pointCount(const QString& code) const
{
    const int index = chartIndex(code);
    if (index < 0)
        outOfRange("pointCount");
    return m_pointCounts[static_cast<std::size_t>(index)];
}

TestExcelChart& frmTestExcelChart()
{
    return kvxSession().testExcelChart;
}

} // namespace quenby
