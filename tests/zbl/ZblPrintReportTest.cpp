// The print-out of the ZBL basic report without a screen: the pages a test
// needs, what each page shows and copies, the frames and the page label,
// the collated copies, the cancel and a printer that fails.
#include "zbl/model/ZblPrintReport.h"

#include "tests/zbl/ZblTestSupport.h"
#include "zbl/model/ZblBasicReportView.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace quenby {
inline void PrintTo(const ZblTwipRect& r, std::ostream* os)
{
    *os << "{left " << r.left << ", top " << r.top << ", width " << r.width << ", height "
        << r.height << "}";
}
inline void PrintTo(const ZblPrintFrame& f, std::ostream* os)
{
    *os << "{top " << f.top << (f.visible ? ", shown}" : ", hidden}");
}
} // namespace quenby

using namespace quenby;
using namespace quenby::testing;

namespace {

// What one printed page showed.
struct PrintedPage
{
    QString lbPage;
    ZblPrintFrame header;
    ZblPrintFrame data;
    ZblPrintFrame pageNumber;
    std::vector<QString> shownTaps; // lbResultTapA of the rows shown
    QString lbFileName;
    QString compensation;
};

class ZblPrintReportTest : public ZblFixture
{
protected:
    // A table that CheckNumberOfTAPInFiles counts as `count`, each report row
    // i holding texts that name it.
    void table(int count)
    {
        ClearZBLRowLines();
        for (int i = 0; i < count; ++i)
            record().RowLine[static_cast<std::size_t>(i)] = QStringLiteral("row %1").arg(i);
        ZblBasicReportModel& report = zblBasicReport();
        for (int i = 0; i < ZblBasicReportModel::RowCount; ++i)
            for (int c = 0; c < ZblReportColumnCount; ++c)
                report.cell(static_cast<ZblReportColumn>(c), i) =
                    QStringLiteral("c%1r%2").arg(c).arg(i);
    }

    // Prints with the dialog answering `copies` (none: cancel); each page's
    // state is kept, and `failAt` (1-based) makes the printer fail there.
    std::vector<PrintedPage> print(std::optional<int> copies, int failAt = 0)
    {
        std::vector<PrintedPage> pages;
        ++dialogs;
        ZblReport_mnuBasicReport_Click(
            heads, [copies] { return copies; },
            [&pages, failAt](const ZblPrintReportModel& m) {
                if (static_cast<int>(pages.size()) + 1 == failAt)
                    return false;
                PrintedPage page{m.lbPage, m.frHeaderPrint, m.frDataPrint,       m.frmPageNumber,
                                 {},       m.lbFileName,    m.lbCompensendFactor};
                for (int j = 0; j < ZblPrintReportModel::RowsPerPage; ++j)
                    if (m.rowVisible(j))
                        page.shownTaps.push_back(m.cell(ZblReportColumn::TapA, j));
                pages.push_back(page);
                return true;
            });
        return pages;
    }

    ZblColumnHeadTexts heads;
    int dialogs = 0;
};

TEST_F(ZblPrintReportTest, ThirtyThreeRowsFillOnePage)
{
    table(34); // n = 33
    const auto pages = print(1);
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(pages[0].lbPage, QStringLiteral("Page 1 / 1"));
    ASSERT_EQ(pages[0].shownTaps.size(), 33U);
    EXPECT_EQ(pages[0].shownTaps.front(), QStringLiteral("c0r0"));
    EXPECT_EQ(pages[0].shownTaps.back(), QStringLiteral("c0r32"));
    EXPECT_EQ(pages[0].header, (ZblPrintFrame{150, true}));
    EXPECT_EQ(pages[0].data, (ZblPrintFrame{4250, true}));
    EXPECT_EQ(pages[0].pageNumber, (ZblPrintFrame{12500, true}));
}

TEST_F(ZblPrintReportTest, RowThirtyFourStandsAloneOnTheSecondPage)
{
    table(35); // n = 34
    const auto pages = print(1);
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0].shownTaps.size(), 33U);
    EXPECT_EQ(pages[1].shownTaps, std::vector<QString>{QStringLiteral("c0r33")});
    EXPECT_EQ(pages[1].lbPage, QStringLiteral("Page 2 / 2"));
    // The head stands on the first page only; the table moves up.
    EXPECT_FALSE(pages[1].header.visible);
    EXPECT_EQ(pages[1].data, (ZblPrintFrame{1050, true}));
    // One row beyond the last is copied too, and stays hidden.
    const ZblPrintReportModel& m = zblPrintReport();
    EXPECT_EQ(m.cell(ZblReportColumn::TapA, 1), QStringLiteral("c0r34"));
    EXPECT_FALSE(m.rowVisible(1));
    EXPECT_EQ(m.cell(ZblReportColumn::TotalTime, 0), QStringLiteral("c8r33"));
    EXPECT_EQ(m.cell(ZblReportColumn::ResB, 0), QStringLiteral("c6r33"));
    EXPECT_EQ(m.cell(ZblReportColumn::ConbinedResistanceA, 0), QStringLiteral("c3r33"));
}

TEST_F(ZblPrintReportTest, AOneLineCountPrintsNothingAfterTheDialog)
{
    table(1); // n = 0, no page
    EXPECT_TRUE(print(1).empty());
    EXPECT_EQ(dialogs, 1);
    table(0); // n = -1 rounds up to no page either
    EXPECT_TRUE(print(1).empty());
}

TEST_F(ZblPrintReportTest, ThePageLabelCarriesTheNumberOfPages)
{
    table(71); // n = 70: three pages
    const auto pages = print(1);
    ASSERT_EQ(pages.size(), 3U);
    EXPECT_EQ(pages[1].lbPage, QStringLiteral("Page 2 / 3"));
    EXPECT_EQ(pages[2].lbPage, QStringLiteral("Page 3 / 3"));
    EXPECT_EQ(pages[2].shownTaps.size(), 4U); // rows 66 to 69
    EXPECT_EQ(pages[2].shownTaps.front(), QStringLiteral("c0r66"));
}

TEST_F(ZblPrintReportTest, PagesThreeAndFourShowThePageNumberOnlyAsItStaysVisible)
{
    table(122); // n = 121: four pages, the last of 22 rows
    const auto pages = print(1);
    ASSERT_EQ(pages.size(), 4U);
    for (const PrintedPage& page : pages)
        EXPECT_TRUE(page.pageNumber.visible) << page.lbPage.toStdString();
    EXPECT_EQ(pages[3].shownTaps.size(), 22U);
    EXPECT_EQ(pages[3].shownTaps.back(), QStringLiteral("c0r120"));
    EXPECT_EQ(pages[3].lbPage, QStringLiteral("Page 4 / 4"));

    // The frames' routine places the page number but never shows it.
    ZblPrintReportModel& m = zblPrintReport();
    m.frmPageNumber = {0, false};
    TreatVisibleFrame(3);
    EXPECT_EQ(m.frmPageNumber, (ZblPrintFrame{12500, false}));
    TreatVisibleFrame(1);
    EXPECT_EQ(m.frmPageNumber, (ZblPrintFrame{12500, false}));
    EXPECT_EQ(m.frHeaderPrint, (ZblPrintFrame{150, true}));
}

TEST_F(ZblPrintReportTest, CopiesAreCollated)
{
    table(40);
    const auto pages = print(3);
    ASSERT_EQ(pages.size(), 6U);
    const QStringList order = {"Page 1 / 2", "Page 2 / 2", "Page 1 / 2",
                               "Page 2 / 2", "Page 1 / 2", "Page 2 / 2"};
    for (std::size_t p = 0; p < pages.size(); ++p)
        EXPECT_EQ(pages[p].lbPage, order[static_cast<int>(p)]);
    // Each copy's first page shows the head again.
    EXPECT_TRUE(pages[2].header.visible);
    EXPECT_EQ(pages[2].data.top, 4250);
}

TEST_F(ZblPrintReportTest, ACancelPrintsNothingAfterTheHeadIsCopied)
{
    table(10);
    zblBasicReport().lbTexteFileName1 = QStringLiteral("T1.zbl");
    zblPrintReport().lbPage = QStringLiteral("Page 3 / 4"); // a run before
    EXPECT_TRUE(print(std::nullopt).empty());
    EXPECT_EQ(zblPrintReport().lbFileName, QStringLiteral("T1.zbl"));
    EXPECT_EQ(zblPrintReport().lbPage, QStringLiteral("Page 3 / 4"));
    EXPECT_EQ(zblPrintReport().cellRect(ZblReportColumn::TapA, 0).left, 570);
}

TEST_F(ZblPrintReportTest, APrinterFailureEndsThePrint)
{
    table(100);
    EXPECT_EQ(print(2, 2).size(), 1U);
}

TEST_F(ZblPrintReportTest, TheHeadAndColumnHeadsComeFromTheReport)
{
    table(3);
    ZblBasicReportModel& r = zblBasicReport();
    r.lbTexteFileName1 = QStringLiteral("file");
    r.lbTexteDate1 = QStringLiteral("date");
    r.txtCompany = QStringLiteral("company");
    r.txtDesignator = QStringLiteral("designator");
    r.txtXFRSerialNumber = QStringLiteral("xfr");
    r.txtTemperature = QStringLiteral("temperature");
    r.txtStation = QStringLiteral("station");
    r.txtManufacturer = QStringLiteral("maker");
    r.txtOperator = QStringLiteral("operator");
    r.lbTexteCompensedTemp1 = QStringLiteral("75");
    r.cbCompensationText = QStringLiteral("Copper (TK=234.5)");
    r.txtNotes = QStringLiteral("notes");
    heads.CHANA = QStringLiteral("KANAŁ A");
    heads.column[7] = QStringLiteral("Compensated B");
    heads.TotalTime = QStringLiteral("Time");
    print(1);
    const ZblPrintReportModel& m = zblPrintReport();
    const std::vector<std::pair<QString, QString>> copied = {
        {m.lbFileName, "file"},
        {m.lbDate, "date"},
        {m.LBCompany, "company"},
        {m.LBDesignator, "designator"},
        {m.LBXFRSerialNumber, "xfr"},
        {m.LBTemperature, "temperature"},
        {m.lbStation, "station"},
        {m.lbManufacturer, "maker"},
        {m.lbOperator, "operator"},
        {m.lbCompensatedTemp, "75"},
        {m.lbCompensendFactor, "Copper (TK=234.5)"},
        {m.lbNotes, "notes"}};
    for (const auto& [value, expected] : copied)
        EXPECT_EQ(value, expected);
    EXPECT_EQ(m.heads.CHANA, QStringLiteral("KANAŁ A"));
    EXPECT_EQ(m.heads.column[7], QStringLiteral("Compensated B"));
    EXPECT_EQ(m.heads.TotalTime, QStringLiteral("Time"));
}

TEST_F(ZblPrintReportTest, ColumnsTakeThePrintConstants)
{
    table(3);
    print(1);
    const ZblPrintReportModel& m = zblPrintReport();
    EXPECT_EQ(m.lbTexteCHANA, (ZblTwipRect{570, 0, 4050, 225}));
    EXPECT_EQ(m.lbTexteCHANB, (ZblTwipRect{4620, 0, 4050, 225}));
    EXPECT_EQ(m.columnHead[0], (ZblTwipRect{570, 225, 590, 300}));
    EXPECT_EQ(m.columnHead[3], (ZblTwipRect{3160, 225, 1460, 300}));
    EXPECT_EQ(m.columnHead[4], (ZblTwipRect{4620, 225, 590, 300}));
    EXPECT_EQ(m.lbTotalTimeBdr, (ZblTwipRect{8670, 0, 770, 525}));
    EXPECT_EQ(m.cellRect(ZblReportColumn::TapA, 0), (ZblTwipRect{570, 525, 590, 225}));
    EXPECT_EQ(m.cellRect(ZblReportColumn::TotalTime, 32), (ZblTwipRect{8670, 7725, 770, 225}));
    // The load centred the total time's head over its border.
    EXPECT_EQ(m.lbTotalTime.left, m.lbTotalTimeBdr.left);
    EXPECT_EQ(m.lbTotalTime.width, 770);
    // The report keeps its own.
    EXPECT_EQ(zblBasicReport().cellRect(ZblReportColumn::TapA, 0).left, 1000);
    EXPECT_EQ(zblBasicReport().rowHeight, 315);
}

TEST_F(ZblPrintReportTest, TheNextPrintHidesTheRowsTheLastOneLeft)
{
    table(60);
    print(1);
    EXPECT_TRUE(zblPrintReport().rowVisible(25)); // page 2 showed rows 33 to 58
    table(6);                                     // n = 5
    const auto pages = print(1);
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(pages[0].shownTaps.size(), 5U);
    // Row 25 keeps the text of the run before, out of sight.
    EXPECT_FALSE(zblPrintReport().rowVisible(25));
    EXPECT_EQ(zblPrintReport().cell(ZblReportColumn::TapA, 25), QStringLiteral("c0r58"));
}

TEST_F(ZblPrintReportTest, RowsOfAPageDirectly)
{
    ZblPrintReportModel& m = zblPrintReport();
    TreatVisibleTAPTexte(1, 1);
    for (int j = 0; j < ZblPrintReportModel::RowsPerPage; ++j)
        EXPECT_FALSE(m.rowVisible(j));
    TreatVisibleTAPTexte(2, 40); // m = 39 - 33 = 6
    EXPECT_TRUE(m.rowVisible(5));
    EXPECT_FALSE(m.rowVisible(6));
    TreatVisibleTAPTexte(1, 100); // capped at 33
    EXPECT_TRUE(m.rowVisible(32));
    // A print cell outside 0 to 32 is out of range.
    const auto failure = failureFrom([&m] { m.cell(ZblReportColumn::TapA, 33); });
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->number(), 9);
}

} // namespace
