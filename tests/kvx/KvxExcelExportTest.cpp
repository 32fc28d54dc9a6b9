// The spreadsheet export of a KVX test: which template is taken, what goes
// into which cell of the first worksheet, what stays as the template had it,
// and the road around it (the file read again, the question, the save
// dialog, the status texts, the failures). The saved workbooks are read back
// through the workbook reader; LibreOffice reads them in
// KvxSpreadsheetReadBackTest.
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestRecord.h"
#include "kvx/model/XlsxWorkbook.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/AppState.h"
#include "shell/model/DataFolders.h"
#include "tests/kvx/KvxExcelFixture.h"

#include <QFileInfo>
#include <gtest/gtest.h>

#include <cmath>

using namespace quenby;
using namespace quenby::testing;

namespace {

class KvxExcelExportTest : public KvxExcelFixture
{
protected:
    QString out(const QString& name = QStringLiteral("report.xlsx"))
    {
        return m_dir.filePath(name);
    }

    static double numberIn(const XlsxWorkbook& book, int row, int column)
    {
        const QString text = book.cellValue(row, column);
        bool ok = false;
        const double value = text.toDouble(&ok);
        EXPECT_TRUE(ok) << xlsxCellName(row, column).toStdString() << " " << text.toStdString();
        return value;
    }

    static std::vector<XlsxPart> partsOf(const QString& path)
    {
        std::vector<XlsxPart> parts;
        EXPECT_TRUE(readXlsxParts(path, parts)) << path.toStdString();
        return parts;
    }
};

} // namespace

TEST(XlsxCellNames, ColumnLettersAndCellNames)
{
    EXPECT_EQ(xlsxColumnName(1), "A");
    EXPECT_EQ(xlsxColumnName(16), "P");
    EXPECT_EQ(xlsxColumnName(26), "Z");
    EXPECT_EQ(xlsxColumnName(27), "AA");
    EXPECT_EQ(xlsxColumnName(135), "EE");
    EXPECT_EQ(xlsxColumnName(256), "IV");
    EXPECT_EQ(xlsxCellName(23, 256), "IV23");
    int row = 0;
    int column = 0;
    ASSERT_TRUE(parseXlsxCellName(u"IV23", row, column));
    EXPECT_EQ(row, 23);
    EXPECT_EQ(column, 256);
    EXPECT_FALSE(parseXlsxCellName(u"23", row, column));
    EXPECT_FALSE(parseXlsxCellName(u"A0", row, column));
    EXPECT_FALSE(parseXlsxCellName(u"a1", row, column));
}

TEST(KvxExcelRatio, SplitsTheNominalRatioIntoAValue)
{
    EXPECT_DOUBLE_EQ(nominalRatioValue(QStringLiteral("100:5")).value(), 20.0);
    EXPECT_DOUBLE_EQ(nominalRatioValue(QStringLiteral("300:5")).value(), 60.0);
    // A zero on either side, or not exactly two parts, gives no value, so no
    // division by zero can arise.
    EXPECT_FALSE(nominalRatioValue(QStringLiteral("100:0")).has_value());
    EXPECT_FALSE(nominalRatioValue(QStringLiteral("0:5")).has_value());
    EXPECT_FALSE(nominalRatioValue(QStringLiteral("100")).has_value());
    EXPECT_FALSE(nominalRatioValue(QStringLiteral("1:2:3")).has_value());
    EXPECT_FALSE(nominalRatioValue(QString()).has_value());
}

TEST_F(KvxExcelExportTest, TemplateOfTheCurrentLanguageIsTakenWhenThere)
{
    EXPECT_EQ(KvxExcelTemplatePath(), m_dir.filePath(QStringLiteral("TMP2-en.xlsx")));
    appState().LangFilePath = m_dir.filePath(QStringLiteral("polish.lng"));
    EXPECT_EQ(KvxExcelTemplatePath(), m_dir.filePath(QStringLiteral("TMP2-polish.xlsx")));
    // A language without its own template takes the plain one.
    appState().LangFilePath = m_dir.filePath(QStringLiteral("oem.lng"));
    EXPECT_EQ(KvxExcelTemplatePath(), m_dir.filePath(QStringLiteral("TMP2.xlsx")));
}

TEST_F(KvxExcelExportTest, ExportFillsTheLanguagesTemplateOrThePlainOne)
{
    // The French template stands in the English one's place: its labels show
    // which file was filled.
    QFile::remove(m_dir.filePath(QStringLiteral("TMP2-en.xlsx")));
    ASSERT_TRUE(QFile::copy(m_dir.filePath(QStringLiteral("TMP2-fr.xlsx")),
                            m_dir.filePath(QStringLiteral("TMP2-en.xlsx"))));
    exportFromReport(threeTapFile(), out(QStringLiteral("language.xlsx")));
    EXPECT_EQ(XlsxWorkbook(out(QStringLiteral("language.xlsx"))).cellValue(4, 3),
              QString::fromUtf8("Société :"));

    QFile::remove(m_dir.filePath(QStringLiteral("TMP2-en.xlsx")));
    exportFromReport(threeTapFile(), out(QStringLiteral("plain.xlsx")));
    EXPECT_EQ(XlsxWorkbook(out(QStringLiteral("plain.xlsx"))).cellValue(4, 3), "Company:");
}

TEST_F(KvxExcelExportTest, CellMapTakesTheRecordAndTheReport)
{
    kvxCondensedReport().cbCompensationText = QStringLiteral("Copper (TK=234.5)");
    exportFromReport(threeTapFile(), out(), QStringLiteral("IEEE 45"));
    const XlsxWorkbook book(out());
    const std::vector<ExpectedCell> cells = {{3, 4, "three-taps.txt"},
                                             {4, 4, "Test Co"},
                                             {5, 4, "CT 1"},
                                             {6, 4, "SN-1"},
                                             {7, 4, "20 C"},
                                             {8, 4, "300:5"},
                                             {9, 4, "A"},
                                             {10, 4, "C100"},
                                             {12, 3, "One line."},
                                             {3, 11, "5 Jan. 2024   09:05:00"},
                                             {4, 11, "Station 1"},
                                             {5, 11, "Maker"},
                                             {6, 11, "Op"},
                                             {7, 11, "KVX-1"},
                                             {8, 11, "C100"},
                                             {9, 11, "H1"},
                                             {10, 11, "IEEE 45"},
                                             {11, 11, "Copper (TK=234.5)"}};
    for (const ExpectedCell& cell : cells)
        EXPECT_EQ(book.cellValue(cell.row, cell.column), cell.text)
            << xlsxCellName(cell.row, cell.column).toStdString();
    EXPECT_EQ(book.cellValue(3, 11), record().dateTime);
    // The insulation head with the test voltage of slot 1.
    EXPECT_EQ(book.cellValue(14, 13), InsulationHeadText + QStringLiteral("    500 Vdc"));
}

TEST_F(KvxExcelExportTest, RatioStaysTheTextOfTheReport)
{
    exportFromReport(threeTapFile(), out());
    const XlsxWorkbook book(out());
    EXPECT_EQ(book.cellValue(18, 7), "100:5");
    // Written as a text, not as a time of day or a number.
    EXPECT_TRUE(book.rowXml(18).contains(R"(<c r="G18" s="5" t="inlineStr"><is><t>100:5</t>)"))
        << book.rowXml(18).toStdString();
}

TEST_F(KvxExcelExportTest, VisibleRowsHoldTheReportsCells)
{
    exportFromReport(threeTapFile(), out());
    const XlsxWorkbook book(out());
    const KvxCondensedReportModel& report = kvxCondensedReport();
    for (int n = 1; n <= 3; ++n) {
        ASSERT_TRUE(report.rowVisible(n));
        for (int i = 0; i < 11; ++i)
            EXPECT_EQ(book.cellValue(15 + n, 3 + i),
                      report.cell(SheetRowColumns[static_cast<std::size_t>(i)], n))
                << n << " " << i;
    }
    EXPECT_EQ(book.cellValue(16, 3), "X1-X2");
    EXPECT_EQ(book.cellValue(17, 3), "X1-X3");
    EXPECT_EQ(book.cellValue(18, 3), "X2-X3");
    EXPECT_EQ(book.cellValue(16, 13), ">1Gohm ");
    // Row 15, under the heads, is the template's.
    const XlsxWorkbook pattern(committedTemplate(QStringLiteral("TMP2-en.xlsx")));
    for (int column = 1; column <= 15; ++column)
        EXPECT_EQ(book.cellXml(15, column), pattern.cellXml(15, column)) << column;
}

TEST_F(KvxExcelExportTest, ThreeTapsLeaveRows19To25AsTheTemplateHasThem)
{
    exportFromReport(threeTapFile(), out());
    const XlsxWorkbook book(out());
    const XlsxWorkbook pattern(committedTemplate(QStringLiteral("TMP2-en.xlsx")));
    // The table's columns, C to M, and the curve names in O; the curve rows
    // run on from P.
    for (int row = 19; row <= 25; ++row) {
        EXPECT_FALSE(kvxCondensedReport().rowVisible(row - 15)) << row;
        for (int column = 1; column <= 15; ++column) {
            EXPECT_EQ(book.cellXml(row, column), pattern.cellXml(row, column))
                << xlsxCellName(row, column).toStdString();
            if (column >= 3 && column <= 13) {
                ASSERT_FALSE(pattern.cellXml(row, column).isEmpty()) << row << " " << column;
            }
        }
    }
    // Rows 24 and 25 hold no curve: the whole row is the template's.
    EXPECT_EQ(book.rowXml(24), pattern.rowXml(24));
    EXPECT_EQ(book.rowXml(25), pattern.rowXml(25));
    // The hidden rows hold the blanked texts in the report, and none reached
    // the sheet.
    EXPECT_EQ(kvxCondensedReport().cell(KvxReportColumn::WindingRes, 4), "\"");
    EXPECT_EQ(book.cellValue(19, 11), "");
}

TEST_F(KvxExcelExportTest, All120PointsOfEachCurveAreWritten)
{
    exportFromReport(threeTapFile(), out());
    const XlsxWorkbook book(out());
    const KvxTestRecord& r = record();
    for (int k = 1; k <= KvxSlotCount; ++k) {
        const KvxTapCurve& curve = r.curves[static_cast<std::size_t>(k - 1)];
        for (int i = 0; i < KvxCurvePoints; ++i) {
            EXPECT_EQ(numberIn(book, 2 * k + 2, 16 + i), curve.current[static_cast<std::size_t>(i)])
                << k << " " << i;
            EXPECT_EQ(numberIn(book, 2 * k + 3, 16 + i), curve.volts[static_cast<std::size_t>(i)])
                << k << " " << i;
        }
        // The range runs to IV, beyond the array: those cells are #N/A.
        for (int column = 16 + KvxCurvePoints; column <= 256; ++column) {
            EXPECT_EQ(book.cellValue(2 * k + 2, column), "#N/A");
            EXPECT_EQ(book.cellValue(2 * k + 3, column), "#N/A");
        }
    }
    // The filler at index 0 and the flat tail reach the chart's rows: X1-X2
    // has five points, so from index 5 on its curve stays at the last one.
    EXPECT_EQ(book.cellValue(4, 16), "0.0001");
    EXPECT_EQ(book.cellValue(4, 21), "1250");
    EXPECT_EQ(book.cellValue(4, 135), "1250");
    EXPECT_EQ(book.cellValue(5, 135), "6.5");
    // A slot without data holds the filler throughout.
    EXPECT_EQ(book.cellValue(23, 100), "0.0001");
    // Numbers in their shortest exact form, "." as the point in every locale.
    EXPECT_EQ(book.cellXml(4, 16), R"(<c r="P4"><v>0.0001</v></c>)");
    EXPECT_EQ(book.cellXml(5, 19), R"(<c r="S5"><v>5.5</v></c>)");
    EXPECT_EQ(book.cellXml(4, 256), R"(<c r="IV4" t="e"><v>#N/A</v></c>)");
}

TEST_F(KvxExcelExportTest, EverythingButTheFirstSheetStaysByteForByte)
{
    exportFromReport(threeTapFile(), out());
    const std::vector<XlsxPart> pattern =
        partsOf(committedTemplate(QStringLiteral("TMP2-en.xlsx")));
    const std::vector<XlsxPart> saved = partsOf(out());
    ASSERT_EQ(saved.size(), pattern.size());
    for (std::size_t i = 0; i < saved.size(); ++i) {
        EXPECT_EQ(saved[i].name, pattern[i].name);
        if (saved[i].name == u"xl/worksheets/sheet1.xml")
            EXPECT_NE(saved[i].data, pattern[i].data);
        else
            EXPECT_EQ(saved[i].data, pattern[i].data) << saved[i].name.toStdString();
    }
    // The template itself is never written.
    EXPECT_EQ(readBytes(m_dir.filePath(QStringLiteral("TMP2-en.xlsx"))),
              readBytes(committedTemplate(QStringLiteral("TMP2-en.xlsx"))));
}

TEST_F(KvxExcelExportTest, RoadAsksTheQuestionAndShowsTheStatusTexts)
{
    exportFromReport(threeTapFile(), out());
    ASSERT_EQ(scripted.messages.shown.size(), 1u);
    const ShownMessage& m = scripted.messages.shown.front();
    EXPECT_EQ(m.text, "Convertion completed, save files?");
    EXPECT_EQ(m.title, "Saving Repport");
    EXPECT_EQ(m.buttons, MsgButtons::YesNo);
    EXPECT_EQ(kvxExcelExport().saveAnswer, MsgAnswer::Yes);
    ASSERT_EQ(scripted.files.saveRequests.size(), 1u);
    EXPECT_EQ(scripted.files.saveRequests.front().filter, "*.xlsx");
    EXPECT_EQ(scripted.files.saveRequests.front().title, "Rapport KVX");
    // The language file of the test has none of these keys: each shows as
    // its key.
    EXPECT_EQ(statusTexts,
              (QStringList{MainStatusKeys::ConversionProgress, MainStatusKeys::CreatingExcelReport,
                           MainStatusKeys::ConversionComplet, MainStatusKeys::Ready}));
    EXPECT_TRUE(QFileInfo::exists(out()));
}

TEST_F(KvxExcelExportTest, AnswerNoSavesNothing)
{
    OpenKvxTestForReport(threeTapFile(), QStringLiteral("IEEE 30"));
    CommonDialog1().FileName = appState().KvxTestFilePath.toText();
    scripted.messages.answers.push_back(MsgAnswer::No);
    KvxReport_mnExcel_Click();
    EXPECT_EQ(kvxExcelExport().saveAnswer, MsgAnswer::No);
    EXPECT_TRUE(scripted.files.saveRequests.empty());
    EXPECT_EQ(statusTexts.last(), MainStatusKeys::Ready);
}

TEST_F(KvxExcelExportTest, MainWindowEntryAsksForTheTestFile)
{
    const QString path = threeTapFile();
    scripted.files.answers.push_back(path);
    scripted.messages.answers.push_back(MsgAnswer::Yes);
    scripted.files.saveAnswers.push_back(out(QStringLiteral("main")));
    ExportExcel(True16);
    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests.front().fileName, "*.txt");
    // A name without an ending gets the workbook's.
    const XlsxWorkbook book(out(QStringLiteral("main.xlsx")));
    EXPECT_EQ(book.cellValue(3, 4), "three-taps.txt");
    EXPECT_DOUBLE_EQ(numberIn(book, 5, 19), 5.5);
    // No report was filled: it shows no rows, so the sheet gets none.
    EXPECT_EQ(book.cellValue(16, 3), "");
}

TEST_F(KvxExcelExportTest, CancelledTestDialogOrNoFileStopsBeforeReading)
{
    ExportExcel(True16); // the open dialog answers cancel
    CommonDialog1().FileName = QStringLiteral("*.txt");
    ExportExcel(False16); // nothing chosen yet
    EXPECT_TRUE(scripted.messages.shown.empty());
    EXPECT_TRUE(statusTexts.isEmpty());
}

TEST_F(KvxExcelExportTest, CancelledSaveDialogSavesNothing)
{
    OpenKvxTestForReport(threeTapFile(), QStringLiteral("IEEE 30"));
    CommonDialog1().FileName = appState().KvxTestFilePath.toText();
    scripted.messages.answers.push_back(MsgAnswer::Yes);
    // No save answer: the dialog is cancelled; the failure is caught.
    EXPECT_EQ(failureOf([] { KvxReport_mnExcel_Click(); }), 0);
    EXPECT_EQ(scripted.files.saveRequests.size(), 1u);
    EXPECT_EQ(QDir(m_dir.path()).entryList({QStringLiteral("*.xlsx")}).size(), 4);
    EXPECT_EQ(statusTexts.last(), MainStatusKeys::Ready);
}

TEST_F(KvxExcelExportTest, ExistingFileIsReplaced)
{
    writeBytes(out(), QByteArray("old contents"));
    exportFromReport(threeTapFile(), out());
    EXPECT_EQ(XlsxWorkbook(out()).cellValue(16, 3), "X1-X2");
}

TEST_F(KvxExcelExportTest, PathThatCannotBeWrittenIsTheRunTimeFailureWithThePath)
{
    const QString path = m_dir.filePath(QStringLiteral("no-such-folder/report.xlsx"));
    try {
        exportFromReport(threeTapFile(), path);
        FAIL() << "no failure";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::PathFileAccessError);
        EXPECT_EQ(e.where(), path);
    }
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(KvxExcelExportTest, MissingTemplateStillAsksAndTheSaveFails)
{
    for (const char* name : {"TMP2.xlsx", "TMP2-en.xlsx"})
        ASSERT_TRUE(QFile::remove(m_dir.filePath(QString::fromLatin1(name))));
    try {
        exportFromReport(threeTapFile(), out());
        FAIL() << "no failure";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), WorkbookOperationFailed);
        EXPECT_EQ(e.where(), out());
    }
    EXPECT_EQ(scripted.messages.shown.size(), 1u);
    EXPECT_FALSE(QFileInfo::exists(out()));

    // Answered No, the export ends as usual.
    scripted.messages.answers.push_back(MsgAnswer::No);
    KvxReport_mnExcel_Click();
    EXPECT_EQ(scripted.messages.shown.size(), 2u);
    EXPECT_EQ(statusTexts.last(), MainStatusKeys::Ready);
}

TEST_F(KvxExcelExportTest, TemplateThatIsNoWorkbookFails)
{
    writeBytes(m_dir.filePath(QStringLiteral("TMP2-en.xlsx")), QByteArray("not a zip"));
    OpenKvxTestForReport(threeTapFile(), QStringLiteral("IEEE 30"));
    CommonDialog1().FileName = appState().KvxTestFilePath.toText();
    EXPECT_EQ(failureOf([] { KvxReport_mnExcel_Click(); }), WorkbookOperationFailed);
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(KvxExcelExportTest, TextsThatXmlCannotCarryAreEscaped)
{
    XlsxWorkbook book(committedTemplate(QStringLiteral("TMP2.xlsx")));
    const QString text = QStringLiteral("a\rb_x0041_ <&>\"");
    book.setText(30, 2, text);
    book.setText(30, 1, QStringLiteral(" padded "));
    book.saveAs(out());
    const XlsxWorkbook back(out());
    EXPECT_EQ(back.cellValue(30, 2), QStringLiteral("a_x000D_b_x005F_x0041_ <&>\""));
    EXPECT_EQ(back.cellValue(30, 1), " padded ");
    EXPECT_TRUE(back.rowXml(30).startsWith(
        R"(<row r="30"><c r="A30" t="inlineStr"><is><t xml:space="preserve"> padded </t>)"))
        << back.rowXml(30).toStdString();
}
