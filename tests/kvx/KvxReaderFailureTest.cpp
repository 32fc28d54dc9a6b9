// Bad input: where the read stops with the run-time failure, what the record
// keeps of it (nothing is rolled back), and the inputs that are tolerated.
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestFileReader.h"
#include "shell/model/AppState.h"
#include "shell/model/RuntimeError.h"
#include "tests/kvx/KvxTestSupport.h"

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;
using quenby::samples::KvxSampleFile;
using quenby::samples::KvxSampleRow;

namespace {

class kvxFailure : public KvxFixture
{
protected:
    // Reads and returns the failure itself, for its number and where().
    RuntimeError readExpectingFailure(const QString& path)
    {
        openKvx(path);
        FlushKvxCurves();
        ClearKvxRecord();
        try {
            ReadKvxTestFile();
        } catch (const RuntimeError& e) {
            return e;
        }
        ADD_FAILURE() << "the read did not fail";
        return RuntimeError(0);
    }
    QStringList smallLines() { return samples::kvxSampleLines(smallSample()); }
};

} // namespace

TEST_F(kvxFailure, NoSerialLineReadsPastTheEndAndLeavesTheRecordAsCleared)
{
    // A good file first, so that there is something to clear.
    ASSERT_EQ(readLines(smallLines(), "good.txt"), 0);
    ASSERT_EQ(slot(1).tapName, QStringLiteral("X1-X2"));
    ASSERT_EQ(record().designation, QStringLiteral("CT 1"));

    QStringList lines = smallLines();
    lines.removeAt(indexOfLineStarting(lines, "Serial:"));
    const QString path = writeLines("noserial.txt", lines);
    const RuntimeError e = readExpectingFailure(path);
    EXPECT_EQ(e.number(), err::InputPastEndOfFile);
    EXPECT_EQ(e.where(), path);

    const KvxTestRecord& r = record();
    for (const QString& row : r.tableRows)
        EXPECT_EQ(row, QString());
    for (int n = 1; n <= 10; ++n)
        EXPECT_EQ(slot(n).tapName, QString());
    EXPECT_EQ(r.rawSerial, QString());
    EXPECT_EQ(r.company, QString());
    EXPECT_EQ(r.fileName, QString());
    // What the clear leaves behind stays: the designation and the
    // calculated ratio of the earlier file.
    EXPECT_EQ(r.designation, QStringLiteral("CT 1"));
    EXPECT_EQ(slot(1).calculatedRatio, QStringLiteral("40"));
    // The curves stay as flushed, not repaired.
    EXPECT_EQ(curve(1).volts[3], 0.0);
}

TEST_F(kvxFailure, FileShorterThanTheHeaderFailsAndKeepsTheLinesRead)
{
    QStringList lines = smallLines();
    const qsizetype time = indexOfLineStarting(lines, "Time:");
    lines = lines.mid(0, time + 1); // ends with the Time line; no Notes line
    const QString path = writeLines("short.txt", lines);
    const RuntimeError e = readExpectingFailure(path);
    EXPECT_EQ(e.number(), err::InputPastEndOfFile);
    EXPECT_EQ(e.where(), path);
    EXPECT_EQ(record().rawSerial, QStringLiteral("Serial:          SN-1"));
    EXPECT_EQ(record().rawTime, QStringLiteral("Time:            09:05:00"));
    EXPECT_EQ(record().rawNotes, QString());
    // The values were never cut from the raw lines.
    EXPECT_EQ(record().ctSerial, QString());
}

TEST_F(kvxFailure, TableWithoutClosingEmptyLineAtTheEndOfTheFileReadsPastTheEnd)
{
    QStringList lines = smallLines();
    lines = lines.mid(0, indexOfLineStarting(lines, " 02") + 1);
    EXPECT_EQ(readLines(lines), err::InputPastEndOfFile);
    EXPECT_EQ(record().tableRows[1].mid(7, 5), QStringLiteral("X1-X3"));
    EXPECT_EQ(slot(1).tapName, QString()); // the rows were never dispatched
}

TEST_F(kvxFailure, RowWithANonNumericFirstFieldIsATypeMismatch)
{
    QStringList lines = smallLines();
    const qsizetype second = indexOfLineStarting(lines, " 02");
    lines[second].replace(1, 2, QStringLiteral("AB"));
    EXPECT_EQ(readLines(lines), err::TypeMismatch);
    const KvxTestRecord& r = record();
    EXPECT_EQ(r.ctSerial, QStringLiteral("SN-1")); // the header was parsed
    EXPECT_EQ(r.tableRows[0].mid(7, 5), QStringLiteral("X1-X2"));
    EXPECT_EQ(r.tableRows[1], QString());
    EXPECT_EQ(r.lastReference.toNumber(), 1);
    EXPECT_EQ(slot(1).tapName, QString());
}

TEST_F(kvxFailure, RowWithAnEmptyFirstFieldIsATypeMismatch)
{
    QStringList lines = smallLines();
    lines[indexOfLineStarting(lines, " 01")].replace(1, 2, QStringLiteral("  "));
    EXPECT_EQ(readLines(lines), err::TypeMismatch);
}

TEST_F(kvxFailure, SixteenTokensInARowAreOutOfRange)
{
    QStringList lines = smallLines();
    const qsizetype first = indexOfLineStarting(lines, " 01");
    lines[first] += QStringLiteral(" x y"); // 14 fields + 2
    const QString path = writeLines("tokens.txt", lines);
    const RuntimeError e = readExpectingFailure(path);
    EXPECT_EQ(e.number(), err::SubscriptOutOfRange);
    EXPECT_EQ(e.where(), path);
    EXPECT_EQ(record().ctSerial, QStringLiteral("SN-1"));
    EXPECT_EQ(record().tableRows[1].mid(7, 5), QStringLiteral("X1-X3"));
}

TEST_F(kvxFailure, FifteenTokensInARowOnlyDropTheRow)
{
    QStringList lines = smallLines();
    lines[indexOfLineStarting(lines, " 01")] += QStringLiteral(" x");
    EXPECT_EQ(readLines(lines), 0);
    EXPECT_EQ(slot(1).tapName, QString());
    EXPECT_EQ(slot(2).tapName, QStringLiteral("X1-X3"));
    // The dropped row's block finds no tap.
    EXPECT_EQ(curve(1).volts[3], 0.0001);
}

TEST_F(kvxFailure, SeventhPieceInAPointLineIsOutOfRangeAndNothingIsRolledBack)
{
    QStringList lines = smallLines();
    const qsizetype head = indexOfLineStarting(lines, "Ref Test #02");
    const qsizetype third = indexOfLineStarting(lines.mid(head), "  03") + head;
    lines[third] += QStringLiteral(" a b c d");
    const QString path = writeLines("points.txt", lines);
    const RuntimeError e = readExpectingFailure(path);
    EXPECT_EQ(e.number(), err::SubscriptOutOfRange);
    EXPECT_EQ(e.where(), path);
    // Block 1 and the first two points of block 2 stay, unrepaired.
    EXPECT_EQ(curve(1).volts[5], 6.5);
    EXPECT_EQ(curve(1).volts[0], 0.0);
    EXPECT_EQ(curve(2).volts[2], 4.0);
    EXPECT_EQ(curve(2).volts[3], 0.0);
    EXPECT_EQ(slot(2).tapName, QStringLiteral("X1-X3"));
    EXPECT_EQ(insulationHead(), InsulationHeadText + QStringLiteral("    500 Vdc"));
}

TEST_F(kvxFailure, SixPiecesInAPointLineAreAccepted)
{
    QStringList lines = smallLines();
    lines[indexOfLineStarting(lines, "  02")] += QStringLiteral(" a b c");
    EXPECT_EQ(readLines(lines), 0);
    EXPECT_EQ(curve(1).volts[2], 2.5);
}

TEST_F(kvxFailure, PointNumberAbove119IsOutOfRange)
{
    QStringList lines = smallLines();
    lines[indexOfLineStarting(lines, "  04")] = QStringLiteral("  120     6.00       1.000    ");
    EXPECT_EQ(readLines(lines), err::SubscriptOutOfRange);
    EXPECT_EQ(curve(1).volts[3], 5.5);
    EXPECT_EQ(curve(1).pointCount, 3);
}

TEST_F(kvxFailure, PointNumber119IsTheLastThatFits)
{
    QStringList lines = smallLines();
    lines[indexOfLineStarting(lines, "  04")] = QStringLiteral("  119     6.00       1.000    ");
    EXPECT_EQ(readLines(lines), 0);
    EXPECT_EQ(curve(1).volts[119], 6.0);
    EXPECT_EQ(curve(1).pointCount, 119);
}

TEST_F(kvxFailure, TwentySecondPieceOfARowPickedByABlockIsOutOfRange)
{
    // An unknown pair is never split as a tap row, so its 22 pieces are
    // first met when its block looks for the pair.
    KvxSampleFile f = smallSample();
    f.rows.resize(1);
    f.rows[0].fields[1] = QStringLiteral("X9-X9");
    QStringList lines = samples::kvxSampleLines(f);
    lines[indexOfLineStarting(lines, " 01")] += QStringLiteral(" a b c d e f g h");
    EXPECT_EQ(readLines(lines), err::SubscriptOutOfRange);
    EXPECT_EQ(record().tableRows[0].split(u' ', Qt::SkipEmptyParts).size(), 22);
}

TEST_F(kvxFailure, TwentyOnePiecesInARowOfAnUnknownPairAreTolerated)
{
    KvxSampleFile f = smallSample();
    f.rows.resize(1);
    f.rows[0].fields[1] = QStringLiteral("X9-X9");
    QStringList lines = samples::kvxSampleLines(f);
    lines[indexOfLineStarting(lines, " 01")] += QStringLiteral(" a b c d e f g");
    EXPECT_EQ(readLines(lines), 0);
    for (int n = 1; n <= 10; ++n)
        EXPECT_EQ(curve(n).volts[1], 0.0001);
}

TEST_F(kvxFailure, LineNumberBeyondSixteenBitsIsAnOverflow)
{
    QStringList lines(32768, QString());
    lines += smallLines();
    const QString path = writeLines("long.txt", lines);
    const RuntimeError e = readExpectingFailure(path);
    EXPECT_EQ(e.number(), err::Overflow);
    EXPECT_EQ(e.where(), path);
}

TEST_F(kvxFailure, LineNumberJustInsideSixteenBitsReadsTheFile)
{
    // Padding after the first hyphens keeps the line count whole; the anchor
    // then sits at line number 32700 and the table ends below 32767.
    const QStringList small = smallLines();
    const QStringList lines = small.mid(0, 2) + QStringList(32691, QString()) + small.mid(2);
    ASSERT_EQ(indexOfLineStarting(lines, "Serial:"), 32700);
    EXPECT_EQ(readLines(lines), 0);
    EXPECT_EQ(record().ctSerial, QStringLiteral("SN-1"));
    EXPECT_EQ(slot(2).tapName, QStringLiteral("X1-X3"));
}

TEST_F(kvxFailure, EmptyFileReadsPastTheEnd)
{
    EXPECT_EQ(readKvx(writeFile("empty.txt", QByteArray())), err::InputPastEndOfFile);
}

TEST_F(kvxFailure, BlockHeadAtTheEndOfTheFileReadsPastTheEnd)
{
    QStringList lines = smallLines();
    lines = lines.mid(0, indexOfLineStarting(lines, "Ref Test # 1") + 1);
    EXPECT_EQ(readLines(lines), err::InputPastEndOfFile);
    EXPECT_EQ(slot(1).tapName, QStringLiteral("X1-X2"));
}

TEST_F(kvxFailure, FailuresNameTheFileAndTheOffendingText)
{
    QStringList lines = smallLines();
    lines[indexOfLineStarting(lines, " 01")].replace(1, 2, QStringLiteral("AB"));
    const QString path = writeLines("where.txt", lines);
    const RuntimeError e = readExpectingFailure(path);
    EXPECT_EQ(e.number(), err::TypeMismatch);
    EXPECT_EQ(e.where(), path);
    EXPECT_EQ(e.detail(), QStringLiteral("AB"));

    lines = smallLines();
    lines[indexOfLineStarting(lines, "  04")] = QStringLiteral("  120     6.00       1.000    ");
    const QString path2 = writeLines("where2.txt", lines);
    const RuntimeError e2 = readExpectingFailure(path2);
    EXPECT_EQ(e2.number(), err::SubscriptOutOfRange);
    EXPECT_EQ(e2.where(), path2);
    EXPECT_EQ(e2.detail(), QStringLiteral("120"));
}
