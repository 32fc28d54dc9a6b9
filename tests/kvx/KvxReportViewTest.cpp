// The condensed report without a screen: rows packed from the present taps,
// the blanking of the rows behind them, row visibility by the last reference
// number, the header in its order, the window's load, the knee commands with
// their refill and its guard, the page scroll, and the graph events.
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestFileReader.h"
#include "localisation/model/LanguageLookup.h"
#include "shell/model/AppState.h"
#include "shell/model/MainWindowState.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/YieldHook.h"
#include "tests/kvx/KvxTestSupport.h"
#include "tests/support/ScriptedCompensation.h"
#include "tests/support/ScriptedViews.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <QDir>

#include <algorithm>
#include <vector>

using namespace quenby;
using namespace quenby::testing;
using quenby::samples::KvxSampleFile;
using quenby::samples::KvxSamplePoint;
using quenby::samples::KvxSampleRow;
using Col = quenby::KvxReportColumn;

namespace {

const QString InsulationKey = QStringLiteral("frmKVXCondensedReport.txtInsulationRes.Text");

// Volts 10 to 50 against 1, 2, 5, 20 and 100 mA: the three knee voltages of
// rowOf() (20, 30 and 40 V) sit on points 2, 3 and 4.
std::vector<KvxSamplePoint> kneeCurve(double scale = 1.0)
{
    return {{10.0 * scale, 0.001},
            {20.0 * scale, 0.002},
            {30.0 * scale, 0.005},
            {40.0 * scale, 0.020},
            {50.0 * scale, 0.100}};
}

// A table row with its curve block; fields in the file's column order.
KvxSampleRow rowOf(int ref, const QString& pair, const QString& insulation = QStringLiteral(">1G"),
                   const QString& testVolts = QStringLiteral("500"))
{
    const QString number = QStringLiteral("%1").arg(ref, 2, 10, QLatin1Char('0'));
    KvxSampleRow r;
    r.fields = {number,
                pair,
                QStringLiteral("%1:5").arg(100 * ref),
                QString::number(20 * ref),
                QStringLiteral("%1.012").arg(20 * ref),
                QStringLiteral("0.%1").arg(ref),
                QStringLiteral("0.%1").arg(ref + 1),
                "POS",
                "20.00",
                "30.00",
                "40.00",
                QStringLiteral("0.%1").arg(ref + 10) + "000",
                insulation,
                testVolts};
    r.blockNumber = number;
    r.curve = kneeCurve();
    return r;
}

// What the report's menu and windows were asked to do, in order.
struct HookLog
{
    std::vector<QString> calls;
    std::vector<Bool16> busyWhenProgressShown;
};

class kvxReport : public KvxFixture
{
protected:
    void SetUp() override
    {
        KvxFixture::SetUp();
        appState().KneeStandard = QString::fromLatin1(KneeStandardIeee30);
        appState().ProcessInProgress = False16;
        recordCalls();
    }
    void TearDown() override
    {
        appState().KneeStandard.clear();
        appState().ProcessInProgress = False16;
        KvxFixture::TearDown();
    }

    // Every call the model makes of the windows goes into m_log.
    void recordCalls()
    {
        HookLog* log = &m_log;
        windows.kvx.onHide = [log] { log->calls.push_back("hideReport"); };
        windows.kvx.onShow = [log] { log->calls.push_back("showReport"); };
        windows.kvx.onBringUp = [log] { log->calls.push_back("bringUpReport"); };
        windows.main.onProgress = [log](bool show) {
            log->calls.push_back(show ? "showProgress" : "hideProgress");
            log->busyWhenProgressShown.push_back(appState().ProcessInProgress);
        };
        // The status bar text is mirrored with the main window.
        windows.main.onMirror = [log] {
            log->calls.push_back("status " + mainWindowState().statusText);
        };
        windows.kvx.onMirror = [log] { log->calls.push_back("mirrorReport"); };
        compensation.view.onHide = [log] { log->calls.push_back("hideCompensationDialog"); };
        windows.kvx.onLoadLogo = [log](const QString& path, double left, double top) {
            log->calls.push_back(QStringLiteral("loadLogo %1 %2 %3").arg(path).arg(left).arg(top));
        };
    }

    ScriptedWindows windows;
    ScriptedCompensation compensation;

    static KvxSampleFile fileWith(std::vector<KvxSampleRow> rows)
    {
        KvxSampleFile f = smallSample();
        f.rows = std::move(rows);
        return f;
    }

    // The open command's order up to the knee choice: the report's rows
    // emptied, then the record cleared and the file read.
    void open(const KvxSampleFile& file)
    {
        flushAllTap();
        ASSERT_EQ(readKvx(writeFile(QStringLiteral("test.txt"), samples::kvxSampleBytes(file))), 0);
    }
    void openSample(const QString& name)
    {
        flushAllTap();
        ASSERT_EQ(readKvx(samplePath(name)), 0);
    }

    // The fill of the main window's road once the knee is chosen.
    static void fill()
    {
        TreatVisibleTestTexte();
        FillKvxReportTaps();
        ParseKvxHeaderFields();
        FillKvxReportHeader();
    }

    static KvxCondensedReportModel& report() { return kvxCondensedReport(); }
    static const QString& at(Col column, int n) { return kvxCondensedReport().cell(column, n); }

    // Every cell of rows 1 to 10.
    static std::vector<QString> table()
    {
        std::vector<QString> cells;
        for (int n = 1; n <= KvxCondensedReportModel::RowCount; ++n)
            for (int c = 0; c < KvxReportColumnCount; ++c)
                cells.push_back(at(static_cast<Col>(c), n));
        return cells;
    }

    HookLog m_log;
};

void expectBlankRow(int n)
{
    for (int c = 0; c < KvxReportColumnCount; ++c) {
        const auto column = static_cast<Col>(c);
        if (column == Col::WindingRes) {
            EXPECT_EQ(kvxCondensedReport().cell(column, n), QStringLiteral("\"")) << n;
        } else if (column != Col::Insulation) {
            EXPECT_EQ(kvxCondensedReport().cell(column, n), QString())
                << kvxReportColumnName(column) << "(" << n << ")";
        }
    }
}

} // namespace

// ---- rows -------------------------------------------------------------------

TEST_F(kvxReport, X1X2AndX2X3ShowInRows1And2)
{
    open(fileWith({rowOf(1, "X1-X2"), rowOf(2, "X2-X3")}));
    fill();

    EXPECT_EQ(at(Col::TestNumber, 1), QStringLiteral("1"));
    EXPECT_EQ(at(Col::Tap, 1), QStringLiteral("X1-X2"));
    EXPECT_EQ(at(Col::TestNumber, 2), QStringLiteral("2"));
    EXPECT_EQ(at(Col::Tap, 2), QStringLiteral("X2-X3"));
    // Every column from its field of slot 5, in row 2.
    EXPECT_EQ(at(Col::Ieee30, 2), QStringLiteral("30.00"));
    EXPECT_EQ(at(Col::Ieee45, 2), QStringLiteral("20.00"));
    EXPECT_EQ(at(Col::Iec1050, 2), QStringLiteral("40.00"));
    EXPECT_EQ(at(Col::NpRatio, 2), QStringLiteral("200:5"));
    EXPECT_EQ(at(Col::MsRatio, 2), QStringLiteral("40.012"));
    EXPECT_EQ(at(Col::Error, 2), QStringLiteral("0.2"));
    EXPECT_EQ(at(Col::Phase, 2), QStringLiteral("0.3"));
    EXPECT_EQ(at(Col::Polarity, 2), QStringLiteral("POS"));
    EXPECT_EQ(at(Col::WindingRes, 2), QStringLiteral("0.12000"));
    EXPECT_EQ(at(Col::WindingComp, 2), QString());
    // Slot 1's insulation only.
    EXPECT_EQ(at(Col::Insulation, 1), QStringLiteral(">1Gohm "));
    EXPECT_EQ(at(Col::Insulation, 2), QString());
    for (int n = 3; n <= 10; ++n)
        expectBlankRow(n);

    EXPECT_TRUE(report().rowVisible(1));
    EXPECT_TRUE(report().rowVisible(2));
    for (int n = 3; n <= 10; ++n)
        EXPECT_FALSE(report().rowVisible(n)) << n;
}

TEST_F(kvxReport, OnlyX2X3LeavesTheInsulationCellEmptyAndTheHeadAtTheKeyTextAlone)
{
    // What the language fill puts in the head before the file is read.
    report().lbInsulationResistanceTest(0) = GetLanguageText(InsulationKey);
    open(fileWith({rowOf(1, "X2-X3", QStringLiteral("8.5E+08"), QStringLiteral("1000"))}));
    fill();

    EXPECT_EQ(at(Col::Tap, 1), QStringLiteral("X2-X3"));
    EXPECT_EQ(at(Col::Insulation, 1), QString());
    EXPECT_EQ(report().lbInsulationResistanceTest(0), InsulationHeadText);
}

TEST_F(kvxReport, ThreeRowsWithLastReference3ShowRows1To3AndHide4To10)
{
    open(fileWith({rowOf(1, "X1-X2"), rowOf(2, "X1-X3"), rowOf(3, "X2-X5")}));
    EXPECT_EQ(record().lastReference.toNumber(), 3.0);
    fill();
    for (int n = 1; n <= 3; ++n)
        EXPECT_TRUE(report().rowVisible(n)) << n;
    for (int n = 4; n <= 10; ++n)
        EXPECT_FALSE(report().rowVisible(n)) << n;
}

TEST_F(kvxReport, ALastReferenceOfZeroHidesEveryRowButTheHeads)
{
    open(fileWith({rowOf(0, "X1-X2")}));
    EXPECT_EQ(record().lastReference.toNumber(), 0.0);
    fill();
    EXPECT_TRUE(report().rowVisible(0));
    for (int n = 1; n <= 10; ++n)
        EXPECT_FALSE(report().rowVisible(n)) << n;
}

TEST_F(kvxReport, ALastReferenceOfMinusOneHidesTheHeadsToo)
{
    // The hiding runs from the last reference number + 1: index 0 included.
    open(fileWith({rowOf(-1, "X1-X2")}));
    EXPECT_EQ(record().lastReference.toNumber(), -1.0);
    fill();
    for (int n = 0; n <= 10; ++n)
        EXPECT_FALSE(report().rowVisible(n)) << n;
    // The showing runs over rows 1 to 10 only, so the heads stay hidden for
    // the next test of the run. Kept.
    record().lastReference = Dynamic(2.0);
    TreatVisibleTestTexte();
    EXPECT_FALSE(report().rowVisible(0));
    EXPECT_TRUE(report().rowVisible(2));
}

TEST_F(kvxReport, RowsShownFollowTheLastReferenceNumberNotTheTapsFound)
{
    // Two taps, but the last row says 7: rows 1 to 7 show, 3 to 7 empty.
    open(fileWith({rowOf(1, "X1-X2"), rowOf(7, "X2-X5")}));
    fill();
    for (int n = 1; n <= 7; ++n)
        EXPECT_TRUE(report().rowVisible(n)) << n;
    for (int n = 8; n <= 10; ++n)
        EXPECT_FALSE(report().rowVisible(n)) << n;
    expectBlankRow(3);
}

TEST_F(kvxReport, ARowDroppedByTheReaderLeavesAVisibleEmptyLine)
{
    // Six rows; X3-X5's insulation runs into the next column, so the reader
    // drops that row and five taps fill rows 1 to 5.
    openSample(QStringLiteral("kvx-out-of-order.txt"));
    EXPECT_EQ(record().lastReference.toNumber(), 6.0);
    fill();
    const QStringList taps = {"X1-X2", "X1-X3", "X2-X3", "X2-X4", "X4-X5"};
    for (int n = 1; n <= 5; ++n)
        EXPECT_EQ(at(Col::Tap, n), taps[n - 1]) << n;
    EXPECT_TRUE(report().rowVisible(6));
    expectBlankRow(6);
    // The blanked row's winding cell holds the double quote, and it shows.
    EXPECT_EQ(at(Col::WindingRes, 6), QStringLiteral("\""));
    for (int n = 7; n <= 10; ++n)
        EXPECT_FALSE(report().rowVisible(n)) << n;
}

TEST_F(kvxReport, BlankedRowsKeepTheirInsulationAndTheFilledRowsTheirCompensation)
{
    open(fileWith({rowOf(1, "X1-X2"), rowOf(2, "X1-X3")}));
    report().cell(Col::Insulation, 5) = QStringLiteral("left by an earlier test");
    report().cell(Col::Insulation, 2) = QStringLiteral("not slot 1");
    report().cell(Col::WindingComp, 1) = QStringLiteral("0.123 ohm");
    report().cell(Col::Tap, 8) = QStringLiteral("X9-X9");
    FillKvxReportTaps();

    EXPECT_EQ(at(Col::Insulation, 5), QStringLiteral("left by an earlier test"));
    EXPECT_EQ(at(Col::Insulation, 2), QStringLiteral("not slot 1"));
    EXPECT_EQ(at(Col::WindingComp, 1), QStringLiteral("0.123 ohm"));
    for (int n = 3; n <= 10; ++n)
        expectBlankRow(n);
}

TEST_F(kvxReport, TenTapsFillAllRowsInSlotOrderAndNameEveryPlot)
{
    openSample(QStringLiteral("kvx-ten-taps.txt"));
    fill();
    for (int n = 1; n <= 10; ++n) {
        EXPECT_EQ(at(Col::TestNumber, n), QString::number(n));
        EXPECT_EQ(at(Col::Tap, n), kvxSlotPair(n));
        EXPECT_EQ(report().plotLegend[static_cast<std::size_t>(n - 1)], kvxSlotPair(n));
        EXPECT_TRUE(report().rowVisible(n));
    }
    EXPECT_EQ(at(Col::Insulation, 1), QStringLiteral(">1Gohm "));
    EXPECT_EQ(at(Col::Insulation, 2), QString());
    EXPECT_EQ(report().lbInsulationResistanceTest(0), InsulationHeadText + "    1000 Vdc");
}

TEST_F(kvxReport, PlotsArePackedAndTheOneBehindThePresentTapsHasNoLegend)
{
    open(fileWith({rowOf(1, "X1-X2"), rowOf(2, "X2-X3")}));
    fill();
    const auto& legend = report().plotLegend;
    EXPECT_EQ(legend[0], QStringLiteral("X1-X2"));
    EXPECT_EQ(legend[1], QStringLiteral("X2-X3"));
    // Plot 3 holds the flat curve of the absent X4-X5.
    EXPECT_EQ(frmTestExcelChart().names()[2], QStringLiteral("X4X5"));
    for (std::size_t p = 2; p < legend.size(); ++p)
        EXPECT_TRUE(legend[p].isEmpty()) << p;
    // The fill drew the curves: plot 2 is slot 5's curve.
    EXPECT_EQ(kvxReportGraph().plot(2).data.y.at(3), 20.0);
}

TEST_F(kvxReport, ATapWithoutACurveBlockStaysOutOfTheLegend)
{
    KvxSampleRow untested = rowOf(2, "X1-X3");
    untested.curve.reset();
    open(fileWith({rowOf(1, "X1-X2"), untested, rowOf(3, "X2-X3")}));
    fill();
    EXPECT_EQ(at(Col::Tap, 2), QStringLiteral("X1-X3"));
    EXPECT_EQ(report().plotLegend[0], QStringLiteral("X1-X2"));
    EXPECT_EQ(report().plotLegend[1], QString());
    EXPECT_EQ(report().plotLegend[2], QStringLiteral("X2-X3"));
}

TEST_F(kvxReport, FlushAllTapEmptiesRows1To10AndKeepsTheHeads)
{
    report().cell(Col::Tap, 0) = QStringLiteral("Tap");
    for (int n = 1; n <= 10; ++n)
        for (int c = 0; c < KvxReportColumnCount; ++c)
            report().cell(static_cast<Col>(c), n) = QStringLiteral("x");
    flushAllTap();
    for (const QString& cell : table())
        EXPECT_TRUE(cell.isEmpty());
    EXPECT_EQ(at(Col::Tap, 0), QStringLiteral("Tap"));
}

// ---- header -----------------------------------------------------------------

TEST_F(kvxReport, HeaderControlsComeInTheFillOrder)
{
    const QStringList expected = {"lbTexteFileName(1)", "lbTexteDate(1)", "lbTexteInstrumentSN(1)",
                                  "txtCompany",         "txtDesignator",  "txtCTSerialNumber",
                                  "txtTemperature",     "txtRatio",       "txtPhase",
                                  "txtClass",           "txtNotes",       "txtStation",
                                  "txtManufacturer",    "txtOperator",    "txtVoltageRating",
                                  "txtPosition",        "lbKneeType",     "txBurden"};
    QStringList names;
    for (const KvxReportHeaderControl& c : kvxReportHeaderControls())
        names << QString::fromLatin1(c.control);
    EXPECT_EQ(names, expected);
    EXPECT_EQ(report().headerField("txtStation"), &report().txtStation);
    EXPECT_EQ(report().headerField("lbTexteDate(1)"), &report().lbTexteDate1);
    EXPECT_EQ(report().headerField("lbTexteDate"), nullptr);
}

TEST_F(kvxReport, HeaderFillWritesEachFieldIntoItsControl)
{
    KvxTestRecord& r = record();
    r.fileName = "f.txt";
    r.dateTime = "5 Jan. 2024   09:05:00";
    r.instrumentSerial = Dynamic(4711.0); // a number shows as its number text
    r.company = "company";
    r.designation = "designation";
    r.ctSerial = "ct";
    r.temperature = "21.5 C";
    r.ratio = "1200:5";
    r.phase = "A";
    r.testClass = "C400";
    r.notes = "notes";
    r.station = "station";
    r.manufacturer = "maker";
    r.operatorName = "operator";
    r.voltageRating = "rating";
    r.position = "H1";
    r.kneeTypeText = "IEEE 45";
    report().txBurden = "BURDEN: 15 VA";
    FillKvxReportHeader();

    const std::vector<std::pair<const char*, QString>> expected = {
        {"lbTexteFileName(1)", "f.txt"},
        {"lbTexteDate(1)", "5 Jan. 2024   09:05:00"},
        {"lbTexteInstrumentSN(1)", "4711"},
        {"txtCompany", "company"},
        {"txtDesignator", "designation"},
        {"txtCTSerialNumber", "ct"},
        {"txtTemperature", "21.5 C"},
        {"txtRatio", "1200:5"},
        {"txtPhase", "A"},
        {"txtClass", "C400"},
        {"txtNotes", "notes"},
        {"txtStation", "station"},
        {"txtManufacturer", "maker"},
        {"txtOperator", "operator"},
        {"txtVoltageRating", "rating"},
        {"txtPosition", "H1"},
        {"lbKneeType", "IEEE 45"},
        {"txBurden", "BURDEN: 15 VA"}, // the operator's, never filled
    };
    for (const auto& [control, text] : expected) {
        const QString* field = report().headerField(control);
        ASSERT_NE(field, nullptr) << control;
        EXPECT_EQ(*field, text) << control;
    }
}

TEST_F(kvxReport, TheRoadsFillShowsTheSamplesHeader)
{
    openSample(QStringLiteral("kvx-ten-taps.txt"));
    record().kneeTypeText = appState().KneeStandard;
    fill();
    EXPECT_EQ(report().lbTexteFileName1, QStringLiteral("kvx-ten-taps.txt"));
    EXPECT_EQ(report().lbTexteDate1, QStringLiteral("12 Mar. 2024   09:05:00"));
    EXPECT_EQ(report().lbTexteInstrumentSN1, QStringLiteral("KVX-20417"));
    EXPECT_EQ(report().txtCompany, QStringLiteral("Northfield Power Cooperative"));
    EXPECT_EQ(report().lbKneeType, QStringLiteral("IEEE 30"));
}

// ---- load, unload, OK -------------------------------------------------------------

TEST_F(kvxReport, FormLoadFillsTheHeadSetsTheMenusTheListTheAxesAndTheTrackMode)
{
    writeLines("en.lng", {"frmKVXCondensedReport.cbCompensation.Aluminium, Alu (TK=225)",
                          "frmKVXCondensedReport.cbCompensation.Coper, Cu (TK=234.5)",
                          "frmKVXCondensedReport.CWGraph1.AxesX, I (mA)",
                          "frmKVXCondensedReport.CWGraph1.AxesY, U (V)"});
    record().company = "Acme";
    kvxReportGraph().setTrackMode(TrackZoomRectangle);
    KvxReport_Form_Load();

    EXPECT_EQ(report().txtCompany, QStringLiteral("Acme"));
    EXPECT_FALSE(report().mnSaveEnabled);
    EXPECT_FALSE(report().mnWordEnabled);
    EXPECT_TRUE(report().mnExportVisible);
    EXPECT_EQ(report().cbCompensationItems, (QStringList{"Alu (TK=225)", "Cu (TK=234.5)"}));
    EXPECT_EQ(kvxReportGraph().axis(KneeGraph::AxisX).caption, QStringLiteral("I (mA)"));
    EXPECT_EQ(kvxReportGraph().axis(KneeGraph::AxisY).caption, QStringLiteral("U (V)"));
    EXPECT_EQ(kvxReportGraph().trackMode(), TrackDragCursor);
    // No logo beside the program: nothing to load.
    EXPECT_TRUE(m_log.calls.empty());
}

TEST_F(kvxReport, FormLoadPutsALogoBesideTheProgramAt1560By240)
{
    const QString logo = writeFile("logo.bmp", QByteArray("BM"));
    KvxReport_Form_Load();
    ASSERT_EQ(m_log.calls.size(), std::size_t(1));
    EXPECT_EQ(m_log.calls[0], QStringLiteral("loadLogo %1 1560 240").arg(logo));
}

TEST_F(kvxReport, UnloadHidesTheReportAndTheCompensationDialog)
{
    report().shown = true;
    KvxReport_Form_Unload();
    EXPECT_FALSE(report().shown);
    EXPECT_EQ(m_log.calls, (std::vector<QString>{"hideReport", "hideCompensationDialog"}));
}

TEST_F(kvxReport, OkHidesTheReportAndZeroesTheCurves)
{
    openSample(QStringLiteral("kvx-ten-taps.txt"));
    report().shown = true;
    mnOk_Click();
    EXPECT_FALSE(report().shown);
    EXPECT_EQ(m_log.calls, (std::vector<QString>{"hideReport"}));
    for (const KvxTapCurve& c : record().curves) {
        EXPECT_EQ(c.volts[0], 0.0);
        EXPECT_EQ(c.current[119], 0.0);
    }
}

// ---- knee commands and the refill -------------------------------------------

TEST_F(kvxReport, AStandardChangeChangesTheKneeTextMovesTheCursorsAndLeavesTheTable)
{
    open(fileWith({rowOf(1, "X1-X2"), rowOf(2, "X2-X3")}));
    record().kneeTypeText = appState().KneeStandard;
    fill();
    report().shown = true;
    const std::vector<QString> before = table();
    EXPECT_EQ(report().lbKneeType, QStringLiteral("IEEE 30"));
    // IEEE 30: 30 V on point 3, at 5 mA; for slot 1 and slot 5 alike.
    for (int k : {1, 5}) {
        EXPECT_TRUE(kvxReportGraph().cursor(k).visible);
        EXPECT_EQ(kvxReportGraph().cursor(k).x, 5.0);
        EXPECT_EQ(kvxReportGraph().cursor(k).y, 30.0);
    }

    mnKneeIEEE45_Click();
    EXPECT_EQ(appState().KneeStandard, QStringLiteral("IEEE 45"));
    EXPECT_EQ(record().kneeTypeText, QStringLiteral("IEEE 45"));
    EXPECT_EQ(report().lbKneeType, QStringLiteral("IEEE 45"));
    for (int k : {1, 5}) {
        EXPECT_EQ(kvxReportGraph().cursor(k).x, 2.0);
        EXPECT_EQ(kvxReportGraph().cursor(k).y, 20.0);
    }
    EXPECT_EQ(table(), before);

    mnKneeAINSIIEC1050_Click();
    EXPECT_EQ(report().lbKneeType, QStringLiteral("AINSI/IEC10/50"));
    EXPECT_EQ(kvxReportGraph().cursor(5).y, 40.0);
    EXPECT_EQ(kvxReportGraph().cursor(5).x, 20.0);
    mnKneeIEEE30_Click();
    EXPECT_EQ(report().lbKneeType, QStringLiteral("IEEE 30"));
    EXPECT_EQ(kvxReportGraph().cursor(5).y, 30.0);
    EXPECT_EQ(table(), before);
}

TEST_F(kvxReport, TheRefillHidesTheReportUnderTheBusyWindowAndShowsItAgain)
{
    open(fileWith({rowOf(1, "X1-X2")}));
    report().shown = true;
    mnKneeIEEE45_Click();
    const std::vector<QString> expected = {QStringLiteral("status ") +
                                               MainStatusKeys::ProcessProgress,
                                           "hideReport",
                                           "showProgress",
                                           "hideProgress",
                                           QStringLiteral("status ") + MainStatusKeys::Ready,
                                           "mirrorReport",
                                           "showReport"};
    EXPECT_EQ(m_log.calls, expected);
    // The busy flag is up while the busy window shows, and down after.
    EXPECT_EQ(m_log.busyWhenProgressShown, (std::vector<Bool16>{True16, False16}));
    EXPECT_EQ(appState().ProcessInProgress, False16);
    EXPECT_TRUE(report().shown);
    // The fill yielded on the way (the knee search breathes once an index).
    EXPECT_GE(m_breaths, 120);
}

TEST_F(kvxReport, ARefillOfAHiddenReportBringsItUpModally)
{
    open(fileWith({rowOf(1, "X1-X2")}));
    report().shown = false;
    RefreshKvxReport();
    ASSERT_FALSE(m_log.calls.empty());
    EXPECT_EQ(m_log.calls.back(), QStringLiteral("bringUpReport"));
    EXPECT_TRUE(report().shown);
}

TEST_F(kvxReport, AKneeCommandDuringAFillIsIgnored)
{
    open(fileWith({rowOf(1, "X1-X2")}));
    appState().ProcessInProgress = True16;
    mnKneeIEEE45_Click();
    RefreshKvxReport();
    EXPECT_EQ(appState().KneeStandard, QStringLiteral("IEEE 30"));
    EXPECT_TRUE(m_log.calls.empty());
    EXPECT_EQ(appState().ProcessInProgress, True16);
}

TEST_F(kvxReport, TheRefillIsNotEnteredAgainFromInsideItself)
{
    open(fileWith({rowOf(1, "X1-X2")}));
    report().shown = true;
    // The operator clicks another standard while the knee search yields.
    int clicks = 0;
    setYieldHook([&clicks] {
        if (clicks++ == 10)
            mnKneeAINSIIEC1050_Click();
    });
    mnKneeIEEE45_Click();
    EXPECT_GT(clicks, 10);
    EXPECT_EQ(appState().KneeStandard, QStringLiteral("IEEE 45"));
    EXPECT_EQ(report().lbKneeType, QStringLiteral("IEEE 45"));
    EXPECT_EQ(std::count(m_log.calls.begin(), m_log.calls.end(), QString("hideReport")), 1);
    EXPECT_EQ(kvxReportGraph().cursor(1).y, 20.0);
}

// ---- page scroll ------------------------------------------------------------

TEST_F(kvxReport, ScrollMovesThePage30TwipsAStep)
{
    KvxReport_VScroll1_Change(10);
    EXPECT_EQ(report().VScroll1, 10);
    EXPECT_EQ(report().frKVXReportTop, -300.0);
    KvxReport_VScroll1_Change(1);
    EXPECT_EQ(report().frKVXReportTop, -30.0);
    KvxReport_VScroll1_Change(0);
    EXPECT_EQ(report().frKVXReportTop, 0.0);
    // The product is 16-bit: beyond 1092 steps it overflows.
    EXPECT_EQ(failureOf([] { KvxReport_VScroll1_Change(1092); }), 0);
    EXPECT_EQ(report().frKVXReportTop, -32760.0);
    EXPECT_EQ(failureOf([] { KvxReport_VScroll1_Change(1093); }), err::Overflow);
}

// ---- graph events -------------------------------------------------------------

TEST_F(kvxReport, ZoomBoxZoomEndAndDoubleClickWhileZoomedRestore1To2000)
{
    KvxReport_ckZoom_Click(true);
    EXPECT_EQ(kvxReportGraph().trackMode(), TrackZoomRectangle);
    EXPECT_TRUE(report().ckZoom);
    EXPECT_TRUE(report().lbUnZoomVisible);

    KvxReport_CWGraph1_ZoomEnd(10.0, 100.0, 20.0, 200.0);
    EXPECT_EQ(kvxReportGraph().trackMode(), TrackDragCursor);
    EXPECT_FALSE(report().ckZoom);
    EXPECT_TRUE(report().lbUnZoomVisible); // until the double click
    EXPECT_EQ(kvxReportGraph().axis(KneeGraph::AxisX).minimum, 10.0);
    EXPECT_EQ(kvxReportGraph().axis(KneeGraph::AxisX).maximum, 100.0);
    EXPECT_EQ(kvxReportGraph().axis(KneeGraph::AxisY).minimum, 20.0);
    EXPECT_EQ(kvxReportGraph().axis(KneeGraph::AxisY).maximum, 200.0);

    KvxReport_CWGraph1_DblClick();
    for (int a : {KneeGraph::AxisX, KneeGraph::AxisY}) {
        EXPECT_EQ(kvxReportGraph().axis(a).minimum, 1.0);
        EXPECT_EQ(kvxReportGraph().axis(a).maximum, 2000.0);
    }
    EXPECT_FALSE(report().ckZoom);
    EXPECT_FALSE(report().lbUnZoomVisible);
    EXPECT_EQ(kvxReportGraph().trackMode(), TrackDragCursor);
}

TEST_F(kvxReport, DoubleClickWithTheZoomBoxTickedClearsItAndDragsCursorsAgain)
{
    KvxReport_ckZoom_Click(true);
    KvxReport_CWGraph1_DblClick();
    EXPECT_FALSE(report().ckZoom);
    EXPECT_FALSE(report().lbUnZoomVisible);
    EXPECT_EQ(kvxReportGraph().trackMode(), TrackDragCursor);
}

TEST_F(kvxReport, TakingTheZoomBoxBackReturnsToDraggingCursors)
{
    KvxReport_ckZoom_Click(true);
    KvxReport_ckZoom_Click(false);
    EXPECT_EQ(kvxReportGraph().trackMode(), TrackDragCursor);
    EXPECT_FALSE(report().ckZoom);
}

TEST_F(kvxReport, AMovedCursorShowsItsVoltsAndMilliamperesWithTwoDecimals)
{
    KvxReport_CWGraph1_CursorChange(3, 12.3456, 1234.5);
    EXPECT_EQ(report().lbVolts, QStringLiteral("1234.50Vac"));
    EXPECT_EQ(report().lbCurrent, QStringLiteral("12.35mA"));
    EXPECT_EQ(kvxReportGraph().cursor(3).x, 12.3456);
    EXPECT_EQ(kvxReportGraph().cursor(3).y, 1234.5);

    KvxReport_CWGraph1_CursorChange(10, 0.004, 1.0);
    EXPECT_EQ(report().lbVolts, QStringLiteral("1.00Vac"));
    EXPECT_EQ(report().lbCurrent, QStringLiteral("0.00mA"));
    EXPECT_EQ(failureOf([] { KvxReport_CWGraph1_CursorChange(11, 1.0, 1.0); }),
              err::SubscriptOutOfRange);
}
