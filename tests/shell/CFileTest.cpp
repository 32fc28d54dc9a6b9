#include "shell/model/CFile.h"

#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

using namespace quenby;
using quenby::testing::crlfLines;
using quenby::testing::readBytes;
using quenby::testing::writeBytes;

namespace {

// Every test works in its own temporary folder and gets the process's current
// folder back afterwards, since FolderExists and MakeDirectory move it.
class CFileTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_savedCurrent = QDir::currentPath();
        m_openBefore = SequentialFiles::instance().openCount();
    }

    void TearDown() override
    {
        m_file.CloseFile();
        // Files that a test left open on purpose (the no-guard cases) are
        // closed here, so that no test sees another's numbers.
        auto& files = SequentialFiles::instance();
        for (Int16 n = 1; n <= SequentialFiles::MaxFileNumber; ++n)
            if (files.isOpen(n) && files.path(n).startsWith(m_dir.path()))
                files.close(n);
        QDir::setCurrent(m_savedCurrent);
    }

    // A path inside the temporary folder, with the platform's separator.
    QString path(const QString& name) const { return toPlatformPath(m_dir.path() + "/" + name); }

    // Writes `bytes` to `name` and opens it for input through m_file.
    void openInput(const QString& name, const QByteArray& bytes)
    {
        QString p = path(name);
        writeBytes(p, bytes);
        ASSERT_EQ(m_file.OpenFile(p, False16), 0);
    }

    void openOutput(const QString& name)
    {
        QString p = path(name);
        ASSERT_EQ(m_file.OpenFile(p, True16), 0);
    }

    QTemporaryDir m_dir;
    QString m_savedCurrent;
    int m_openBefore = 0;
    CFile m_file;
};

// The nine fields of a table row, as the upload's file maker hands them over.
struct ZblRow
{
    QString tapA = "1";
    QString windingA = "H1-H2";
    QString resistanceA = "12.34 mOhm";
    QString tapB = "2";
    QString windingB = "X1-X2";
    QString resistanceB = "OFF";
    QString current = " 1000";
    Dynamic interval = Dynamic(" 5sec");
    QString total = "00:00:00";

    Int16 printTo(CFile& file)
    {
        return file.PrintLineToFileZBL(tapA, windingA, resistanceA, tapB, windingB, resistanceB,
                                       current, interval, total);
    }
};

// The single row a file holds, without its line end.
QString onlyRow(const QString& filePath)
{
    QByteArray bytes = readBytes(filePath);
    EXPECT_TRUE(bytes.endsWith("\r\n"));
    bytes.chop(2);
    EXPECT_FALSE(bytes.contains('\n'));
    return QString::fromLatin1(bytes);
}

} // namespace

// --- MakeDirectory ---------------------------------------------------------

TEST_F(CFileTest, MakeDirectoryMakesEveryFolderButNotTheFileName)
{
    QString target = path("a/b/c.txt");
    m_file.MakeDirectory(target);

    EXPECT_TRUE(QFileInfo(path("a")).isDir());
    EXPECT_TRUE(QFileInfo(path("a/b")).isDir());
    EXPECT_FALSE(QFileInfo::exists(path("a/b/c.txt")));
    EXPECT_EQ(target, path("a/b/c.txt")) << "the caller's path is not touched";
}

TEST_F(CFileTest, MakeDirectoryMakesTheLastFolderWhenThePathEndsInASeparator)
{
    QString target = path("x/y/");
    m_file.MakeDirectory(target);

    EXPECT_TRUE(QFileInfo(path("x/y")).isDir());
}

TEST_F(CFileTest, MakeDirectoryKeepsExistingFoldersAndTheirFiles)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkpath("keep/inner"));
    writeBytes(path("keep/inner/data.txt"), "data");

    QString target = path("keep/inner/more/");
    EXPECT_NO_THROW(m_file.MakeDirectory(target));

    EXPECT_EQ(readBytes(path("keep/inner/data.txt")), QByteArray("data"));
    EXPECT_TRUE(QFileInfo(path("keep/inner/more")).isDir());
}

TEST_F(CFileTest, MakeDirectoryOfANameWithoutSeparatorMakesNothing)
{
    ASSERT_TRUE(QDir::setCurrent(m_dir.path()));
    QString target = "lonely";
    m_file.MakeDirectory(target);

    EXPECT_TRUE(QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty());
}

TEST_F(CFileTest, MakeDirectoryFailureReachesTheCallerAndStops)
{
    // A file stands where a folder should be made.
    writeBytes(path("blocker"), "x");
    QString target = path("blocker/sub/deeper/");

    try {
        m_file.MakeDirectory(target);
        FAIL() << "no failure";
    } catch (const RuntimeError& e) {
        EXPECT_NE(e.number(), 0);
    }
    EXPECT_TRUE(QFileInfo(path("blocker")).isFile());
    EXPECT_FALSE(QFileInfo::exists(path("blocker/sub")));
}

// --- FolderExists ------------------------------------------------------------

TEST_F(CFileTest, FolderExistsIsTrueAndLeavesTheCurrentFolderThere)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkdir("here"));
    QString folder = path("here");

    EXPECT_EQ(m_file.FolderExists(folder), True16);
    EXPECT_EQ(QFileInfo(QDir::currentPath()).canonicalFilePath(),
              QFileInfo(path("here")).canonicalFilePath());
}

TEST_F(CFileTest, FolderExistsIsFalseForAMissingFolderOrAFile)
{
    writeBytes(path("plain.txt"), "x");
    const QString before = QDir::currentPath();
    QString missing = path("nowhere");
    QString file = path("plain.txt");
    QString empty;

    EXPECT_EQ(m_file.FolderExists(missing), False16);
    EXPECT_EQ(m_file.FolderExists(file), False16);
    EXPECT_EQ(m_file.FolderExists(empty), False16);
    EXPECT_EQ(QDir::currentPath(), before);
}

// --- OpenFile and CloseFile --------------------------------------------------

TEST_F(CFileTest, OpenFileForInputOfAMissingFileReturnsThePlatformNumber)
{
    QString missing = path("missing.txt");

    EXPECT_EQ(m_file.OpenFile(missing, False16), err::FileNotFound);

    EXPECT_FALSE(SequentialFiles::instance().isOpen(m_file.fileNo()));
    EXPECT_EQ(SequentialFiles::instance().openCount(), m_openBefore);
    EXPECT_FALSE(QFileInfo::exists(missing));
}

TEST_F(CFileTest, OpenFileForOutputCreatesOrTruncates)
{
    writeBytes(path("old.txt"), "old content\r\n");
    QString existing = path("old.txt");
    QString fresh = path("new.txt");

    EXPECT_EQ(m_file.OpenFile(existing, True16), 0);
    EXPECT_TRUE(SequentialFiles::instance().isOpen(m_file.fileNo()));
    m_file.CloseFile();
    EXPECT_EQ(readBytes(existing), QByteArray());

    EXPECT_EQ(m_file.OpenFile(fresh, True16), 0);
    m_file.CloseFile();
    EXPECT_TRUE(QFileInfo(fresh).isFile());
}

// The process runs as root in CI, and root writes to a file whatever its mode.
// A target that nobody can open for output stands in for the read-only file:
// a path that is a folder, and a file in a folder that does not exist.
TEST_F(CFileTest, OpenFileForOutputOnAFolderFailsAndPrintingThenFails)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkdir("taken"));
    QString target = path("taken");

    const Int16 error = m_file.OpenFile(target, True16);
    EXPECT_NE(error, 0);
    EXPECT_FALSE(SequentialFiles::instance().isOpen(m_file.fileNo()));

    QString line = "text";
    EXPECT_NE(m_file.PrintLineToFile(line), 0);
    ZblRow row;
    EXPECT_NE(row.printTo(m_file), 0);
    EXPECT_TRUE(QFileInfo(target).isDir());
}

TEST_F(CFileTest, OpenFileForOutputInAMissingFolderFailsAndPrintingThenFails)
{
    QString target = path("absent/out.txt");

    EXPECT_EQ(m_file.OpenFile(target, True16), err::PathNotFound);

    QString line = "text";
    EXPECT_EQ(m_file.PrintLineToFile(line), err::BadFileNameOrNumber);
    EXPECT_FALSE(QFileInfo::exists(path("absent")));
}

TEST_F(CFileTest, OpenFileForOutputWhereNoFileCanBeFails)
{
    // A path below a regular file can be made by nobody, root included.
    writeBytes(path("plain.txt"), "plain\r\n");
    QString target = path("plain.txt") + QStringLiteral("/inside.txt");
    EXPECT_NE(m_file.OpenFile(target, True16), 0);
    QString line = "text";
    EXPECT_NE(m_file.PrintLineToFile(line), 0);
    EXPECT_EQ(readBytes(path("plain.txt")), QByteArray("plain\r\n"));
    EXPECT_FALSE(QFileInfo::exists(target));
}

TEST_F(CFileTest, OpenFileWithEveryNumberTakenReturnsThePlatformNumber)
{
    writeBytes(path("held.txt"), crlfLines({"held"}));
    auto& files = SequentialFiles::instance();
    std::vector<Int16> held;
    // Other readers take every number that is left.
    for (;;) {
        Int16 n = 0;
        try {
            n = files.freeFile();
        } catch (const RuntimeError&) {
            break;
        }
        files.open(n, path("held.txt"), SequentialFiles::Mode::Input);
        held.push_back(n);
    }
    ASSERT_FALSE(held.empty());
    QString target = path("held.txt");

    EXPECT_EQ(m_file.OpenFile(target, False16), err::TooManyFiles);

    // The numbers that others hold stay theirs.
    for (Int16 n : held)
        EXPECT_TRUE(files.isOpen(n)) << n;
}

TEST_F(CFileTest, OpeningTwiceTakesANewNumberAndLeavesTheFirstOpen)
{
    writeBytes(path("one.txt"), crlfLines({"from one"}));
    writeBytes(path("two.txt"), crlfLines({"from two"}));
    QString one = path("one.txt");
    QString two = path("two.txt");

    ASSERT_EQ(m_file.OpenFile(one, False16), 0);
    const Int16 first = m_file.fileNo();
    ASSERT_EQ(m_file.OpenFile(two, False16), 0);

    // No guard: the first file is not closed and the instance forgets it.
    EXPECT_NE(m_file.fileNo(), first);
    EXPECT_TRUE(SequentialFiles::instance().isOpen(first));
    QString line;
    EXPECT_EQ(m_file.GetNextLine(line), 0);
    EXPECT_EQ(line, "from two");
}

TEST_F(CFileTest, AFailedSecondOpenLosesTheFirstFile)
{
    openInput("one.txt", crlfLines({"from one"}));
    QString missing = path("missing.txt");

    EXPECT_EQ(m_file.OpenFile(missing, False16), err::FileNotFound);

    QString line = "before";
    EXPECT_EQ(m_file.GetNextLine(line), err::BadFileNameOrNumber);
    EXPECT_EQ(line, "before");
}

TEST_F(CFileTest, CloseFileOnAClosedFileDoesNothing)
{
    CFile neverOpened;
    EXPECT_NO_THROW(neverOpened.CloseFile());

    openInput("a.txt", crlfLines({"a"}));
    const Int16 no = m_file.fileNo();
    m_file.CloseFile();
    EXPECT_FALSE(SequentialFiles::instance().isOpen(no));
    EXPECT_NO_THROW(m_file.CloseFile());
    EXPECT_EQ(SequentialFiles::instance().openCount(), m_openBefore);
}

TEST_F(CFileTest, UseAfterCloseFileReturnsThePlatformNumber)
{
    openInput("a.txt", crlfLines({"a", "b"}));
    m_file.CloseFile();

    QString line = "kept";
    EXPECT_EQ(m_file.GetNextLine(line), err::BadFileNameOrNumber);
    EXPECT_EQ(m_file.GetLineNo(1, line), err::BadFileNameOrNumber);
    EXPECT_EQ(line, "kept");

    openOutput("out.txt");
    m_file.CloseFile();
    QString text = "late";
    EXPECT_EQ(m_file.PrintLineToFile(text), err::BadFileNameOrNumber);
    ZblRow row;
    EXPECT_EQ(row.printTo(m_file), err::BadFileNameOrNumber);
    EXPECT_EQ(readBytes(path("out.txt")), QByteArray());
}

// --- GetNextLine -------------------------------------------------------------

TEST_F(CFileTest, GetNextLineReadsTheLinesInOrder)
{
    openInput("lines.txt", crlfLines({"ZBL Report    ", "Mode:         Manual"}));
    QString line;

    EXPECT_EQ(m_file.GetNextLine(line), 0);
    EXPECT_EQ(line, "ZBL Report    ");
    EXPECT_EQ(m_file.GetNextLine(line), 0);
    EXPECT_EQ(line, "Mode:         Manual");
}

TEST_F(CFileTest, GetNextLineAtTheEndReturnsZeroAndLeavesTheLine)
{
    openInput("lines.txt", crlfLines({"only"}));
    QString line;
    ASSERT_EQ(m_file.GetNextLine(line), 0);
    ASSERT_EQ(line, "only");

    line = "as it was";
    EXPECT_EQ(m_file.GetNextLine(line), 0);
    EXPECT_EQ(line, "as it was");
    EXPECT_EQ(m_file.GetNextLine(line), 0);
    EXPECT_EQ(line, "as it was");
}

TEST_F(CFileTest, GetNextLineOnAnEmptyFileLeavesTheLine)
{
    openInput("empty.txt", QByteArray());
    QString line = "untouched";

    EXPECT_EQ(m_file.GetNextLine(line), 0);
    EXPECT_EQ(line, "untouched");
}

TEST_F(CFileTest, GetNextLineWithoutAnOpenFileReturnsThePlatformNumber)
{
    QString line = "untouched";

    EXPECT_EQ(m_file.GetNextLine(line), err::BadFileNameOrNumber);
    EXPECT_EQ(line, "untouched");
}

TEST_F(CFileTest, GetNextLineReadsOneDelimitedItem)
{
    openInput("items.txt", "   leading blanks\r\n"
                           "\"quoted, with a comma\"\r\n"
                           "left,right\r\n"
                           "  \"  inner blanks  \"dropped,after\r\n"
                           "last");
    QString line;
    QStringList items;
    for (int i = 0; i < 7; ++i) {
        ASSERT_EQ(m_file.GetNextLine(line), 0);
        items << line;
    }

    EXPECT_EQ(items, QStringList({"leading blanks", "quoted, with a comma", "left", "right",
                                  "  inner blanks  ", "after", "last"}));
}

// --- GetLineNo ---------------------------------------------------------------

TEST_F(CFileTest, GetLineNoReadsFromTheStartWhereverTheReadPositionIs)
{
    openInput("abc.txt", crlfLines({"a", "b", "c"}));
    QString line;
    ASSERT_EQ(m_file.GetNextLine(line), 0);
    ASSERT_EQ(m_file.GetNextLine(line), 0);

    EXPECT_EQ(m_file.GetLineNo(1, line), 0);
    EXPECT_EQ(line, "a");
    EXPECT_EQ(m_file.GetLineNo(3, line), 0);
    EXPECT_EQ(line, "c");
}

TEST_F(CFileTest, GetLineNoLeavesTheReadPositionBehindTheItem)
{
    openInput("abc.txt", crlfLines({"a", "b", "c"}));
    QString line;
    ASSERT_EQ(m_file.GetLineNo(1, line), 0);

    EXPECT_EQ(m_file.GetNextLine(line), 0);
    EXPECT_EQ(line, "b");
}

TEST_F(CFileTest, GetLineNoBeyondTheEndGivesTheLastItem)
{
    openInput("abc.txt", crlfLines({"a", "b", "c"}));
    QString line = "before";

    EXPECT_EQ(m_file.GetLineNo(4, line), 0);
    EXPECT_EQ(line, "c");
    line = "before";
    EXPECT_EQ(m_file.GetLineNo(32767, line), 0);
    EXPECT_EQ(line, "c");
}

TEST_F(CFileTest, GetLineNoOfZeroReadsNothing)
{
    openInput("abc.txt", crlfLines({"a", "b"}));
    QString line = "before";

    EXPECT_EQ(m_file.GetLineNo(0, line), 0);
    EXPECT_EQ(line, "before");
}

TEST_F(CFileTest, GetLineNoCountsItemsNotLines)
{
    openInput("items.txt", crlfLines({"a,b", "c"}));
    QString line;

    EXPECT_EQ(m_file.GetLineNo(3, line), 0);
    EXPECT_EQ(line, "c");
}

TEST_F(CFileTest, GetLineNoWithoutAnOpenFileReturnsThePlatformNumber)
{
    QString line = "untouched";

    EXPECT_EQ(m_file.GetLineNo(1, line), err::BadFileNameOrNumber);
    EXPECT_EQ(line, "untouched");
}

// --- GetLineQtyFromFile ------------------------------------------------------

TEST_F(CFileTest, GetLineQtyFromFileCountsItems)
{
    openInput("items.txt", crlfLines({"a", "b,c", "\"d,e\""}));
    Int16 count = 99;

    EXPECT_EQ(m_file.GetLineQtyFromFile(count), 4);
    EXPECT_EQ(count, 4);
}

TEST_F(CFileTest, GetLineQtyFromFileOfAnEmptyFileIsZero)
{
    openInput("empty.txt", QByteArray());
    Int16 count = 99;

    EXPECT_EQ(m_file.GetLineQtyFromFile(count), 0);
    EXPECT_EQ(count, 0);
}

TEST_F(CFileTest, GetLineQtyFromFileKeepsTheReadPosition)
{
    openInput("abc.txt", crlfLines({"a", "b", "c"}));
    QString line;
    ASSERT_EQ(m_file.GetNextLine(line), 0);
    Int16 count = 0;

    ASSERT_EQ(m_file.GetLineQtyFromFile(count), 3);

    EXPECT_EQ(m_file.GetNextLine(line), 0);
    EXPECT_EQ(line, "b");
}

TEST_F(CFileTest, GetLineQtyFromFileStopsGrowingAt32767)
{
    QByteArray bytes;
    for (int i = 0; i < 40000; ++i)
        bytes += "x\r\n";
    bytes.replace(0, 1, "y");
    openInput("long.txt", bytes);
    Int16 count = 0;

    EXPECT_EQ(m_file.GetLineQtyFromFile(count), 32767);
    EXPECT_EQ(count, 32767);
    // The whole file was read and the position still came back.
    QString line;
    EXPECT_EQ(m_file.GetNextLine(line), 0);
    EXPECT_EQ(line, "y");
}

TEST_F(CFileTest, GetLineQtyFromFileWithoutAnOpenFileIsZeroAndSilent)
{
    Int16 count = 99;

    EXPECT_EQ(m_file.GetLineQtyFromFile(count), 0);
    EXPECT_EQ(count, 0);
}

// --- PrintLineToFile ---------------------------------------------------------

TEST_F(CFileTest, PrintLineToFileWritesTheTextAndCrLf)
{
    openOutput("out.txt");
    QString header = "ZBL Report    ";
    QString empty;
    QString accented = QString::fromUtf8("Temp\u00e9rature: 20 \u00b0C");

    EXPECT_EQ(m_file.PrintLineToFile(header), 0);
    EXPECT_EQ(m_file.PrintLineToFile(empty), 0);
    EXPECT_EQ(m_file.PrintLineToFile(accented), 0);
    m_file.CloseFile();

    // Windows-1252: e acute is E9, the degree sign B0.
    EXPECT_EQ(readBytes(path("out.txt")), QByteArray("ZBL Report    \r\n"
                                                     "\r\n"
                                                     "Temp\xe9rature: 20 \xb0"
                                                     "C\r\n"));
    EXPECT_EQ(header, "ZBL Report    ");
}

TEST_F(CFileTest, PrintLineToFileInInputModeReturnsOneAndWritesNothing)
{
    openInput("in.txt", crlfLines({"kept"}));
    QString line = "new";

    EXPECT_EQ(m_file.PrintLineToFile(line), 1);
    m_file.CloseFile();
    EXPECT_EQ(readBytes(path("in.txt")), crlfLines({"kept"}));
}

TEST_F(CFileTest, PrintLineToFileBeforeAnyOpenReturnsOne)
{
    CFile fresh;
    QString line = "new";

    EXPECT_EQ(fresh.PrintLineToFile(line), 1);
}

// --- PrintLineToFileZBL ------------------------------------------------------

TEST_F(CFileTest, PrintLineToFileZBLPutsTheTenItemsIntoPrintZones)
{
    openOutput("row.zbl");
    ZblRow row;

    EXPECT_EQ(row.printTo(m_file), 0);
    m_file.CloseFile();

    // Zones of 14 columns: items start at columns 1, 15, 29 ... 127.
    EXPECT_EQ(readBytes(path("row.zbl")), QByteArray("-             " // column 1
                                                     "1             " // column 15
                                                     "H1-H2         " // column 29
                                                     "12.34 mOhm    " // column 43
                                                     "2             " // column 57
                                                     "X1-X2         " // column 71
                                                     "OFF           " // column 85
                                                     "1A            " // column 99
                                                     " 5sec         " // column 113
                                                     "00:00:00"       // column 127
                                                     "\r\n"));
}

TEST_F(CFileTest, PrintLineToFileZBLPushesItemsBehindAnOverlongItem)
{
    openOutput("row.zbl");
    ZblRow row;
    row.tapA = "ABCDEFGHIJKLMN"; // exactly one zone wide: the next item skips a zone
    row.resistanceA = "123456.789 mOhm";
    row.resistanceB = "OVER";
    row.current = " 10";
    row.interval = Dynamic(" 120sec");

    EXPECT_EQ(row.printTo(m_file), 0);
    m_file.CloseFile();

    EXPECT_EQ(readBytes(path("row.zbl")), QByteArray("-             "               // column 1
                                                     "ABCDEFGHIJKLMN              " // column 15
                                                     "H1-H2         "               // column 43
                                                     "123456.789 mOhm             " // column 57
                                                     "2             "               // column 85
                                                     "X1-X2         "               // column 99
                                                     "OVER          "               // column 113
                                                     "10mA          "               // column 127
                                                     " 120sec       "               // column 141
                                                     "00:00:00"                     // column 155
                                                     "\r\n"));
}

struct CurrentCase
{
    const char* given;
    const char* written;
};

class CFileCurrentTest : public CFileTest, public ::testing::WithParamInterface<CurrentCase>
{
};

TEST_P(CFileCurrentTest, RewritesOnlyTheFourRangesByExactValue)
{
    openOutput("row.zbl");
    ZblRow row;
    row.current = QString::fromLatin1(GetParam().given);

    ASSERT_EQ(row.printTo(m_file), 0);
    m_file.CloseFile();

    // With short items the current is the eighth zone, from column 99.
    QString zone = onlyRow(path("row.zbl")).mid(98, 14);
    while (zone.endsWith(u' '))
        zone.chop(1);
    EXPECT_EQ(zone, QString::fromLatin1(GetParam().written));
    EXPECT_EQ(row.current, QString::fromLatin1(GetParam().written)) << "the caller's text changes";
}

INSTANTIATE_TEST_SUITE_P(Currents, CFileCurrentTest,
                         ::testing::Values(CurrentCase{"10000", "10A"}, CurrentCase{"1000", "1A"},
                                           CurrentCase{"100", "100mA"}, CurrentCase{"10", "10mA"},
                                           CurrentCase{" 1000", "1A"}, CurrentCase{" 10000", "10A"},
                                           CurrentCase{"1000.5", "1000.5"},
                                           CurrentCase{" 500", " 500"}, CurrentCase{"1", "1"},
                                           CurrentCase{" 9999.999", " 9999.999"},
                                           CurrentCase{"", "---"}, CurrentCase{"abc", "abc"}));

TEST_F(CFileTest, PrintLineToFileZBLPutsDashesIntoTheCallersEmptyFields)
{
    openOutput("row.zbl");
    ZblRow row;
    row.tapA.clear();
    row.windingA.clear();
    row.resistanceA.clear();
    row.tapB.clear();
    row.windingB.clear();
    row.resistanceB.clear();
    row.current.clear();
    row.interval = Dynamic();
    row.total.clear();

    EXPECT_EQ(row.printTo(m_file), 0);
    m_file.CloseFile();

    for (const QString* field : {&row.tapA, &row.windingA, &row.resistanceA, &row.tapB,
                                 &row.windingB, &row.resistanceB, &row.current, &row.total})
        EXPECT_EQ(*field, "---");
    EXPECT_EQ(row.interval, Dynamic("---"));
    const QString expected = "-             " + QString("---           ").repeated(8) + "---";
    EXPECT_EQ(onlyRow(path("row.zbl")), expected);
}

TEST_F(CFileTest, PrintLineToFileZBLTakesAnEmptyTextIntervalAsEmpty)
{
    openOutput("row.zbl");
    ZblRow row;
    row.interval = Dynamic("");

    EXPECT_EQ(row.printTo(m_file), 0);

    EXPECT_EQ(row.interval, Dynamic("---"));
}

TEST_F(CFileTest, PrintLineToFileZBLWritesANumberIntervalAsItsNumberText)
{
    openOutput("row.zbl");
    ZblRow row;
    row.interval = Dynamic(5);

    EXPECT_EQ(row.printTo(m_file), 0);
    m_file.CloseFile();

    EXPECT_EQ(onlyRow(path("row.zbl")).mid(112, 14), "5             ");
    EXPECT_EQ(row.interval, Dynamic(5));
}

TEST_F(CFileTest, PrintLineToFileZBLJoinsBlanksOfTapAndWindingOnlyInTheRow)
{
    openOutput("row.zbl");
    ZblRow row;
    row.tapA = "tap 1";
    row.windingA = "H1 - H2";
    row.tapB = " 2 ";
    row.windingB = "X1 X2";
    row.resistanceA = "1.5 Ohm";
    row.resistanceB = "2.5 Ohm";
    row.total = "00 00";

    EXPECT_EQ(row.printTo(m_file), 0);
    m_file.CloseFile();

    EXPECT_EQ(onlyRow(path("row.zbl")), "-             "
                                        "tap_1         "
                                        "H1_-_H2       "
                                        "1.5 Ohm       "
                                        "_2_           "
                                        "X1_X2         "
                                        "2.5 Ohm       "
                                        "1A            "
                                        " 5sec         "
                                        "00 00");
    EXPECT_EQ(row.tapA, "tap 1");
    EXPECT_EQ(row.windingA, "H1 - H2");
    EXPECT_EQ(row.tapB, " 2 ");
    EXPECT_EQ(row.windingB, "X1 X2");
}

TEST_F(CFileTest, PrintLineToFileZBLInInputModeReturnsOneAfterTheSubstitutions)
{
    openInput("in.zbl", crlfLines({"kept"}));
    ZblRow row;
    row.tapA.clear();
    row.current = "10000";

    EXPECT_EQ(row.printTo(m_file), 1);
    m_file.CloseFile();

    EXPECT_EQ(row.tapA, "---");
    EXPECT_EQ(row.current, "10A");
    EXPECT_EQ(readBytes(path("in.zbl")), crlfLines({"kept"}));
}

TEST_F(CFileTest, PrintLineToFileZBLBeforeAnyOpenReturnsOne)
{
    CFile fresh;
    ZblRow row;

    EXPECT_EQ(row.printTo(fresh), 1);
}

TEST_F(CFileTest, PrintLineToFileZBLReturnsTheNumberOfAFailedConversion)
{
    openOutput("row.zbl");
    ZblRow row;
    row.current = "1e999";

    EXPECT_EQ(row.printTo(m_file), err::Overflow);
    m_file.CloseFile();

    EXPECT_EQ(readBytes(path("row.zbl")), QByteArray());
}

TEST_F(CFileTest, PrintedLinesReadBackAsTheyWereWritten)
{
    openOutput("round.txt");
    QString first = "Serial:       A1234";
    QString second = "Notes:        none";
    ASSERT_EQ(m_file.PrintLineToFile(first), 0);
    ASSERT_EQ(m_file.PrintLineToFile(second), 0);
    m_file.CloseFile();

    QString target = path("round.txt");
    ASSERT_EQ(m_file.OpenFile(target, False16), 0);
    Int16 count = 0;
    EXPECT_EQ(m_file.GetLineQtyFromFile(count), 2);
    QString line;
    EXPECT_EQ(m_file.GetLineNo(2, line), 0);
    EXPECT_EQ(line, second);
}
