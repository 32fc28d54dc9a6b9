// The ZBL test file reader: the header, the raw table lines and their limit of
// 122, the key search for the compensation values, the cutting of rows into
// tokens, the current's digits and unit, the copies onto the report, the
// stored compensation, and every failure that ends a read.
#include "zbl/model/ZblTestFileReader.h"
#include "shell/model/AppState.h"
#include "shell/model/SequentialFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/zbl/ZblTestSupport.h"
#include "tools/zblsamples/ZblSampleWriter.h"

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

namespace {

class zblReader : public ZblFixture
{
protected:
    // A row line cut on its own, as ParseZBLTableLines cuts element `i`.
    void parseRow(const QString& line, int i = 0)
    {
        record().FilePath = QStringLiteral("rows.zbl");
        record().RowLine[static_cast<std::size_t>(i)] = line;
        ParseZBLTableLines();
    }

    // An uploaded file of `count` readings, written by the upload's writer.
    QString uploadedFile(const QString& name, int count)
    {
        samples::ZblUploadFile f;
        f.serial = QStringLiteral("ZBL-1");
        f.temperature = QStringLiteral("20 C");
        for (int i = 1; i <= count; ++i) {
            samples::ZblUploadReading r;
            r.tapA = r.tapB = QString::number(i);
            r.windingA1 = QStringLiteral("H1");
            r.windingA2 = QStringLiteral("H2");
            r.windingB1 = QStringLiteral("X1");
            r.windingB2 = QStringLiteral("X2");
            r.resistanceA = QStringLiteral("%1.5 mO").arg(i);
            r.resistanceB = QStringLiteral("%1.25 µO").arg(i);
            f.readings.push_back(r);
        }
        const QString path = m_dir.filePath(name);
        EXPECT_EQ(samples::writeUploadedZblFile(path, f), 0);
        return path;
    }

    // A saved file of `count` rows with both compensation values.
    QString savedFile(const QString& name, int count, const QString& factor,
                      const QString& compensed)
    {
        samples::ZblSavedFile f;
        f.date = QStringLiteral("15 Nov.2024   09:07:33");
        f.temperature = QStringLiteral("20 C");
        for (int i = 1; i <= count; ++i)
            f.rows.push_back(
                {QString::number(i), QStringLiteral("H1-H2"), QStringLiteral("1.5 mOhm"),
                 QString::number(i), QStringLiteral("X1-X2"), QStringLiteral("2 mOhm"),
                 QStringLiteral("10 A"), QStringLiteral("5"), QStringLiteral("00:00:00")});
        f.compensationFactor = factor;
        f.compensedTemp = compensed;
        const QString path = m_dir.filePath(name);
        EXPECT_EQ(samples::writeSavedZblFile(path, f), 0);
        return path;
    }

    const QString& row(int i) { return record().RowLine[static_cast<std::size_t>(i)]; }
};

const QString OffRow = QStringLiteral("- T1 H1-H2 OFF T2 X1-X2 1.5 mOhm 10A 5sec 00:00:05");

} // namespace

// ---- The header --------------------------------------------------------

TEST_F(zblReader, HeaderLinesAndValuesOfAnUploadedFile)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-manual-19-rows.zbl"))), 0);
    const ZblTestRecord& r = record();
    EXPECT_EQ(r.FilePath, samplePath(QStringLiteral("zbl-manual-19-rows.zbl")));
    EXPECT_EQ(r.FileName, QStringLiteral("zbl-manual-19-rows.zbl"));
    EXPECT_EQ(r.HeaderLine[0], QStringLiteral("Date/Time:    15 Nov.2024   09:07:33"));
    EXPECT_EQ(r.HeaderLine[9], QStringLiteral("Notes:        OLTC 1-19, after maintenance"));
    EXPECT_EQ(r.DateTimeText, QStringLiteral("15 Nov.2024   09:07:33"));
    EXPECT_EQ(r.ModeText, QStringLiteral("Manual"));
    EXPECT_EQ(r.SerialText, QStringLiteral("ZBL-20417"));
    EXPECT_EQ(r.CompanyText, QStringLiteral("Northfield Power Co-op"));
    EXPECT_EQ(r.StationText, QStringLiteral("Harlow Substation"));
    EXPECT_EQ(r.DesignationText, QStringLiteral("T2 66/11 kV 20 MVA"));
    EXPECT_EQ(r.ManufacturerText, QStringLiteral("Velsing Transformers"));
    EXPECT_EQ(r.OperatorText, QStringLiteral("J. Okafor"));
    EXPECT_EQ(r.TemperatureText, QStringLiteral("18 C"));
    // A comma in a value is text: lines are read whole.
    EXPECT_EQ(r.NotesText, QStringLiteral("OLTC 1-19, after maintenance"));
}

TEST_F(zblReader, SavedFileHasAnEmptyMode)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-saved-compensated.zbl"))), 0);
    EXPECT_EQ(record().HeaderLine[1], QStringLiteral("Mode:         "));
    EXPECT_EQ(record().ModeText, QString());
    EXPECT_EQ(record().SerialText, QStringLiteral("ZBL-20417"));
}

TEST_F(zblReader, LinesAheadOfTheFirstLineWithDateAreDropped)
{
    QStringList lines = uploadedLines({OffRow});
    // Lower case does not count, and "Date" may stand anywhere in the line.
    lines.replace(1, QStringLiteral("update of the date: none"));
    lines.insert(1, QStringLiteral("anything at all"));
    lines.replace(3, QStringLiteral("Test Date/Time:15 Nov.2024"));
    ASSERT_EQ(loadLines(lines), 0);
    EXPECT_EQ(record().HeaderLine[0], QStringLiteral("Test Date/Time:15 Nov.2024"));
    EXPECT_EQ(record().DateTimeText, QStringLiteral(":15 Nov.2024"));
    EXPECT_EQ(record().ModeText, QStringLiteral("Manual"));
    EXPECT_EQ(record().TapA[0], QStringLiteral("T1"));
}

TEST_F(zblReader, HeaderValuesGoByPositionNotByLabel)
{
    QStringList lines = uploadedLines({});
    lines.replace(4, QStringLiteral("Company:      first after mode"));
    lines.replace(5, QStringLiteral("Serial:       second after mode"));
    ASSERT_EQ(loadLines(lines), 0);
    EXPECT_EQ(record().SerialText, QStringLiteral("first after mode"));
    EXPECT_EQ(record().CompanyText, QStringLiteral("second after mode"));
}

TEST_F(zblReader, HeaderValueStartsAtTheFifteenthCharacterAndIsTrimmed)
{
    QStringList lines = uploadedLines({});
    lines.replace(4, QStringLiteral("Serial:          SN 7   "));
    lines.replace(5, QStringLiteral("Company:"));           // shorter than the label: no value
    lines.replace(6, QStringLiteral("S"));                  // one character: still no failure
    lines.replace(7, QStringLiteral("Designation:  \tT1")); // a tab is text, not a blank
    ASSERT_EQ(loadLines(lines), 0);
    EXPECT_EQ(record().SerialText, QStringLiteral("SN 7"));
    EXPECT_EQ(record().CompanyText, QString());
    EXPECT_EQ(record().StationText, QString());
    EXPECT_EQ(record().DesignationText, QStringLiteral("\tT1"));
}

TEST_F(zblReader, HeaderIsNotParsedWhileThePathIsEmpty)
{
    ZblTestRecord& r = record();
    r.HeaderLine.fill(QString()); // empty lines would fail if they were cut
    r.SerialText = QStringLiteral("kept");
    r.FileName = QStringLiteral("kept.zbl");
    EXPECT_EQ(failureOf([] { ParseZBLHeaderLines(); }), 0);
    EXPECT_EQ(r.SerialText, QStringLiteral("kept"));
    EXPECT_EQ(r.FileName, QStringLiteral("kept.zbl"));
}

TEST_F(zblReader, FileNameIsTheDirectoryLookupOfThePath)
{
    ZblTestRecord& r = record();
    r.HeaderLine.fill(QStringLiteral("Label:        value"));
    r.FilePath = writeLines(QStringLiteral("here.zbl"), {QStringLiteral("x")});
    ParseZBLHeaderLines();
    EXPECT_EQ(r.FileName, QStringLiteral("here.zbl"));
    EXPECT_EQ(r.NotesText, QStringLiteral("value"));

    // A file that is gone, and a folder, are found by no lookup.
    r.FilePath = m_dir.filePath(QStringLiteral("gone.zbl"));
    ParseZBLHeaderLines();
    EXPECT_EQ(r.FileName, QString());
    r.FilePath = m_dir.path();
    ParseZBLHeaderLines();
    EXPECT_EQ(r.FileName, QString());
}

TEST_F(zblReader, ReadTakesThePathFromTheSharedState)
{
    const QString path = writeLines(QStringLiteral("state.zbl"), uploadedLines({}));
    record().FilePath = QStringLiteral("old.zbl");
    ASSERT_EQ(readZbl(path), 0);
    EXPECT_EQ(record().FilePath, path);
    EXPECT_EQ(report().head.lbTexteFileName1, QStringLiteral("state.zbl"));
}

// ---- The raw table lines -----------------------------------------------

TEST_F(zblReader, UploadedFileGivesRowsClosingRuleAndEndMarker)
{
    ASSERT_EQ(readZbl(samplePath(QStringLiteral("zbl-manual-19-rows.zbl"))), 0);
    EXPECT_TRUE(row(0).startsWith(QStringLiteral("-             1             H1-H2 ")));
    EXPECT_TRUE(row(18).startsWith(QStringLiteral("-             19 ")));
    EXPECT_EQ(row(19), QString(136, u'-'));
    EXPECT_EQ(row(20), ZblEndOfFileMarker);
    for (int i = 21; i < ZblRowsUsed; ++i)
        EXPECT_EQ(row(i), QString()) << i;
}

TEST_F(zblReader, FileWithoutRowsHasTheClosingRuleRightBehindTheHead)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-no-rows.zbl"))), 0);
    EXPECT_EQ(row(0), QString(136, u'-'));
    EXPECT_EQ(row(1), ZblEndOfFileMarker);
    EXPECT_EQ(row(2), QString());
    // The rule is cut like a row.
    EXPECT_EQ(record().TapA[0], QStringLiteral("0"));
    EXPECT_EQ(record().ResistanceA[0], QStringLiteral("0 0"));
    EXPECT_EQ(record().CurrentText[0], QStringLiteral("0"));
}

TEST_F(zblReader, EndMarkerIsCutLikeAnyLine)
{
    parseRow(ZblEndOfFileMarker);
    EXPECT_EQ(record().TapA[0], QStringLiteral("de"));
    EXPECT_EQ(record().WindingA[0], QStringLiteral("Fichier"));
    EXPECT_EQ(record().ResistanceA[0], QStringLiteral("0 0"));
}

TEST_F(zblReader, LineOfTheMarkerWordsInTheFileEndsTheTable)
{
    ASSERT_EQ(readZbl(writeLines(QStringLiteral("marker.zbl"),
                                 uploadedLines({OffRow, ZblEndOfFileMarker, OffRow}))),
              0);
    EXPECT_EQ(row(0), OffRow);
    EXPECT_EQ(row(1), ZblEndOfFileMarker);
    EXPECT_EQ(row(2), QString());
}

TEST_F(zblReader, GetNextLineOrEndGivesTheMarkerAgainAndAgain)
{
    const Int16 no = openZbl(writeLines(QStringLiteral("two.zbl"), {"a, b", ""}));
    EXPECT_EQ(GetNextLineOrEnd(no), QStringLiteral("a, b"));
    EXPECT_EQ(GetNextLineOrEnd(no), QString());
    EXPECT_EQ(GetNextLineOrEnd(no), ZblEndOfFileMarker);
    EXPECT_EQ(GetNextLineOrEnd(no), ZblEndOfFileMarker);
}

TEST_F(zblReader, OneHundredTwentyRowsLeaveRoomForRuleAndMarker)
{
    ASSERT_EQ(readZbl(uploadedFile(QStringLiteral("120.zbl"), 120)), 0);
    EXPECT_TRUE(row(119).startsWith(QStringLiteral("-             120 ")));
    EXPECT_EQ(row(120), QString(136, u'-'));
    EXPECT_EQ(row(121), ZblEndOfFileMarker);
}

TEST_F(zblReader, OneHundredTwentyOneRowsKeepTheRuleButNoMarker)
{
    ASSERT_EQ(readZbl(uploadedFile(QStringLiteral("121.zbl"), 121)), 0);
    EXPECT_TRUE(row(120).startsWith(QStringLiteral("-             121 ")));
    EXPECT_EQ(row(121), QString(136, u'-'));
}

TEST_F(zblReader, OneHundredTwentyTwoRowsFillEveryElementAndTheRuleIsNeverSeen)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-autotc-122-rows.zbl"))), 0);
    for (int i = 0; i < ZblRowsUsed; ++i)
        EXPECT_TRUE(row(i).startsWith(QStringLiteral("-  "))) << i;
    EXPECT_EQ(record().TapA[121], QStringLiteral("23"));
    EXPECT_EQ(record().WindingA[121], QStringLiteral("H1-H2"));
}

TEST_F(zblReader, RowsBeyondTheHundredTwentySecondAreNeverRead)
{
    ASSERT_EQ(loadZbl(uploadedFile(QStringLiteral("123.zbl"), 123)), 0);
    EXPECT_TRUE(row(121).startsWith(QStringLiteral("-             122 ")));
    EXPECT_EQ(record().TapA[121], QStringLiteral("122"));
    // Element 122 exists but nothing writes it.
    EXPECT_EQ(record().RowLine[122], QString());
    EXPECT_EQ(record().TapA[122], QString());
}

TEST_F(zblReader, ElementOneHundredTwentyTwoIsNeverTouched)
{
    ZblTestRecord& r = record();
    r.RowLine[122] = QStringLiteral("- a b 1 c d e 2 f 10A 5 x");
    r.TapA[122] = QStringLiteral("untouched");
    r.CurrentText[122] = QStringLiteral("untouched");
    r.tabChannelA[122] = 7.5;
    r.tabChannelB[122] = 8.5;
    ASSERT_EQ(loadZbl(uploadedFile(QStringLiteral("123.zbl"), 123)), 0);
    EXPECT_EQ(r.RowLine[122], QStringLiteral("- a b 1 c d e 2 f 10A 5 x"));
    EXPECT_EQ(r.TapA[122], QStringLiteral("untouched"));
    EXPECT_EQ(r.CurrentText[122], QStringLiteral("untouched"));
    EXPECT_EQ(r.tabChannelA[122], 7.5);
    EXPECT_EQ(r.tabChannelB[122], 8.5);
}

TEST_F(zblReader, SavedFileStoresTheEmptyLineAndTheCompensationLines)
{
    ASSERT_EQ(readZbl(samplePath(QStringLiteral("zbl-saved-compensated.zbl"))), 0);
    EXPECT_TRUE(row(11).startsWith(QStringLiteral("-             12 ")));
    EXPECT_EQ(row(12), QString());
    EXPECT_EQ(row(13), QStringLiteral("TEMP COMPENSATION FACTOR:   Copper (TK=234.5)"));
    EXPECT_EQ(row(14), QStringLiteral("TEMP COMPENSED:             75"));
    EXPECT_EQ(row(15), ZblEndOfFileMarker);
}

TEST_F(zblReader, OneExtraHeaderLineBringsTheLowerRuleIntoTheTable)
{
    QStringList lines = uploadedLines({OffRow});
    lines.insert(12, QStringLiteral("Notes go on here"));
    ASSERT_EQ(loadLines(lines), 0);
    EXPECT_EQ(record().NotesText, QStringLiteral("None"));
    EXPECT_EQ(row(0), QString(136, u'-'));
    EXPECT_EQ(row(1), OffRow);
    EXPECT_EQ(record().TapA[0], QStringLiteral("0"));
    EXPECT_EQ(record().TapA[1], QStringLiteral("T1"));
}

TEST_F(zblReader, TwoExtraHeaderLinesBringTheTableHeadIntoTheTable)
{
    QStringList lines = uploadedLines({OffRow});
    lines.insert(12, QStringLiteral("Notes go on here"));
    lines.insert(13, QStringLiteral("and here"));
    ASSERT_EQ(loadLines(lines), 0);
    EXPECT_EQ(row(0), QString::fromLatin1(ZblTableHead));
    EXPECT_EQ(row(1), QString(136, u'-'));
    EXPECT_EQ(row(2), OffRow);
    // The head's words are cut like a row: "Tap" is the row mark.
    EXPECT_EQ(record().TapA[0], QStringLiteral("Winding"));
    EXPECT_EQ(record().WindingA[0], QStringLiteral("Resistance"));
    EXPECT_EQ(record().ResistanceA[0], QStringLiteral("0 Winding"));
}

TEST_F(zblReader, ClearRowLinesEmptiesTheElementsInUse)
{
    ZblTestRecord& r = record();
    r.RowLine.fill(QStringLiteral("old"));
    ClearZBLRowLines();
    for (int i = 0; i < ZblRowsUsed; ++i)
        EXPECT_EQ(r.RowLine[static_cast<std::size_t>(i)], QString()) << i;
    EXPECT_EQ(r.RowLine[122], QStringLiteral("old"));
    EXPECT_EQ(m_breaths, ZblRowsUsed);
}

TEST_F(zblReader, ClearChannelTablesZeroesTheElementsInUse)
{
    ZblTestRecord& r = record();
    r.tabChannelA.fill(1.5);
    r.tabChannelB.fill(2.5);
    ClearZBLChannelTables();
    for (int i = 0; i < ZblRowsUsed; ++i) {
        EXPECT_EQ(r.tabChannelA[static_cast<std::size_t>(i)], 0.0) << i;
        EXPECT_EQ(r.tabChannelB[static_cast<std::size_t>(i)], 0.0) << i;
    }
    EXPECT_EQ(r.tabChannelA[122], 1.5);
    EXPECT_EQ(r.tabChannelB[122], 2.5);
    EXPECT_EQ(m_breaths, ZblRowsUsed);
}

TEST_F(zblReader, ClearCompensedColumnsPutsDashesInBothColumns)
{
    ZblReportFill& f = report();
    f.cell(ZblReportColumn::ResA, 3) = QStringLiteral("1 mOhm");
    ClearZBLCompensedColumns(f);
    for (int i = 0; i < ZblRowsUsed; ++i) {
        EXPECT_EQ(f.cell(ZblReportColumn::ConbinedResistanceA, i), QStringLiteral("---")) << i;
        EXPECT_EQ(f.cell(ZblReportColumn::ConbinedResistanceB, i), QStringLiteral("---")) << i;
    }
    EXPECT_EQ(f.cell(ZblReportColumn::ResA, 3), QStringLiteral("1 mOhm"));
    EXPECT_EQ(m_breaths, ZblRowsUsed);
}

// ---- The key search ----------------------------------------------------

TEST_F(zblReader, PlainUploadedFileHasNoCompensationValues)
{
    ASSERT_EQ(readZbl(samplePath(QStringLiteral("zbl-timed-20-rows.zbl"))), 0);
    EXPECT_EQ(record().CompensationFactorText, QStringLiteral("NAV"));
    EXPECT_EQ(record().CompensedTempText, QStringLiteral("NAV"));
}

TEST_F(zblReader, SavedFileWithKeysButNoValuesGivesEmptyValues)
{
    ASSERT_EQ(readZbl(samplePath(QStringLiteral("zbl-saved-no-values.zbl"))), 0);
    EXPECT_EQ(record().CompensationFactorText, QString());
    EXPECT_EQ(record().CompensedTempText, QString());
}

TEST_F(zblReader, SavedFileGivesBothValues)
{
    ASSERT_EQ(readZbl(samplePath(QStringLiteral("zbl-saved-compensated.zbl"))), 0);
    EXPECT_EQ(record().CompensationFactorText, QStringLiteral("Copper (TK=234.5)"));
    EXPECT_EQ(record().CompensedTempText, QStringLiteral("75"));
}

TEST_F(zblReader, CommaBehindTheKeyReadsLikeBlanks)
{
    ASSERT_EQ(readZbl(samplePath(QStringLiteral("zbl-saved-comma-key.zbl"))), 0);
    EXPECT_EQ(record().CompensationFactorText, QStringLiteral("Alluminium (TK=225)"));
    EXPECT_EQ(record().CompensedTempText, QStringLiteral("85"));

    const QString comma = writeLines(QStringLiteral("comma.zbl"), {"x", "TEMP COMPENSED:,75"});
    const QString blanks = writeLines(QStringLiteral("blanks.zbl"), {"x", "TEMP COMPENSED:    75"});
    QString key = ZblCompensedTempKey;
    EXPECT_EQ(FindValueOfKeyInFile(comma, key), QStringLiteral("75"));
    EXPECT_EQ(FindValueOfKeyInFile(blanks, key), QStringLiteral("75"));
}

TEST_F(zblReader, OnlyOneCommaRightBehindTheKeyIsDropped)
{
    QString key = ZblCompensedTempKey;
    EXPECT_EQ(FindValueOfKeyInFile(writeLines("a.zbl", {"x", "TEMP COMPENSED:,,75"}), key),
              QStringLiteral(",75"));
    EXPECT_EQ(FindValueOfKeyInFile(writeLines("b.zbl", {"x", "TEMP COMPENSED: ,75"}), key),
              QStringLiteral(",75"));
    EXPECT_EQ(FindValueOfKeyInFile(writeLines("c.zbl", {"x", "TEMP COMPENSED:, 75 "}), key),
              QStringLiteral("75"));
}

TEST_F(zblReader, KeyOnTheFirstLineIsNotFound)
{
    QString key = ZblCompensedTempKey;
    EXPECT_EQ(FindValueOfKeyInFile(writeLines("first.zbl", {"TEMP COMPENSED: 75", "x"}), key),
              ZblEndOfFileMarker);
    // Read through the reader, a missing key is "NAV".
    QStringList lines = uploadedLines({});
    lines.prepend(QStringLiteral("TEMP COMPENSED: 75"));
    ASSERT_EQ(readZbl(writeLines(QStringLiteral("firstline.zbl"), lines)), 0);
    EXPECT_EQ(record().CompensedTempText, QStringLiteral("NAV"));
}

TEST_F(zblReader, KeyIsTrimmedAndHandedBack)
{
    QString key = QStringLiteral("   TEMP COMPENSED:  ");
    EXPECT_EQ(FindValueOfKeyInFile(writeLines("k.zbl", {"x", "  TEMP COMPENSED:  75 C  "}), key),
              QStringLiteral("75 C"));
    EXPECT_EQ(key, QStringLiteral("TEMP COMPENSED:"));
}

TEST_F(zblReader, KeySearchIsExactAndTakesTheFirstMatchUpToTheLastLine)
{
    QString key = ZblCompensedTempKey;
    EXPECT_EQ(FindValueOfKeyInFile(writeLines("case.zbl", {"x", "temp compensed: 75"}), key),
              ZblEndOfFileMarker);
    EXPECT_EQ(FindValueOfKeyInFile(
                  writeLines("two.zbl", {"x", "TEMP COMPENSED: 60", "TEMP COMPENSED: 75"}), key),
              QStringLiteral("60"));
    EXPECT_EQ(
        FindValueOfKeyInFile(writeLines("last.zbl", {"x", "y", "z", "TEMP COMPENSED:9"}), key),
        QStringLiteral("9"));
    // The factor key is no prefix of the other and the other none of it.
    QString factor = ZblCompensationFactorKey;
    EXPECT_EQ(FindValueOfKeyInFile(writeLines("other.zbl", {"x", "TEMP COMPENSED: 75"}), factor),
              ZblEndOfFileMarker);
}

TEST_F(zblReader, OneKeyWithoutTheOther)
{
    QStringList lines = uploadedLines({});
    lines << QString() << QStringLiteral("TEMP COMPENSED:             75");
    ASSERT_EQ(readZbl(writeLines(QStringLiteral("one.zbl"), lines)), 0);
    EXPECT_EQ(record().CompensationFactorText, QStringLiteral("NAV"));
    EXPECT_EQ(record().CompensedTempText, QStringLiteral("75"));
}

TEST_F(zblReader, CompensationBeyondTheHundredTwentySecondLineIsStillFound)
{
    ASSERT_EQ(readZbl(samplePath(QStringLiteral("zbl-saved-121-rows.zbl"))), 0);
    EXPECT_EQ(row(121), QString()); // the empty line; the keys lie beyond
    EXPECT_EQ(record().CompensationFactorText, QStringLiteral("Copper (TK=234.5)"));
    EXPECT_EQ(record().CompensedTempText, QStringLiteral("75"));

    // A file of more than 122 rows, its keys far beyond the table's reach.
    zblTestRecord() = ZblTestRecord{};
    ASSERT_EQ(readZbl(savedFile(QStringLiteral("130.zbl"), 130, QStringLiteral("X"),
                                QStringLiteral("60"))),
              0);
    EXPECT_TRUE(row(121).startsWith(QStringLiteral("-             122 ")));
    EXPECT_EQ(record().CompensationFactorText, QStringLiteral("X"));
    EXPECT_EQ(record().CompensedTempText, QStringLiteral("60"));
}

TEST_F(zblReader, KeySearchClosesItsOwnFileNumber)
{
    SequentialFiles& files = SequentialFiles::instance();
    const int before = files.openCount();
    QString key = ZblCompensedTempKey;
    FindValueOfKeyInFile(writeLines("n.zbl", {"x", "y"}), key);
    EXPECT_EQ(files.openCount(), before);
    EXPECT_EQ(failureOf([&] { FindValueOfKeyInFile(writeLines("o.zbl", {"x"}), key); }),
              err::InputPastEndOfFile);
    EXPECT_EQ(files.openCount(), before);

    // The test file's own number stays open after a read.
    const QString path = writeLines(QStringLiteral("open.zbl"), uploadedLines({}));
    ASSERT_EQ(readZbl(path), 0);
    EXPECT_TRUE(files.isOpen(static_cast<Int16>(appState().ZblTestFileNo.toNumber())));
    EXPECT_EQ(files.openCount(), before + 1);
}

// ---- Cutting rows ------------------------------------------------------

TEST_F(zblReader, RowWithChannelAOffAndAUnitGluedToTheCurrent)
{
    parseRow(OffRow);
    const ZblTestRecord& r = record();
    EXPECT_EQ(r.TapA[0], QStringLiteral("T1"));
    EXPECT_EQ(r.WindingA[0], QStringLiteral("H1-H2"));
    EXPECT_EQ(r.ResistanceA[0], QStringLiteral("OFF"));
    EXPECT_EQ(r.TapB[0], QStringLiteral("T2"));
    EXPECT_EQ(r.WindingB[0], QStringLiteral("X1-X2"));
    EXPECT_EQ(r.ResistanceB[0], QStringLiteral("1.5 mOhm"));
    EXPECT_EQ(r.CurrentText[0], QStringLiteral("10 A"));
    EXPECT_EQ(r.IntervalSeconds[0], 5.0);
    EXPECT_EQ(r.TotalTime[0], QStringLiteral("00:00:05"));
}

TEST_F(zblReader, SavedRowWithTheCurrentAsTwoTokensReadsTheSame)
{
    parseRow(QStringLiteral("- T1 H1-H2 OFF T2 X1-X2 1.5 mOhm 10 A 5 00:00:05"));
    EXPECT_EQ(record().CurrentText[0], QStringLiteral("10 A"));
    EXPECT_EQ(record().IntervalSeconds[0], 5.0);
    EXPECT_EQ(record().TotalTime[0], QStringLiteral("00:00:05"));
    EXPECT_EQ(record().ResistanceB[0], QStringLiteral("1.5 mOhm"));
}

TEST_F(zblReader, ZonedUploadedRowReadsAsItsTokens)
{
    parseRow(zonedRow({"N_10", "H1-H2", "398.60 mOhm", "N_10", "X1-X2", "846.20 µOhm", "100mA",
                       " 5sec", "00:00:00"}));
    const ZblTestRecord& r = record();
    EXPECT_EQ(r.TapA[0], QStringLiteral("N_10"));
    EXPECT_EQ(r.ResistanceA[0], QStringLiteral("398.6 mOhm"));
    EXPECT_EQ(r.TapB[0], QStringLiteral("N_10"));
    EXPECT_EQ(r.ResistanceB[0], QStringLiteral("846.2 µOhm"));
    EXPECT_EQ(r.CurrentText[0], QStringLiteral("100 mA"));
    EXPECT_EQ(r.IntervalSeconds[0], 5.0);
    EXPECT_EQ(r.TotalTime[0], QStringLiteral("00:00:00"));
}

TEST_F(zblReader, BothChannelsOff)
{
    parseRow(QStringLiteral("- --- - OFF --- - OFF 1A 10sec 00:00:00"));
    const ZblTestRecord& r = record();
    EXPECT_EQ(r.TapA[0], QStringLiteral("---"));
    EXPECT_EQ(r.WindingA[0], QStringLiteral("-"));
    EXPECT_EQ(r.ResistanceA[0], QStringLiteral("OFF"));
    EXPECT_EQ(r.ResistanceB[0], QStringLiteral("OFF"));
    EXPECT_EQ(r.CurrentText[0], QStringLiteral("1 A"));
    EXPECT_EQ(r.IntervalSeconds[0], 10.0);
    EXPECT_EQ(r.TotalTime[0], QStringLiteral("00:00:00"));
}

TEST_F(zblReader, OverInChannelAShiftsTheRestOfTheRow)
{
    // Intended: only "OFF" is one token, so "OVER" takes the tap of B as its
    // unit and every field behind it moves by one. Nothing is reported.
    parseRow(QStringLiteral("- 5 H1-H2 OVER 5 X1-X2 846.20 µOhm 10A 5sec 00:00:00"));
    const ZblTestRecord& r = record();
    EXPECT_EQ(r.TapA[0], QStringLiteral("5"));
    EXPECT_EQ(r.ResistanceA[0], QStringLiteral("0 5"));
    EXPECT_EQ(r.TapB[0], QStringLiteral("X1-X2"));
    EXPECT_EQ(r.WindingB[0], QStringLiteral("846.20"));
    EXPECT_EQ(r.ResistanceB[0], QStringLiteral("0 10A"));
    EXPECT_EQ(r.CurrentText[0], QStringLiteral("5 sec"));
    EXPECT_EQ(r.IntervalSeconds[0], 0.0);
    EXPECT_EQ(r.TotalTime[0], QStringLiteral("0"));
}

TEST_F(zblReader, OverInChannelBShiftsTheCommonFields)
{
    parseRow(QStringLiteral("- 7 H1-H2 419.60 mOhm 7 X1-X2 OVER 10A 5sec 00:00:00"));
    const ZblTestRecord& r = record();
    EXPECT_EQ(r.ResistanceA[0], QStringLiteral("419.6 mOhm"));
    EXPECT_EQ(r.TapB[0], QStringLiteral("7"));
    EXPECT_EQ(r.ResistanceB[0], QStringLiteral("0 10A"));
    EXPECT_EQ(r.CurrentText[0], QStringLiteral("5 sec"));
    EXPECT_EQ(r.IntervalSeconds[0], 0.0);
    EXPECT_EQ(r.TotalTime[0], QStringLiteral("0"));
}

TEST_F(zblReader, OverRowsOfTheSampleComeOutMisaligned)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-timed-46-rows-over.zbl"))), 0);
    const ZblTestRecord& r = record();
    EXPECT_EQ(r.ResistanceA[4], QStringLiteral("0 5"));
    EXPECT_EQ(r.ResistanceA[29], QStringLiteral("0 7"));
    EXPECT_EQ(r.ResistanceB[6], QStringLiteral("0 10A"));
    // Their neighbours are whole.
    EXPECT_EQ(r.ResistanceA[3], QStringLiteral("432.2 mOhm"));
    EXPECT_EQ(r.CurrentText[5], QStringLiteral("10 A"));
}

TEST_F(zblReader, ResistanceNumberIsRewrittenAsItsNumberText)
{
    parseRow(QStringLiteral("- 1 a .5 mOhm 1 b 2.500 Ohm 10A 5sec 00:00:00"), 0);
    parseRow(QStringLiteral("- 1 a 1.2e3 µOhm 1 b abc Ohm 10A 5sec 00:00:00"), 1);
    const ZblTestRecord& r = record();
    EXPECT_EQ(r.ResistanceA[0], QStringLiteral(".5 mOhm"));
    EXPECT_EQ(r.ResistanceB[0], QStringLiteral("2.5 Ohm"));
    EXPECT_EQ(r.ResistanceA[1], QStringLiteral("1200 µOhm"));
    EXPECT_EQ(r.ResistanceB[1], QStringLiteral("0 Ohm"));
    // Below one, negative and zero: no zero ahead of the point.
    parseRow(QStringLiteral("- 1 a -0.25 mOhm 1 b 0.000 Ohm 10A 5sec 00:00:00"), 2);
    parseRow(QStringLiteral("- 1 a 0.0036 Ohm 1 b -12.50 Ohm 10A 5sec 00:00:00"), 3);
    EXPECT_EQ(r.ResistanceA[2], QStringLiteral("-.25 mOhm"));
    EXPECT_EQ(r.ResistanceB[2], QStringLiteral("0 Ohm"));
    EXPECT_EQ(r.ResistanceA[3], QStringLiteral(".0036 Ohm"));
    EXPECT_EQ(r.ResistanceB[3], QStringLiteral("-12.5 Ohm"));
}

TEST_F(zblReader, CurrentsOfTheFourRangesAndTheirUnits)
{
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 10A 5sec 0"), 0);
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 1A 5sec 0"), 1);
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 100mA 5sec 0"), 2);
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 10mA 5sec 0"), 3);
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 100 mA 5 0"), 4);
    const ZblTestRecord& r = record();
    EXPECT_EQ(r.CurrentText[0], QStringLiteral("10 A"));
    EXPECT_EQ(r.CurrentText[1], QStringLiteral("1 A"));
    EXPECT_EQ(r.CurrentText[2], QStringLiteral("100 mA"));
    EXPECT_EQ(r.CurrentText[3], QStringLiteral("10 mA"));
    EXPECT_EQ(r.CurrentText[4], QStringLiteral("100 mA"));
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(r.IntervalSeconds[i], 5.0) << i;
}

TEST_F(zblReader, BareCurrentTakesTheIntervalAsItsUnit)
{
    // Intended: an uploaded current outside the four ranges has no unit, so
    // the interval is taken for one and the total time for the interval.
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 1500 3sec 00:00:00"));
    const ZblTestRecord& r = record();
    EXPECT_EQ(r.CurrentText[0], QStringLiteral("1500 3sec"));
    EXPECT_EQ(r.IntervalSeconds[0], 0.0);
    EXPECT_EQ(r.TotalTime[0], QStringLiteral("0"));

    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-autotc-23-rows.zbl"))), 0);
    EXPECT_EQ(r.CurrentText[0], QStringLiteral("1500 3sec"));
    EXPECT_EQ(r.TotalTime[0], QStringLiteral("0"));
    EXPECT_EQ(r.CurrentText[20], QStringLiteral("10 mA"));
    EXPECT_EQ(r.TotalTime[20], QStringLiteral("00:00:00"));
}

TEST_F(zblReader, CurrentOfZeroIsOneToken)
{
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 0 5sec 00:00:00"));
    EXPECT_EQ(record().CurrentText[0], QStringLiteral("0"));
    EXPECT_EQ(record().IntervalSeconds[0], 5.0);
    EXPECT_EQ(record().TotalTime[0], QStringLiteral("00:00:00"));
}

TEST_F(zblReader, CurrentOfDashesIsEmptyAndOneToken)
{
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm --- 12sec 00:01:00"));
    EXPECT_EQ(record().CurrentText[0], QString());
    EXPECT_EQ(record().IntervalSeconds[0], 12.0);
    EXPECT_EQ(record().TotalTime[0], QStringLiteral("00:01:00"));
}

TEST_F(zblReader, DecimalCurrentHasNoDigitsAndTakesTheNextToken)
{
    // "1.5" has two matches and so gives neither digits nor a unit; with no
    // unit the next token is joined on, as for a bare number.
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 1.5 5sec 00:00:00"));
    EXPECT_EQ(record().CurrentText[0], QStringLiteral(" 5sec"));
    EXPECT_EQ(record().IntervalSeconds[0], 0.0);
}

TEST_F(zblReader, IntervalIsTheLeadingNumber)
{
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 10A 2.5sec 00:00:05"), 0);
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 10A --- 00:00:05"), 1);
    parseRow(QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 10A 12 00:00:05"), 2);
    EXPECT_EQ(record().IntervalSeconds[0], 2.5);
    EXPECT_EQ(record().IntervalSeconds[1], 0.0);
    EXPECT_EQ(record().IntervalSeconds[2], 12.0);
}

TEST_F(zblReader, LinesThatAreNoRowsGiveRowsOfZeros)
{
    parseRow(QString(136, u'-'), 0);
    parseRow(QString(), 1);
    parseRow(QStringLiteral("   "), 2);
    const ZblTestRecord& r = record();
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(r.TapA[i], QStringLiteral("0")) << i;
        EXPECT_EQ(r.WindingA[i], QStringLiteral("0")) << i;
        EXPECT_EQ(r.ResistanceA[i], QStringLiteral("0 0")) << i;
        EXPECT_EQ(r.TapB[i], QStringLiteral("0")) << i;
        EXPECT_EQ(r.WindingB[i], QStringLiteral("0")) << i;
        EXPECT_EQ(r.ResistanceB[i], QStringLiteral("0 0")) << i;
        EXPECT_EQ(r.CurrentText[i], QStringLiteral("0")) << i;
        EXPECT_EQ(r.IntervalSeconds[i], 0.0) << i;
        EXPECT_EQ(r.TotalTime[i], QStringLiteral("0")) << i;
    }
}

TEST_F(zblReader, OnlyBlanksSplitATabIsText)
{
    parseRow(QStringLiteral("- T\t1 H1-H2 1 mOhm T2 X1-X2 1 mOhm 10A 5sec 00:00:05"));
    EXPECT_EQ(record().TapA[0], QStringLiteral("T\t1"));
    EXPECT_EQ(record().TotalTime[0], QStringLiteral("00:00:05"));
}

TEST_F(zblReader, ThirteenWordsAreTheMostARowMayHold)
{
    const QString thirteen = QStringLiteral("- 1 a 1 mOhm 1 b 2 mOhm 10 A 5 00:00:05");
    ASSERT_EQ(SplitZBLRowTokens(thirteen)[12], QStringLiteral("00:00:05"));
    parseRow(thirteen);
    EXPECT_EQ(record().TotalTime[0], QStringLiteral("00:00:05"));

    const QString fourteen = QStringLiteral("- T 1 a 1 mOhm 1 b 2 mOhm 10 A 5 00:00:05");
    const std::optional<RuntimeError> e = failureFrom([&] { SplitZBLRowTokens(fourteen); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->number(), err::SubscriptOutOfRange);
    EXPECT_EQ(e->detail(), fourteen);
}

TEST_F(zblReader, TokensLeftUnusedAreZero)
{
    const ZblRowTokens t = SplitZBLRowTokens(QStringLiteral("  a   b "));
    EXPECT_EQ(t[0], QStringLiteral("a"));
    EXPECT_EQ(t[1], QStringLiteral("b"));
    for (std::size_t i = 2; i < t.size(); ++i)
        EXPECT_EQ(t[i], QStringLiteral("0")) << i;
}

TEST_F(zblReader, ParseYieldsOnceARowOverAllRows)
{
    record().FilePath = QStringLiteral("rows.zbl");
    m_breaths = 0;
    ParseZBLTableLines();
    EXPECT_EQ(m_breaths, ZblRowsUsed);
    // Every element is cut, rows or not.
    EXPECT_EQ(record().TapA[121], QStringLiteral("0"));
}

// ---- SplitValueAndUnit -------------------------------------------------

TEST(zblSplitValueAndUnit, DigitsAndUnitOfOneMatch)
{
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("10A")),
              (ValueWithUnit{QStringLiteral("10"), 10.0, 10, QStringLiteral("A")}));
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("100mA")),
              (ValueWithUnit{QStringLiteral("100"), 100.0, 100, QStringLiteral("mA")}));
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("5sec")),
              (ValueWithUnit{QStringLiteral("5"), 5.0, 5, QStringLiteral("sec")}));
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("1500")),
              (ValueWithUnit{QStringLiteral("1500"), 1500.0, 1500, QString()}));
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("0")),
              (ValueWithUnit{QStringLiteral("0"), 0.0, 0, QString()}));
    // Blanks may stand between the digits and the unit.
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("10 A")),
              (ValueWithUnit{QStringLiteral("10"), 10.0, 10, QStringLiteral("A")}));
    // Text ahead of the digits is no part of the match; "µ" is no letter of
    // the unit.
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("I=007A")),
              (ValueWithUnit{QStringLiteral("007"), 7.0, 7, QStringLiteral("A")}));
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("10µA")),
              (ValueWithUnit{QStringLiteral("10"), 10.0, 10, QString()}));
}

TEST(zblSplitValueAndUnit, NoMatchOrMoreThanOneGivesNothing)
{
    const ValueWithUnit nothing;
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("1.5")), nothing);
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("---")), nothing);
    EXPECT_EQ(SplitValueAndUnit(QString()), nothing);
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("00:00:05")), nothing);
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("10mA5")), nothing);
    // Only ASCII digits count.
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("\u0663A")), nothing);
}

TEST(zblSplitValueAndUnit, DigitsBeyondSixteenBitsOverflow)
{
    EXPECT_EQ(SplitValueAndUnit(QStringLiteral("32767mA")).intValue, 32767);
    const std::optional<RuntimeError> e =
        failureFrom([] { SplitValueAndUnit(QStringLiteral("32768mA")); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->number(), err::Overflow);
    EXPECT_EQ(e->detail(), QStringLiteral("32768"));
    EXPECT_EQ(failureOf([] { SplitValueAndUnit(QStringLiteral("99999999999999999999")); }),
              err::Overflow);
    EXPECT_EQ(failureOf([] { SplitValueAndUnit(QString(400, u'9')); }), err::Overflow);
}

// ---- Copies onto the report --------------------------------------------

TEST_F(zblReader, HeaderFillCopiesTheValuesAndEmptiesTheCompensedTemperature)
{
    report().head.lbTexteCompensedTemp1 = QStringLiteral("75");
    ASSERT_EQ(readZbl(samplePath(QStringLiteral("zbl-timed-20-rows.zbl"))), 0);
    const ZblReportFill::Head& h = report().head;
    EXPECT_EQ(h.lbTexteCompensedTemp1, QString());
    EXPECT_EQ(h.lbTexteFileName1, QStringLiteral("zbl-timed-20-rows.zbl"));
    EXPECT_EQ(h.lbTexteDate1, QStringLiteral("3 May2024   17:00:00"));
    EXPECT_EQ(h.txtXFRSerialNumber, QStringLiteral("ZBL-20417"));
    EXPECT_EQ(h.txtCompany, QStringLiteral("Northfield Power Co-op"));
    EXPECT_EQ(h.txtStation, QStringLiteral("Harlow Substation"));
    EXPECT_EQ(h.txtDesignator, QStringLiteral("T1 33/6.6 kV 5 MVA"));
    EXPECT_EQ(h.txtManufacturer, QStringLiteral("Velsing Transformers"));
    EXPECT_EQ(h.txtOperator, QStringLiteral("J. Okafor"));
    EXPECT_EQ(h.txtTemperature, QStringLiteral("18 C"));
    EXPECT_EQ(h.txtNotes, QStringLiteral("Timed, 10 s per tap"));
    // The mode is kept but shown nowhere; the box is not touched.
    EXPECT_EQ(h.cbCompensationText, QString());
}

TEST_F(zblReader, TapFillCopiesSevenColumnsOfEveryRow)
{
    ZblTestRecord& r = record();
    for (int i = 0; i < ZblRowsUsed; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const QString n = QString::number(i);
        r.TapA[k] = QStringLiteral("ta") + n;
        r.WindingA[k] = QStringLiteral("wa") + n;
        r.ResistanceA[k] = QStringLiteral("ra") + n;
        r.TapB[k] = QStringLiteral("tb") + n;
        r.WindingB[k] = QStringLiteral("wb") + n;
        r.ResistanceB[k] = QStringLiteral("rb") + n;
        r.TotalTime[k] = QStringLiteral("tt") + n;
        r.CurrentText[k] = QStringLiteral("cur") + n;
    }
    ZblReportFill& f = report();
    ClearZBLCompensedColumns(f);
    m_breaths = 0;
    FillZBLTapControls(f);
    EXPECT_EQ(m_breaths, ZblRowsUsed);
    for (int i : {0, 57, 121}) {
        const QString n = QString::number(i);
        EXPECT_EQ(f.cell(ZblReportColumn::TapA, i), QStringLiteral("ta") + n);
        EXPECT_EQ(f.cell(ZblReportColumn::WindingA, i), QStringLiteral("wa") + n);
        EXPECT_EQ(f.cell(ZblReportColumn::ResA, i), QStringLiteral("ra") + n);
        EXPECT_EQ(f.cell(ZblReportColumn::TapB, i), QStringLiteral("tb") + n);
        EXPECT_EQ(f.cell(ZblReportColumn::WindingB, i), QStringLiteral("wb") + n);
        EXPECT_EQ(f.cell(ZblReportColumn::ResB, i), QStringLiteral("rb") + n);
        EXPECT_EQ(f.cell(ZblReportColumn::TotalTime, i), QStringLiteral("tt") + n);
        // The compensated columns are the compensation's.
        EXPECT_EQ(f.cell(ZblReportColumn::ConbinedResistanceA, i), QStringLiteral("---"));
        EXPECT_EQ(f.cell(ZblReportColumn::ConbinedResistanceB, i), QStringLiteral("---"));
    }
    EXPECT_EQ(failureOf([&f] { f.cell(ZblReportColumn::TapA, 122); }), err::SubscriptOutOfRange);
}

TEST_F(zblReader, UnderscoredTapIsShownWithItsUnderscores)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-manual-19-rows.zbl"))), 0);
    EXPECT_EQ(record().TapA[9], QStringLiteral("N_10"));
    EXPECT_EQ(report().cell(ZblReportColumn::TapA, 9), QStringLiteral("N_10"));
    EXPECT_EQ(report().cell(ZblReportColumn::TapB, 9), QStringLiteral("N_10"));
    EXPECT_EQ(report().cell(ZblReportColumn::ResB, 9), QStringLiteral("846.2 µOhm"));
}

// ---- The stored compensation -------------------------------------------

class zblCompensation : public zblReader
{
protected:
    void SetUp() override
    {
        zblReader::SetUp();
        report().head.txtTemperature = QStringLiteral("20 C");
        report().head.cbCompensationText = QStringLiteral("before");
        report().dialog.txtTK = QStringLiteral("250");
        report().dialog.txtTS = QStringLiteral("old TS");
        report().dialog.txtTM = QStringLiteral("old TM");
    }
    void apply(const QString& factor, const QString& compensed)
    {
        record().CompensationFactorText = factor;
        record().CompensedTempText = compensed;
        SetZBLCompensationFromFile(QStringLiteral("ZBL"), report());
    }
};

TEST_F(zblCompensation, CopperSetsTheDialogAndRefillsTheColumns)
{
    apply(QStringLiteral("Copper (TK=234.5)"), QStringLiteral("75"));
    const ZblReportFill& f = report();
    EXPECT_EQ(f.head.lbTexteCompensedTemp1, QStringLiteral("75"));
    EXPECT_EQ(f.head.cbCompensationText, QStringLiteral("Copper (TK=234.5)"));
    EXPECT_EQ(f.dialog.txtTK, QStringLiteral("234.5"));
    EXPECT_EQ(f.dialog.txtTS, QStringLiteral("75"));
    EXPECT_EQ(f.dialog.txtTM, QStringLiteral("20"));
    EXPECT_EQ(f.compensedColumnFills, 1);
}

TEST_F(zblCompensation, AluminiumSetsTwoHundredTwentyFive)
{
    apply(QStringLiteral("Alluminium (TK=225)"), QStringLiteral("85 C"));
    EXPECT_EQ(report().dialog.txtTK, QStringLiteral("225"));
    EXPECT_EQ(report().dialog.txtTS, QStringLiteral("85"));
    EXPECT_EQ(report().head.lbTexteCompensedTemp1, QStringLiteral("85 C"));
    EXPECT_EQ(report().compensedColumnFills, 1);
}

TEST_F(zblCompensation, AnyOtherMaterialLeavesTheConstantAsItWas)
{
    apply(QStringLiteral("Cuivre (TK=234.5)"), QStringLiteral("75"));
    EXPECT_EQ(report().head.cbCompensationText, QStringLiteral("Cuivre (TK=234.5)"));
    EXPECT_EQ(report().dialog.txtTK, QStringLiteral("250"));
    EXPECT_EQ(report().compensedColumnFills, 1);

    // An empty constant is rewritten as the number text of its leading number.
    report().dialog.txtTK.clear();
    apply(QString(), QStringLiteral("75"));
    EXPECT_EQ(report().dialog.txtTK, QStringLiteral("0"));
    EXPECT_EQ(report().head.cbCompensationText, QString());
}

TEST_F(zblCompensation, TextsAreRewrittenAsNumberTexts)
{
    report().head.txtTemperature = QStringLiteral("22.50 C");
    apply(QStringLiteral("Copper (TK=234.5)"), QStringLiteral(" 75.0 deg"));
    EXPECT_EQ(report().dialog.txtTM, QStringLiteral("22.5"));
    EXPECT_EQ(report().dialog.txtTS, QStringLiteral("75"));
    // The label shows the value as stored.
    EXPECT_EQ(report().head.lbTexteCompensedTemp1, QStringLiteral(" 75.0 deg"));
}

TEST_F(zblCompensation, NoStoredValueChangesNothing)
{
    report().head.lbTexteCompensedTemp1 = QStringLiteral("label");
    apply(QStringLiteral("NAV"), QStringLiteral("NAV"));
    EXPECT_EQ(report().head.lbTexteCompensedTemp1, QStringLiteral("label"));
    EXPECT_EQ(report().head.cbCompensationText, QStringLiteral("before"));
    EXPECT_EQ(report().dialog.txtTK, QStringLiteral("250"));
    EXPECT_EQ(report().compensedColumnFills, 0);
}

TEST_F(zblCompensation, StopsAfterTheLabelWithoutTwoPositiveTemperatures)
{
    struct Case
    {
        const char* temperature;
        const char* compensed;
    };
    for (const Case c : {Case{"", "75"}, Case{"0 C", "75"}, Case{"-5 C", "75"}, Case{"C 20", "75"},
                         Case{"20 C", ""}, Case{"20 C", "abc"}, Case{"20 C", "0"}}) {
        SCOPED_TRACE(std::string(c.temperature) + " / " + c.compensed);
        report().head.txtTemperature = QString::fromUtf8(c.temperature);
        apply(QStringLiteral("Copper (TK=234.5)"), QString::fromUtf8(c.compensed));
        EXPECT_EQ(report().head.lbTexteCompensedTemp1, QString::fromUtf8(c.compensed));
        EXPECT_EQ(report().head.cbCompensationText, QStringLiteral("before"));
        EXPECT_EQ(report().dialog.txtTK, QStringLiteral("250"));
        EXPECT_EQ(report().dialog.txtTS, QStringLiteral("old TS"));
        EXPECT_EQ(report().dialog.txtTM, QStringLiteral("old TM"));
        EXPECT_EQ(report().compensedColumnFills, 0);
    }
}

TEST_F(zblCompensation, OnlyTheZblReportIsServed)
{
    record().CompensationFactorText = QStringLiteral("Copper (TK=234.5)");
    record().CompensedTempText = QStringLiteral("75");
    SetZBLCompensationFromFile(QStringLiteral("KVX"), report());
    EXPECT_EQ(report().head.lbTexteCompensedTemp1, QString());
    EXPECT_EQ(report().dialog.txtTK, QStringLiteral("250"));
    EXPECT_EQ(report().compensedColumnFills, 0);
}

TEST_F(zblCompensation, SavedFileBringsItsCompensationBack)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-saved-compensated.zbl"))), 0);
    EXPECT_EQ(report().head.txtTemperature, QStringLiteral("22 C"));
    EXPECT_EQ(report().head.lbTexteCompensedTemp1, QStringLiteral("75"));
    EXPECT_EQ(report().head.cbCompensationText, QStringLiteral("Copper (TK=234.5)"));
    EXPECT_EQ(report().dialog.txtTK, QStringLiteral("234.5"));
    EXPECT_EQ(report().dialog.txtTS, QStringLiteral("75"));
    EXPECT_EQ(report().dialog.txtTM, QStringLiteral("22"));
    EXPECT_EQ(report().compensedColumnFills, 1);
}

TEST_F(zblCompensation, SavedFileWithEmptyValuesEmptiesTheLabelOnly)
{
    ASSERT_EQ(loadZbl(samplePath(QStringLiteral("zbl-saved-no-values.zbl"))), 0);
    EXPECT_EQ(report().head.lbTexteCompensedTemp1, QString());
    EXPECT_EQ(report().head.cbCompensationText, QStringLiteral("before"));
    EXPECT_EQ(report().compensedColumnFills, 0);
}

// ---- Failures ------------------------------------------------------------

class zblReaderFailure : public zblReader
{
protected:
    // Loads `lines` and gives the failure, which must carry the file's path.
    RuntimeError failingLoad(const QStringList& lines)
    {
        const QString path = writeLines(QStringLiteral("bad.zbl"), lines);
        openZbl(path);
        ZblReportFill& f = report();
        const std::optional<RuntimeError> e = failureFrom([&f] {
            ClearZBLRowLines();
            ReadZBLFile();
            FillZBLHeaderControls(f);
            ParseZBLTableLines();
            FillZBLTapControls(f);
        });
        EXPECT_TRUE(e.has_value());
        if (!e)
            return RuntimeError(0);
        EXPECT_EQ(e->where(), path);
        return *e;
    }
};

TEST_F(zblReaderFailure, NoLineWithDateReadsPastTheEnd)
{
    QStringList lines = uploadedLines({OffRow});
    lines.replace(2, QStringLiteral("DATE/TIME:    15 Nov.2024   09:07:33"));
    EXPECT_EQ(failingLoad(lines).number(), err::InputPastEndOfFile);
    EXPECT_EQ(failingLoad({}).number(), err::InputPastEndOfFile);
}

TEST_F(zblReaderFailure, FileEndingInsideTheHeaderReadsPastTheEnd)
{
    const QStringList lines = uploadedLines({}).mid(0, 8);
    EXPECT_EQ(failingLoad(lines).number(), err::InputPastEndOfFile);
    // What was read stays.
    EXPECT_EQ(record().HeaderLine[5], QStringLiteral("Designation:  T1"));
}

TEST_F(zblReaderFailure, FileEndingBeforeTheThreeSkippedLinesReadsPastTheEnd)
{
    // The ten header lines and two of the three lines after them.
    const QStringList lines = uploadedLines({}).mid(0, 14);
    record().RowLine[0] = QStringLiteral("old row");
    EXPECT_EQ(failingLoad(lines).number(), err::InputPastEndOfFile);
    EXPECT_EQ(record().NotesText, QStringLiteral("None"));
    EXPECT_EQ(record().RowLine[0], QString());

    // With all three there, the read goes on and finds the end at once.
    zblTestRecord() = ZblTestRecord{};
    ASSERT_EQ(readZbl(writeLines(QStringLiteral("fifteen.zbl"), uploadedLines({}).mid(0, 15))), 0);
    EXPECT_EQ(record().RowLine[0], ZblEndOfFileMarker);
}

TEST_F(zblReaderFailure, KeySearchInAFileOfOneLineReadsPastTheEnd)
{
    QString key = ZblCompensedTempKey;
    const QString one = writeLines(QStringLiteral("one.zbl"), {"Date/Time: x"});
    const std::optional<RuntimeError> e = failureFrom([&] { FindValueOfKeyInFile(one, key); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->number(), err::InputPastEndOfFile);
    EXPECT_EQ(e->where(), one);
    const QString none = writeFile(QStringLiteral("none.zbl"), QByteArray());
    EXPECT_EQ(failureOf([&] { FindValueOfKeyInFile(none, key); }), err::InputPastEndOfFile);
    EXPECT_EQ(failureOf([&] { FindValueOfKeyInFile(m_dir.filePath("missing.zbl"), key); }),
              err::FileNotFound);
}

TEST_F(zblReaderFailure, EmptyHeaderLineIsAnInvalidArgument)
{
    ZblTestRecord& r = record();
    r.StationText = QStringLiteral("old station");
    r.DesignationText = QStringLiteral("old designation");
    QStringList lines = uploadedLines({OffRow});
    lines.replace(6, QString()); // the station line
    const RuntimeError e = failingLoad(lines);
    EXPECT_EQ(e.number(), err::InvalidProcedureCall);
    // Nothing is rolled back: the values ahead of the empty line are new, the
    // ones behind it old, and the table was never reached.
    EXPECT_EQ(r.FileName, QStringLiteral("bad.zbl"));
    EXPECT_EQ(r.CompanyText, QStringLiteral("Test Co"));
    EXPECT_EQ(r.StationText, QStringLiteral("old station"));
    EXPECT_EQ(r.DesignationText, QStringLiteral("old designation"));
    EXPECT_EQ(r.HeaderLine[5], QStringLiteral("Designation:  T1"));
    EXPECT_EQ(r.RowLine[0], QString());
}

TEST_F(zblReaderFailure, RowOfFourteenWordsIsASubscriptFailure)
{
    const QString bad = QStringLiteral("- Tap 3 H1-H2 1 mOhm 3 X1-X2 2 mOhm 10 A 5 00:00:05");
    ZblTestRecord& r = record();
    r.TapA[1] = QStringLiteral("old tap");
    const RuntimeError e = failingLoad(uploadedLines({OffRow, bad, OffRow}));
    EXPECT_EQ(e.number(), err::SubscriptOutOfRange);
    EXPECT_EQ(e.detail(), bad);
    EXPECT_EQ(r.TapA[0], QStringLiteral("T1"));
    EXPECT_EQ(r.TapA[1], QStringLiteral("old tap"));
    EXPECT_EQ(r.TapA[2], QString()); // never cut
    // The compensation values were found before the table was cut.
    EXPECT_EQ(r.CompensedTempText, QStringLiteral("NAV"));
}

TEST_F(zblReaderFailure, CurrentAboveThirtyTwoThousandSevenHundredSixtySevenOverflows)
{
    const QString ok = QStringLiteral("- 1 a 1 mOhm 1 b 1 mOhm 32767mA 5sec 00:00:05");
    const QString bad = QStringLiteral("- 2 a 1 mOhm 2 b 1 mOhm 32768mA 5sec 00:00:05");
    ZblTestRecord& r = record();
    r.CurrentText[1] = QStringLiteral("old current");
    const RuntimeError e = failingLoad(uploadedLines({ok, bad}));
    EXPECT_EQ(e.number(), err::Overflow);
    EXPECT_EQ(e.detail(), QStringLiteral("32768"));
    EXPECT_EQ(r.CurrentText[0], QStringLiteral("32767 mA"));
    // The row's fields ahead of the current were cut already.
    EXPECT_EQ(r.TapA[1], QStringLiteral("2"));
    EXPECT_EQ(r.ResistanceB[1], QStringLiteral("1 mOhm"));
    EXPECT_EQ(r.CurrentText[1], QStringLiteral("old current"));
    EXPECT_EQ(report().cell(ZblReportColumn::TapA, 0), QString()); // no copy made
}

TEST_F(zblReaderFailure, ReaderFailureWithoutAnOpenFile)
{
    appState().ZblTestFilePath = Dynamic(QStringLiteral("nothing.zbl"));
    appState().ZblTestFileNo = Dynamic(7.0);
    const std::optional<RuntimeError> e = failureFrom([] { ReadZBLFile(); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->number(), err::BadFileNameOrNumber);
}
