// The reader on small files made for each case: header, notes, table rows in
// their slots, curve blocks, the insulation head, the line counter, and the
// helpers one by one.
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "shell/model/AppState.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "tests/kvx/KvxTestSupport.h"

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;
using quenby::samples::KvxSampleFile;
using quenby::samples::KvxSamplePoint;
using quenby::samples::KvxSampleRow;

namespace {

class kvxReader : public KvxFixture
{
protected:
    // The small sample's lines with the table rows replaced.
    static QStringList withRows(KvxSampleFile f, const std::vector<KvxSampleRow>& rows)
    {
        f.rows = rows;
        return samples::kvxSampleLines(f);
    }
    static KvxSampleRow row(const QString& ref, const QString& pair, const QString& np = "200:5")
    {
        KvxSampleRow r;
        r.fields = {ref,   pair,    np,      "40",    "40.012",  "0.0", "0.1",
                    "POS", "82.00", "88.40", "95.20", "0.10040", ">1G", "---"};
        return r;
    }
    static KvxSampleRow rowWithCurve(const QString& ref, const QString& pair,
                                     const QString& blockNumber, std::vector<KvxSamplePoint> points)
    {
        KvxSampleRow r = row(ref, pair);
        r.blockNumber = blockNumber;
        r.curve = std::move(points);
        return r;
    }
};

std::vector<KvxSamplePoint> points(int count, double volts0 = 1.0)
{
    std::vector<KvxSamplePoint> p;
    for (int i = 1; i <= count; ++i)
        p.push_back({volts0 * i, 0.001 * i});
    return p;
}

} // namespace

// ---- header ---------------------------------------------------------------

TEST_F(kvxReader, HeaderLinesAreKeptWholeAndCutIntoValues)
{
    ASSERT_EQ(readLines(samples::kvxSampleLines(smallSample()), "small.txt"), 0);
    const KvxTestRecord& r = record();
    EXPECT_EQ(r.rawSerial, QStringLiteral("Serial:          SN-1"));
    EXPECT_EQ(r.rawVoltageRating, QStringLiteral("Voltage Rating:  C100"));
    EXPECT_EQ(r.rawNotes, QStringLiteral("Notes:           One line."));
    EXPECT_EQ(r.fileName, QStringLiteral("small.txt"));
    EXPECT_EQ(r.ctSerial, QStringLiteral("SN-1"));
    EXPECT_EQ(r.company, QStringLiteral("Test Co"));
    EXPECT_EQ(r.station, QStringLiteral("Station 1"));
    EXPECT_EQ(r.designation, QStringLiteral("CT 1"));
    EXPECT_EQ(r.manufacturer, QStringLiteral("Maker"));
    EXPECT_EQ(r.operatorName, QStringLiteral("Op"));
    EXPECT_EQ(r.temperature, QStringLiteral("20 C"));
    EXPECT_EQ(r.ratio, QStringLiteral("300:5"));
    EXPECT_EQ(r.voltageRating, QStringLiteral("C100"));
    EXPECT_EQ(r.testClass, QStringLiteral("C100"));
    EXPECT_EQ(r.position, QStringLiteral("H1"));
    EXPECT_EQ(r.phase, QStringLiteral("A"));
    EXPECT_TRUE(r.instrumentSerial.isText());
    EXPECT_EQ(r.instrumentSerial.toText(), QStringLiteral("KVX-1"));
    EXPECT_EQ(r.notes, QStringLiteral("One line."));
    EXPECT_EQ(r.dateTime, QStringLiteral("5 Jan. 2024   09:05:00"));
}

TEST_F(kvxReader, ValuesStartWhereTheReaderLooksNotWhereTheLabelEnds)
{
    // Starts ahead of position 18 catch text that runs into the label's
    // padding; the trim takes the blanks.
    QStringList lines = samples::kvxSampleLines(smallSample());
    lines[indexOfLineStarting(lines, "Company:")] = QStringLiteral("Company:ACME Ltd ");
    lines[indexOfLineStarting(lines, "Designation:")] = QStringLiteral("Designation:ABCDE");
    lines[indexOfLineStarting(lines, "Voltage Rating:")] = QStringLiteral("Voltage Rating:  X");
    lines[indexOfLineStarting(lines, "Position:")] = QStringLiteral("Position:     P7");
    ASSERT_EQ(readLines(lines), 0);
    EXPECT_EQ(record().company, QStringLiteral("ACME Ltd"));
    EXPECT_EQ(record().designation, QStringLiteral("CDE"));
    EXPECT_EQ(record().voltageRating, QStringLiteral("X"));
    EXPECT_EQ(record().position, QStringLiteral("P7"));
}

TEST_F(kvxReader, NotesOverThreeLinesMakeOneTextWithoutSeparators)
{
    KvxSampleFile f = smallSample();
    f.notes = QStringList{"first part", "second part", "third part"};
    ASSERT_EQ(readLines(samples::kvxSampleLines(f)), 0);
    EXPECT_EQ(record().rawNotes,
              QStringLiteral("Notes:           first partsecond partthird part"));
    EXPECT_EQ(record().notes, QStringLiteral("first partsecond partthird part"));
    // The table after the notes still reads.
    EXPECT_EQ(slot(1).tapName, QStringLiteral("X1-X2"));
    EXPECT_EQ(slot(2).tapName, QStringLiteral("X1-X3"));
}

TEST_F(kvxReader, NotesStopAtALineOfHyphensEvenWithoutAnEmptyLine)
{
    QStringList lines = samples::kvxSampleLines(smallSample());
    const qsizetype notes = indexOfLineStarting(lines, "Notes:");
    lines.insert(notes + 1, QStringLiteral("more notes"));
    lines.removeAt(notes + 2); // the empty line: the table top follows at once
    ASSERT_EQ(readLines(lines), 0);
    EXPECT_EQ(record().notes, QStringLiteral("One line.more notes"));
    EXPECT_EQ(slot(1).tapName, QStringLiteral("X1-X2"));
    EXPECT_EQ(slot(2).nominalRatio, QStringLiteral("300:5"));
}

TEST_F(kvxReader, JulyDateHasNoBlankBeforeTheYear)
{
    KvxSampleFile f = smallSample();
    f.month = 7;
    f.hour = 14;
    f.minute = 30;
    f.second = 7;
    ASSERT_EQ(readLines(samples::kvxSampleLines(f)), 0);
    EXPECT_EQ(record().rawDate, QStringLiteral("Date:            5 Jul.2024"));
    EXPECT_EQ(record().dateTime, QStringLiteral("5 Jul.2024   14:30:07"));
}

TEST_F(kvxReader, ReduceDateTimeGapNarrowsOnlyRunsOfExactlyEightBlanks)
{
    EXPECT_EQ(ReduceDateTimeGap(QStringLiteral("5 Jan. 2024        09:05:00")),
              QStringLiteral("5 Jan. 2024   09:05:00"));
    EXPECT_EQ(ReduceDateTimeGap(QStringLiteral("a        b        c")),
              QStringLiteral("a   b   c"));
    EXPECT_EQ(ReduceDateTimeGap(QStringLiteral("a         b")), QStringLiteral("a         b"));
    EXPECT_EQ(ReduceDateTimeGap(QString(16, u' ') + "x"), QString(16, u' ') + "x");
    EXPECT_EQ(ReduceDateTimeGap(QStringLiteral("a       b")), QStringLiteral("a       b"));
    EXPECT_EQ(ReduceDateTimeGap(QString()), QString());
}

TEST_F(kvxReader, ParseHeaderFieldsDoesNothingWithoutAPath)
{
    record().rawCompany = QStringLiteral("Company:         New");
    record().company = QStringLiteral("Old");
    ParseKvxHeaderFields();
    EXPECT_EQ(record().company, QStringLiteral("Old"));
    EXPECT_EQ(record().fileName, QString());
}

TEST_F(kvxReader, ParseHeaderFieldsBringsBackAChangedRawLine)
{
    ASSERT_EQ(readLines(samples::kvxSampleLines(smallSample())), 0);
    record().company = QStringLiteral("edited in the report");
    record().rawCompany = QStringLiteral("Company:         Changed Co");
    ParseKvxHeaderFields();
    EXPECT_EQ(record().company, QStringLiteral("Changed Co"));
}

TEST_F(kvxReader, FileNameIsThePathsLastComponentWhicheverSeparator)
{
    appState().KvxTestFilePath = Dynamic(QStringLiteral("C:\\KVX\\Files\\2024\\1-SN.txt"));
    ParseKvxHeaderFields();
    EXPECT_EQ(record().fileName, QStringLiteral("1-SN.txt"));
    appState().KvxTestFilePath = Dynamic(QStringLiteral("/data/KVX/Files/2-SN.txt"));
    ParseKvxHeaderFields();
    EXPECT_EQ(record().fileName, QStringLiteral("2-SN.txt"));
}

// ---- line counter ------------------------------------------------------------

TEST_F(kvxReader, LineCountIsTheNumberOfLinesWithOneLineAheadOfTheHyphens)
{
    const Int16 no = openKvx(writeLines("a.txt", {"[3,31,0,0]", QString(125, u'-'), "x", "", "y"}));
    EXPECT_EQ(countKvxLines(no), QStringLiteral("5"));
}

TEST_F(kvxReader, LineCountWithHyphensOnLineOneIsOneLessThanWithAStampLine)
{
    const Int16 withStamp =
        openKvx(writeLines("a.txt", {"[3,31,0,0]", QString(125, u'-'), "x", "y"}));
    const Int16 without = openKvx(writeLines("b.txt", {QString(125, u'-'), "x", "y"}));
    EXPECT_EQ(countKvxLines(withStamp), QStringLiteral("4"));
    EXPECT_EQ(countKvxLines(without), QStringLiteral("3"));
}

TEST_F(kvxReader, LineCountRestartsAtOneForEachLineAheadOfTheHyphens)
{
    const Int16 no = openKvx(writeLines("a.txt", {"one", "two", "three", "-----", "a", "b"}));
    // "one" to "three" each set 1; the hyphens and the two lines after add 1.
    EXPECT_EQ(countKvxLines(no), QStringLiteral("4"));
}

TEST_F(kvxReader, LineCountWithoutHyphensIsOneAndOfAnEmptyFileZero)
{
    EXPECT_EQ(countKvxLines(openKvx(writeLines("a.txt", {"a", "b", "---"}))), QStringLiteral("1"));
    EXPECT_EQ(countKvxLines(openKvx(writeFile("b.txt", QByteArray()))), QStringLiteral("0"));
}

TEST_F(kvxReader, FileWithoutAnyHyphenLineKeepsNoHeaderAndNoRows)
{
    // The count stays 1, below the line of the anchor: the header and the
    // table are passed over, and the read still ends without a failure.
    QStringList lines = samples::kvxSampleLines(smallSample());
    QStringList noHyphens;
    for (const QString& l : lines)
        if (!l.endsWith("--"))
            noHyphens << l;
    ASSERT_EQ(readLines(noHyphens, "plain.txt"), 0);
    EXPECT_EQ(record().rawSerial, QString());
    EXPECT_EQ(record().ctSerial, QString());
    EXPECT_EQ(record().fileName, QStringLiteral("plain.txt"));
    for (const QString& row : record().tableRows)
        EXPECT_EQ(row, QString());
    EXPECT_EQ(slot(1).tapName, QString());
}

TEST_F(kvxReader, FileWithoutStampLineReadsTheSame)
{
    KvxSampleFile f = smallSample();
    ASSERT_EQ(readLines(samples::kvxSampleLines(f), "same.txt"), 0);
    const KvxTestRecord withStamp = record();
    f.stampLine = false;
    ASSERT_EQ(readLines(samples::kvxSampleLines(f), "same.txt"), 0);
    const KvxTestRecord& without = record();
    EXPECT_EQ(without.rawSerial, withStamp.rawSerial);
    EXPECT_EQ(without.rawNotes, withStamp.rawNotes);
    EXPECT_EQ(without.dateTime, withStamp.dateTime);
    EXPECT_EQ(without.tableRows, withStamp.tableRows);
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(without.taps[i].tapName, withStamp.taps[i].tapName);
        EXPECT_EQ(without.curves[i].volts, withStamp.curves[i].volts);
        EXPECT_EQ(without.curves[i].current, withStamp.curves[i].current);
    }
}

// ---- table rows ----------------------------------------------------------------

TEST_F(kvxReader, RowFieldsGoToTheSlotOfTheirPair)
{
    ASSERT_EQ(readLines(samples::kvxSampleLines(smallSample())), 0);
    const KvxTapResult& t = slot(2);
    EXPECT_EQ(t.tapName, QStringLiteral("X1-X3"));
    EXPECT_EQ(t.nominalRatio, QStringLiteral("300:5"));
    EXPECT_EQ(t.calculatedRatio, QStringLiteral("60"));
    EXPECT_EQ(t.measuredRatio, QStringLiteral("60.020"));
    EXPECT_EQ(t.errorPercent, QStringLiteral("0.0"));
    EXPECT_EQ(t.phaseAngle, QStringLiteral("0.1"));
    EXPECT_EQ(t.polarity, QStringLiteral("POS"));
    EXPECT_EQ(t.vsIeee45, QStringLiteral("123.00"));
    EXPECT_EQ(t.vsIeee30, QStringLiteral("132.60"));
    EXPECT_EQ(t.vsIec1050, QStringLiteral("142.80"));
    EXPECT_EQ(t.windingResistance, QStringLiteral("0.15060"));
    EXPECT_EQ(t.insulation, QStringLiteral("1.5E+08ohm "));
    EXPECT_EQ(slot(1).insulation, QStringLiteral(">1Gohm "));
    for (int n = 3; n <= 10; ++n)
        EXPECT_EQ(slot(n).tapName, QString());
    EXPECT_EQ(record().lastReference.toNumber(), 2);
    EXPECT_TRUE(record().lastReference.isNumber());
}

TEST_F(kvxReader, DashesInTheVsColumnsReadEmpty)
{
    KvxSampleRow r = row("01", "X1-X2");
    r.fields[8] = r.fields[9] = r.fields[10] = QStringLiteral("---");
    ASSERT_EQ(readLines(withRows(smallSample(), {r})), 0);
    EXPECT_EQ(slot(1).tapName, QStringLiteral("X1-X2"));
    EXPECT_EQ(slot(1).vsIeee45, QString());
    EXPECT_EQ(slot(1).vsIeee30, QString());
    EXPECT_EQ(slot(1).vsIec1050, QString());
    EXPECT_EQ(slot(1).windingResistance, QStringLiteral("0.10040"));
}

TEST_F(kvxReader, ErrorPhaseRowHasThirteenFieldsAndNoPolarity)
{
    KvxSampleRow r = row("01", "X1-X2");
    r.fields[6] = QStringLiteral("Error");
    r.fields[7].clear();
    const QStringList lines = withRows(smallSample(), {r});
    const QString written = lines[indexOfLineStarting(lines, " 01")];
    EXPECT_EQ(written.split(u' ', Qt::SkipEmptyParts).size(), 13);
    EXPECT_EQ(written.mid(71, 10), QString(10, u' ')); // the polarity window is blank
    ASSERT_EQ(readLines(lines), 0);
    EXPECT_EQ(slot(1).tapName, QStringLiteral("X1-X2"));
    EXPECT_EQ(slot(1).phaseAngle, QStringLiteral("Error"));
    EXPECT_EQ(slot(1).polarity, QString());
    EXPECT_EQ(slot(1).vsIeee45, QStringLiteral("82.00"));
    EXPECT_EQ(slot(1).insulation, QStringLiteral(">1Gohm "));
}

TEST_F(kvxReader, RowsOutOfSlotOrderLandInTheirSlots)
{
    ASSERT_EQ(readLines(withRows(smallSample(),
                                 {row("01", "X4-X5"), row("02", "X2-X3"), row("03", "X1-X2")})),
              0);
    EXPECT_EQ(slot(10).tapName, QStringLiteral("X4-X5"));
    EXPECT_EQ(slot(5).tapName, QStringLiteral("X2-X3"));
    EXPECT_EQ(slot(1).tapName, QStringLiteral("X1-X2"));
    EXPECT_EQ(record().tableRows[0].mid(7, 5), QStringLiteral("X4-X5"));
    EXPECT_EQ(record().lastReference.toNumber(), 3);
}

TEST_F(kvxReader, OnlyX2X4FillsSlotSixAndLeavesTheInsulationHeadAlone)
{
    kvxCondensedReport().lbInsulationResistanceTest(0) = QStringLiteral("Insulation default");
    ASSERT_EQ(readLines(withRows(smallSample(), {row("01", "X2-X4", "600:5")})), 0);
    EXPECT_EQ(slot(6).tapName, QStringLiteral("X2-X4"));
    EXPECT_EQ(slot(6).nominalRatio, QStringLiteral("600:5"));
    EXPECT_EQ(slot(1).tapName, QString());
    EXPECT_EQ(insulationHead(), QStringLiteral("Insulation default"));
}

TEST_F(kvxReader, ALaterRowOfTheSamePairOverwritesTheEarlier)
{
    KvxSampleRow second = row("02", "X1-X2", "250:5");
    second.fields[11] = QStringLiteral("0.20000");
    ASSERT_EQ(readLines(withRows(smallSample(), {row("01", "X1-X2"), second})), 0);
    EXPECT_EQ(slot(1).nominalRatio, QStringLiteral("250:5"));
    EXPECT_EQ(slot(1).windingResistance, QStringLiteral("0.20000"));
}

TEST_F(kvxReader, ALaterDroppedRowOfTheSamePairEmptiesTheSlot)
{
    // The second row has a blank inside a field: it reads empty, and being
    // the later row it leaves slot 1 without a name.
    ASSERT_EQ(readLines(withRows(smallSample(), {row("01", "X1-X2"), row("02", "X1-X2", "2 :5")})),
              0);
    EXPECT_EQ(slot(1).tapName, QString());
    EXPECT_EQ(slot(1).nominalRatio, QString());
}

TEST_F(kvxReader, RowWithABlankInsideAFieldIsDroppedWithItsCurve)
{
    std::vector<KvxSampleRow> rows = {rowWithCurve("01", "X1-X2", " 1", points(5)),
                                      rowWithCurve("02", "X1-X3", " 2", points(5))};
    rows[1].fields[2] = QStringLiteral("300: 5");
    ASSERT_EQ(readLines(withRows(smallSample(), rows)), 0);
    EXPECT_EQ(slot(2).tapName, QString());
    EXPECT_EQ(slot(2).nominalRatio, QString());
    EXPECT_EQ(slot(2).measuredRatio, QString());
    EXPECT_TRUE(record().tableRows[1].contains("300: 5"));
    for (double v : curve(2).volts)
        EXPECT_EQ(v, 0.0001);
    EXPECT_EQ(curve(1).volts[5], 5.0);
}

TEST_F(kvxReader, UnknownPairRowIsIgnoredAndItsCurvePicksNothing)
{
    std::vector<KvxSampleRow> rows = {rowWithCurve("01", "X1-X6", " 1", points(5))};
    ASSERT_EQ(readLines(withRows(smallSample(), rows)), 0);
    for (int n = 1; n <= 10; ++n) {
        EXPECT_EQ(slot(n).tapName, QString());
        EXPECT_EQ(curve(n).pointCount, 0);
        EXPECT_EQ(curve(n).volts[119], 0.0001);
    }
    EXPECT_EQ(record().lastReference.toNumber(), 1);
}

TEST_F(kvxReader, RowsBeyondTheTenthAreIgnoredAndTheirBlocksPickNothing)
{
    std::vector<KvxSampleRow> rows;
    for (int n = 1; n <= 10; ++n)
        rows.push_back(rowWithCurve(QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')),
                                    kvxSlotPair(n), QStringLiteral("%1").arg(n, 2), points(3, n)));
    KvxSampleRow eleventh = rowWithCurve("11", "X1-X2", "11", points(4, 100.0));
    eleventh.fields[2] = QStringLiteral("999:5");
    rows.push_back(eleventh);
    rows.push_back(row("12", "X2-X3", "998:5"));
    ASSERT_EQ(readLines(withRows(smallSample(), rows)), 0);
    EXPECT_EQ(record().lastReference.toNumber(), 12);
    EXPECT_EQ(record().tableRows[9].mid(7, 5), QStringLiteral("X4-X5"));
    EXPECT_EQ(slot(1).nominalRatio, QStringLiteral("200:5"));
    EXPECT_EQ(slot(5).nominalRatio, QStringLiteral("200:5"));
    // Block 11 would have put 400 V at point 4 of slot 1.
    EXPECT_EQ(curve(1).pointCount, 3);
    EXPECT_EQ(curve(1).volts[3], 3.0);
    EXPECT_EQ(curve(1).volts[4], 3.0);
    EXPECT_EQ(curve(10).volts[3], 30.0);
}

TEST_F(kvxReader, SplitReadsAFieldThatRanIntoTheNextColumnWhileCountsMatch)
{
    std::array<QString, 14> f = row("01", "X1-X2").fields;
    QString line = samples::kvxTableRow(f);
    // The measured ratio grows to run over the error window's first character.
    line.replace(39, 11, QStringLiteral("1234567.123"));
    ASSERT_EQ(line.mid(49, 1), QStringLiteral("3"));
    const KvxSplitRow split = SplitKvxTapRow(line);
    EXPECT_EQ(split[4], QStringLiteral("1234567.123"));
    EXPECT_EQ(split[5], QStringLiteral("0.0"));
    EXPECT_EQ(split[12], QStringLiteral(">1G"));
    EXPECT_EQ(split[13], QString()); // "---"
    EXPECT_EQ(split[14], QString());
}

TEST_F(kvxReader, SplitLeavesOutTheRowsLastCharacterWhenLookingForTheLastColumn)
{
    std::array<QString, 14> f = row("01", "X1-X2").fields;
    f[13] = QStringLiteral("5");
    const QString line = samples::kvxTableRow(f);
    ASSERT_EQ(line.size(), 140);
    // The one-character field is counted as a token but its column is not
    // seen, so the counts differ and the row is lost.
    EXPECT_EQ(SplitKvxTapRow(line), KvxSplitRow{});
    f[13] = QStringLiteral("50");
    EXPECT_EQ(SplitKvxTapRow(samples::kvxTableRow(f))[13], QStringLiteral("50"));
}

TEST_F(kvxReader, SplitEmptiesDashesAndNA)
{
    std::array<QString, 14> f = row("01", "X1-X2").fields;
    f[8] = QStringLiteral("NA");
    f[9] = QStringLiteral("---");
    f[10] = QStringLiteral("N/A");
    const KvxSplitRow split = SplitKvxTapRow(samples::kvxTableRow(f));
    EXPECT_EQ(split[0], QStringLiteral("01"));
    EXPECT_EQ(split[1], QStringLiteral("X1-X2"));
    EXPECT_EQ(split[8], QString());
    EXPECT_EQ(split[9], QString());
    EXPECT_EQ(split[10], QStringLiteral("N/A"));
}

TEST_F(kvxReader, SplitOfARowShorterThanItsLastColumnFailsWithAnInvalidArgument)
{
    // The last column asks for the row's length less 138 characters: a
    // negative count below 138, which the platform refuses.
    EXPECT_EQ(failureOf([] { SplitKvxTapRow(QStringLiteral(" 01    X1-X2     200:5")); }),
              err::InvalidProcedureCall);
    EXPECT_EQ(failureOf([] { SplitKvxTapRow(QString()); }), err::InvalidProcedureCall);
    EXPECT_EQ(failureOf([] { SplitKvxTapRow(QString(137, u' ')); }), err::InvalidProcedureCall);
    // 138 characters ask for none, 139 for one.
    EXPECT_EQ(failureOf([] { SplitKvxTapRow(QString(138, u' ')); }), 0);
    EXPECT_EQ(failureOf([] { SplitKvxTapRow(QString(139, u' ')); }), 0);
}

TEST_F(kvxReader, ARowShorterThanItsLastColumnStopsTheRead)
{
    samples::KvxSampleFile f = smallSample();
    QByteArray bytes = samples::kvxSampleBytes(f);
    const QByteArray row = samples::kvxTableRow(f.rows[0].fields).toLatin1();
    const qsizetype at = bytes.indexOf(row);
    ASSERT_GE(at, 0);
    // The first table row cut to 100 characters.
    bytes.remove(at + 100, row.size() - 100);
    EXPECT_EQ(readKvx(writeFile(QStringLiteral("short.txt"), bytes)), err::InvalidProcedureCall);
}

TEST_F(kvxReader, TapRowColumnsStartWhereTheReaderLooks)
{
    const std::array<Int16, 14> expected{2, 8, 18, 30, 38, 50, 61, 72, 82, 93, 104, 115, 128, 138};
    EXPECT_EQ(InitTapRowColumns(), expected);
}

TEST_F(kvxReader, DispatchLooksAtCharactersFiveToThirteenForThePair)
{
    // Rows as wide as the table, so that the split reads them.
    DispatchKvxTapRow(QStringLiteral("01  X3-X4").leftJustified(140));
    EXPECT_EQ(slot(8).tapName, QStringLiteral("X3-X4"));
    DispatchKvxTapRow(QStringLiteral("01           X3-X5").leftJustified(140));
    EXPECT_EQ(slot(9).tapName, QString());
    DispatchKvxTapRow(QString()); // no pair: nothing is split
    for (int n : {1, 2, 3, 4, 5, 6, 7, 9, 10})
        EXPECT_EQ(slot(n).tapName, QString());
}

TEST_F(kvxReader, ParseTapRowsEmptiesNamesThenDispatchesTheRows)
{
    record().taps[3].tapName = QStringLiteral("X1-X5");
    record().tableRows[0] = samples::kvxTableRow(row("01", "X2-X5").fields);
    ParseKvxTapRows();
    EXPECT_EQ(slot(4).tapName, QString());
    EXPECT_EQ(slot(7).tapName, QStringLiteral("X2-X5"));
}

// ---- insulation head ---------------------------------------------------------

TEST_F(kvxReader, InsulationHeadWithoutTestVoltageIsTheKeyTextAndTwoBlanks)
{
    KvxSampleRow r = row("01", "X1-X2");
    r.fields[13] = QStringLiteral("---");
    ASSERT_EQ(readLines(withRows(smallSample(), {r})), 0);
    EXPECT_EQ(insulationHead(), InsulationHeadText + QStringLiteral("  "));
}

TEST_F(kvxReader, InsulationHeadCarriesFiveHundredVoltsOnceOverTwoReads)
{
    KvxSampleRow dashes = row("01", "X1-X2");
    ASSERT_EQ(readLines(withRows(smallSample(), {dashes}), "first.txt"), 0);
    EXPECT_EQ(insulationHead(), InsulationHeadText + QStringLiteral("  "));

    KvxSampleRow volts = row("01", "X1-X2");
    volts.fields[13] = QStringLiteral("500");
    ASSERT_EQ(readLines(withRows(smallSample(), {volts}), "second.txt"), 0);
    EXPECT_EQ(insulationHead(), InsulationHeadText + QStringLiteral("    500 Vdc"));
    ASSERT_EQ(readLines(withRows(smallSample(), {volts}), "third.txt"), 0);
    EXPECT_EQ(insulationHead(), InsulationHeadText + QStringLiteral("    500 Vdc"));
}

TEST_F(kvxReader, InsulationHeadTakesOnlyFiveHundredOrAThousandAndOnlyFromSlotOne)
{
    KvxSampleRow thousand = row("01", "X1-X2");
    thousand.fields[13] = QStringLiteral("1000");
    ASSERT_EQ(readLines(withRows(smallSample(), {thousand})), 0);
    EXPECT_EQ(insulationHead(), InsulationHeadText + QStringLiteral("    1000 Vdc"));

    KvxSampleRow other = row("01", "X1-X2");
    other.fields[13] = QStringLiteral("2500");
    KvxSampleRow slotTwo = row("02", "X1-X3");
    slotTwo.fields[13] = QStringLiteral("500");
    ASSERT_EQ(readLines(withRows(smallSample(), {other, slotTwo})), 0);
    EXPECT_EQ(insulationHead(), InsulationHeadText + QStringLiteral("  "));
    for (int n = 1; n <= 10; ++n)
        EXPECT_EQ(kvxCondensedReport().lbInsulationResistanceTest(n), QString());
}

TEST_F(kvxReader, InsulationTextGetsTheUnitWithATrailingBlank)
{
    KvxSampleRow r = row("01", "X1-X2");
    r.fields[12] = QStringLiteral("Error");
    KvxSampleRow r2 = row("02", "X1-X3");
    r2.fields[12] = QStringLiteral("---");
    ASSERT_EQ(readLines(withRows(smallSample(), {r, r2})), 0);
    EXPECT_EQ(slot(1).insulation, QStringLiteral("Errorohm "));
    EXPECT_EQ(slot(2).insulation, QString());
}

// ---- curves --------------------------------------------------------------------

TEST_F(kvxReader, CurvePointsAreStoredByNumberInMilliamperes)
{
    ASSERT_EQ(readLines(samples::kvxSampleLines(smallSample())), 0);
    const QStringList lines = samples::kvxSampleLines(smallSample());
    EXPECT_GE(indexOfLine(lines, "  03      5.50      750.000m   "), 0);
    EXPECT_EQ(curve(1).volts[3], 5.5);
    EXPECT_EQ(curve(1).current[3], 750.0);
    EXPECT_EQ(curve(1).current[4], 1000.0);
    EXPECT_EQ(curve(1).current[5], 1250.0);
    EXPECT_EQ(curve(1).current[1], 1.0);
    EXPECT_EQ(curve(1).pointCount, 5);
    EXPECT_EQ(curve(2).current[5], 1500.0);
    EXPECT_EQ(curve(2).volts[4], 9.0);
}

TEST_F(kvxReader, StoreCurvePointTakesMilliOrAmperes)
{
    KvxTapCurve c;
    StoreKvxCurvePoint({"3", "5.50", "750.000m"}, c);
    EXPECT_EQ(c.volts[3], 5.5);
    EXPECT_EQ(c.current[3], 750.0);
    StoreKvxCurvePoint({"3", "5.50", "1.250"}, c);
    EXPECT_EQ(c.current[3], 1250.0);
    EXPECT_EQ(c.pointCount, 3);
    StoreKvxCurvePoint({"2", "1", ""}, c);
    EXPECT_EQ(c.current[2], 0.0);
    EXPECT_EQ(c.pointCount, 3);
    StoreKvxCurvePoint({"119", "abc", "x"}, c);
    EXPECT_EQ(c.volts[119], 0.0);
    EXPECT_EQ(c.pointCount, 119);
}

TEST_F(kvxReader, StoreCurvePointFailsOutsideTheArray)
{
    KvxTapCurve c;
    EXPECT_EQ(failureOf([&] {
                  StoreKvxCurvePoint({"120", "1", "1"}, c);
              }),
              err::SubscriptOutOfRange);
    EXPECT_EQ(failureOf([&] {
                  StoreKvxCurvePoint({"-1", "1", "1"}, c);
              }),
              err::SubscriptOutOfRange);
    EXPECT_EQ(failureOf([&] { StoreKvxCurvePoint({"0", "1", "1"}, c); }), 0);
    EXPECT_EQ(c.current[0], 1000.0);
}

TEST_F(kvxReader, BlockWithABlankAndBlockWithAZeroBothPickRowOne)
{
    KvxSampleFile f = smallSample();
    f.rows.resize(1);
    f.rows[0].blockNumber = QStringLiteral(" 1");
    ASSERT_EQ(readLines(samples::kvxSampleLines(f), "blank.txt"), 0);
    const KvxTapCurve blank = curve(1);
    f.rows[0].blockNumber = QStringLiteral("01");
    ASSERT_EQ(readLines(samples::kvxSampleLines(f), "zero.txt"), 0);
    EXPECT_EQ(curve(1).volts, blank.volts);
    EXPECT_EQ(curve(1).current, blank.current);
    EXPECT_EQ(curve(1).volts[2], 2.5);
}

TEST_F(kvxReader, BlockNamesPickRowsOneToTen)
{
    for (int n = 1; n <= 10; ++n)
        record().tableRows[static_cast<std::size_t>(n - 1)] =
            samples::kvxTableRow(row("01", kvxSlotPair(11 - n)).fields);
    ParseKvxTapRows();
    StoreKvxCurveLine(QStringLiteral("Ref Test # 10"), {"1", "10", "1"});
    StoreKvxCurveLine(QStringLiteral("Ref Test #10"), {"2", "20", "1"});
    StoreKvxCurveLine(QStringLiteral("Ref Test # 3"), {"1", "30", "1"});
    StoreKvxCurveLine(QStringLiteral("Ref Test #03"), {"2", "31", "1"});
    StoreKvxCurveLine(QStringLiteral("Ref Test #11"), {"3", "99", "1"});
    StoreKvxCurveLine(QStringLiteral("Ref Test #3"), {"3", "99", "1"});
    StoreKvxCurveLine(QStringLiteral("Ref Test #00"), {"3", "99", "1"});
    // Row 10 holds X1-X2 (slot 1), row 3 holds X3-X4 (slot 8).
    EXPECT_EQ(curve(1).volts[1], 10.0);
    EXPECT_EQ(curve(1).volts[2], 20.0);
    EXPECT_EQ(curve(8).volts[1], 30.0);
    EXPECT_EQ(curve(8).volts[2], 31.0);
    for (int n = 1; n <= 10; ++n)
        EXPECT_EQ(curve(n).volts[3], 0.0);
}

TEST_F(kvxReader, BlockMatchesARowByPlaceNotByItsPrintedNumber)
{
    // Row 1 prints "07" but is the first row: block 1 belongs to it.
    std::vector<KvxSampleRow> rows = {rowWithCurve("07", "X2-X5", " 1", points(3, 2.0))};
    ASSERT_EQ(readLines(withRows(smallSample(), rows)), 0);
    EXPECT_EQ(curve(7).volts[3], 6.0);
    EXPECT_EQ(record().lastReference.toNumber(), 7);
}

TEST_F(kvxReader, FortyPointCurveStaysFlatFromItsLastPoint)
{
    std::vector<KvxSampleRow> rows = {rowWithCurve("01", "X2-X4", " 1", points(40, 2.0))};
    ASSERT_EQ(readLines(withRows(smallSample(), rows)), 0);
    const KvxTapCurve& c = curve(6);
    EXPECT_EQ(c.pointCount, 40);
    EXPECT_EQ(c.volts[0], 0.0001);
    EXPECT_EQ(c.current[0], 0.0001);
    EXPECT_EQ(c.volts[40], 80.0);
    EXPECT_EQ(c.current[40], 40.0);
    for (int i = 41; i < 120; ++i) {
        EXPECT_EQ(c.volts[static_cast<std::size_t>(i)], c.volts[40]) << i;
        EXPECT_EQ(c.current[static_cast<std::size_t>(i)], c.current[40]) << i;
    }
}

TEST_F(kvxReader, PointLineTokensCarryOverToTheNextLine)
{
    // The token array lives through all the curve blocks: a line with
    // two pieces keeps the current of the line before it.
    QStringList lines = withRows(smallSample(), {rowWithCurve("01", "X1-X2", " 1", points(3))});
    const qsizetype third = indexOfLineStarting(lines, "  03");
    lines[third] = QStringLiteral("  03      7.00");
    ASSERT_EQ(readLines(lines), 0);
    EXPECT_EQ(curve(1).volts[3], 7.0);
    EXPECT_EQ(curve(1).current[3], curve(1).current[2]);
    EXPECT_EQ(curve(1).current[2], 2.0);
}

TEST_F(kvxReader, LastPointIsStoredAgainWithTheClosingEmptyLine)
{
    // Breaths: three fields up to the block head, then one for each of the
    // five points and one more for the empty line that brings the last
    // point's tokens back. The file ends after that line.
    ASSERT_EQ(readLines(withRows(smallSample(), {rowWithCurve("01", "X1-X2", " 1", points(5))})),
              0);
    EXPECT_EQ(m_breaths, 3 + 5 + 1);
    EXPECT_EQ(curve(1).volts[5], 5.0);
    EXPECT_EQ(curve(1).pointCount, 5);
}

TEST_F(kvxReader, BlockWithoutClosingEmptyLineAtTheEndOfTheFile)
{
    QStringList lines = withRows(smallSample(), {rowWithCurve("01", "X1-X2", " 1", points(5))});
    ASSERT_EQ(lines.last(), QString());
    lines.removeLast();
    ASSERT_EQ(readLines(lines), 0);
    EXPECT_EQ(m_breaths, 3 + 5);
    EXPECT_EQ(curve(1).volts[5], 5.0);
}

TEST_F(kvxReader, CommaAmongTheCurveBlocksEndsAField)
{
    // The curve blocks are read field by field, so a comma cuts a point
    // line in two.
    QStringList lines = withRows(smallSample(), {rowWithCurve("01", "X1-X2", " 1", points(3))});
    lines[indexOfLineStarting(lines, "  02")] = QStringLiteral("  02      2,50      0.002");
    ASSERT_EQ(readLines(lines), 0);
    // "  02      2" then "50      0.002": point 2 gets 2 V with the current
    // token left from point 1, then point 50 gets 0.002 V.
    EXPECT_EQ(curve(1).volts[2], 2.0);
    EXPECT_EQ(curve(1).current[2], curve(1).current[1]);
    EXPECT_EQ(curve(1).volts[50], 0.002);
    EXPECT_EQ(curve(1).pointCount, 50);
}

TEST_F(kvxReader, FindLineBeginningFindsAHeadOnTheVeryLastLine)
{
    const Int16 no = openKvx(writeFile("a.txt", "x\r\n\r\n  Ref Test #07"));
    QString line;
    QString tail = QStringLiteral("old");
    EXPECT_TRUE(FindLineBeginning(no, line, QStringLiteral("Ref Test"), tail));
    EXPECT_EQ(line, QStringLiteral("Ref Test"));
    EXPECT_EQ(tail, QStringLiteral("07"));
    EXPECT_EQ(m_breaths, 3);
}

TEST_F(kvxReader, FindLineBeginningReturnsFalseWhenTheFileEndsFirst)
{
    const Int16 no = openKvx(writeFile("a.txt", "x\r\nRef Tes\r\ny\r\n"));
    QString line = QStringLiteral("something long");
    QString tail;
    EXPECT_FALSE(FindLineBeginning(no, line, QStringLiteral("Ref Test"), tail));
    EXPECT_EQ(line, QStringLiteral("y"));
    EXPECT_EQ(tail, QStringLiteral("y"));
}

TEST_F(kvxReader, FindLineBeginningStopsAtOnceOnAMatchingCurrentLine)
{
    const Int16 no = openKvx(writeFile("a.txt", "Ref Test #02\r\n"));
    QString line = QStringLiteral("Ref Test #01 and more");
    QString tail = QStringLiteral("01");
    EXPECT_TRUE(FindLineBeginning(no, line, QStringLiteral("Ref Test"), tail));
    EXPECT_EQ(tail, QStringLiteral("01"));
    EXPECT_EQ(m_breaths, 0);
}

TEST_F(kvxReader, NoCurveBlocksLeaveEveryArrayAtATenThousandth)
{
    KvxSampleFile f = smallSample();
    for (KvxSampleRow& r : f.rows)
        r.curve.reset();
    ASSERT_EQ(readLines(samples::kvxSampleLines(f)), 0);
    EXPECT_EQ(slot(1).tapName, QStringLiteral("X1-X2"));
    for (int n = 1; n <= 10; ++n) {
        for (double v : curve(n).volts)
            EXPECT_EQ(v, 0.0001);
        for (double v : curve(n).current)
            EXPECT_EQ(v, 0.0001);
    }
}

TEST_F(kvxReader, NonNumericCurveTokensReadAsZeroAndAreRepairedAway)
{
    QStringList lines = withRows(smallSample(), {rowWithCurve("01", "X1-X2", " 1", points(5))});
    lines[indexOfLineStarting(lines, "  04")] = QStringLiteral("  04      abc       xyz   ");
    ASSERT_EQ(readLines(lines), 0);
    EXPECT_EQ(curve(1).volts[4], curve(1).volts[3]);
    EXPECT_EQ(curve(1).current[4], curve(1).current[3]);
    EXPECT_EQ(curve(1).volts[3], 3.0);
    EXPECT_EQ(curve(1).volts[5], 5.0);
}

TEST_F(kvxReader, TheReadStartsAtTheFirstByteAndLeavesTheFileOpen)
{
    const QString path = writeLines("a.txt", samples::kvxSampleLines(smallSample()));
    const Int16 no = openKvx(path);
    SequentialFiles::instance().lineInput(no);
    SequentialFiles::instance().lineInput(no);
    ClearKvxRecord();
    ReadKvxTestFile();
    EXPECT_EQ(record().ctSerial, QStringLiteral("SN-1"));
    EXPECT_TRUE(SequentialFiles::instance().isOpen(no));
}
