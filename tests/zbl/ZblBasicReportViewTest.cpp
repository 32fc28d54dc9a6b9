// The ZBL basic report without a screen: the row count and the rows shown,
// the scroll bar, the column layout, the load, and the main window's road
// over the sample files with a scripted open dialog.
#include "zbl/model/ZblBasicReportView.h"

#include "report/model/TemperatureCompensation.h"
#include "shell/model/AppState.h"
#include "shell/model/MainWindowState.h"
#include "shell/model/Platform.h"
#include "shell/model/SequentialFiles.h"
#include "tests/support/ScriptedCompensation.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/ScriptedViews.h"
#include "tests/support/TestFiles.h"
#include "tests/zbl/ZblTestSupport.h"
#include "zbl/model/ZblCompensation.h"

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

namespace {

class ZblReportViewTest : public ZblFixture
{
protected:
    void SetUp() override
    {
        ZblFixture::SetUp();
        writeLines(QStringLiteral("en.lng"),
                   {QStringLiteral("frmZBLBasicReport.cbCompensation.Aluminium,Aluminium"),
                    QStringLiteral("frmZBLBasicReport.cbCompensation.Coper,Copper"),
                    QStringLiteral("frmCompensedResistanceSetting.Caption,Compensation")});
        setAppPathOverride(m_dir.path());
        appState().LangFilePath = m_dir.filePath(QStringLiteral("en.lng"));
        zblBasicReport() = ZblBasicReportModel{};
        appState().ProcessInProgress = False16;
        appState().ZblScrollOverflowPercent = 0.0;
        windows.main.onProgress = [this](bool show) {
            log << (show ? "progress on" : "progress off");
            if (show) {
                EXPECT_EQ(appState().ProcessInProgress, True16);
            }
        };
        windows.zbl.onFillTexts = [this] { log << "report texts"; };
        windows.zbl.onMirror = [this] { log << "mirror"; };
        windows.zbl.onBringUp = [this] { log << "report up"; };
    }
    // A fresh compensation dialog, its window scripted.
    ScriptedCompensation compensation;
    ScriptedWindows windows;

    void TearDown() override
    {
        setAppPathOverride(QString());
        appState().LangFilePath.clear();
        SequentialFiles::instance().closeAll();
        ZblFixture::TearDown();
    }

    // Opens `path` through the road, the dialog answering with it.
    void open(const QString& path)
    {
        scripted.files.answers.push_back(path);
        mnZBLFiles_Click();
    }

    // RowLine from `lines`, the rest empty.
    void setRowLines(const QStringList& lines)
    {
        ClearZBLRowLines();
        for (int i = 0; i < lines.size(); ++i)
            record().RowLine[static_cast<std::size_t>(i)] = lines[i];
    }

    int visibleRows() const
    {
        int count = 0;
        for (int i = 0; i < ZblBasicReportModel::RowCount; ++i)
            count += zblBasicReport().rowVisible(i) ? 1 : 0;
        return count;
    }

    ScriptedServices scripted;
    QStringList log;
};

QStringList rows(int n)
{
    QStringList lines;
    for (int i = 1; i <= n; ++i)
        lines << QStringLiteral("-   %1   H1-H2   1.5 mOhm").arg(i);
    return lines;
}

} // namespace

TEST_F(ZblReportViewTest, CountSkipsEmptyDashAndEndMarkerLines)
{
    setRowLines({"row 1", "", "-", "row 2", "Fin de Fichier", "row 3"});
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 3);
    // Whole-line comparison: a line that only starts with a dash counts.
    setRowLines({"- 1", "-- ", " -"});
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 3);
}

TEST_F(ZblReportViewTest, CompensationLineEndsTheCountEvenWithRowsBehindIt)
{
    QStringList lines = rows(5);
    lines << "TEMP COMPENSATION FACTOR:   Copper (TK=234.5)";
    lines << rows(7);
    setRowLines(lines);
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 6);
    lines[2] = "TEMP COMPENSATIONS";
    setRowLines(lines);
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 3);
}

TEST_F(ZblReportViewTest, TheCountOfAFullTableIs122AndShows121Rows)
{
    setRowLines(rows(122));
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 122);
    TreatVisibleTAPTexte();
    EXPECT_EQ(visibleRows(), 121);
    EXPECT_TRUE(zblBasicReport().rowVisible(120));
    EXPECT_FALSE(zblBasicReport().rowVisible(121));
}

TEST_F(ZblReportViewTest, RowsShownAreTheCountLessOne)
{
    QStringList lines = rows(18);
    lines << "-----------";
    setRowLines(lines);
    TreatVisibleTAPTexte();
    EXPECT_EQ(visibleRows(), 18);
    EXPECT_TRUE(zblBasicReport().rowVisible(17));
    EXPECT_FALSE(zblBasicReport().rowVisible(18));

    // Rows hidden before come back when a longer table follows.
    setRowLines(rows(40));
    TreatVisibleTAPTexte();
    EXPECT_EQ(visibleRows(), 39);
}

TEST_F(ZblReportViewTest, NoRowAtAllLeavesRowZeroInView)
{
    // The closing rule alone counts one: row 0 stays in view.
    setRowLines({"-------"});
    TreatVisibleTAPTexte();
    EXPECT_EQ(visibleRows(), 1);
    EXPECT_TRUE(zblBasicReport().rowVisible(0));
    // Without even that line nothing is left to show.
    setRowLines({});
    TreatVisibleTAPTexte();
    EXPECT_EQ(visibleRows(), 0);
}

TEST_F(ZblReportViewTest, RoadOverAFileWithoutRows)
{
    open(samplePath("zbl-no-rows.zbl"));
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 1);
    EXPECT_EQ(visibleRows(), 1);
    EXPECT_FALSE(zblBasicReport().VScroll1Visible);
}

TEST_F(ZblReportViewTest, ScrollMaximumSteps)
{
    EXPECT_EQ(ZblScrollMaximum(20), 1000);
    EXPECT_EQ(ZblScrollMaximum(23), 1150);
    EXPECT_EQ(ZblScrollMaximum(24), 2400);
    EXPECT_EQ(ZblScrollMaximum(45), 4500);
    EXPECT_EQ(ZblScrollMaximum(46), 6900);
    EXPECT_EQ(ZblScrollMaximum(122), 18300);
}

TEST_F(ZblReportViewTest, RoundUpIsACeilingForFactorOne)
{
    EXPECT_DOUBLE_EQ(RoundUp(3.0, 1.0), 3.0);
    EXPECT_DOUBLE_EQ(RoundUp(3.2, 1.0), 4.0);
    EXPECT_DOUBLE_EQ(RoundUp(0.0, 1.0), 0.0);
    EXPECT_DOUBLE_EQ(RoundUp(-1.5, 1.0), -1.0);
    EXPECT_DOUBLE_EQ(RoundUp(121.0 / 33.0, 1.0), 4.0);
}

TEST_F(ZblReportViewTest, RoundUpComparesWithTheValueNotTheProduct)
{
    // 1.5 x 2 is whole, yet 1.5 differs from 3: one step too many.
    EXPECT_DOUBLE_EQ(RoundUp(1.5, 2.0), 2.0);
    // 2 x 10 is 20, which differs from 2 as well.
    EXPECT_DOUBLE_EQ(RoundUp(2.0, 10.0), 2.1);
    // Zero is the one value equal to its product.
    EXPECT_DOUBLE_EQ(RoundUp(0.0, 10.0), 0.0);
}

TEST_F(ZblReportViewTest, ColumnLayout)
{
    PlaceZBLReportColumns();
    const ZblBasicReportModel& m = zblBasicReport();
    EXPECT_EQ(m.lbTexteCHANA.left, 1000);
    EXPECT_EQ(m.lbTexteCHANA.width, 4040);
    EXPECT_EQ(m.lbTexteCHANB.left, 5040);
    EXPECT_EQ(m.lbTexteCHANB.width, 4040);
    const std::array<int, 8> lefts = {1000, 1585, 2610, 3585, 5040, 5625, 6650, 7625};
    const std::array<int, 8> widths = {585, 1025, 975, 1455, 585, 1025, 975, 1455};
    for (std::size_t c = 0; c < 8; ++c) {
        EXPECT_EQ(m.columnHead[c].left, lefts[c]) << c;
        EXPECT_EQ(m.columnHead[c].width, widths[c]) << c;
    }
    EXPECT_EQ(m.lbTotalTimeBdr.left, 9080);
    EXPECT_EQ(m.lbTotalTimeBdr.width, 765);
    EXPECT_EQ(m.lbTotalTime.width, 765);

    const ZblTwipRect head = m.columnHead[1];
    const ZblTwipRect row0 = m.cellRect(ZblReportColumn::WindingA, 0);
    EXPECT_EQ(row0, (ZblTwipRect{1585, head.top + head.height, 1025, 315}));
    const ZblTwipRect row121 = m.cellRect(ZblReportColumn::TotalTime, 121);
    EXPECT_EQ(row121.left, 9080);
    EXPECT_EQ(row121.width, 765);
    EXPECT_EQ(row121.top, row0.top + 121 * 315);
    // The total time column starts under its border as the others under theirs.
    EXPECT_EQ(m.cellRect(ZblReportColumn::TotalTime, 0).top, row0.top);
    // One past the last row lies under it.
    EXPECT_EQ(ZblTapARect(122).top, row0.top + 122 * 315);
}

TEST_F(ZblReportViewTest, FormLoadHidesDeadMenusAndClearsTheCompensation)
{
    ZblBasicReportModel& m = zblBasicReport();
    m.cbCompensationText = "Copper (TK=234.5)";
    compensationDialog().txtTS = "75";
    m.lbTotalTime.width = 500;
    ZblReport_Form_Load();
    EXPECT_EQ(m.cbCompensationItems, (QStringList{"Aluminium", "Copper"}));
    EXPECT_TRUE(m.cbCompensationText.isEmpty());
    EXPECT_TRUE(compensationDialog().txtTS.isEmpty());
    EXPECT_FALSE(m.mnuExportVisible);
    EXPECT_FALSE(m.mnuEditVisible);
    EXPECT_FALSE(m.mnuTapsVisible);
    EXPECT_FALSE(m.mnuVGraphRSVisible);
    EXPECT_FALSE(m.mnuBasicVgraphVisible);
    EXPECT_FALSE(m.mnuBasicVgraphRSVisible);
    EXPECT_EQ(m.lbTotalTime.left, m.lbTotalTimeBdr.left + 132);
}

TEST_F(ZblReportViewTest, ScrollBarMovesTheFrameByTwiceItsValue)
{
    ZblReport_VScroll1_Change(350);
    EXPECT_EQ(zblBasicReport().VScroll1Value, 350);
    EXPECT_EQ(zblBasicReport().frResistanceTop, -700);
}

TEST_F(ZblReportViewTest, RoadOverNineteenRows)
{
    mainWindowState().statusText = QStringLiteral("before");
    open(samplePath("zbl-manual-19-rows.zbl"));
    // This road sets no status text.
    EXPECT_EQ(mainWindowState().statusText, "before");
    EXPECT_EQ(log,
              (QStringList{"progress on", "report texts", "progress off", "mirror", "report up"}));
    EXPECT_EQ(appState().ProcessInProgress, False16);
    const ZblBasicReportModel& m = zblBasicReport();
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 20);
    EXPECT_EQ(visibleRows(), 19);
    EXPECT_TRUE(m.VScroll1Visible);
    EXPECT_EQ(m.VScroll1Max, 1000);
    EXPECT_EQ(m.VScroll1Value, 0);
    EXPECT_EQ(m.frResistanceTop, 0);
    EXPECT_EQ(m.lbTexteFileName1, "zbl-manual-19-rows.zbl");
    EXPECT_FALSE(m.txtCompany.isEmpty());
    EXPECT_FALSE(m.cell(ZblReportColumn::TapA, 0).isEmpty());
    EXPECT_EQ(m.cell(ZblReportColumn::ConbinedResistanceA, 0), "---");
    // The row under the count lies below the window's bottom edge.
    const ZblTwipRect tap = ZblTapARect(20);
    EXPECT_DOUBLE_EQ(appState().ZblScrollOverflowPercent,
                     (tap.top + tap.height - ZblReportFormHeight) * 100.0 / ZblReportFormHeight);
    // The file stays open under its number.
    EXPECT_TRUE(SequentialFiles::instance().isOpen(
        static_cast<Int16>(appState().ZblTestFileNo.toNumber())));
}

TEST_F(ZblReportViewTest, RoadOverEighteenRowsHasNoScrollBar)
{
    QStringList lines = rows(18);
    for (QString& line : lines)
        line = zonedRow({line.section(' ', 3, 3), "H1-H2", "1.5 mOhm", "1", "X1-X2", "2.5 mOhm",
                         "10 A", "5", "00:00:05"});
    open(writeLines("eighteen.zbl", uploadedLines(lines)));
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 19);
    EXPECT_EQ(visibleRows(), 18);
    EXPECT_FALSE(zblBasicReport().VScroll1Visible);
}

TEST_F(ZblReportViewTest, RoadScrollMaximaOverTheSamples)
{
    struct Case
    {
        const char* file;
        int count;
        int maximum;
    };
    for (const Case& c :
         {Case{"zbl-timed-20-rows.zbl", 21, 1050}, Case{"zbl-autotc-23-rows.zbl", 24, 2400},
          Case{"zbl-manual-24-rows-channel-b-off.zbl", 25, 2500},
          Case{"zbl-timed-46-rows-over.zbl", 47, 7050},
          Case{"zbl-autotc-122-rows.zbl", 122, 18300}}) {
        open(samplePath(c.file));
        EXPECT_EQ(CheckNumberOfTAPInFiles(), c.count) << c.file;
        EXPECT_EQ(visibleRows(), c.count - 1) << c.file;
        EXPECT_TRUE(zblBasicReport().VScroll1Visible) << c.file;
        EXPECT_EQ(zblBasicReport().VScroll1Max, c.maximum) << c.file;
    }
}

TEST_F(ZblReportViewTest, ShorterTestAfterALongerOneHidesItsScrollBar)
{
    open(samplePath("zbl-autotc-122-rows.zbl"));
    ZblReport_VScroll1_Change(900);
    open(samplePath("zbl-saved-compensated.zbl"));
    const ZblBasicReportModel& m = zblBasicReport();
    EXPECT_FALSE(m.VScroll1Visible);
    EXPECT_EQ(m.VScroll1Value, 0);
    EXPECT_EQ(m.frResistanceTop, 0);
    EXPECT_EQ(visibleRows(), 12);
}

TEST_F(ZblReportViewTest, RoadOverASavedFileAppliesItsCompensation)
{
    open(samplePath("zbl-saved-compensated.zbl"));
    const ZblBasicReportModel& m = zblBasicReport();
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 13);
    EXPECT_EQ(visibleRows(), 12);
    EXPECT_EQ(m.cbCompensationText, "Copper (TK=234.5)");
    // The compensation writes the temperature back with its unit.
    EXPECT_EQ(m.lbTexteCompensedTemp1, "75C");
    EXPECT_EQ(compensationDialog().txtTS, "75");
    EXPECT_EQ(compensationDialog().txtTM, "22");
    EXPECT_EQ(compensationDialog().txtTK, "234.5");
    // 694.48 x (234.5 + 75) / (234.5 + 22)
    const QString compensated = m.cell(ZblReportColumn::ConbinedResistanceA, 0);
    EXPECT_TRUE(compensated.startsWith("837.9")) << compensated.toStdString();
    EXPECT_NE(m.cell(ZblReportColumn::ConbinedResistanceB, 0), "---");
}

TEST_F(ZblReportViewTest, CancelLeavesTheTestAsItWas)
{
    open(samplePath("zbl-manual-19-rows.zbl"));
    const QString tap = zblBasicReport().cell(ZblReportColumn::TapA, 3);
    const QString line = record().RowLine[3];
    zblBasicReport().cbCompensationText = "Copper (TK=234.5)";
    log.clear();

    scripted.files.answers.push_back(QString()); // cancel
    mnZBLFiles_Click();
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(zblBasicReport().cell(ZblReportColumn::TapA, 3), tap);
    EXPECT_EQ(record().RowLine[3], line);
    EXPECT_EQ(zblBasicReport().cbCompensationText, "Copper (TK=234.5)");
    EXPECT_EQ(visibleRows(), 19);
}

TEST_F(ZblReportViewTest, PickingTheSameMaterialTwiceClicksTwice)
{
    compensation.view.onShowModal = [] { compensationDialog().shown = false; };
    ZblBasicReportModel& m = zblBasicReport();
    for (int pick = 0; pick < 2; ++pick) {
        m.cbCompensationIndex = 1;
        m.cbCompensationText = m.cbCompensationItems[1];
        ZblReport_cbCompensation_Click();
        EXPECT_EQ(m.cbCompensationIndex, -1) << pick;
    }
    EXPECT_EQ(compensation.view.shows, 2);
}

TEST_F(ZblReportViewTest, OkAndCloseHideTheWindow)
{
    int hides = 0;
    windows.zbl.onHide = [&hides] { ++hides; };
    zblBasicReport().shown = true;
    ZblReport_mnuOk_Click();
    EXPECT_FALSE(zblBasicReport().shown);
    compensationDialog().shown = true;
    ZblReport_Form_Unload();
    EXPECT_FALSE(compensationDialog().shown);
    EXPECT_EQ(hides, 2);
}
