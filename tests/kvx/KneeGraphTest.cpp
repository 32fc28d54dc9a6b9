// The knee graph: unit factors, the knee lookup for each standard, the
// carry-over of knee currents between files, the chart arrays, the packed
// plots and unpacked cursors, the ERASE clear, and the ten marks of the
// ten-tap sample worked out by hand from the file.
#include "kvx/model/KneeGraph.h"
#include "shell/model/AppState.h"
#include "tests/kvx/KvxTestSupport.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

using namespace quenby;
using namespace quenby::testing;
using quenby::samples::KvxSampleFile;
using quenby::samples::KvxSamplePoint;
using quenby::samples::KvxSampleRow;

namespace {

// A measured point as the record holds it.
struct Point
{
    double volts;
    double milliamperes;
};

class kvxKnee : public KvxFixture
{
protected:
    void SetUp() override
    {
        KvxFixture::SetUp();
        appState().KneeStandard = QStringLiteral("IEEE 30");
        kvxReportGraph() = KneeGraph{};
        frmTestExcelChart() = TestExcelChart{};
    }
    void TearDown() override
    {
        appState().KneeStandard.clear();
        KvxFixture::TearDown();
    }

    KvxTapResult& tap(int slot) { return record().taps.at(static_cast<std::size_t>(slot - 1)); }
    const KvxKneeMarker& knee(int slot)
    {
        return record().knees.at(static_cast<std::size_t>(slot - 1));
    }
    KvxTapCurve& curveOf(int slot)
    {
        return record().curves.at(static_cast<std::size_t>(slot - 1));
    }

    // Puts `points` at indices 1 up of `slot`'s curve, as the reader does,
    // marks the tap present, and repairs all curves.
    void setCurve(int slot, const std::vector<Point>& points)
    {
        KvxTapCurve& c = curveOf(slot);
        c.volts.fill(0.0);
        c.current.fill(0.0);
        for (std::size_t i = 0; i < points.size(); ++i) {
            c.volts.at(i + 1) = points[i].volts;
            c.current.at(i + 1) = points[i].milliamperes;
        }
        tap(slot).tapName = kvxSlotPair(slot);
        RepairAllKvxCurves();
    }

    static const KneeGraph& graph() { return kvxReportGraph(); }
    static TestExcelChart& chart() { return frmTestExcelChart(); }

    // A table row of `pair` with the three knee texts and a curve block.
    static KvxSampleRow row(const QString& ref, const QString& pair, const QString& vs45,
                            const QString& vs30, const QString& vs1050,
                            std::vector<KvxSamplePoint> points)
    {
        KvxSampleRow r;
        r.fields = {ref,   pair, "200:5", "40",   "40.012",  "0.0", "0.1",
                    "POS", vs45, vs30,    vs1050, "0.10040", ">1G", "1000"};
        r.blockNumber = QStringLiteral(" ") + QString::number(ref.toInt());
        r.curve = std::move(points);
        return r;
    }
    QString writeSample(const QString& name, const std::vector<KvxSampleRow>& rows)
    {
        KvxSampleFile f = smallSample();
        f.rows = rows;
        return writeFile(name, samples::kvxSampleBytes(f));
    }
};

// count points of 1 V, 2 V, ... with 1 mA, 2 mA, ...
std::vector<KvxSamplePoint> risingPoints(int count)
{
    std::vector<KvxSamplePoint> p;
    for (int i = 1; i <= count; ++i)
        p.push_back({1.0 * i, 0.001 * i});
    return p;
}

PlotArray filled(double value)
{
    PlotArray a;
    a.x.assign(ChartArrayColumns, value);
    a.y.assign(ChartArrayColumns, value);
    a.x[0] = 0.0;
    a.y[0] = 0.0;
    return a;
}

const PlotArray Zeros = filled(0.0);

// True when (x, y) is one of the points of `a`.
bool liesOn(const PlotArray& a, double x, double y)
{
    for (int c = 0; c < a.columns(); ++c)
        if (a.at(0, c) == x && a.at(1, c) == y)
            return true;
    return false;
}

} // namespace

// ---- The graph --------------------------------------------------------------

TEST_F(kvxKnee, GraphStartsWithNamedPlotsAndCursorsAndLogAxesFrom1To2000)
{
    const KneeGraph g;
    for (int n = 1; n <= 10; ++n) {
        EXPECT_EQ(g.plot(n).name, QStringLiteral("Plot-%1").arg(n));
        EXPECT_EQ(g.plot(n).data.columns(), 0);
        EXPECT_EQ(g.cursor(n).name, QStringLiteral("Cursor-%1").arg(n));
        EXPECT_FALSE(g.cursor(n).visible);
    }
    EXPECT_EQ(g.axis(KneeGraph::AxisX).caption, QStringLiteral("Current (mA)"));
    EXPECT_EQ(g.axis(KneeGraph::AxisY).caption, QStringLiteral("Voltage (Volts)"));
    for (int a = 1; a <= 2; ++a) {
        EXPECT_TRUE(g.axis(a).logarithmic);
        EXPECT_EQ(g.axis(a).minimum, 1.0);
        EXPECT_EQ(g.axis(a).maximum, 2000.0);
    }
    EXPECT_EQ(g.trackMode(), TrackDragCursor);
}

TEST_F(kvxKnee, GraphIndicesOutsideTheirRangeAreSubscriptOutOfRange)
{
    const KneeGraph g;
    EXPECT_EQ(failureOf([&] { (void)g.plot(0); }), 9);
    EXPECT_EQ(failureOf([&] { (void)g.plot(11); }), 9);
    EXPECT_EQ(failureOf([&] { (void)g.cursor(11); }), 9);
    EXPECT_EQ(failureOf([&] { (void)g.axis(3); }), 9);
    EXPECT_EQ(failureOf([&] { (void)g.plot(10); }), 0);
}

TEST_F(kvxKnee, EveryChangeOfTheGraphMovesItsRevision)
{
    KneeGraph g;
    const auto r0 = g.revision();
    g.setCursorPosition(3, 5.0, 7.0);
    EXPECT_GT(g.revision(), r0);
    const auto r1 = g.revision();
    g.setAxisCaption(KneeGraph::AxisX, QStringLiteral("Courant (mA)"));
    g.setAxisRange(KneeGraph::AxisY, 10.0, 100.0);
    g.setTrackMode(TrackZoomRectangle);
    EXPECT_EQ(g.revision(), r1 + 3);
    EXPECT_EQ(g.cursor(3).x, 5.0);
    EXPECT_EQ(g.cursor(3).y, 7.0);
    EXPECT_EQ(g.axis(1).caption, QStringLiteral("Courant (mA)"));
    EXPECT_EQ(g.axis(2).minimum, 10.0);
    EXPECT_EQ(g.axis(2).maximum, 100.0);
    EXPECT_EQ(g.trackMode(), TrackZoomRectangle);
}

// ---- GetUnitFactor ----------------------------------------------------------

TEST_F(kvxKnee, UnitFactorGoesByTheLastCharacterAndAnEmptyTextGivesAnEmptyValue)
{
    EXPECT_TRUE(GetUnitFactor(QString()).isEmpty());
    EXPECT_EQ(GetUnitFactor(QString()).toNumber(), 0.0);
    EXPECT_EQ(GetUnitFactor("1.5k").toNumber(), 1000.0);
    EXPECT_EQ(GetUnitFactor("250m").toNumber(), 0.001);
    EXPECT_EQ(GetUnitFactor("88.40").toNumber(), 1.0);
    EXPECT_EQ(GetUnitFactor("---").toNumber(), 1.0);
    // The letter is compared as it stands: capitals are no unit.
    EXPECT_EQ(GetUnitFactor("1.5K").toNumber(), 1.0);
    EXPECT_EQ(GetUnitFactor("250M").toNumber(), 1.0);
}

TEST_F(kvxKnee, KneeTextsWithKiloAndMilliAreScaledBeforeTheLookup)
{
    // Slot 1 has points at 0.2 V, 0.3 V, 1000 V and 1600 V. Without the factor
    // "250m" would be met at 1000 V and "1.5k" at 0.3 V.
    const std::vector<Point> points{{0.2, 1.0}, {0.3, 2.0}, {1000.0, 3.0}, {1600.0, 4.0}};
    setCurve(1, points);
    setCurve(2, points);
    setCurve(3, {{1.0, 1.0}, {10.0, 2.0}});
    tap(1).vsIeee30 = QStringLiteral("250m");
    tap(2).vsIeee30 = QStringLiteral("1.5k");
    tap(3).vsIeee30 = QStringLiteral("1.5k"); // above the whole curve

    FindKneepoint();

    EXPECT_DOUBLE_EQ(knee(1).voltage, 0.3);
    EXPECT_DOUBLE_EQ(knee(1).current, 2.0);
    EXPECT_DOUBLE_EQ(knee(2).voltage, 1600.0);
    EXPECT_DOUBLE_EQ(knee(2).current, 4.0);
    // Never reached: the marker keeps the knee itself, 1.5 x 1000.
    EXPECT_DOUBLE_EQ(knee(3).voltage, 1500.0);
    EXPECT_EQ(knee(3).current, 0.0);
}

TEST_F(kvxKnee, MilliKneeOf250mIsAQuarterVolt)
{
    // A curve that never reaches it keeps the knee as computed.
    setCurve(1, {{0.1, 1.0}, {0.2, 2.0}});
    tap(1).vsIeee30 = QStringLiteral("250m");
    FindKneepoint();
    EXPECT_DOUBLE_EQ(knee(1).voltage, 0.25);
}

// ---- The lookup -------------------------------------------------------------

TEST_F(kvxKnee, KneeOf20OnA10To30CurveSitsOnIndex2)
{
    setCurve(1, {{10.0, 1.5}, {20.0, 2.5}, {30.0, 3.5}});
    tap(1).vsIeee30 = QStringLiteral("20");

    FindKneepoint();

    EXPECT_EQ(knee(1).voltage, 20.0);
    EXPECT_EQ(knee(1).current, curveOf(1).current[2]);
    EXPECT_EQ(knee(1).current, 2.5);
    EXPECT_EQ(tap(1).isIeee30, QStringLiteral("2.5"));
}

TEST_F(kvxKnee, KneeOf15OnA10To30CurveTakesThePointsVoltageOf20)
{
    setCurve(1, {{10.0, 1.5}, {20.0, 2.5}, {30.0, 3.5}});
    tap(1).vsIeee30 = QStringLiteral("15");

    FindKneepoint();

    // No interpolation: the mark sits on the measured point.
    EXPECT_EQ(knee(1).voltage, 20.0);
    EXPECT_EQ(knee(1).current, 2.5);
}

TEST_F(kvxKnee, TiesGoToTheLowerIndex)
{
    setCurve(1, {{10.0, 1.0}, {20.0, 2.0}, {20.0, 3.0}, {30.0, 4.0}});
    tap(1).vsIeee30 = QStringLiteral("20");
    FindKneepoint();
    EXPECT_EQ(knee(1).voltage, 20.0);
    EXPECT_EQ(knee(1).current, 2.0);
}

TEST_F(kvxKnee, ACurveThatFallsBackStillTakesTheFirstPointToReachTheKnee)
{
    // 10, 50, 30, 60 V: a knee of 40 is met at 50 V; the dip after it and the
    // higher point beyond do not matter.
    setCurve(1, {{10.0, 1.0}, {50.0, 2.0}, {30.0, 3.0}, {60.0, 4.0}});
    tap(1).vsIeee30 = QStringLiteral("40");
    FindKneepoint();
    EXPECT_EQ(knee(1).voltage, 50.0);
    EXPECT_EQ(knee(1).current, 2.0);

    // A knee of 55 passes over the dip and is met at 60 V.
    tap(1).vsIeee30 = QStringLiteral("55");
    FindKneepoint();
    EXPECT_EQ(knee(1).voltage, 60.0);
    EXPECT_EQ(knee(1).current, 4.0);
}

TEST_F(kvxKnee, EachStandardPicksItsOwnColumns)
{
    setCurve(1, {{10.0, 1.0}, {20.0, 2.0}, {30.0, 3.0}});
    tap(1).vsIeee45 = QStringLiteral("30");
    tap(1).vsIeee30 = QStringLiteral("20");
    tap(1).vsIec1050 = QStringLiteral("10");

    appState().KneeStandard = QStringLiteral("IEEE 30");
    FindKneepoint();
    EXPECT_EQ(knee(1).voltage, 20.0);
    EXPECT_EQ(tap(1).isIeee30, QStringLiteral("2"));
    EXPECT_EQ(tap(1).isIeee45, QString());
    EXPECT_EQ(tap(1).isIec1050, QString());

    appState().KneeStandard = QStringLiteral("IEEE 45");
    FindKneepoint();
    EXPECT_EQ(knee(1).voltage, 30.0);
    EXPECT_EQ(tap(1).isIeee45, QStringLiteral("3"));
    EXPECT_EQ(tap(1).isIec1050, QString());

    appState().KneeStandard = QStringLiteral("AINSI/IEC10/50");
    FindKneepoint();
    EXPECT_EQ(knee(1).voltage, 10.0);
    EXPECT_EQ(knee(1).current, 1.0);
    EXPECT_EQ(tap(1).isIec1050, QStringLiteral("1"));
}

TEST_F(kvxKnee, AnyOtherStandardTextFallsToTheThirdColumns)
{
    setCurve(1, {{10.0, 1.0}, {20.0, 2.0}, {30.0, 3.0}});
    tap(1).vsIeee45 = QStringLiteral("30");
    tap(1).vsIeee30 = QStringLiteral("20");
    tap(1).vsIec1050 = QStringLiteral("10");
    for (const char* standard : {"", "IEEE30", "ieee 30", "IEEE 45 ", "IEC"}) {
        tap(1).isIec1050.clear();
        appState().KneeStandard = QString::fromLatin1(standard);
        FindKneepoint();
        EXPECT_EQ(knee(1).voltage, 10.0) << standard;
        EXPECT_EQ(tap(1).isIec1050, QStringLiteral("1")) << standard;
        EXPECT_EQ(tap(1).isIeee30, QString()) << standard;
        EXPECT_EQ(tap(1).isIeee45, QString()) << standard;
    }
}

TEST_F(kvxKnee, NotAvailableIsTestedOnTheVoltageTextInTheIeee45BranchOnly)
{
    // The reader empties "NA", so only a record set by hand shows this. A
    // voltage text of "NA" reads as a knee of 0, met at index 0.
    setCurve(1, {{10.0, 1.0}, {20.0, 2.0}});
    tap(1).vsIeee45 = QStringLiteral("NA");
    tap(1).vsIeee30 = QStringLiteral("NA");

    appState().KneeStandard = QStringLiteral("IEEE 45");
    frmTestExcelChart().cmdPlotData_Click();
    EXPECT_DOUBLE_EQ(knee(1).voltage, 0.0001);
    EXPECT_EQ(tap(1).isIeee45, QStringLiteral(".0001"));
    EXPECT_EQ(knee(1).current, 0.0); // the "NA" of vsIeee45 zeroes it
    EXPECT_FALSE(graph().cursor(1).visible);

    appState().KneeStandard = QStringLiteral("IEEE 30");
    frmTestExcelChart().cmdPlotData_Click();
    EXPECT_DOUBLE_EQ(knee(1).voltage, 0.0001);
    EXPECT_EQ(tap(1).isIeee30, QStringLiteral(".0001"));
    EXPECT_DOUBLE_EQ(knee(1).current, 0.0001); // vsIeee30 is not looked at
    EXPECT_TRUE(graph().cursor(1).visible);
}

TEST_F(kvxKnee, FindISatBreathesOnceForEachOf120Indices)
{
    setCurve(1, {{10.0, 1.0}});
    m_breaths = 0;
    FindISat();
    EXPECT_EQ(m_breaths, 120);
}

TEST_F(kvxKnee, FlushGraphZeroesAllTwentyArrays)
{
    for (int slot = 1; slot <= 10; ++slot)
        setCurve(slot, {{10.0, 1.0}, {20.0, 2.0}});
    flushGraph();
    for (int slot = 1; slot <= 10; ++slot)
        for (int i = 0; i < KvxCurvePoints; ++i) {
            ASSERT_EQ(curveOf(slot).volts[static_cast<std::size_t>(i)], 0.0) << slot << " " << i;
            ASSERT_EQ(curveOf(slot).current[static_cast<std::size_t>(i)], 0.0) << slot << " " << i;
        }
}

TEST_F(kvxKnee, CursorKIsShownForEachSlotWhoseMarkerCurrentIsNotZero)
{
    KneeGraph& g = kvxReportGraph();
    for (int n = 1; n <= 10; ++n)
        g.setCursorVisible(n, true);
    record().knees[1].current = 4.0;  // slot 2
    record().knees[6].current = -1.0; // slot 7
    record().knees[9].current = 0.0001;
    TreatVisibleKneepoint();
    for (int n = 1; n <= 10; ++n)
        EXPECT_EQ(g.cursor(n).visible, n == 2 || n == 7 || n == 10) << n;
}

// ---- Knee texts through the reader ------------------------------------------

TEST_F(kvxKnee, DashesGiveAMarkerOnTheRepairFillerWithItsCursorFlaggedVisible)
{
    const QString path =
        writeSample("dashes.txt", {row("01", "X1-X2", "82.00", "---", "95.20", risingPoints(5))});
    ASSERT_EQ(readKvx(path), 0);
    ASSERT_EQ(tap(1).vsIeee30, QString());

    chart().cmdPlotData_Click();

    EXPECT_DOUBLE_EQ(knee(1).voltage, 0.0001);
    EXPECT_DOUBLE_EQ(knee(1).current, 0.0001);
    EXPECT_EQ(tap(1).isIeee30, QStringLiteral(".0001"));
    EXPECT_TRUE(graph().cursor(1).visible);
    EXPECT_DOUBLE_EQ(graph().cursor(1).x, 0.0001);
    EXPECT_DOUBLE_EQ(graph().cursor(1).y, 0.0001);
    // Outside the axes, so it shows nothing.
    EXPECT_LT(graph().cursor(1).x, graph().axis(KneeGraph::AxisX).minimum);
}

TEST_F(kvxKnee, KneeAboveTheCurveInAFirstFileGivesCurrentZeroAndAHiddenCursor)
{
    const QString path =
        writeSample("above.txt", {row("01", "X1-X2", "60.00", "50.00", "70.00", risingPoints(5))});
    ASSERT_EQ(readKvx(path), 0);

    chart().cmdPlotData_Click();

    EXPECT_EQ(knee(1).voltage, 50.0); // the file's knee, never met
    EXPECT_EQ(knee(1).current, 0.0);
    EXPECT_EQ(tap(1).isIeee30, QString());
    EXPECT_FALSE(graph().cursor(1).visible);
}

TEST_F(kvxKnee, ASecondFileWithAKneeAboveItsCurveKeepsTheFirstFilesCurrent)
{
    // First file: a knee of 4 V is met at point 4 (4 V, 4 mA).
    const QString first =
        writeSample("first.txt", {row("01", "X1-X2", "9.00", "4.00", "9.00", risingPoints(5))});
    // Second file: knees of 50 and 60 V on a curve that ends at 5 V.
    const QString second =
        writeSample("second.txt", {row("01", "X1-X2", "60.00", "50.00", "70.00", risingPoints(5))});

    ASSERT_EQ(readKvx(first), 0);
    chart().cmdPlotData_Click();
    ASSERT_EQ(tap(1).isIeee30, QStringLiteral("4"));
    ASSERT_EQ(knee(1).current, 4.0);

    ASSERT_EQ(readKvx(second), 0);
    EXPECT_EQ(tap(1).isIeee30, QStringLiteral("4")); // clearing the record keeps it
    chart().cmdPlotData_Click();
    EXPECT_EQ(knee(1).voltage, 50.0); // the new file's knee
    EXPECT_EQ(knee(1).current, 4.0);  // the old file's current
    EXPECT_TRUE(graph().cursor(1).visible);
    EXPECT_EQ(graph().cursor(1).x, 4.0);
    EXPECT_EQ(graph().cursor(1).y, 50.0);

    // The first file never ran under IEEE 45, so that standard has nothing
    // to carry over.
    appState().KneeStandard = QStringLiteral("IEEE 45");
    chart().cmdPlotData_Click();
    EXPECT_EQ(knee(1).voltage, 60.0);
    EXPECT_EQ(knee(1).current, 0.0);
    EXPECT_FALSE(graph().cursor(1).visible);
}

TEST_F(kvxKnee, ACurveOf110PointsDrawsItsFirst100EntriesButItsKneeMayLieBeyond)
{
    // Points 1 to 110 at n V and n mA; the knee of 105 V is met at index 105.
    const QString path =
        writeSample("long.txt", {row("01", "X1-X2", "9.00", "105.00", "9.00", risingPoints(110))});
    ASSERT_EQ(readKvx(path), 0);
    ASSERT_EQ(curveOf(1).volts[110], 110.0);

    chart().cmdPlotData_Click();

    const PlotArray& drawn = graph().plot(1).data;
    ASSERT_EQ(drawn.columns(), 101);
    EXPECT_EQ(drawn.at(0, 0), 0.0);           // column 0 carries no data
    EXPECT_DOUBLE_EQ(drawn.at(0, 1), 0.0001); // index 0, the filler
    EXPECT_EQ(drawn.at(1, 2), 1.0);           // index 1
    EXPECT_EQ(drawn.at(1, 100), 99.0);        // index 99, the last drawn
    EXPECT_EQ(drawn.at(0, 100), 99.0);
    EXPECT_EQ(*std::max_element(drawn.x.begin(), drawn.x.end()), 99.0);

    EXPECT_EQ(knee(1).voltage, 105.0);
    EXPECT_EQ(knee(1).current, 105.0);
    EXPECT_TRUE(graph().cursor(1).visible);
    EXPECT_EQ(graph().cursor(1).x, 105.0); // beyond the drawn line
}

// ---- Chart arrays -----------------------------------------------------------

TEST_F(kvxKnee, ScanFindsTheEndOfAnUnrepairedCurveAndGives3ForShortOnesAndUnknownCodes)
{
    TestExcelChart& c = chart();
    Int16 end = -1;
    // Flushed: index 2 is 0 at once.
    c.ScanTabVXToFindEnd("X1X2", end);
    EXPECT_EQ(end, 3);
    // One point, at index 1.
    curveOf(2).volts[1] = 5.0;
    c.ScanTabVXToFindEnd("X1X3", end);
    EXPECT_EQ(end, 3);
    // Two points: index 2 is the first read, so the loop takes one step.
    curveOf(3).volts[1] = 5.0;
    curveOf(3).volts[2] = 6.0;
    c.ScanTabVXToFindEnd("X1X4", end);
    EXPECT_EQ(end, 4);
    // Five points at indices 1 to 5: index 6 is the first empty one, n = 7.
    for (std::size_t i = 1; i <= 5; ++i)
        curveOf(4).volts[i] = 1.0 * static_cast<double>(i);
    c.ScanTabVXToFindEnd("X1X5", end);
    EXPECT_EQ(end, 7);
    // Repaired, every element is positive and the scan stops at 120.
    RepairAllKvxCurves();
    c.ScanTabVXToFindEnd("X4X5", end);
    EXPECT_EQ(end, 120);

    end = -1;
    c.ScanTabVXToFindEnd("ERASE", end);
    EXPECT_EQ(end, 3);
    c.ScanTabVXToFindEnd("X1-X2", end);
    EXPECT_EQ(end, 3);
    c.ScanTabVXToFindEnd("", end);
    EXPECT_EQ(end, 3);
}

TEST_F(kvxKnee, GenerateBuildsColumns1To100FromIndices0To99AndAlwaysCounts100)
{
    // A five-point curve, not repaired: the scan would end it at 7, yet the
    // count is 100 and the zeros behind it are copied too.
    for (std::size_t i = 1; i <= 5; ++i) {
        curveOf(1).volts[i] = 10.0 * static_cast<double>(i);
        curveOf(1).current[i] = 1.0 * static_cast<double>(i);
    }
    Int16 result = -1;
    chart().GenerateTemsionVsCourant("X1X2", result);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(chart().pointCount("X1X2"), 100);
    EXPECT_EQ(chart().pointCount("X4X5"), 100);
    EXPECT_EQ(chart().pointCount("ERASE"), 100);

    const PlotArray& a = chart().plotArray("X1X2");
    ASSERT_EQ(a.columns(), 101);
    ASSERT_EQ(a.y.size(), 101u);
    EXPECT_EQ(a.at(0, 0), 0.0);
    EXPECT_EQ(a.at(1, 0), 0.0);
    for (int c = 1; c <= 6; ++c) {
        EXPECT_EQ(a.at(1, c), curveOf(1).volts[static_cast<std::size_t>(c - 1)]) << c;
        EXPECT_EQ(a.at(0, c), curveOf(1).current[static_cast<std::size_t>(c - 1)]) << c;
    }
    EXPECT_EQ(a.at(1, 6), 50.0);
    EXPECT_EQ(a.at(0, 6), 5.0);
    EXPECT_EQ(failureOf([&] { (void)a.at(0, 101); }), 9);
    EXPECT_EQ(failureOf([&] { (void)a.at(2, 1); }), 9);

    // Other arrays are not built by this call.
    EXPECT_EQ(chart().plotArray("X1X3").columns(), 0);
}

TEST_F(kvxKnee, GenerateForEraseGivesZerosAndForAnUnknownCodeChangesNothing)
{
    setCurve(1, {{10.0, 1.0}});
    Int16 result = -1;
    chart().GenerateTemsionVsCourant("ERASE", result);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(chart().plotArray("ERASE"), Zeros);

    result = -1;
    chart().GenerateTemsionVsCourant("X9X9", result);
    EXPECT_EQ(result, 0);
    for (int slot = 1; slot <= 10; ++slot)
        EXPECT_EQ(chart().plotArray(kvxSlotShortCode(slot)).columns(), 0) << slot;
    EXPECT_EQ(failureOf([] { (void)frmTestExcelChart().plotArray("X9X9"); }), 9);
}

// ---- cmdPlotData_Click ------------------------------------------------------

TEST_F(kvxKnee, PlotsArePackedWhileCursorsKeepTheirSlots)
{
    // No X1-X2: X1-X3 (slot 2) and X2-X3 (slot 5) only.
    std::vector<KvxSamplePoint> p2, p5;
    for (int i = 1; i <= 20; ++i) {
        p2.push_back({5.0 * i, 0.001 * i});
        p5.push_back({3.0 * i, 0.002 * i});
    }
    const QString path =
        writeSample("packed.txt", {row("01", "X1-X3", "9.00", "42.00", "9.00", p2),
                                   row("02", "X2-X3", "9.00", "31.00", "9.00", p5)});
    ASSERT_EQ(readKvx(path), 0);
    ASSERT_EQ(tap(1).tapName, QString());

    chart().cmdPlotData_Click();

    // names: the two present taps, then the entry behind them holding the
    // last absent tap's code.
    const auto& names = chart().names();
    EXPECT_EQ(names[0], QStringLiteral("X1X3"));
    EXPECT_EQ(names[1], QStringLiteral("X2X3"));
    EXPECT_EQ(names[2], QStringLiteral("X4X5"));
    for (std::size_t n = 3; n < names.size(); ++n)
        EXPECT_EQ(names[n], QString()) << n;

    EXPECT_EQ(graph().plot(1).data, chart().plotArray("X1X3"));
    EXPECT_EQ(graph().plot(2).data, chart().plotArray("X2X3"));
    EXPECT_EQ(graph().plot(3).data, filled(0.0001)); // X4X5, flat off the axes
    for (int n = 4; n <= 10; ++n)
        EXPECT_EQ(graph().plot(n).data, Zeros) << n;

    // Slot 2's knee, 42 V, is met at point 9 (45 V, 9 mA), and its cursor
    // lies on plot 1; slot 5's knee, 31 V, at point 11 (33 V, 22 mA), on plot 2.
    EXPECT_EQ(graph().cursor(2).y, 45.0);
    EXPECT_EQ(graph().cursor(2).x, 9.0);
    EXPECT_TRUE(graph().cursor(2).visible);
    EXPECT_TRUE(liesOn(graph().plot(1).data, graph().cursor(2).x, graph().cursor(2).y));
    EXPECT_FALSE(liesOn(graph().plot(2).data, graph().cursor(2).x, graph().cursor(2).y));
    EXPECT_EQ(graph().cursor(5).y, 33.0);
    EXPECT_EQ(graph().cursor(5).x, 22.0);
    EXPECT_TRUE(liesOn(graph().plot(2).data, graph().cursor(5).x, graph().cursor(5).y));

    // Absent slots have an empty knee text: marked on the filler, flagged
    // visible.
    EXPECT_TRUE(graph().cursor(1).visible);
    EXPECT_DOUBLE_EQ(graph().cursor(1).x, 0.0001);
    EXPECT_DOUBLE_EQ(graph().cursor(1).y, 0.0001);
}

TEST_F(kvxKnee, WithX4X5PresentNoEntryBehindThePresentTapsIsWritten)
{
    // X1-X2 and X4-X5: the absent taps between them write at n = 2, which
    // X4-X5 then takes; nothing is left behind.
    const QString path =
        writeSample("ends.txt", {row("01", "X1-X2", "9.00", "4.00", "9.00", risingPoints(5)),
                                 row("02", "X4-X5", "9.00", "3.00", "9.00", risingPoints(6))});
    ASSERT_EQ(readKvx(path), 0);
    chart().cmdPlotData_Click();
    const auto& names = chart().names();
    EXPECT_EQ(names[0], QStringLiteral("X1X2"));
    EXPECT_EQ(names[1], QStringLiteral("X4X5"));
    for (std::size_t n = 2; n < names.size(); ++n)
        EXPECT_EQ(names[n], QString()) << n;
    EXPECT_EQ(graph().plot(3).data, Zeros);
}

TEST_F(kvxKnee, EraseClearsAllTenPlotsBeforeDrawing)
{
    ASSERT_EQ(readKvx(samplePath("kvx-ten-taps.txt")), 0);
    chart().cmdPlotData_Click();
    for (int n = 1; n <= 10; ++n)
        ASSERT_NE(graph().plot(n).data, Zeros) << n;

    // Flushed curves, not repaired: every array starts with a current of 0,
    // so names stays empty and each plot keeps only the ERASE array.
    flushGraph();
    chart().cmdPlotData_Click();
    for (std::size_t n = 0; n < chart().names().size(); ++n)
        EXPECT_EQ(chart().names()[n], QString()) << n;
    for (int n = 1; n <= 10; ++n)
        EXPECT_EQ(graph().plot(n).data, Zeros) << n;
}

TEST_F(kvxKnee, PlotsLeftOverFromAnEarlierTestAreErased)
{
    ASSERT_EQ(readKvx(samplePath("kvx-ten-taps.txt")), 0);
    chart().cmdPlotData_Click();

    const QString path =
        writeSample("one.txt", {row("01", "X1-X2", "9.00", "4.00", "9.00", risingPoints(5))});
    ASSERT_EQ(readKvx(path), 0);
    chart().cmdPlotData_Click();

    EXPECT_EQ(graph().plot(1).data, chart().plotArray("X1X2"));
    EXPECT_EQ(graph().plot(2).data, filled(0.0001));
    for (int n = 3; n <= 10; ++n)
        EXPECT_EQ(graph().plot(n).data, Zeros) << n;
}

TEST_F(kvxKnee, AllTenTapsLeaveNoEntryOverAndNoFlatPlot)
{
    ASSERT_EQ(readKvx(samplePath("kvx-ten-taps.txt")), 0);
    chart().cmdPlotData_Click();

    for (int n = 1; n <= 10; ++n) {
        const auto i = static_cast<std::size_t>(n - 1);
        EXPECT_EQ(chart().names()[i], kvxSlotShortCode(n)) << n;
        const PlotArray& drawn = graph().plot(n).data;
        EXPECT_EQ(drawn, chart().plotArray(kvxSlotShortCode(n))) << n;
        // Each curve rises through its drawn columns: index 0 is the filler,
        // index 99 a measured point.
        EXPECT_DOUBLE_EQ(drawn.at(1, 1), 0.0001) << n;
        EXPECT_EQ(drawn.at(1, 100), curveOf(n).volts[99]) << n;
        EXPECT_GT(drawn.at(1, 100), drawn.at(1, 2)) << n;
        EXPECT_GT(drawn.at(0, 100), drawn.at(0, 2)) << n;
    }
}

TEST_F(kvxKnee, PlotDataSetsTheContainersOwnTrackModeAndLeavesTheReportsAlone)
{
    setCurve(1, {{10.0, 1.0}});
    chart().CWGraph1.setTrackMode(TrackZoomRectangle);
    kvxReportGraph().setTrackMode(TrackZoomRectangle);
    chart().cmdPlotData_Click();
    EXPECT_EQ(chart().CWGraph1.trackMode(), TrackDragCursor);
    EXPECT_EQ(graph().trackMode(), TrackZoomRectangle);
}

TEST_F(kvxKnee, PlotDataBreathesForEachIndexOfTheLookupAndEachPlotNumber)
{
    // Two taps present; the loop over plots 1 to 10 breathes for each plot
    // number, drawn or not, after the 120 of FindISat.
    const QString path =
        writeSample("two.txt", {row("01", "X1-X2", "9.00", "4.00", "9.00", risingPoints(5)),
                                row("02", "X1-X3", "9.00", "3.00", "9.00", risingPoints(5))});
    ASSERT_EQ(readKvx(path), 0);
    m_breaths = 0;
    chart().cmdPlotData_Click();
    EXPECT_EQ(m_breaths, 130);
}

TEST_F(kvxKnee, ChangingTheStandardMovesTheMarksButNotTheCurves)
{
    ASSERT_EQ(readKvx(samplePath("kvx-ten-taps.txt")), 0);
    chart().cmdPlotData_Click();
    const PlotArray before = graph().plot(1).data;
    const GraphCursor ieee30 = graph().cursor(1);

    appState().KneeStandard = QStringLiteral("IEEE 45");
    chart().cmdPlotData_Click();
    EXPECT_EQ(graph().plot(1).data, before);
    EXPECT_NE(graph().cursor(1), ieee30);
    EXPECT_LT(graph().cursor(1).y, ieee30.y);
}

// ---- The ten-tap sample -----------------------------------------------------

// The marks of samples/kvx-ten-taps.txt, read off the file: for each tap its
// knee text and the first point of its curve block at or above it (point n is
// index n; the point before it is below the knee).
struct SampleMark
{
    int slot;
    const char* knee; // the text in the table
    int point;
    double volts;
    double milliamperes;
};

// IEEE 30 column.
const SampleMark Ieee30Marks[] = {
    {1, "88.40", 45, 88.76, 6.202},    // point 44: 85.68 V
    {2, "132.60", 46, 136.27, 6.706},  // point 45: 131.77 V
    {3, "353.60", 47, 358.54, 7.250},  // point 46: 346.34 V
    {4, "530.40", 48, 537.37, 7.839},  // point 47: 519.05 V
    {5, "44.20", 45, 44.85, 6.202},    // point 44: 43.32 V
    {6, "265.20", 47, 273.75, 7.250},  // point 46: 264.78 V
    {7, "442.00", 48, 455.26, 7.839},  // point 47: 440.27 V
    {8, "221.00", 46, 222.78, 6.706},  // point 45: 215.11 V
    {9, "397.80", 47, 399.79, 7.250},  // point 46: 385.93 V
    {10, "176.80", 46, 179.95, 6.706}, // point 45: 173.88 V
};

// IEEE 45 column.
const SampleMark Ieee45Marks[] = {
    {1, "82.00", 43, 82.51, 5.306},    // point 42: 79.27 V
    {2, "123.00", 44, 127.10, 5.737},  // point 43: 122.31 V
    {3, "328.00", 45, 333.75, 6.202},  // point 44: 320.87 V
    {4, "492.00", 46, 500.15, 6.706},  // point 45: 480.81 V
    {5, "41.00", 43, 41.75, 5.306},    // point 42: 40.14 V
    {6, "246.00", 45, 255.49, 6.202},  // point 44: 245.94 V
    {7, "410.00", 46, 424.75, 6.706},  // point 45: 408.81 V
    {8, "205.00", 44, 207.21, 5.737},  // point 43: 199.13 V
    {9, "369.00", 45, 371.67, 6.202},  // point 44: 357.11 V
    {10, "164.00", 44, 167.60, 5.737}, // point 43: 161.17 V
};

// IEC 10-50 column.
const SampleMark Iec1050Marks[] = {
    {1, "95.20", 48, 97.24, 7.839},    // point 47: 94.56 V
    {2, "142.80", 48, 144.68, 7.839},  // point 47: 140.59 V
    {3, "380.80", 49, 381.44, 8.475},  // point 48: 370.28 V
    {4, "571.20", 50, 571.76, 9.163},  // point 49: 554.99 V
    {5, "47.60", 47, 47.70, 7.250},    // point 46: 46.31 V
    {6, "285.60", 49, 290.44, 8.475},  // point 48: 282.33 V
    {7, "476.00", 50, 483.19, 9.163},  // point 49: 469.60 V
    {8, "238.00", 49, 243.86, 8.475},  // point 48: 237.22 V
    {9, "428.40", 50, 437.91, 9.163},  // point 49: 425.87 V
    {10, "190.40", 48, 191.34, 7.839}, // point 47: 185.79 V
};

TEST_F(kvxKnee, TenTapSampleMarksEachCurveAtTheFirstPointOverItsKnee)
{
    ASSERT_EQ(readKvx(samplePath("kvx-ten-taps.txt")), 0);

    const std::pair<const char*, const SampleMark*> standards[] = {
        {"IEEE 30", Ieee30Marks}, {"IEEE 45", Ieee45Marks}, {"AINSI/IEC10/50", Iec1050Marks}};
    for (const auto& [standard, marks] : standards) {
        appState().KneeStandard = QString::fromLatin1(standard);
        chart().cmdPlotData_Click();
        for (int k = 0; k < 10; ++k) {
            const SampleMark& m = marks[k];
            SCOPED_TRACE(std::string(standard) + " slot " + std::to_string(m.slot));
            const KvxTapResult& t = tap(m.slot);
            const QString& kneeText =
                QLatin1String(standard) == QLatin1String("IEEE 30")   ? t.vsIeee30
                : QLatin1String(standard) == QLatin1String("IEEE 45") ? t.vsIeee45
                                                                      : t.vsIec1050;
            EXPECT_EQ(kneeText, QLatin1String(m.knee));
            EXPECT_DOUBLE_EQ(curveOf(m.slot).volts[static_cast<std::size_t>(m.point)], m.volts);
            EXPECT_DOUBLE_EQ(knee(m.slot).voltage, m.volts);
            EXPECT_DOUBLE_EQ(knee(m.slot).current, m.milliamperes);
            const GraphCursor& c = graph().cursor(m.slot);
            EXPECT_TRUE(c.visible);
            EXPECT_DOUBLE_EQ(c.x, m.milliamperes);
            EXPECT_DOUBLE_EQ(c.y, m.volts);
        }
    }
    // Each standard kept its own current text.
    EXPECT_EQ(tap(1).isIeee30, QStringLiteral("6.202"));
    EXPECT_EQ(tap(1).isIeee45, QStringLiteral("5.306"));
    EXPECT_EQ(tap(1).isIec1050, QStringLiteral("7.839"));
}
