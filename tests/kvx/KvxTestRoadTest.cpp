// The main window's road of a KVX test, from the menu command to the report,
// with a scripted open dialog and the windows replaced by recording hooks.
#include "kvx/model/KvxTestRoad.h"
#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxTestRecord.h"
#include "shell/model/AppState.h"
#include "shell/model/DataFolders.h"
#include "shell/model/MainWindowState.h"
#include "shell/model/SequentialFiles.h"
#include "tests/kvx/KvxTestSupport.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/ScriptedViews.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

namespace {

class KvxRoadTest : public KvxFixture
{
protected:
    void SetUp() override
    {
        KvxFixture::SetUp();
        mainWindowState() = MainWindowState{};
        appState().KneeStandard.clear();
        windows.main.onHideReports = [this] { log << "hide reports"; };
        windows.kvx.onFillTexts = [this] { log << "report texts"; };
        windows.main.onProgress = [this](bool show) {
            log << (show ? "progress on" : "progress off");
        };
        windows.kvx.onBringUp = [this] { log << "report up"; };
        windows.main.onWait = [this] {
            ++turns;
            log << "wait";
            if (turns == clickAfter)
                chkKneeType_Click(boxToClick);
        };
    }
    void TearDown() override
    {
        SequentialFiles::instance().closeAll();
        KvxFixture::TearDown();
    }

    ScriptedWindows windows;
    ScriptedServices scripted;
    QStringList log;
    int turns = 0;
    int clickAfter = 1;
    int boxToClick = 0;
};

} // namespace

TEST_F(KvxRoadTest, KneeBoxesGiveTheirStandards)
{
    EXPECT_EQ(kneeStandardOfBox(0), "IEEE 30");
    EXPECT_EQ(kneeStandardOfBox(1), "IEEE 45");
    EXPECT_EQ(kneeStandardOfBox(2), "AINSI/IEC10/50");
    EXPECT_EQ(kneeStandardOfBox(7), "AINSI/IEC10/50");
}

TEST_F(KvxRoadTest, KneeClickSetsTheStandardHidesTheBoxesAndEndsTheWait)
{
    mainWindowState().chkKneeTypeVisible = {true, true, true};
    mainWindowState().chkKneeTypeChecked = {false, true, false};
    chkKneeType_Click(1);
    EXPECT_EQ(appState().KneeStandard, "IEEE 45");
    EXPECT_EQ(record().kneeTypeText, "IEEE 45");
    EXPECT_EQ(mainWindowState().chkKneeTypeVisible, (std::array<bool, 3>{false, false, false}));
    EXPECT_EQ(mainWindowState().chkKneeTypeChecked, (std::array<bool, 3>{false, false, false}));
    EXPECT_EQ(mainWindowState().KneeChoiceDone, True16);
}

TEST_F(KvxRoadTest, WholeRoadFromTheMenuToTheReport)
{
    scripted.files.answers.push_back(samplePath("kvx-ten-taps.txt"));
    clickAfter = 3; // the operator takes a moment
    boxToClick = 1;
    mnKVXFiles_Click();

    EXPECT_EQ(turns, 3);
    EXPECT_EQ(appState().KneeStandard, "IEEE 45");
    EXPECT_EQ(appState().ProcessInProgress, False16);
    EXPECT_EQ(log, (QStringList{"hide reports", "report texts", "wait", "wait", "wait",
                                "progress on", "progress off", "report up"}));
    const KvxCondensedReportModel& report = kvxCondensedReport();
    EXPECT_EQ(report.cell(KvxReportColumn::Tap, 1), "X1-X2");
    EXPECT_EQ(report.cell(KvxReportColumn::Tap, 10), "X4-X5");
    EXPECT_EQ(report.lbKneeType, "IEEE 45");
    EXPECT_EQ(report.lbTexteFileName1, "kvx-ten-taps.txt");
    for (int n = 1; n <= 10; ++n)
        EXPECT_TRUE(report.rowVisible(n)) << n;
    // The knee marks are placed by the chosen standard.
    EXPECT_TRUE(kvxReportGraph().cursor(1).visible);
    EXPECT_DOUBLE_EQ(kvxReportGraph().cursor(1).y, kvxTestRecord().knees[0].voltage);
    // The file stays open under its number.
    EXPECT_TRUE(SequentialFiles::instance().isOpen(
        static_cast<Int16>(appState().KvxTestFileNo.toNumber())));
    EXPECT_EQ(mainWindowState().statusText, "frmMain.stBar1.Panels.Text.Ready");
    EXPECT_EQ(mainWindowState().chkKneeTypeVisible, (std::array<bool, 3>{false, false, false}));
}

TEST_F(KvxRoadTest, CancelledDialogEmptiesTheTestAndShowsNothing)
{
    // A test is open first.
    scripted.files.answers.push_back(samplePath("kvx-ten-taps.txt"));
    mnKVXFiles_Click();
    ASSERT_EQ(record().taps[0].tapName, "X1-X2");
    log.clear();
    kvxCondensedReport().cbCompensationText = "Copper (TK=234.5)";

    scripted.files.answers.push_back(QString()); // cancel
    mnKVXFiles_Click();
    EXPECT_EQ(log, (QStringList{"hide reports", "report texts"}));
    for (int slot = 0; slot < 10; ++slot)
        EXPECT_TRUE(record().taps[static_cast<std::size_t>(slot)].tapName.isEmpty()) << slot;
    EXPECT_EQ(kvxCondensedReport().cell(KvxReportColumn::Tap, 1), "");
    EXPECT_EQ(kvxCondensedReport().cbCompensationText, "");
    EXPECT_DOUBLE_EQ(curve(1).volts[5], 0.0);
}

TEST_F(KvxRoadTest, BadFileEndsTheRoadWithTheRunTimeFailure)
{
    const QString path = writeLines("bad.txt", {"no header in here", "nor here"});
    scripted.files.answers.push_back(path);
    EXPECT_EQ(failureOf([] { mnKVXFiles_Click(); }), 62);
    // No partial report comes up.
    EXPECT_FALSE(log.contains("report up"));
    EXPECT_FALSE(log.contains("wait"));
}

TEST_F(KvxRoadTest, HiddenReportCommandRefillsWithItsStandard)
{
    scripted.files.answers.push_back(samplePath("kvx-ten-taps.txt"));
    mnKVXFiles_Click();
    log.clear();
    mnKVXCRIEEE30_Click();
    EXPECT_EQ(appState().KneeStandard, "IEEE 30");
    EXPECT_EQ(log, (QStringList{"progress on", "report texts", "progress off", "report up"}));
    EXPECT_EQ(kvxCondensedReport().cell(KvxReportColumn::Tap, 3), "X1-X4");
}
