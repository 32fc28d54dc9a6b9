// The save of the ZBL basic report: each test opens a test file through the
// main window's road with a scripted open dialog, saves it through a
// scripted save dialog, and looks at the bytes on disk and at what the road
// reads back from them.
//
// How the golden files in tests/data/zbl-save were made: the first run of
// this binary wrote each save beside its golden name (see expectGolden),
// and every file was then checked by hand against the sample or the lines it
// was saved from: 88 hyphens and "ZBL Report" without trailing blanks, the ten
// head labels of 14 characters with the report's values and an empty mode,
// the rules of 136 hyphens around the literal table head, each row's ten
// items at the print zones 0, 14, 28, ... (pushed on where an item is 14
// characters or more), resistances in their shortest form with a zero ahead
// of the point and the unit behind one blank, currents with their unit as
// the reader stored them ("1 A", "100 mA"), intervals as plain numbers,
// then an empty line and the two compensation keys with their values at
// column 28, all in Windows-1252 ("µ" as the byte B5) with CR LF. The save of
// the saved sample is also checked to be the sample itself, byte for byte.
#include "zbl/model/ZblReportSave.h"

#include "shell/model/AppState.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/Platform.h"
#include "shell/model/SequentialFiles.h"
#include "tests/support/ScriptedCompensation.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/ScriptedViews.h"
#include "tests/support/TestFiles.h"
#include "tests/zbl/ZblTestSupport.h"
#include "zbl/model/ZblBasicReportView.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

#include <vector>

using namespace quenby;
using namespace quenby::testing;

namespace {

constexpr int CancelError = CommonDialogCancelError;

// The nine cells of the rows the report shows, and its head. Rows past the
// table hold what the reader cut from the lines behind it, which differ
// between an uploaded and a saved file.
struct ReportCopy
{
    std::vector<QStringList> rows;
    QStringList head;
    bool operator==(const ReportCopy&) const = default;
};

ReportCopy copyOfReport()
{
    ReportCopy copy;
    ZblBasicReportModel& m = zblBasicReport();
    for (int i = 0; i < ZblBasicReportModel::RowCount && m.rowVisible(i); ++i) {
        QStringList row;
        for (int c = 0; c < ZblReportColumnCount; ++c)
            row << m.cell(static_cast<ZblReportColumn>(c), i);
        copy.rows.push_back(row);
    }
    copy.head = {m.lbTexteDate1,  m.txtXFRSerialNumber, m.txtCompany,           m.txtStation,
                 m.txtDesignator, m.txtManufacturer,    m.txtOperator,          m.txtTemperature,
                 m.txtNotes,      m.cbCompensationText, m.lbTexteCompensedTemp1};
    return copy;
}

QStringList rowsOf(int n, const QString& resistanceB = QStringLiteral("1.5 mOhm"))
{
    QStringList lines;
    for (int i = 1; i <= n; ++i)
        lines << zonedRow({QString::number(i), QStringLiteral("H1-H2"), QStringLiteral("1.50 mOhm"),
                           QString::number(i), QStringLiteral("X1-X2"), resistanceB,
                           QStringLiteral("10A"), QStringLiteral("5sec"),
                           QStringLiteral("00:00:05")});
    return lines;
}

// The lines of a file, without their CR LF ends; a last line without an end
// is a line too.
QStringList linesOf(const QByteArray& bytes)
{
    QStringList lines = QString::fromLatin1(bytes).split(QStringLiteral("\r\n"));
    if (!lines.isEmpty() && lines.constLast().isEmpty())
        lines.removeLast();
    return lines;
}

class ZblReportSaveTest : public ZblFixture
{
protected:
    void SetUp() override
    {
        ZblFixture::SetUp();
        writeLines(
            QStringLiteral("en.lng"),
            {QStringLiteral("frmZBLBasicReport.cbCompensation.Aluminium,Alluminium (TK=225)"),
             QStringLiteral("frmZBLBasicReport.cbCompensation.Coper,Copper (TK=234.5)"),
             QStringLiteral("frmCompensedResistanceSetting.Caption,Compensation")});
        setAppPathOverride(m_dir.path());
        appState().LangFilePath = m_dir.filePath(QStringLiteral("en.lng"));
        zblBasicReport() = ZblBasicReportModel{};
        appState().ProcessInProgress = False16;
        ASSERT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("data")));
    }

    void TearDown() override
    {
        setAppPathOverride(QString());
        appState().LangFilePath.clear();
        ZblFixture::TearDown();
    }

    // A path in the scratch data folder.
    QString data(const QString& name) const
    {
        return m_dir.filePath(QStringLiteral("data/") + name);
    }

    // Copies a sample into the scratch data folder under `name`.
    QString copySample(const QString& sample, const QString& name)
    {
        const QString path = data(name);
        writeBytes(path, readBytes(samplePath(sample)));
        return path;
    }

    QString writeData(const QString& name, const QStringList& lines)
    {
        const QString path = data(name);
        writeBytes(path, crlfLines(lines));
        return path;
    }

    // Opens `path` through the main window's road.
    void open(const QString& path)
    {
        scripted.files.answers.push_back(path);
        mnZBLFiles_Click();
        ASSERT_EQ(record().FilePath, path);
    }

    // Saves, the save dialog answering `chosen` ("" cancels); gives the
    // failure number the save ended with.
    int save(const QString& chosen)
    {
        scripted.files.saveAnswers.push_back(chosen);
        return SaveZBLReport();
    }

    // The names in the scratch data folder.
    QStringList dataFiles() const
    {
        return QDir(m_dir.filePath(QStringLiteral("data"))).entryList(QDir::Files, QDir::Name);
    }

    // Compares the bytes of `path` with the golden file zbl-save/`golden`,
    // line by line and then whole. On a difference the save is kept beside
    // the build's working folder as <golden>.actual for a look.
    void expectGolden(const QString& path, const QString& golden)
    {
        const QByteArray actual = readBytes(path);
        const QString goldenPath = testDataPath(QStringLiteral("zbl-save/") + golden);
        const QByteArray expected =
            QFile::exists(goldenPath) ? readBytes(goldenPath) : QByteArray();
        if (actual != expected) {
            writeBytes(QDir::current().filePath(golden + QStringLiteral(".actual")), actual);
            const QStringList a = linesOf(actual);
            const QStringList e = linesOf(expected);
            for (qsizetype i = 0; i < std::min(a.size(), e.size()); ++i)
                EXPECT_EQ(a[i], e[i]) << "line " << i + 1 << " of " << golden.toStdString();
        }
        EXPECT_EQ(actual, expected) << golden.toStdString();
    }

    ScriptedCompensation compensation;
    ScriptedWindows windows;
    ScriptedServices scripted;
};

} // namespace

// --- The cell text rule --------------------------------------------------

TEST(NormalizeResistanceText, ShortestNumberWithALeadingZeroAndTheRestBehindOneBlank)
{
    EXPECT_EQ(NormalizeResistanceText(QStringLiteral("1.50 mOhm")), QStringLiteral("1.5 mOhm"));
    EXPECT_EQ(NormalizeResistanceText(QStringLiteral(".5 mOhm")), QStringLiteral("0.5 mOhm"));
    EXPECT_EQ(NormalizeResistanceText(QStringLiteral("1335.00 \xb5Ohm")),
              QStringLiteral("1335 \xb5Ohm"));
    EXPECT_EQ(NormalizeResistanceText(QStringLiteral("0.050 Ohm")), QStringLiteral("0.05 Ohm"));
    // A bare number keeps no blank behind it.
    EXPECT_EQ(NormalizeResistanceText(QStringLiteral("2.000")), QStringLiteral("2"));
    // Only the first blank splits: what follows it stays as it is.
    EXPECT_EQ(NormalizeResistanceText(QStringLiteral("1.0  m Ohm")), QStringLiteral("1  m Ohm"));
    // A negative number has no point in front, so no zero is put there.
    EXPECT_EQ(NormalizeResistanceText(QStringLiteral("-.25 Ohm")), QStringLiteral("-.25 Ohm"));
}

TEST(NormalizeResistanceText, ANumberPartThatIsNoNumberFails)
{
    for (const char* text : {"OFF", "---", "OVER", "1,5 mOhm", "mOhm 1.5", " 1.5 mOhm"})
        EXPECT_EQ(failureOf([text] { NormalizeResistanceText(QString::fromLatin1(text)); }),
                  err::TypeMismatch)
            << text;
    // An empty cell has no first piece at all.
    EXPECT_EQ(failureOf([] { NormalizeResistanceText(QString()); }), err::SubscriptOutOfRange);
}

// --- The numbered names --------------------------------------------------

TEST_F(ZblReportSaveTest, ZblFileExistsFindsFilesOnly)
{
    const QString file = writeData(QStringLiteral("here.zbl"), {QStringLiteral("x")});
    ASSERT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("data/folder.zbl")));
    EXPECT_EQ(ZBLFileExists(file), True16);
    EXPECT_EQ(ZBLFileExists(data(QStringLiteral("folder.zbl"))), False16);
    EXPECT_EQ(ZBLFileExists(data(QStringLiteral("missing.zbl"))), False16);
    EXPECT_EQ(ZBLFileExists(QString()), False16);
}

TEST_F(ZblReportSaveTest, NumberedNamesCountToTenAndThenBreakDownAsKept)
{
    const QString base = data(QStringLiteral("name.zbl"));
    // No numbered file yet: the first number, without looking further.
    EXPECT_EQ(MakeZBLNameUnique(base, base), data(QStringLiteral("name(1).zbl")));
    const int breathsBefore = m_breaths;
    for (int k = 1; k <= 9; ++k) {
        writeData(QStringLiteral("name(%1).zbl").arg(k), {QStringLiteral("x")});
        EXPECT_EQ(MakeZBLNameUnique(base, base), data(QStringLiteral("name(%1).zbl").arg(k + 1)));
    }
    // One yield a pass: 1 + 2 + ... + 9 passes.
    EXPECT_EQ(m_breaths - breathsBefore, 45);
    // Past ten only the last digit counts: "name(10)" gives "name((1)".
    writeData(QStringLiteral("name(10).zbl"), {QStringLiteral("x")});
    EXPECT_EQ(MakeZBLNameUnique(base, base), data(QStringLiteral("name((1).zbl")));
    writeData(QStringLiteral("name((1).zbl"), {QStringLiteral("x")});
    EXPECT_EQ(MakeZBLNameUnique(base, base), data(QStringLiteral("name((2).zbl")));
}

TEST_F(ZblReportSaveTest, ANumberedNameCountsOnFromItsOwnNumber)
{
    const QString three = writeData(QStringLiteral("t(3).zbl"), {QStringLiteral("x")});
    EXPECT_EQ(MakeZBLNameUnique(three, three), data(QStringLiteral("t(4).zbl")));
    // A free numbered name is given back as it is.
    const QString seven = data(QStringLiteral("t(7).zbl"));
    EXPECT_EQ(MakeZBLNameUnique(seven, seven), seven);
}

TEST_F(ZblReportSaveTest, ANonDigitInParenthesesIsATypeMismatch)
{
    const QString letter = writeData(QStringLiteral("x(a).zbl"), {QStringLiteral("x")});
    EXPECT_EQ(failureOf([&letter] { MakeZBLNameUnique(letter, letter); }), err::TypeMismatch);
}

// --- The command -----------------------------------------------------------

TEST_F(ZblReportSaveTest, TheDialogStartsBesideTheProgramWithTheZblFilter)
{
    const QString path =
        copySample(QStringLiteral("zbl-timed-20-rows.zbl"), QStringLiteral("t.zbl"));
    open(path);
    EXPECT_EQ(save(data(QStringLiteral("copy.zbl"))), 0);
    ASSERT_EQ(scripted.files.saveRequests.size(), 1u);
    const SaveFileRequest& request = scripted.files.saveRequests.front();
    EXPECT_EQ(request.initDir, m_dir.path() + pathSep() + "ZBL" + pathSep() + "Files");
    EXPECT_EQ(request.filter, QStringLiteral("*.zbl"));
    // The main window's dialog proposes what it last held: the opened file.
    EXPECT_EQ(request.fileName, path);
    EXPECT_EQ(request.title, QStringLiteral("Test"));
    EXPECT_EQ(CommonDialog1().FileName, data(QStringLiteral("copy.zbl")));
    // No message, on success as on failure.
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(ZblReportSaveTest, CancelWritesNothingAndKeepsTheReportsFile)
{
    const QString path =
        copySample(QStringLiteral("zbl-timed-20-rows.zbl"), QStringLiteral("t.zbl"));
    open(path);
    const QByteArray before = readBytes(path);
    const int openFiles = SequentialFiles::instance().openCount();
    EXPECT_EQ(save(QString()), CancelError);
    EXPECT_EQ(dataFiles(), QStringList{QStringLiteral("t.zbl")});
    EXPECT_EQ(readBytes(path), before);
    EXPECT_EQ(record().FilePath, path);
    EXPECT_EQ(zblBasicReport().lbTexteFileName1, QStringLiteral("t.zbl"));
    // The dialog keeps its file name; the test file stays open.
    EXPECT_EQ(CommonDialog1().FileName, path);
    EXPECT_EQ(SequentialFiles::instance().openCount(), openFiles);
    EXPECT_TRUE(SequentialFiles::instance().isOpen(
        static_cast<Int16>(appState().ZblTestFileNo.toNumber())));
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(ZblReportSaveTest, NoDialogServiceCountsAsCancel)
{
    const QString path =
        copySample(QStringLiteral("zbl-timed-20-rows.zbl"), QStringLiteral("t.zbl"));
    open(path);
    services().files = nullptr;
    EXPECT_EQ(SaveZBLReport(), CancelError);
    EXPECT_EQ(dataFiles(), QStringList{QStringLiteral("t.zbl")});
}

TEST_F(ZblReportSaveTest, SavingUnderTheReportsNameWritesTheNextNumberedName)
{
    const QString path =
        copySample(QStringLiteral("zbl-timed-20-rows.zbl"), QStringLiteral("t.zbl"));
    open(path);
    const QByteArray original = readBytes(path);
    const ReportCopy shown = copyOfReport();
    const QString fileName = record().FileName;

    EXPECT_EQ(save(path), 0);
    const QString first = data(QStringLiteral("t(1).zbl"));
    EXPECT_EQ(dataFiles(), (QStringList{QStringLiteral("t(1).zbl"), QStringLiteral("t.zbl")}));
    EXPECT_EQ(readBytes(path), original);
    // The report now refers to the new file; the record's other fields stay.
    EXPECT_EQ(record().FilePath, first);
    EXPECT_EQ(record().FileName, fileName);
    EXPECT_EQ(record().ModeText, QStringLiteral("Timed"));
    EXPECT_EQ(zblBasicReport().lbTexteFileName1, QStringLiteral("t(1).zbl"));
    expectGolden(first, QStringLiteral("timed-20-rows.zbl"));

    // A second save under the new name counts on.
    EXPECT_EQ(save(first), 0);
    const QString second = data(QStringLiteral("t(2).zbl"));
    EXPECT_EQ(record().FilePath, second);
    EXPECT_EQ(readBytes(second), readBytes(first));
    EXPECT_EQ(readBytes(path), original);

    // What comes back is what was on the screen.
    open(second);
    EXPECT_EQ(zblBasicReport().lbTexteFileName1, QStringLiteral("t(2).zbl"));
    EXPECT_EQ(copyOfReport(), shown);
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 21);
}

TEST_F(ZblReportSaveTest, ASavedSampleSavesAsItselfAndReadsBackTheSame)
{
    const QString path =
        copySample(QStringLiteral("zbl-saved-compensated.zbl"), QStringLiteral("s.zbl"));
    open(path);
    const ReportCopy shown = copyOfReport();
    // Applying the stored compensation wrote both temperatures back with a
    // "C" behind them, and the save takes them as the report shows them.
    ASSERT_EQ(zblBasicReport().cbCompensationText, QStringLiteral("Copper (TK=234.5)"));
    ASSERT_EQ(zblBasicReport().lbTexteCompensedTemp1, QStringLiteral("75C"));
    ASSERT_EQ(zblBasicReport().txtTemperature, QStringLiteral("22C"));

    const QString copy = data(QStringLiteral("copy.zbl"));
    EXPECT_EQ(save(copy), 0);
    expectGolden(copy, QStringLiteral("saved-compensated.zbl"));
    // Apart from those two texts the save is the sample itself.
    QByteArray sample = readBytes(samplePath(QStringLiteral("zbl-saved-compensated.zbl")));
    sample.replace("Temperature:  22 C\r\n", "Temperature:  22C\r\n");
    sample.replace("TEMP COMPENSED:             75\r\n", "TEMP COMPENSED:             75C\r\n");
    EXPECT_EQ(readBytes(copy), sample);

    // Read again, the same report comes up, compensation and all.
    open(copy);
    EXPECT_EQ(copyOfReport(), shown);
    EXPECT_EQ(record().CompensationFactorText, QStringLiteral("Copper (TK=234.5)"));
    EXPECT_EQ(record().CompensedTempText, QStringLiteral("75C"));
}

TEST_F(ZblReportSaveTest, EditsOnTheScreenReachTheFile)
{
    const QString path = writeData(QStringLiteral("e.zbl"), uploadedLines(rowsOf(3)));
    open(path);
    ZblBasicReportModel& m = zblBasicReport();
    m.lbTexteDate1 = QStringLiteral("1 Jan.2025   08:00:00");
    m.txtCompany = QStringLiteral("Édith & Co");
    m.txtNotes = QStringLiteral("after repair");
    // Blanks around a cell go.
    m.cell(ZblReportColumn::TapA, 0) = QStringLiteral("  T1 ");
    m.cell(ZblReportColumn::WindingB, 1) = QStringLiteral("X1-X3");
    m.cell(ZblReportColumn::ResA, 2) = QStringLiteral(".50 mOhm");
    m.cell(ZblReportColumn::ResB, 2) = QStringLiteral("12.0000");
    // The total time cell is not what is written: the record's is.
    m.cell(ZblReportColumn::TotalTime, 0) = QStringLiteral("99:99:99");
    m.cbCompensationText = QStringLiteral("Copper (TK=234.5)");
    m.lbTexteCompensedTemp1 = QStringLiteral("75");

    const QString saved = data(QStringLiteral("edited.zbl"));
    EXPECT_EQ(save(saved), 0);
    expectGolden(saved, QStringLiteral("edited.zbl"));

    open(saved);
    EXPECT_EQ(m.lbTexteDate1, QStringLiteral("1 Jan.2025   08:00:00"));
    EXPECT_EQ(m.txtCompany, QStringLiteral("Édith & Co"));
    EXPECT_EQ(m.txtNotes, QStringLiteral("after repair"));
    EXPECT_EQ(m.cell(ZblReportColumn::TapA, 0), QStringLiteral("T1"));
    EXPECT_EQ(m.cell(ZblReportColumn::WindingB, 1), QStringLiteral("X1-X3"));
    // The reader gives the number its shortest form again.
    EXPECT_EQ(m.cell(ZblReportColumn::ResA, 2), QStringLiteral(".5 mOhm"));
    // A bare number takes the next token, the current's, as its unit.
    EXPECT_EQ(m.cell(ZblReportColumn::ResB, 2), QStringLiteral("12 10"));
    EXPECT_EQ(m.cell(ZblReportColumn::TotalTime, 0), QStringLiteral("00:00:05"));
    // The compensation comes back and is applied again.
    EXPECT_EQ(record().CompensationFactorText, QStringLiteral("Copper (TK=234.5)"));
    EXPECT_EQ(m.lbTexteCompensedTemp1, QStringLiteral("75C"));
    EXPECT_EQ(m.cbCompensationText, QStringLiteral("Copper (TK=234.5)"));
    EXPECT_NE(m.txtConbinedResistanceA(1), QStringLiteral("---"));
}

TEST_F(ZblReportSaveTest, ANameWithoutTheEndingGetsIt)
{
    const QString path = writeData(QStringLiteral("e.zbl"), uploadedLines(rowsOf(2)));
    open(path);
    EXPECT_EQ(save(data(QStringLiteral("a.b"))), 0);
    EXPECT_EQ(save(data(QStringLiteral("plain"))), 0);
    // A name that ends in ".ZBL" is not taken as ending in ".zbl".
    EXPECT_EQ(save(data(QStringLiteral("upper.ZBL"))), 0);
    EXPECT_EQ(dataFiles(),
              (QStringList{QStringLiteral("a.b.zbl"), QStringLiteral("e.zbl"),
                           QStringLiteral("plain.zbl"), QStringLiteral("upper.ZBL.zbl")}));
    EXPECT_EQ(record().FilePath, data(QStringLiteral("upper.ZBL.zbl")));
    EXPECT_EQ(readBytes(data(QStringLiteral("a.b.zbl"))),
              readBytes(data(QStringLiteral("plain.zbl"))));
}

TEST_F(ZblReportSaveTest, TheBarePatternLeavesWithoutWriting)
{
    const QString path = writeData(QStringLiteral("e.zbl"), uploadedLines(rowsOf(2)));
    open(path);
    EXPECT_EQ(save(QStringLiteral("*.zbl")), 0);
    EXPECT_EQ(save(QStringLiteral("*")), 0);
    EXPECT_EQ(record().FilePath, path);
    EXPECT_EQ(dataFiles(), QStringList{QStringLiteral("e.zbl")});
    EXPECT_FALSE(QFileInfo::exists(QStringLiteral("*.zbl")));
}

TEST_F(ZblReportSaveTest, ARowCountOfNWritesNRowsEvenWithTheTableScrolled)
{
    const QString path = writeData(QStringLiteral("long.zbl"), uploadedLines(rowsOf(24)));
    open(path);
    ASSERT_TRUE(zblBasicReport().VScroll1Visible);
    ZblReport_VScroll1_Change(zblBasicReport().VScroll1Max);
    const int breaths = m_breaths;
    const QString saved = data(QStringLiteral("saved.zbl"));
    EXPECT_EQ(save(saved), 0);
    // One yield a row.
    EXPECT_EQ(m_breaths - breaths, 24);
    const QStringList lines = linesOf(readBytes(saved));
    ASSERT_EQ(lines.size(), 15 + 24 + 3);
    for (int i = 0; i < 24; ++i)
        EXPECT_TRUE(lines[15 + i].startsWith(QStringLiteral("-             %1 ").arg(i + 1)))
            << lines[15 + i].toStdString();
    EXPECT_EQ(lines[15 + 24], QString());

    open(saved);
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 25);
    EXPECT_EQ(zblBasicReport().cell(ZblReportColumn::TapA, 23), QStringLiteral("24"));
}

TEST_F(ZblReportSaveTest, IntervalAndCurrentAreSavedAsTheReaderStoredThem)
{
    const QString path =
        writeData(QStringLiteral("c.zbl"),
                  uploadedLines({zonedRow({"1", "H1-H2", "1.5 mOhm", "1", "X1-X2", "2.5 mOhm",
                                           "100mA", "12sec", "00:01:00"}),
                                 zonedRow({"2", "H1-H2", "1.5 mOhm", "2", "X1-X2", "2.5 mOhm",
                                           "10A", " 0.5sec", "00:01:30"})}));
    open(path);
    const QString saved = data(QStringLiteral("saved.zbl"));
    EXPECT_EQ(save(saved), 0);
    const QStringList lines = linesOf(readBytes(saved));
    ASSERT_GE(lines.size(), 17);
    EXPECT_EQ(lines[15], zonedRow({"1", "H1-H2", "1.5 mOhm", "1", "X1-X2", "2.5 mOhm", "100 mA",
                                   "12", "00:01:00"}));
    // The number text of a half has no zero ahead of its point.
    EXPECT_EQ(lines[16], zonedRow({"2", "H1-H2", "1.5 mOhm", "2", "X1-X2", "2.5 mOhm", "10 A", ".5",
                                   "00:01:30"}));

    open(saved);
    EXPECT_EQ(record().CurrentText[0], QStringLiteral("100 mA"));
    EXPECT_EQ(record().IntervalSeconds[0], 12.0);
    EXPECT_EQ(record().CurrentText[1], QStringLiteral("10 A"));
    EXPECT_EQ(record().IntervalSeconds[1], 0.5);
}

TEST_F(ZblReportSaveTest, AnEmptyCompensationBoxWritesTheKeysWithoutValues)
{
    const QString path = writeData(QStringLiteral("e.zbl"), uploadedLines(rowsOf(2)));
    open(path);
    ASSERT_TRUE(zblBasicReport().cbCompensationText.isEmpty());
    const QString saved = data(QStringLiteral("saved.zbl"));
    EXPECT_EQ(save(saved), 0);
    const QStringList lines = linesOf(readBytes(saved));
    ASSERT_EQ(lines.size(), 15 + 2 + 3);
    EXPECT_EQ(lines[17], QString());
    EXPECT_EQ(lines[18], QStringLiteral("TEMP COMPENSATION FACTOR:   "));
    EXPECT_EQ(lines[19], QStringLiteral("TEMP COMPENSED:             "));

    // The keys are found, with empty values rather than "NAV".
    open(saved);
    EXPECT_EQ(record().CompensationFactorText, QString());
    EXPECT_EQ(record().CompensedTempText, QString());
}

TEST_F(ZblReportSaveTest, TheFileEndsAtTheRowBeforeAnOffCell)
{
    QStringList rows = rowsOf(5);
    rows[3] = zonedRow({"4", "H1-H2", "1.5 mOhm", "4", "X1-X2", "OFF", "10A", "5sec", "00:00:05"});
    const QString path = writeData(QStringLiteral("off.zbl"), uploadedLines(rows));
    open(path);
    const QString saved = data(QStringLiteral("short.zbl"));
    EXPECT_EQ(save(saved), err::TypeMismatch);
    // The record names the new file all the same, and nothing is said.
    EXPECT_EQ(record().FilePath, saved);
    EXPECT_TRUE(scripted.messages.shown.empty());
    expectGolden(saved, QStringLiteral("off-at-row-4.zbl"));
    const QStringList lines = linesOf(readBytes(saved));
    ASSERT_EQ(lines.size(), 15 + 3);
    // The output file is closed: it is not among the open numbers.
    EXPECT_EQ(SequentialFiles::instance().openCount(), 1);

    // A reload counts the true lines, without the extra one, and so shows
    // one row less than was written.
    open(saved);
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 3);
    EXPECT_EQ(record().CompensationFactorText, QStringLiteral("NAV"));
    EXPECT_TRUE(zblBasicReport().rowVisible(1));
    EXPECT_FALSE(zblBasicReport().rowVisible(2));
}

TEST_F(ZblReportSaveTest, AChannelSwitchedOffFromTheFirstRowSavesTheHeadAlone)
{
    const QString path = copySample(QStringLiteral("zbl-manual-24-rows-channel-b-off.zbl"),
                                    QStringLiteral("off.zbl"));
    open(path);
    const QString saved = data(QStringLiteral("head.zbl"));
    EXPECT_EQ(save(saved), err::TypeMismatch);
    const QStringList lines = linesOf(readBytes(saved));
    ASSERT_EQ(lines.size(), 15);
    EXPECT_EQ(lines[3], QStringLiteral("Mode:         "));
    EXPECT_EQ(lines[14], QString(136, u'-'));
}

TEST_F(ZblReportSaveTest, AFileThatCannotBeOpenedIsTheQuietFailurePath)
{
    const QString path = writeData(QStringLiteral("e.zbl"), uploadedLines(rowsOf(2)));
    open(path);
    // A folder in the way of the name, and a folder that does not exist.
    ASSERT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("data/taken.zbl")));
    const QString taken = data(QStringLiteral("taken.zbl"));
    EXPECT_EQ(save(taken), err::PathFileAccessError);
    EXPECT_EQ(record().FilePath, taken);
    const QString nowhere = data(QStringLiteral("missing/x.zbl"));
    EXPECT_EQ(save(nowhere), err::PathNotFound);
    EXPECT_EQ(record().FilePath, nowhere);
    EXPECT_FALSE(QFileInfo::exists(nowhere));
    EXPECT_TRUE(scripted.messages.shown.empty());
    EXPECT_EQ(SequentialFiles::instance().openCount(), 1);
    // The head keeps the name of the file last saved or opened.
    EXPECT_EQ(zblBasicReport().lbTexteFileName1, QStringLiteral("e.zbl"));
}

TEST_F(ZblReportSaveTest, TheReportsFileIsNeverWrittenOver)
{
    const QString path = writeData(QStringLiteral("t.zbl"), uploadedLines(rowsOf(3)));
    open(path);
    const QByteArray original = readBytes(path);
    zblBasicReport().txtNotes = QStringLiteral("changed");

    EXPECT_EQ(save(path), 0);
    EXPECT_EQ(record().FilePath, data(QStringLiteral("t(1).zbl")));
    // The record now names t(1).zbl, but t.zbl is still open for input: a save
    // under that name, or under another spelling of it, is refused.
    EXPECT_EQ(save(path), err::FileAlreadyOpen);
    EXPECT_EQ(record().FilePath, path);
    EXPECT_EQ(save(data(QStringLiteral("./t.zbl"))), err::FileAlreadyOpen);
    EXPECT_EQ(readBytes(path), original);
    EXPECT_EQ(dataFiles(), (QStringList{QStringLiteral("t(1).zbl"), QStringLiteral("t.zbl")}));
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(ZblReportSaveTest, ANonDigitNameStopsBeforeTheRecordChanges)
{
    const QString path = writeData(QStringLiteral("x(a).zbl"), uploadedLines(rowsOf(2)));
    open(path);
    const QByteArray original = readBytes(path);
    EXPECT_EQ(save(path), err::TypeMismatch);
    EXPECT_EQ(record().FilePath, path);
    EXPECT_EQ(readBytes(path), original);
    EXPECT_EQ(dataFiles(), QStringList{QStringLiteral("x(a).zbl")});
}

TEST_F(ZblReportSaveTest, TenNumberedSavesEndAtTheKeptBreakDown)
{
    const QString path = writeData(QStringLiteral("n.zbl"), uploadedLines(rowsOf(2)));
    open(path);
    for (int k = 1; k <= 10; ++k)
        writeData(QStringLiteral("n(%1).zbl").arg(k), {QStringLiteral("x")});
    EXPECT_EQ(save(path), 0);
    const QString broken = data(QStringLiteral("n((1).zbl"));
    EXPECT_EQ(record().FilePath, broken);
    EXPECT_EQ(readBytes(data(QStringLiteral("n(10).zbl"))), QByteArray("x\r\n"));

    open(broken);
    EXPECT_EQ(zblBasicReport().lbTexteFileName1, QStringLiteral("n((1).zbl"));
    EXPECT_EQ(CheckNumberOfTAPInFiles(), 3);
    EXPECT_EQ(zblBasicReport().cell(ZblReportColumn::TapB, 1), QStringLiteral("2"));
}
