// The CSV of the ZBL basic report, byte by byte: the byte order mark, the
// fixed head and column names, ";" between fields, quoting as RFC 4180 says,
// CR LF after every line; and the batch around it: which files a run takes,
// where each output goes, and that a failed file leaves no output.
#include "zbl/model/ZblCsvExport.h"
#include "converters/model/BatchConversion.h"
#include "converters/model/TestConversions.h"
#include "shell/model/AppState.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "tests/support/TestFiles.h"
#include "tools/ToolSessions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

using namespace quenby;
using namespace quenby::converters;
using quenby::testing::readBytes;
using quenby::testing::samplePath;
using quenby::testing::writeBytes;

namespace {

const QByteArray Bom = QByteArrayLiteral("\xEF\xBB\xBF");

// The sessions of a converter's run, fresh for each test.
class zblCsv : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_sessions = std::make_unique<tools::ToolSessions>();
        appState().LangFilePath = quenby::testing::langSourcePath(QStringLiteral("en.lng"));
        loadZblReportForExport();
        ASSERT_TRUE(m_dir.isValid());
    }
    QString path(const QString& name) const { return m_dir.filePath(name); }

    std::unique_ptr<tools::ToolSessions> m_sessions;
    QTemporaryDir m_dir;
};

} // namespace

TEST(zblCsvField, PlainTextStaysAsItIs)
{
    EXPECT_EQ(zblCsvField(QStringLiteral("436.49 mOhm")), QStringLiteral("436.49 mOhm"));
    EXPECT_EQ(zblCsvField(QString()), QString());
    // A comma is no separator here, and blanks belong to the field.
    EXPECT_EQ(zblCsvField(QStringLiteral(" Harlow, Sub 2 ")), QStringLiteral(" Harlow, Sub 2 "));
}

TEST(zblCsvField, SeparatorQuoteAndLineBreaksAreQuoted)
{
    EXPECT_EQ(zblCsvField(QStringLiteral("a;b")), QStringLiteral("\"a;b\""));
    EXPECT_EQ(zblCsvField(QStringLiteral("12\" bushing")), QStringLiteral("\"12\"\" bushing\""));
    EXPECT_EQ(zblCsvField(QStringLiteral("line\r\nnext")), QStringLiteral("\"line\r\nnext\""));
    EXPECT_EQ(zblCsvField(QStringLiteral("\"")), QStringLiteral("\"\"\"\""));
}

TEST(zblCsvLine, FieldsAreJoinedBySemicolonsAndEndInCrLf)
{
    EXPECT_EQ(zblCsvLine({QStringLiteral("a"), QString(), QStringLiteral("c;d")}),
              QStringLiteral("a;;\"c;d\"\r\n"));
    EXPECT_EQ(zblCsvLine({}), QStringLiteral("\r\n"));
}

TEST(zblReportCsv, WritesTheHeadTheColumnNamesAndTheRowsExactly)
{
    auto report = std::make_unique<ZblBasicReportModel>();
    auto record = std::make_unique<ZblTestRecord>();
    report->lbTexteFileName1 = QStringLiteral("t.zbl");
    report->lbTexteDate1 = QStringLiteral("15 Nov.2024");
    report->txtXFRSerialNumber = QStringLiteral("ZBL-1");
    report->txtCompany = QStringLiteral("Société; \"Nord\"");
    report->txtNotes = QStringLiteral("two\nlines");
    report->cbCompensationText = QStringLiteral("Copper (TK=234.5)");
    report->lbTexteCompensedTemp1 = QStringLiteral("75C");
    const QStringList row0{
        QStringLiteral("1"),          QStringLiteral("H1-H2"), QStringLiteral("1.5 mOhm"),
        QStringLiteral("1.8 mOhm"),   QStringLiteral("1"),     QStringLiteral("X1-X2"),
        QStringLiteral("845.3 µOhm"), QStringLiteral("---"),   QStringLiteral("00:00:05")};
    for (int c = 0; c < ZblReportColumnCount; ++c) {
        report->cell(static_cast<ZblReportColumn>(c), 0) = row0[c];
        report->cell(static_cast<ZblReportColumn>(c), 1) = QStringLiteral("r1");
    }
    record->CurrentText[0] = QStringLiteral("10 A");
    record->IntervalSeconds[0] = 2.5;
    record->CurrentText[1] = QStringLiteral("100 mA");
    record->IntervalSeconds[1] = 5;

    const QByteArray expected =
        Bom + QStringLiteral("File name;t.zbl\r\n"
                             "Date;15 Nov.2024\r\n"
                             "Transformer serial no.;ZBL-1\r\n"
                             "Company;\"Société; \"\"Nord\"\"\"\r\n"
                             "Station;\r\n"
                             "Designation;\r\n"
                             "Manufacturer;\r\n"
                             "Operator;\r\n"
                             "Temperature;\r\n"
                             "Temperature compensation;Copper (TK=234.5)\r\n"
                             "Reference temperature;75C\r\n"
                             "Notes;\"two\nlines\"\r\n"
                             "\r\n"
                             "Tap A;Winding A;Resistance A;Compensated resistance A;Tap B;"
                             "Winding B;Resistance B;Compensated resistance B;Total time;"
                             "Current;Interval (s)\r\n"
                             "1;H1-H2;1.5 mOhm;1.8 mOhm;1;X1-X2;845.3 µOhm;---;00:00:05;"
                             "10 A;2.5\r\n"
                             "r1;r1;r1;r1;r1;r1;r1;r1;r1;100 mA;5\r\n")
                  .toUtf8();
    EXPECT_EQ(zblReportCsv(*report, *record, 2), expected);
}

TEST(zblReportCsv, NoRowsGiveTheHeadAndTheColumnNamesOnly)
{
    auto report = std::make_unique<ZblBasicReportModel>();
    auto record = std::make_unique<ZblTestRecord>();
    report->cell(ZblReportColumn::TapA, 0) = QStringLiteral("never written");
    const QByteArray csv = zblReportCsv(*report, *record, 0);
    EXPECT_TRUE(csv.startsWith(Bom));
    EXPECT_TRUE(csv.endsWith(QByteArrayLiteral("Interval (s)\r\n")));
    EXPECT_FALSE(csv.contains("never written"));
    // A count beyond the table is held to its 122 rows.
    EXPECT_EQ(zblReportCsv(*report, *record, 500).count("\r\n"),
              zblReportCsv(*report, *record, ZblBasicReportModel::RowCount).count("\r\n"));
}

// The golden file was written by `zbl_report_converter
// samples/zbl-saved-compensated.zbl -o tests/converters/data` and checked
// against the basic report of the same file, cell by cell.
TEST_F(zblCsv, SavedCompensatedSampleGivesTheGoldenFile)
{
    const QString csv = path(QStringLiteral("out.csv"));
    convertZblTestToCsv(samplePath(QStringLiteral("zbl-saved-compensated.zbl")), csv);
    EXPECT_EQ(readBytes(csv),
              readBytes(QStringLiteral(QUENBY_CONVERTERS_DATA_DIR "/zbl-saved-compensated.csv")));
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
}

TEST_F(zblCsv, RowsAreThoseThePrintOutCounts)
{
    const QString csv = path(QStringLiteral("out.csv"));
    convertZblTestToCsv(samplePath(QStringLiteral("zbl-autotc-122-rows.zbl")), csv);
    // 12 head lines, the empty line, the column names and 121 rows.
    EXPECT_EQ(readBytes(csv).count("\r\n"), 12 + 1 + 1 + 121);
    convertZblTestToCsv(samplePath(QStringLiteral("zbl-no-rows.zbl")), csv);
    EXPECT_TRUE(readBytes(csv).endsWith(QByteArrayLiteral("Interval (s)\r\n")));
}

TEST_F(zblCsv, NothingOfAnEarlierTestReachesTheNext)
{
    const QString first = path(QStringLiteral("first.csv"));
    const QString second = path(QStringLiteral("second.csv"));
    convertZblTestToCsv(samplePath(QStringLiteral("zbl-saved-compensated.zbl")), first);
    convertZblTestToCsv(samplePath(QStringLiteral("zbl-manual-19-rows.zbl")), second);
    EXPECT_TRUE(readBytes(first).contains("Temperature compensation;Copper (TK=234.5)\r\n"));
    EXPECT_TRUE(readBytes(second).contains("Temperature compensation;\r\n"));
    EXPECT_TRUE(readBytes(second).contains("Reference temperature;\r\n"));
    // A long table before a short one leaves no rows behind.
    convertZblTestToCsv(samplePath(QStringLiteral("zbl-autotc-122-rows.zbl")), first);
    convertZblTestToCsv(samplePath(QStringLiteral("zbl-manual-19-rows.zbl")), second);
    EXPECT_EQ(readBytes(second).count("\r\n"), 12 + 1 + 1 + 19);
}

TEST_F(zblCsv, RejectedFileRaisesAndIsClosed)
{
    const QString bad = path(QStringLiteral("bad.zbl"));
    writeBytes(bad, QByteArray());
    try {
        convertZblTestToCsv(bad, path(QStringLiteral("bad.csv")));
        FAIL() << "an empty file was read";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::InputPastEndOfFile);
    }
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
}

TEST_F(zblCsv, FolderGivesItsTestFilesByNameAndAMissingNameIsAFailure)
{
    writeBytes(path(QStringLiteral("b.zbl")), "x");
    writeBytes(path(QStringLiteral("A.ZBL")), "x");
    writeBytes(path(QStringLiteral("c.txt")), "x");
    QDir(m_dir.path()).mkdir(QStringLiteral("sub.zbl"));
    const TestFileList list = collectTestFiles(
        {m_dir.path(), path(QStringLiteral("c.txt")), path(QStringLiteral("gone.zbl"))},
        QStringLiteral("zbl"));
    EXPECT_EQ(list.files, (QStringList{path(QStringLiteral("A.ZBL")), path(QStringLiteral("b.zbl")),
                                       path(QStringLiteral("c.txt"))}));
    ASSERT_EQ(list.missing.size(), 1);
    EXPECT_EQ(list.missing[0].file, path(QStringLiteral("gone.zbl")));
    EXPECT_EQ(list.missing[0].text, runtimeErrorText(err::FileNotFound));
}

TEST_F(zblCsv, OutputTakesTheTestNameInTheOutputFolderOrBesideTheTest)
{
    EXPECT_EQ(
        outputPathFor(QStringLiteral("/d/t.1.zbl"), QStringLiteral("/o"), QStringLiteral("csv")),
        QStringLiteral("/o/t.1.csv"));
    EXPECT_EQ(outputPathFor(QStringLiteral("/d/t.zbl"), QString(), QStringLiteral("csv")),
              QStringLiteral("/d/t.csv"));
}

TEST_F(zblCsv, FailedFileLeavesNoOutputAndTheBatchGoesOn)
{
    const QString out = path(QStringLiteral("out"));
    TestFileList list;
    list.files = {QStringLiteral("/x/good.zbl"), QStringLiteral("/x/bad.zbl"),
                  QStringLiteral("/y/good.zbl")};
    // An older output of the bad test stays as it was: it is not this run's.
    QDir().mkpath(out);
    writeBytes(out + QStringLiteral("/bad.csv"), "old");
    QStringList told;
    const BatchSummary summary = runBatch(
        list, out, zblConverterKind(),
        [](const QString& test, const QString& partial) {
            writeBytes(partial, "half");
            if (test.contains(QLatin1String("bad")))
                raiseRuntimeError(err::TypeMismatch, test);
            writeBytes(partial, test.toUtf8());
        },
        [&told](int number, int total, const QString& file) {
            told.append(QStringLiteral("%1/%2 %3").arg(number).arg(total).arg(file));
        });
    EXPECT_EQ(told,
              (QStringList{QStringLiteral("1/3 /x/good.zbl"), QStringLiteral("2/3 /x/bad.zbl"),
                           QStringLiteral("3/3 /y/good.zbl")}));
    EXPECT_EQ(summary.total, 3);
    EXPECT_EQ(summary.converted, (QStringList{out + QStringLiteral("/good.csv"),
                                              out + QStringLiteral("/good-2.csv")}));
    ASSERT_EQ(summary.failures.size(), 1);
    EXPECT_EQ(summary.failures[0].file, QStringLiteral("/x/bad.zbl"));
    EXPECT_EQ(summary.failures[0].text,
              QStringLiteral("Run-time error '13': Type mismatch (/x/bad.zbl)"));
    EXPECT_EQ(readBytes(out + QStringLiteral("/good.csv")), QByteArray("/x/good.zbl"));
    EXPECT_EQ(readBytes(out + QStringLiteral("/bad.csv")), QByteArray("old"));
    EXPECT_EQ(QDir(out).entryList({QStringLiteral("*.part")}, QDir::Files), QStringList());
    EXPECT_EQ(summary.text(), QStringLiteral("Converted 2 of 3 test files.\n"
                                             "/x/bad.zbl: Run-time error '13': Type mismatch "
                                             "(/x/bad.zbl)\n"));
}

TEST(converterCommandLine, OptionsInputsAndMistakes)
{
    const CommandLine line = parseCommandLine(
        {QStringLiteral("-o"), QStringLiteral("out"), QStringLiteral("a.txt"),
         QStringLiteral("--standard"), QStringLiteral("IEEE 45"), QStringLiteral("dir")},
        kvxConverterKind());
    EXPECT_EQ(line.error, QString());
    EXPECT_EQ(line.outputFolder, QStringLiteral("out"));
    EXPECT_EQ(line.standard, QStringLiteral("IEEE 45"));
    EXPECT_EQ(line.inputs, (QStringList{QStringLiteral("a.txt"), QStringLiteral("dir")}));

    EXPECT_EQ(parseCommandLine({QStringLiteral("a.txt")}, kvxConverterKind()).standard,
              QStringLiteral("IEEE 30"));
    EXPECT_TRUE(parseCommandLine({QStringLiteral("--help")}, zblConverterKind()).help);
    EXPECT_FALSE(
        parseCommandLine({QStringLiteral("-s"), QStringLiteral("IEEE 99"), QStringLiteral("a.txt")},
                         kvxConverterKind())
            .error.isEmpty());
    // The ZBL converter has no standard.
    EXPECT_FALSE(
        parseCommandLine({QStringLiteral("-s"), QStringLiteral("IEEE 30"), QStringLiteral("a.zbl")},
                         zblConverterKind())
            .error.isEmpty());
    EXPECT_FALSE(parseCommandLine({QStringLiteral("-o")}, zblConverterKind()).error.isEmpty());
    EXPECT_FALSE(parseCommandLine({QStringLiteral("-o"), QStringLiteral("out")}, zblConverterKind())
                     .error.isEmpty());
}
