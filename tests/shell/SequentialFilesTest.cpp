#include "shell/model/SequentialFiles.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/Session.h"
#include "shell/model/ShellSession.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace quenby;
using namespace quenby::testing;

namespace {

int failureOf(const std::function<void()>& f)
{
    try {
        f();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

class SequentialFilesTest : public ::testing::Test
{
protected:
    void TearDown() override { files.closeAll(); }

    QString write(const QString& name, const QByteArray& bytes)
    {
        const QString path = dir.filePath(name);
        writeBytes(path, bytes);
        return path;
    }
    Int16 openInput(const QByteArray& bytes)
    {
        const Int16 no = files.freeFile();
        files.open(no, write(QStringLiteral("in%1.txt").arg(no), bytes),
                   SequentialFiles::Mode::Input);
        return no;
    }

    QTemporaryDir dir;
    SequentialFiles files;
};

} // namespace

TEST_F(SequentialFilesTest, LinesEndAtCrLfCrOrLf)
{
    const Int16 no = openInput("one\r\ntwo\rthree\nfour");
    EXPECT_EQ(files.lineInput(no), "one");
    EXPECT_EQ(files.lineInput(no), "two");
    EXPECT_EQ(files.lineInput(no), "three");
    EXPECT_FALSE(files.eof(no));
    EXPECT_EQ(files.lineInput(no), "four");
    EXPECT_TRUE(files.eof(no));
    EXPECT_EQ(failureOf([&] { files.lineInput(no); }), err::InputPastEndOfFile);
}

TEST_F(SequentialFilesTest, EndOfFileIsTrueAfterTheLastLineEnd)
{
    const Int16 no = openInput("a\r\n\r\n");
    EXPECT_EQ(files.lineInput(no), "a");
    EXPECT_FALSE(files.eof(no));
    EXPECT_EQ(files.lineInput(no), "");
    EXPECT_TRUE(files.eof(no));
}

TEST_F(SequentialFilesTest, EmptyFileIsAtItsEnd)
{
    const Int16 no = openInput("");
    EXPECT_TRUE(files.eof(no));
    EXPECT_EQ(failureOf([&] { files.input(no); }), err::InputPastEndOfFile);
}

TEST_F(SequentialFilesTest, DelimitedItems)
{
    const Int16 no = openInput("  a b,  c\r\n\"q,1\"  x,last\r\n\r\n   \r\nend");
    EXPECT_EQ(files.input(no), "a b");
    EXPECT_EQ(files.input(no), "c");
    EXPECT_EQ(files.input(no), "q,1"); // quotes protect the comma; " x" is dropped
    EXPECT_EQ(files.input(no), "last");
    EXPECT_EQ(files.input(no), ""); // an empty line is an empty item
    EXPECT_EQ(files.input(no), ""); // a line of blanks too
    EXPECT_EQ(files.input(no), "end");
    EXPECT_TRUE(files.eof(no));
}

TEST_F(SequentialFilesTest, TrailingBlanksOfAnItemStay)
{
    const Int16 no = openInput("Ref Test # 1  \r\n");
    EXPECT_EQ(files.input(no), "Ref Test # 1  ");
}

TEST_F(SequentialFilesTest, SeekReturnsToTheStart)
{
    const Int16 no = openInput("first\r\nsecond\r\n");
    EXPECT_EQ(files.lineInput(no), "first");
    EXPECT_EQ(files.position(no), 8);
    files.seek(no, 1);
    EXPECT_EQ(files.lineInput(no), "first");
    files.seek(no, 8);
    EXPECT_EQ(files.lineInput(no), "second");
    EXPECT_EQ(failureOf([&] { files.seek(no, 0); }), err::BadRecordNumber);
}

TEST_F(SequentialFilesTest, LongFileCrossesBufferBorders)
{
    QByteArray bytes;
    for (int i = 0; i < 20000; ++i)
        bytes += QByteArray::number(i) + "\r\n";
    const Int16 no = openInput(bytes);
    int n = 0;
    while (!files.eof(no)) {
        ASSERT_EQ(files.lineInput(no), QString::number(n));
        ++n;
    }
    EXPECT_EQ(n, 20000);
}

namespace {

// Every item of a file read with input(), then every line with lineInput().
std::vector<QString> readAllWays(SequentialFiles& files, Int16 no, qint64 start)
{
    std::vector<QString> out;
    files.seek(no, start);
    while (!files.eof(no))
        out.push_back(files.input(no));
    out.push_back(QStringLiteral("--"));
    files.seek(no, start);
    while (!files.eof(no))
        out.push_back(files.lineInput(no));
    return out;
}

} // namespace

// The same text read from a small file and from behind a long first line
// whose length moves it across the border of a read block, byte by byte: the
// items and lines must not change, whatever falls on the border (a CR LF
// pair, a quote, a comma, a blank before an item).
TEST_F(SequentialFilesTest, ItemsAndLinesDoNotDependOnBlockBorders)
{
    const QByteArray text = "  a b,  c\r\n\"q,1\"  x,last\r\n\r\n   \r\n\"open\r\nquote\", tail ,"
                            "\r\n\xB5Ohm,\"x\"\rnext\n\t\"never closed";
    const Int16 small = openInput(text);
    const std::vector<QString> expected = readAllWays(files, small, 1);
    ASSERT_GT(expected.size(), 20u);
    files.close(small);

    const QString path = dir.filePath(QStringLiteral("shifted.txt"));
    constexpr int Block = 64 * 1024;
    for (int first = Block - static_cast<int>(text.size()) - 2; first <= Block; ++first) {
        writeBytes(path, QByteArray(first, 'p') + "\r\n" + text);
        const Int16 no = files.freeFile();
        files.open(no, path, SequentialFiles::Mode::Input);
        ASSERT_EQ(files.lineInput(no).size(), first);
        const qint64 start = files.position(no);
        ASSERT_EQ(start, first + 3);
        EXPECT_EQ(readAllWays(files, no, start), expected) << "first line of " << first;
        files.close(no);
    }
}

TEST_F(SequentialFilesTest, DecodesWindows1252)
{
    const Int16 no = openInput("10.5 \xB5Ohm\r\n");
    EXPECT_EQ(files.lineInput(no), QString::fromUtf8("10.5 µOhm"));
}

TEST_F(SequentialFilesTest, WritesCrLfLinesByteExact)
{
    const QString path = dir.filePath("out.txt");
    const Int16 no = files.freeFile();
    files.open(no, path, SequentialFiles::Mode::Output);
    files.printLine(no, QString::fromUtf8("12 µOhm"));
    files.printLine(no, u"");
    files.close(no);
    EXPECT_EQ(readBytes(path), QByteArray("12 \xB5Ohm\r\n\r\n"));
}

TEST_F(SequentialFilesTest, OutputTruncatesAndAppendAppends)
{
    const QString path = write("o.txt", "old content\r\n");
    Int16 no = files.freeFile();
    files.open(no, path, SequentialFiles::Mode::Output);
    files.printLine(no, u"new");
    files.close(no);
    no = files.freeFile();
    files.open(no, path, SequentialFiles::Mode::Append);
    files.printLine(no, u"more");
    files.close(no);
    EXPECT_EQ(readBytes(path), QByteArray("new\r\nmore\r\n"));
}

TEST_F(SequentialFilesTest, FreeFileTakesTheLowestNumber)
{
    EXPECT_EQ(files.freeFile(), 1);
    const Int16 a = openInput("x");
    const Int16 b = openInput("y");
    EXPECT_EQ(a, 1);
    EXPECT_EQ(b, 2);
    files.close(a);
    EXPECT_EQ(files.freeFile(), 1);
}

TEST_F(SequentialFilesTest, AllNumbersTakenIsTooManyFiles)
{
    const QString path = write("many.txt", "x");
    for (Int16 n = 1; n <= SequentialFiles::MaxFileNumber; ++n)
        files.open(n, path, SequentialFiles::Mode::Input);
    EXPECT_EQ(failureOf([&] { files.freeFile(); }), err::TooManyFiles);
}

TEST_F(SequentialFilesTest, OpenFailures)
{
    EXPECT_EQ(failureOf([&] {
                  files.open(1, dir.filePath("missing.txt"), SequentialFiles::Mode::Input);
              }),
              err::FileNotFound);
    EXPECT_EQ(failureOf([&] {
                  files.open(1, dir.filePath("no/such/folder/x.txt"),
                             SequentialFiles::Mode::Output);
              }),
              err::PathNotFound);
    EXPECT_EQ(failureOf([&] { files.open(1, dir.path(), SequentialFiles::Mode::Input); }),
              err::PathFileAccessError);
    EXPECT_EQ(failureOf([&] { files.open(1, dir.path(), SequentialFiles::Mode::Output); }),
              err::PathFileAccessError);
    EXPECT_EQ(failureOf([&] { files.open(0, dir.filePath("x"), SequentialFiles::Mode::Output); }),
              err::BadFileNameOrNumber);
    EXPECT_EQ(files.openCount(), 0);
}

TEST_F(SequentialFilesTest, NumberInUseIsFileAlreadyOpen)
{
    const Int16 no = openInput("x");
    EXPECT_EQ(failureOf([&] { files.open(no, dir.filePath("y"), SequentialFiles::Mode::Output); }),
              err::FileAlreadyOpen);
}

TEST_F(SequentialFilesTest, WrongNumberOrModeFails)
{
    EXPECT_EQ(failureOf([&] { files.lineInput(9); }), err::BadFileNameOrNumber);
    EXPECT_EQ(failureOf([&] { files.eof(9); }), err::BadFileNameOrNumber);
    EXPECT_EQ(failureOf([&] { files.printLine(9, u"x"); }), err::BadFileNameOrNumber);
    const Int16 in = openInput("x");
    EXPECT_EQ(failureOf([&] { files.printLine(in, u"x"); }), err::BadFileMode);
    const Int16 out = files.freeFile();
    files.open(out, dir.filePath("w.txt"), SequentialFiles::Mode::Output);
    EXPECT_EQ(failureOf([&] { files.lineInput(out); }), err::BadFileMode);
    files.close(77); // closing a number not open does nothing
    EXPECT_TRUE(files.isOpen(out));
}

TEST_F(SequentialFilesTest, FailureNamesTheFile)
{
    const Int16 no = openInput("");
    try {
        files.lineInput(no);
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_TRUE(e.where().endsWith(QStringLiteral(".txt")));
        EXPECT_EQ(e.text(), "Input past end of file");
    }
}

TEST(SequentialFilesOfTheSession, AreTheFilesOfTheShellSessionInForce)
{
    SequentialFiles& outer = SequentialFiles::instance();
    EXPECT_EQ(&outer, shellSession().files.get());
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("x.txt"));
    writeBytes(path, "x\r\n");
    outer.open(1, path, SequentialFiles::Mode::Input);
    {
        OwnedSession<ShellSession> inner;
        SequentialFiles& files = SequentialFiles::instance();
        EXPECT_EQ(&files, inner->files.get());
        EXPECT_FALSE(files.isOpen(1));
        files.open(2, path, SequentialFiles::Mode::Input);
    }
    EXPECT_EQ(&SequentialFiles::instance(), &outer);
    EXPECT_TRUE(outer.isOpen(1));
    EXPECT_FALSE(outer.isOpen(2));
}

TEST(SequentialFilesOfTheSession, ASessionWithoutFilesGetsThemOnFirstUse)
{
    shellSession().files.reset();
    SequentialFiles& files = SequentialFiles::instance();
    EXPECT_EQ(&files, shellSession().files.get());
    EXPECT_EQ(files.openCount(), 0);
}

TEST(SequentialFilesOfTheSession, ResetClosesEveryFile)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("x.txt"));
    writeBytes(path, "x\r\n");
    SequentialFiles::instance().open(1, path, SequentialFiles::Mode::Input);
    shellSession().reset();
    EXPECT_FALSE(SequentialFiles::instance().isOpen(1));
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
}
