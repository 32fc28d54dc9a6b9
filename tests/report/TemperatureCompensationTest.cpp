// Temperature compensation of winding resistance without a screen: the unit
// scan, the rule and its failures, the dialog's fills and buttons, the road
// from the KVX report's compensation box, and whole compensated columns of
// both reports, one of them from a sample file read by the real reader.
#include "report/model/TemperatureCompensation.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxTestFileReader.h"
#include "shell/model/RuntimeError.h"
#include "tests/kvx/KvxTestSupport.h"
#include "tests/support/ScriptedCompensation.h"
#include "tests/support/TestFiles.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblSession.h"

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

namespace {

const QString Aluminium = QStringLiteral("Alluminium (TK=225)");
const QString Copper = QStringLiteral("Copper (TK=234.5)");
const QString DialogTitle = QStringLiteral("Temperature Compensation");
constexpr int KvxAluminium = 0;
constexpr int KvxCopper = 1;

QString winding(int n)
{
    return kvxCondensedReport().cell(KvxReportColumn::WindingRes, n);
}

QString compensated(int n)
{
    return kvxCondensedReport().cell(KvxReportColumn::WindingComp, n);
}

TEST(kvxCompensationUnit, IsTheTextFromTheFirstCharacterOutsideTheNumber)
{
    EXPECT_EQ(FindUnitInString("1.234 mohm"), "mohm");
    EXPECT_EQ(FindUnitInString("5ohm"), "ohm");
    EXPECT_EQ(FindUnitInString("12 k ohm  "), "k ohm");
    // The comma belongs to the number part of the scan.
    EXPECT_EQ(FindUnitInString("1,5 ohm"), "ohm");
    // A first character outside the number makes the whole text the unit.
    EXPECT_EQ(FindUnitInString(">20"), ">20");
    EXPECT_EQ(FindUnitInString("Error"), "Error");
    EXPECT_EQ(FindUnitInString(" 5 ohm"), "5 ohm");
    EXPECT_EQ(FindUnitInString("-3 ohm"), "-3 ohm");
}

TEST(kvxCompensationUnit, IsEmptyForANumberAloneOrNoText)
{
    EXPECT_EQ(FindUnitInString("12"), "");
    EXPECT_EQ(FindUnitInString("0.10040"), "");
    EXPECT_EQ(FindUnitInString("1,5"), "");
    EXPECT_EQ(FindUnitInString(""), "");
    EXPECT_EQ(FindUnitInString("   "), "");
}

class kvxCompensation : public KvxFixture
{
protected:
    void SetUp() override
    {
        KvxFixture::SetUp();
        writeLines(
            QStringLiteral("en.lng"),
            {QStringLiteral("frmKVXCondensedReport.txtInsulationRes.Text, ") + InsulationHeadText,
             QStringLiteral("frmCompensedResistanceSetting.Caption,") + DialogTitle});
        // As the report window's load puts them from the language.
        kvxCondensedReport().cbCompensationItems = QStringList{Aluminium, Copper};
    }

    // A fresh ZBL report, and the dialog with its window scripted.
    OwnedSession<ZblSession> zblSession;
    ScriptedCompensation compensation;

    // The dialog as a fill leaves it, TM and TK given.
    static CompensationDialogModel& dialog(const QString& ts, const QString& tk, const QString& tm)
    {
        CompensationDialogModel& d = compensationDialog();
        d.txtTS = ts;
        d.txtTK = tk;
        d.txtTM = tm;
        return d;
    }

    static QString compensate(QString text, const QString& instrument = QStringLiteral("KVX"))
    {
        return compensationDialog().CalculatedCompensendResistanceRS(text, instrument);
    }

    // Report rows 1 to n hold these winding texts, and row n is the last
    // table row of the test.
    static void kvxRows(const QStringList& windings)
    {
        for (int n = 1; n <= windings.size(); ++n)
            kvxCondensedReport().cell(KvxReportColumn::WindingRes, n) = windings[n - 1];
        kvxTestRecord().lastReference = Dynamic(static_cast<double>(windings.size()));
    }

    // The operator picks entry `index` of the KVX box; in the dialog, `inside`
    // plays the operator's part before the modal show returns.
    void pickOnKvxReport(int index, std::function<void()> inside)
    {
        KvxCondensedReportModel& report = kvxCondensedReport();
        report.cbCompensationIndex = index;
        report.cbCompensationText = report.cbCompensationItems.at(index);
        compensation.view.onShowModal = std::move(inside);
        KvxReport_cbCompensation_Click();
    }

    void pickAndConfirm(int index, const QString& ts)
    {
        pickOnKvxReport(index, [ts] {
            compensationDialog().txtTS = ts;
            compensationDialog().cmdOK_Click();
        });
    }

    // The report filled from the record as the open command fills it.
    static void fillKvxReportFromRecord()
    {
        FillKvxReportHeader();
        FillKvxReportTaps();
    }
};

// --- The rule -------------------------------------------------------------

TEST_F(kvxCompensation, CopperFromTwentyToSeventyFiveGivesTheFactorOfTheRule)
{
    dialog("75", "234.5", "20");
    QString text = QStringLiteral("1.000 ohm");
    // 1 x 309.5 / 254.5 = 1.2161
    EXPECT_EQ(compensationDialog().CalculatedCompensendResistanceRS(text, "KVX"), "1.216 ohm");
    // The argument is rewritten as the plain number text of its leading number.
    EXPECT_EQ(text, "1");
}

TEST_F(kvxCompensation, AluminiumAtTheSameTemperaturesGivesItsOwnFactor)
{
    dialog("75", "225", "20");
    // 300 / 245 = 1.2245
    EXPECT_EQ(compensate("1.000 ohm"), "1.224 ohm");
}

TEST_F(kvxCompensation, CopperAndAluminiumThroughTheReportsComboBox)
{
    kvxRows({"1.000 ohm"});
    kvxCondensedReport().txtTemperature = QStringLiteral("20");
    pickAndConfirm(KvxCopper, "75");
    EXPECT_EQ(compensated(1), "1.216 ohm");
    pickAndConfirm(KvxAluminium, "75");
    EXPECT_EQ(compensated(1), "1.224 ohm");
}

TEST_F(kvxCompensation, ACommaPassesTheUnitScanButEndsTheLeadingNumber)
{
    dialog("75", "234.5", "20");
    QString text = QStringLiteral("1,5 ohm");
    // R = 1, not 1.5: 1.5 would give 1.824.
    EXPECT_EQ(compensationDialog().CalculatedCompensendResistanceRS(text, "KVX"), "1.216 ohm");
    EXPECT_EQ(text, "1");
}

TEST_F(kvxCompensation, ABareNumberIsCompensatedWithAnEmptyUnit)
{
    dialog("75", "234.5", "20");
    const QString result = compensate("2");
    EXPECT_EQ(result, "2.432 ");
    EXPECT_TRUE(result.endsWith(u' '));
}

TEST_F(kvxCompensation, NonNumericFieldsReadAsZeroWithoutAMessage)
{
    // TS "warm" is 0: 234.5 / 254.5.
    dialog("warm", "234.5", "20");
    EXPECT_EQ(compensate("1 ohm"), "0.921 ohm");
    EXPECT_EQ(compensationDialog().txtTS, "0");
    // TK "abc" is 0: 75 / 20.
    dialog("75", "abc", "20");
    EXPECT_EQ(compensate("1 ohm"), "3.750 ohm");
    EXPECT_EQ(compensationDialog().txtTK, "0");
    // TM "?" is 0: 309.5 / 234.5.
    dialog("75", "234.5", "?");
    EXPECT_EQ(compensate("1 ohm"), "1.320 ohm");
    EXPECT_EQ(compensationDialog().txtTM, "0");
}

TEST_F(kvxCompensation, TkPlusTmOfZeroRaisesTheRunTimeFailure)
{
    dialog("75", "-20", "20");
    EXPECT_EQ(failureOf([] { compensate("1 ohm"); }), err::DivisionByZero);
    EXPECT_EQ(failureOf([] { compensate("1 ohm", "ZBL"); }), err::DivisionByZero);
    // 0 x 0 / 0 is the other failure of the division.
    dialog("20", "-20", "20");
    EXPECT_EQ(failureOf([] { compensate("0 ohm", "ZBL"); }), err::Overflow);
}

TEST_F(kvxCompensation, AKvxZeroIsNeverDividedSoItCannotFail)
{
    dialog("75", "-20", "20");
    int failure = -1;
    QString result = QStringLiteral("x");
    failure = failureOf([&] { result = compensate("0 ohm"); });
    EXPECT_EQ(failure, 0);
    EXPECT_EQ(result, "");
}

TEST_F(kvxCompensation, AKvxZeroResistanceStaysEmpty)
{
    kvxCondensedReport().txtTemperature = QStringLiteral("20");
    for (const char* zero : {"0", "0 ohm", "0.000 ohm", "0,7 ohm"}) {
        SCOPED_TRACE(zero);
        dialog("75", "234.5", "20");
        EXPECT_EQ(compensate(QString::fromLatin1(zero)), "");
        // It is a value with a number, so the fields are still written back.
        EXPECT_EQ(kvxCondensedReport().lbTexteCompensedTemp1, "75C");
    }
}

TEST_F(kvxCompensation, TheZblReportCompensatesWhateverTheValue)
{
    dialog("75", "234.5", "20");
    EXPECT_EQ(compensate("0 ohm", "ZBL"), "0.000 ohm");
    EXPECT_EQ(compensate("0", "ZBL"), "0.000 ");
    EXPECT_EQ(compensate("1.234 mOhm", "ZBL"), "1.501 mOhm");
}

TEST_F(kvxCompensation, TextsWithoutALeadingNumberGiveEmptyAndChangeNothing)
{
    KvxCondensedReportModel& report = kvxCondensedReport();
    report.txtTemperature = QStringLiteral("20 C");
    report.lbTexteCompensedTemp1 = QStringLiteral("before");
    for (const char* text : {">20", "Error", "", "   ", "---", "\""}) {
        SCOPED_TRACE(text);
        dialog("75C", "234.5", "20 C");
        QString value = QString::fromLatin1(text);
        EXPECT_EQ(compensationDialog().CalculatedCompensendResistanceRS(value, "KVX"), "");
        EXPECT_EQ(value, QString::fromLatin1(text));
        EXPECT_EQ(compensationDialog().txtTS, "75C");
        EXPECT_EQ(compensationDialog().txtTM, "20 C");
        EXPECT_EQ(report.txtTemperature, "20 C");
        EXPECT_EQ(report.lbTexteCompensedTemp1, "before");
    }
}

TEST_F(kvxCompensation, TheTemperatureGainsACThatTheNextValueStripsAgain)
{
    KvxCondensedReportModel& report = kvxCondensedReport();
    report.txtTemperature = QStringLiteral("20");
    report.cbCompensationText = Copper;
    CompensationDialogModel& d = compensationDialog();
    d.txtTS = QStringLiteral("75 C");
    d.FillValueKVX();
    EXPECT_EQ(compensate("1.000 ohm"), "1.216 ohm");
    EXPECT_EQ(d.txtTS, "75");
    EXPECT_EQ(report.txtTemperature, "20C");
    EXPECT_EQ(report.lbTexteCompensedTemp1, "75C");

    // The next opening takes "20C" as TM, and the leading number drops the C.
    d.FillValueKVX();
    EXPECT_EQ(d.txtTM, "20C");
    EXPECT_EQ(compensate("1.000 ohm"), "1.216 ohm");
    EXPECT_EQ(d.txtTM, "20");
    EXPECT_EQ(report.txtTemperature, "20C");
    EXPECT_EQ(report.lbTexteCompensedTemp1, "75C");
    // The ZBL report was not the one asking.
    EXPECT_EQ(zblBasicReport().txtTemperature, "");
}

TEST_F(kvxCompensation, TheZblReportGetsItsOwnFieldsWrittenBack)
{
    zblBasicReport().txtTemperature = QStringLiteral("20 C");
    kvxCondensedReport().txtTemperature = QStringLiteral("8 C");
    dialog("75", "234.5", "20 C");
    compensate("1 ohm", "ZBL");
    EXPECT_EQ(zblBasicReport().txtTemperature, "20C");
    EXPECT_EQ(zblBasicReport().lbTexteCompensedTemp1, "75C");
    EXPECT_EQ(kvxCondensedReport().txtTemperature, "8 C");
    EXPECT_EQ(kvxCondensedReport().lbTexteCompensedTemp1, "");
}

TEST_F(kvxCompensation, RewrittenFieldsHaveNoZeroAheadOfThePoint)
{
    dialog("0.50 C", "-0.25", "0.0");
    // 0.5 x (-0.25 + 0.5) / (-0.25 + 0) = -0.5
    EXPECT_EQ(compensate(QStringLiteral("0.5 ohm")), "-0.500 ohm");
    CompensationDialogModel& d = compensationDialog();
    EXPECT_EQ(d.txtTS, ".5");
    EXPECT_EQ(d.txtTK, "-.25");
    EXPECT_EQ(d.txtTM, "0");
    EXPECT_EQ(kvxCondensedReport().lbTexteCompensedTemp1, ".5C");
    EXPECT_EQ(kvxCondensedReport().txtTemperature, "0C");
    // The resistance argument itself is rewritten the same way.
    QString text = QStringLiteral("0.5 ohm");
    d.CalculatedCompensendResistanceRS(text, QStringLiteral("ZBL"));
    EXPECT_EQ(text, ".5");
    // A minus sign is where the unit scan stops, so a negative resistance is
    // all unit and is left as it stands.
    text = QStringLiteral("-0.75 ohm");
    EXPECT_EQ(d.CalculatedCompensendResistanceRS(text, QStringLiteral("ZBL")), "");
    EXPECT_EQ(text, "-0.75 ohm");
}

TEST_F(kvxCompensation, ACustomTkBelowOneReadsWithoutAZeroAheadOfThePoint)
{
    CompensationDialogModel& d = compensationDialog();
    d.TkSelected = 234.5;
    d.txtTK = QStringLiteral("0.5");
    d.CheckIfTkChange();
    EXPECT_EQ(zblBasicReport().cbCompensationText, "Custom (TK=.5)");
    d.txtTK = QStringLiteral("-0.5");
    d.CheckIfTkChange();
    EXPECT_EQ(zblBasicReport().cbCompensationText, "Custom (TK=-.5)");
    d.txtTK = QStringLiteral("0");
    d.CheckIfTkChange();
    EXPECT_EQ(zblBasicReport().cbCompensationText, "Custom (TK=0)");
}

// --- Fills of the dialog --------------------------------------------------

TEST_F(kvxCompensation, FillValueTakesTkFromTheBoxAndTmFromTheTemperature)
{
    KvxCondensedReportModel& report = kvxCondensedReport();
    CompensationDialogModel& d = compensationDialog();
    report.txtTemperature = QStringLiteral("8 C");
    report.cbCompensationText = Copper;
    d.FillValueKVX();
    EXPECT_EQ(d.txtTM, "8 C");
    EXPECT_EQ(d.txtTK, "234.5");
    EXPECT_EQ(d.TkSelected, 234.5);

    report.cbCompensationText = Aluminium;
    d.FillValueKVX();
    EXPECT_EQ(d.txtTK, "225");
    EXPECT_EQ(d.TkSelected, 225.0);

    // Neither entry (a custom text, or none): TK and TkSelected stay.
    d.txtTK = QStringLiteral("240");
    for (const char* other : {"Custom (TK=240)", ""}) {
        report.cbCompensationText = QString::fromLatin1(other);
        d.FillValueKVX();
        EXPECT_EQ(d.txtTK, "240");
        EXPECT_EQ(d.TkSelected, 225.0);
    }
}

TEST_F(kvxCompensation, FillValueZblReadsTheZblReport)
{
    ZblBasicReportModel& zbl = zblBasicReport();
    CompensationDialogModel& d = compensationDialog();
    kvxCondensedReport().txtTemperature = QStringLiteral("8 C");
    kvxCondensedReport().cbCompensationText = Aluminium;
    zbl.txtTemperature = QStringLiteral("31.5");
    zbl.cbCompensationText = zbl.cbCompensationItems.at(1);
    d.FillValueZBL();
    EXPECT_EQ(d.txtTM, "31.5");
    EXPECT_EQ(d.txtTK, "234.5");
    EXPECT_EQ(d.TkSelected, 234.5);
    zbl.cbCompensationText = zbl.cbCompensationItems.at(0);
    d.FillValueZBL();
    EXPECT_EQ(d.txtTK, "225");
}

TEST_F(kvxCompensation, AnUnchangedTkAddsNoCustomEntry)
{
    CompensationDialogModel& d = compensationDialog();
    d.TkSelected = 234.5;
    d.txtTK = QStringLiteral("234.5");
    d.CheckIfTkChange();
    EXPECT_EQ(zblBasicReport().cbCompensationItems.size(), 2);
    EXPECT_EQ(zblBasicReport().cbCompensationText, "");
    // "234.50 " reads as the same number.
    d.txtTK = QStringLiteral("234.50 ");
    d.CheckIfTkChange();
    EXPECT_EQ(zblBasicReport().cbCompensationItems.size(), 2);
}

TEST_F(kvxCompensation, AnEditedTkPutsTheCustomEntryInIndexTwoOfTheZblBoxOnly)
{
    CompensationDialogModel& d = compensationDialog();
    kvxCondensedReport().cbCompensationText = Copper;
    d.TkSelected = 234.5;
    d.txtTK = QStringLiteral("240");
    d.CheckIfTkChange();
    ZblBasicReportModel& zbl = zblBasicReport();
    ASSERT_EQ(zbl.cbCompensationItems.size(), 3);
    EXPECT_EQ(zbl.cbCompensationItems[2], "Custom (TK=240)");
    EXPECT_EQ(zbl.cbCompensationText, "Custom (TK=240)");
    EXPECT_EQ(kvxCondensedReport().cbCompensationItems, QStringList({Aluminium, Copper}));
    EXPECT_EQ(kvxCondensedReport().cbCompensationText, Copper);

    // A second edit replaces the entry rather than adding one.
    d.txtTK = QStringLiteral("241.25x");
    d.CheckIfTkChange();
    ASSERT_EQ(zbl.cbCompensationItems.size(), 3);
    EXPECT_EQ(zbl.cbCompensationItems[2], "Custom (TK=241.25)");
    EXPECT_EQ(zbl.cbCompensationText, "Custom (TK=241.25)");
}

// --- The road from the KVX report's box -----------------------------------

TEST_F(kvxCompensation, EditingTkWithTheKvxReportReachesTheZblBoxOnly)
{
    kvxRows({"1.000 ohm"});
    kvxCondensedReport().txtTemperature = QStringLiteral("20");
    pickOnKvxReport(KvxCopper, [] {
        compensationDialog().txtTK = QStringLiteral("240");
        compensationDialog().cmdOK_Click();
    });
    // 1 x 315 / 260
    EXPECT_EQ(compensated(1), "1.212 ohm");
    ZblBasicReportModel& zbl = zblBasicReport();
    ASSERT_EQ(zbl.cbCompensationItems.size(), 3);
    EXPECT_EQ(zbl.cbCompensationItems[2], "Custom (TK=240)");
    EXPECT_EQ(zbl.cbCompensationText, "Custom (TK=240)");
    EXPECT_EQ(kvxCondensedReport().cbCompensationItems, QStringList({Aluminium, Copper}));
    // The KVX box shows no choice after the dialog, so no text either.
    EXPECT_EQ(kvxCondensedReport().cbCompensationText, QString());
}

TEST_F(kvxCompensation, CancelAfterAFirstOkKeepsTheColumnAndEmptiesBothBoxes)
{
    kvxRows({"1.000 ohm", ">20", "0.5 ohm"});
    kvxCondensedReport().txtTemperature = QStringLiteral("20");
    zblBasicReport().cbCompensationText = Copper;
    pickAndConfirm(KvxCopper, "75");
    ASSERT_EQ(compensated(1), "1.216 ohm");
    ASSERT_EQ(compensated(3), "0.608 ohm");

    const int hidesBefore = compensation.view.hides;
    pickOnKvxReport(KvxAluminium, [] {
        compensationDialog().txtTS = QStringLiteral("20");
        compensationDialog().cmdCancel_Click();
    });
    EXPECT_EQ(compensated(1), "1.216 ohm");
    EXPECT_EQ(compensated(2), "");
    EXPECT_EQ(compensated(3), "0.608 ohm");
    EXPECT_EQ(kvxCondensedReport().cbCompensationText, "");
    EXPECT_EQ(zblBasicReport().cbCompensationText, "");
    EXPECT_EQ(compensation.view.hides - hidesBefore, 1);
    EXPECT_FALSE(compensationDialog().shown);
}

TEST_F(kvxCompensation, ClosingByTheFrameEmptiesBothBoxesAndNothingElse)
{
    kvxRows({"1.000 ohm"});
    kvxCondensedReport().txtTemperature = QStringLiteral("20");
    pickAndConfirm(KvxCopper, "75");
    ASSERT_EQ(compensated(1), "1.216 ohm");

    const int hidesBefore = compensation.view.hides;
    const int mirrorsBefore = compensation.kvx.mirrors + compensation.zbl.mirrors;
    zblBasicReport().cbCompensationText = Aluminium;
    pickOnKvxReport(KvxCopper, [] { compensationDialog().closeByFrame(); });
    EXPECT_EQ(compensated(1), "1.216 ohm");
    EXPECT_EQ(kvxCondensedReport().cbCompensationText, "");
    EXPECT_EQ(zblBasicReport().cbCompensationText, "");
    EXPECT_EQ(zblBasicReport().cbCompensationItems.size(), 2);
    EXPECT_FALSE(compensationDialog().shown);
    // The frame hides the window itself; the model asks no hide of its own.
    EXPECT_EQ(compensation.view.hides, hidesBefore);
    EXPECT_EQ(compensation.kvx.mirrors + compensation.zbl.mirrors - mirrorsBefore, 2);
}

TEST_F(kvxCompensation, OkServesTheKvxReportWhileTheZblReportIsHidden)
{
    kvxRows({"1.000 ohm"});
    kvxCondensedReport().txtTemperature = QStringLiteral("20");
    zblBasicReport().lbResA(0) = QStringLiteral("1.000 ohm");
    dialog("75", "234.5", "20");
    compensationDialog().cmdOK_Click();
    const int kvxMirrors = compensation.kvx.mirrors;
    EXPECT_EQ(compensated(1), "1.216 ohm");
    EXPECT_EQ(zblBasicReport().txtConbinedResistanceA(0), "");
    EXPECT_GE(kvxMirrors, 1);
}

TEST_F(kvxCompensation, OkServesTheZblReportWhileItIsUpWhoeverOpenedTheDialog)
{
    kvxRows({"1.000 ohm"});
    kvxCondensedReport().txtTemperature = QStringLiteral("20");
    ZblBasicReportModel& zbl = zblBasicReport();
    zbl.shown = true;
    zbl.txtTemperature = QStringLiteral("30");
    zbl.lbResA(0) = QStringLiteral("1.000 ohm");
    // Opened from the KVX report: TM comes from it, but the ZBL report gets
    // the column.
    pickAndConfirm(KvxCopper, "75");
    EXPECT_EQ(compensated(1), "");
    EXPECT_EQ(zbl.txtConbinedResistanceA(0), "1.216 ohm");
    EXPECT_EQ(zbl.txtTemperature, "20C");
    EXPECT_EQ(zbl.lbTexteCompensedTemp1, "75C");
    EXPECT_EQ(kvxCondensedReport().txtTemperature, "20");
}

TEST_F(kvxCompensation, TheKvxBoxClickFillsTitlesShowsAndClearsTheChoice)
{
    KvxCondensedReportModel& report = kvxCondensedReport();
    report.txtTemperature = QStringLiteral("20 C");
    CompensationDialogModel& d = compensationDialog();
    d.caption = QStringLiteral("old");
    QStringList steps;
    ScriptedCompensationView& view = compensation.view;
    view.onChanged = [&] { steps << "mirror:" + d.caption; };
    view.onFillTexts = [&] { steps << "texts:" + d.caption; };
    view.onFront = [&] { steps << QStringLiteral("front"); };
    pickOnKvxReport(KvxCopper, [&] {
        steps << QStringLiteral("modal");
        // Inside the modal show: filled from the report, up, and the pick
        // still standing.
        EXPECT_EQ(d.txtTM, "20 C");
        EXPECT_EQ(d.txtTK, "234.5");
        EXPECT_EQ(d.TkSelected, 234.5);
        EXPECT_TRUE(d.shown);
        EXPECT_EQ(report.cbCompensationIndex, KvxCopper);
        d.cmdOK_Click();
    });
    const QStringList expected = {
        "mirror:old",                // FillValueKVX
        "mirror:KVX " + DialogTitle, // the KVX title
        "texts:" + DialogTitle,      // the refill, its title first
        "mirror:" + DialogTitle,     // the refill done
        "mirror:" + DialogTitle,     // marked as shown
        "modal",                     // the modal show
        "mirror:" + DialogTitle,     // the OK's column fill
    };
    EXPECT_EQ(steps, expected);
    // No choice shown afterwards: the box's text is empty too.
    EXPECT_EQ(report.cbCompensationIndex, -1);
    EXPECT_EQ(report.cbCompensationText, QString());
    EXPECT_FALSE(d.shown);
}

TEST_F(kvxCompensation, TheKvxBoxClickBringsAnOpenDialogToTheFront)
{
    compensationDialog().shown = true;
    pickOnKvxReport(KvxAluminium, [] { ADD_FAILURE() << "shown modally a second time"; });
    EXPECT_EQ(compensation.view.fronts, 1);
    EXPECT_TRUE(compensationDialog().shown);
    EXPECT_EQ(compensationDialog().txtTK, "225");
    EXPECT_EQ(kvxCondensedReport().cbCompensationIndex, -1);
}

TEST_F(kvxCompensation, WithoutAScreenTheModalShowOnlyMarksTheDialogUp)
{
    kvxCondensedReport().cbCompensationIndex = KvxCopper;
    kvxCondensedReport().cbCompensationText = Copper;
    KvxReport_cbCompensation_Click();
    EXPECT_TRUE(compensationDialog().shown);
    EXPECT_EQ(kvxCondensedReport().cbCompensationIndex, -1);
    compensationDialog().cmdCancel_Click();
    EXPECT_FALSE(compensationDialog().shown);
}

TEST_F(kvxCompensation, TheRefillTakesTheTitleFromTheLanguage)
{
    compensationDialog().refillTexts();
    EXPECT_EQ(compensationDialog().caption, DialogTitle);
    // A language without the key shows the key.
    writeLines(QStringLiteral("en.lng"), {QStringLiteral("other.key,x")});
    compensationDialog().refillTexts();
    EXPECT_EQ(compensationDialog().caption, "frmCompensedResistanceSetting.Caption");
}

TEST_F(kvxCompensation, TheZblBoxClickClearsTheChoiceBeforeTheShow)
{
    ZblBasicReportModel& zbl = zblBasicReport();
    zbl.txtTemperature = QStringLiteral("25");
    zbl.cbCompensationIndex = 0;
    zbl.cbCompensationText = zbl.cbCompensationItems.at(0);
    compensationDialog().caption = QStringLiteral("KVX ") + DialogTitle;
    bool modal = false;
    compensation.view.onShowModal = [&] {
        modal = true;
        EXPECT_EQ(zbl.cbCompensationIndex, -1);
        EXPECT_EQ(compensationDialog().txtTM, "25");
        EXPECT_EQ(compensationDialog().txtTK, "225");
        // No instrument in the title on this road.
        EXPECT_EQ(compensationDialog().caption, DialogTitle);
        compensationDialog().cmdCancel_Click();
    };
    ZblReport_cbCompensation_Click();
    EXPECT_TRUE(modal);
    EXPECT_EQ(zbl.cbCompensationText, "");
}

// What the print-out and the save read from the boxes afterwards: a box with
// no choice shows no text, unless a custom TK put its entry in the ZBL box.
TEST_F(kvxCompensation, AfterTheDialogTheBoxesShowNoChoiceAndNoText)
{
    kvxRows({"1.000 ohm"});
    kvxCondensedReport().txtTemperature = QStringLiteral("20");
    ZblBasicReportModel& zbl = zblBasicReport();
    zbl.txtTemperature = QStringLiteral("20");

    const auto pickOnZbl = [&](int index, std::function<void()> inside) {
        zbl.shown = true;
        zbl.cbCompensationIndex = index;
        zbl.cbCompensationText = zbl.cbCompensationItems.at(index);
        compensation.view.onShowModal = std::move(inside);
        ZblReport_cbCompensation_Click();
        zbl.shown = false;
    };
    const auto ok = [] { compensationDialog().cmdOK_Click(); };
    const auto customOk = [] {
        compensationDialog().txtTK = QStringLiteral("240");
        compensationDialog().cmdOK_Click();
    };
    const auto cancel = [] { compensationDialog().cmdCancel_Click(); };

    pickOnKvxReport(KvxCopper, ok);
    EXPECT_EQ(kvxCondensedReport().cbCompensationIndex, -1);
    EXPECT_EQ(kvxCondensedReport().cbCompensationText, QString());
    pickOnKvxReport(KvxCopper, cancel);
    EXPECT_EQ(kvxCondensedReport().cbCompensationText, QString());

    pickOnZbl(1, ok);
    EXPECT_EQ(zbl.cbCompensationIndex, -1);
    EXPECT_EQ(zbl.cbCompensationText, QString());
    pickOnZbl(0, customOk);
    EXPECT_EQ(zbl.cbCompensationIndex, -1);
    EXPECT_EQ(zbl.cbCompensationText, "Custom (TK=240)");
    pickOnZbl(1, cancel);
    EXPECT_EQ(zbl.cbCompensationText, QString());

    // A custom TK from the KVX report lands in the ZBL box only.
    pickOnKvxReport(KvxAluminium, customOk);
    EXPECT_EQ(kvxCondensedReport().cbCompensationText, QString());
    EXPECT_EQ(zbl.cbCompensationText, "Custom (TK=240)");
}

// --- Whole columns --------------------------------------------------------

TEST_F(kvxCompensation, TheKvxColumnRunsToTheLastReferenceNumberWithABreathPerRow)
{
    kvxRows({"1.000 ohm", "2 ohm", "0.5 mohm"});
    for (int n = 4; n <= KvxCondensedReportModel::RowCount; ++n)
        kvxCondensedReport().cell(KvxReportColumn::WindingRes, n) = QStringLiteral("1 ohm");
    dialog("75", "234.5", "20");
    m_breaths = 0;
    FillKVXBasicReportConpensedResistance();
    EXPECT_EQ(compensated(1), "1.216 ohm");
    EXPECT_EQ(compensated(2), "2.432 ohm");
    EXPECT_EQ(compensated(3), "0.608 mohm");
    for (int n = 4; n <= KvxCondensedReportModel::RowCount; ++n)
        EXPECT_EQ(compensated(n), "") << n;
    EXPECT_EQ(m_breaths, 3);
    // The winding cells keep their texts.
    EXPECT_EQ(winding(1), "1.000 ohm");
    EXPECT_EQ(winding(3), "0.5 mohm");
}

TEST_F(kvxCompensation, NoTableRowMeansNoCompensatedRow)
{
    kvxCondensedReport().cell(KvxReportColumn::WindingRes, 1) = QStringLiteral("1 ohm");
    dialog("75", "234.5", "20");
    m_breaths = 0;
    FillKVXBasicReportConpensedResistance();
    EXPECT_EQ(compensated(1), "");
    EXPECT_EQ(m_breaths, 0);
}

TEST_F(kvxCompensation, ALastReferenceBeyondTheTenRowsIsSubscriptOutOfRange)
{
    kvxRows({"1 ohm"});
    kvxTestRecord().lastReference = Dynamic(11.0);
    dialog("75", "234.5", "20");
    EXPECT_EQ(failureOf([] { FillKVXBasicReportConpensedResistance(); }), err::SubscriptOutOfRange);
    // The rows before the failure are done.
    EXPECT_EQ(compensated(1), "1.216 ohm");
}

TEST_F(kvxCompensation, TheZblColumnsRunOverAll122RowsHiddenOnesIncluded)
{
    ZblBasicReportModel& zbl = zblBasicReport();
    zbl.lbResA(0) = QStringLiteral("1.000 mOhm");
    zbl.lbResB(0) = QStringLiteral("2 mOhm");
    zbl.lbResA(5) = QStringLiteral("OFF");
    zbl.lbResB(5) = QStringLiteral("0 mOhm");
    zbl.lbResA(121) = QStringLiteral("1,5 ohm");
    zbl.txtConbinedResistanceB(121) = QStringLiteral("---");
    dialog("75", "234.5", "20");
    m_breaths = 0;
    FillZBLBasicReportConpensedResistance();
    EXPECT_EQ(zbl.txtConbinedResistanceA(0), "1.216 mOhm");
    EXPECT_EQ(zbl.txtConbinedResistanceB(0), "2.432 mOhm");
    EXPECT_EQ(zbl.txtConbinedResistanceA(5), "");
    EXPECT_EQ(zbl.txtConbinedResistanceB(5), "0.000 mOhm");
    EXPECT_EQ(zbl.txtConbinedResistanceA(121), "1.216 ohm");
    // An empty resistance cell gives an empty compensated cell.
    EXPECT_EQ(zbl.txtConbinedResistanceB(121), "");
    EXPECT_EQ(m_breaths, ZblBasicReportModel::RowCount);
    EXPECT_EQ(zbl.lbResA(0), "1.000 mOhm");
    EXPECT_EQ(zbl.txtTemperature, "20C");
}

TEST_F(kvxCompensation, TheZblColumnsTakeChannelBBeforeChannelA)
{
    // Both cells of row 0 fail, each its own way: the failure that ends the
    // fill tells which was first.
    ZblBasicReportModel& zbl = zblBasicReport();
    zbl.lbResA(0) = QStringLiteral("1 ohm");
    zbl.lbResB(0) = QStringLiteral("0 ohm");
    dialog("20", "-20", "20");
    EXPECT_EQ(failureOf([] { FillZBLBasicReportConpensedResistance(); }), err::Overflow);
}

TEST_F(kvxCompensation, ASampleFileReadByTheReaderIsCompensatedRowByRow)
{
    ASSERT_EQ(readKvx(samplePath(QStringLiteral("kvx-out-of-order.txt"))), 0);
    ParseKvxHeaderFields();
    ASSERT_EQ(record().lastReference.toNumber(), 6);
    fillKvxReportFromRecord();
    ASSERT_EQ(kvxCondensedReport().txtTemperature, "8 C");

    pickAndConfirm(KvxCopper, "75");
    // The instrument writes bare numbers: each result ends in a blank. Factor
    // 309.5 / 242.5. X2-X4 read ">20"; row 6 is the first blanked row.
    const QStringList expected = {"0.128 ", "0.192 ", "0.064 ", "", "0.256 ", ""};
    for (int n = 1; n <= 6; ++n)
        EXPECT_EQ(compensated(n), expected[n - 1]) << n;
    for (int n = 7; n <= KvxCondensedReportModel::RowCount; ++n)
        EXPECT_EQ(compensated(n), "") << n;
    EXPECT_EQ(winding(4), ">20");
    EXPECT_EQ(winding(6), "\"");
    EXPECT_EQ(kvxCondensedReport().txtTemperature, "8C");
    EXPECT_EQ(kvxCondensedReport().lbTexteCompensedTemp1, "75C");
    EXPECT_EQ(kvxCondensedReport().cbCompensationIndex, -1);
}

TEST_F(kvxCompensation, ADashedWindingEmptiedByTheReaderGivesAnEmptyCell)
{
    samples::KvxSampleFile sample = smallSample();
    sample.rows[1].fields[11] = QStringLiteral("---");
    ASSERT_EQ(readKvx(writeFile(QStringLiteral("dashed.txt"), samples::kvxSampleBytes(sample))), 0);
    ParseKvxHeaderFields();
    ASSERT_EQ(slot(2).tapName, "X1-X3");
    ASSERT_EQ(slot(2).windingResistance, "");
    fillKvxReportFromRecord();

    pickAndConfirm(KvxCopper, "75");
    // Row 1 at 20 C: 0.1004 x 309.5 / 254.5.
    EXPECT_EQ(compensated(1), "0.122 ");
    EXPECT_EQ(compensated(2), "");
}

} // namespace
