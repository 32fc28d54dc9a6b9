// The KVX test file maker: frames built by the instrument's side of the wire,
// parsed as an upload parses them, written into a data root held by a
// temporary settings store, then compared byte for byte with a file laid out
// by hand from the rules and read back the way the open command reads a file.
#include "upload/model/mdKVXFilesMaker.h"

#include "kvx/model/KvxSession.h"
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxTestRecord.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/SettingsStore.h"
#include "shell/model/YieldHook.h"
#include "tests/support/Failure.h"
#include "tests/support/TestFiles.h"
#include "tests/upload/support/CrlfLines.h"
#include "tools/instrument-sim/InstrumentFrames.h"
#include "upload/model/DeviceRecords.h"
#include "upload/model/ModText.h"
#include "upload/model/UploadFolder.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"
#include "upload/model/mdKvxZblCom.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

using namespace quenby;
using namespace quenby::testing;

namespace {

const QString Stamp = QStringLiteral("2024-07-09_010203");

// A table row as the rules lay it out: each text at its column (the number of
// characters ahead of it), or straight behind the text before it when that ran
// past the column.
QString rowAt(const std::vector<std::pair<int, QString>>& fields)
{
    QString row;
    for (const auto& [column, text] : fields) {
        if (row.size() < column)
            row += QString(column - row.size(), u' ');
        row += text;
    }
    return row;
}

QString dashes(int n)
{
    return QString(n, u'-');
}

// The 26 header lines of a file from the sample header below.
QStringList sampleHeaderLines(const QString& serial)
{
    return {QStringLiteral("[3,31,0,0]"),
            dashes(125),
            QStringLiteral("KVX LT Transformer Test Results"),
            dashes(125),
            QStringLiteral("MCU  version:     "),
            QStringLiteral("Acq  version:     "),
            QStringLiteral("Kbd  version:     "),
            QStringLiteral("Data version:     "),
            QStringLiteral(" "),
            QStringLiteral("Serial:          ") + serial,
            QStringLiteral("Company:         Société Test"),
            QStringLiteral("Station:         Station 1"),
            QStringLiteral("Designation:     CT 1"),
            QStringLiteral("Manufacturer:    Maker"),
            QStringLiteral("Operator:        Op"),
            QStringLiteral("Temperature:     20 C"),
            QStringLiteral("Ratio:           300:5"),
            QStringLiteral("Voltage Rating:  C100"),
            QStringLiteral("Class:           C200"),
            QStringLiteral("Position:        H1"),
            QStringLiteral("Phase:           A"),
            QStringLiteral("KVX S/N:         KVX0001"),
            QStringLiteral("Date:            9 Jul.2014"),
            QStringLiteral("Time:            01:02:03"),
            QStringLiteral("Notes:           One line."),
            QString()};
}

QStringList tableHeadLines()
{
    return {
        dashes(149),
        QStringLiteral(" Ref.   Taps       N.P.     Calculated   Measured   Error     Phase     "
                       "Polarity      Vs         Vs         Vs      Wdg. Res.   Insulation   "
                       "Insulation"),
        QStringLiteral(" Test              Ratio     Ratio        Ratio       %       Angle      "
                       "Status    IEEE 45   IEEE 30   IEC 10-50    (Ohms)       (Ohms)       "
                       "(Volts) "),
        dashes(148)};
}

// The lines ahead of the points of an excitation table.
QStringList excitationHead(const QString& number)
{
    // "No." centred in 6: 3 blanks to spare, 1.5 rounds to 2 on the left.
    return {QString(),
            QString(),
            QStringLiteral("Ref Test #") + number,
            dashes(32),
            QStringLiteral("  No. ") + QStringLiteral("  Vx (volts)") +
                QStringLiteral("  Current (A)"),
            dashes(32)};
}

sim::KvxTest plainTest(const QString& tap, int number)
{
    sim::KvxTest t;
    t.testNumber = number;
    t.tap = tap;
    return t;
}

// Three tests: a full one, one with the kept oddities (ratio of exactly 0.9,
// phase 90, knee voltage of exactly 1, a stored insulation of 0), and one
// with its flags clear.
sim::KvxStoredFile sampleFile()
{
    sim::KvxStoredFile f;
    f.day = 9;
    f.month = 7;
    f.year = 14;
    f.hour = 1;
    f.minute = 2;
    f.value13 = 3; // the PC's second
    f.second = 45; // the instrument's own, never read
    f.serial = QStringLiteral("A/B:1");
    f.company = QStringLiteral("Société Test");
    f.station = QStringLiteral("Station 1");
    f.designation = QStringLiteral("CT 1");
    f.manufacturer = QStringLiteral("Maker");
    f.operatorName = QStringLiteral("Op");
    f.temperature = QStringLiteral("20 C");
    f.ratio = QStringLiteral("300:5");
    f.voltageRating = QStringLiteral("C100");
    f.accuracyClass = QStringLiteral("C200");
    f.position = QStringLiteral("H1");
    f.phase = QStringLiteral("A");
    f.notes = QStringLiteral("One line.");

    sim::KvxTest t1 = plainTest(QStringLiteral("X1-X2"), 1);
    t1.ratioFirst = 200;
    t1.ratioSecond = 5;
    t1.calculatedRatio = 40.0f;
    t1.measuredRatio = 40.012f;
    t1.ratioError = 0.03f;
    t1.phase = 0.1f;
    t1.kneeIeee45 = 82.0f;
    t1.kneeIeee30 = 88.4f;
    t1.kneeIec1050 = 95.2f;
    t1.windingResistance = 0.1004f;
    t1.insulation = 1.5e8f;
    t1.points = {{1.0f, 0.001f}, {2.5f, 0.5f}, {6.0f, 1.5f}};

    sim::KvxTest t2 = plainTest(QStringLiteral("X1-X3"), 2);
    t2.ratioFirst = 300;
    t2.ratioSecond = 5;
    t2.calculatedRatio = 60.4f;
    t2.measuredRatio = 0.9f;
    t2.ratioError = 2.0f;
    t2.phase = 90.0f;
    t2.polarityPositive = false;
    t2.kneeIeee45 = 1.0f;
    t2.kneeIeee30 = 1.01f;
    t2.kneeIec1050 = 0.5f;
    t2.windingResistance = 25.0f;
    t2.insulation = 0.0f;
    t2.points = {{0.75f, 0.75f}, {12.345f, 1.0f}};

    sim::KvxTest t3 = plainTest(QStringLiteral("X2-X3"), 3);
    t3.ratioFirst = 100;
    t3.ratioSecond = 5;
    t3.calculatedRatio = 20.5f;
    t3.measuredRatio = 20.0f;
    t3.ratioError = 1500.0f;
    t3.phase = 0.2f;
    t3.kneeIeee45 = 50.0f;
    t3.windingResistance = 1.0f;
    t3.insulation = 2e9f;
    t3.excitationValid = false;
    t3.ratioValid = false;
    t3.windingValid = false;
    t3.points = {{1.0f, 0.1f}};

    f.tests = {t1, t2, t3};
    return f;
}

// The whole sample file, line by line from the rules.
QStringList sampleFileLines()
{
    QStringList lines = sampleHeaderLines(QStringLiteral("A/B:1"));
    lines << tableHeadLines();
    lines << rowAt({{1, "01"},
                    {7, "X1-X2"},
                    {17, "200:5"},
                    {29, "40"},
                    {39, "40.012"},
                    {51, "0.0"}, // 0.03 -> "0" -> "0.0", as long as the width
                    {61, "0.1"}, // ".1" -> "0.1"
                    {72, "POS"},
                    {81, "82.00"},
                    {92, "88.40"},
                    {104, "95.20"},
                    {115, "0.10040"},
                    {129, "1.5E+08"},
                    {139, "---"}});
    // Phase 90: "Error" and nothing at all for the polarity.
    lines << rowAt({{1, "02"},
                    {7, "X1-X3"},
                    {17, "300:5"},
                    {29, "60"},
                    {39, "---"},
                    {51, "---"},
                    {61, "Error"},
                    {81, "---"},
                    {92, "1.01"},
                    {104, "---"},
                    {115, ">20"},
                    {129, "<2M"},
                    {139, "---"}});
    // 20.5 rounds to the even 20.
    lines << rowAt({{1, "03"},
                    {7, "X2-X3"},
                    {17, "100:5"},
                    {29, "20"},
                    {39, "---"},
                    {51, "---"},
                    {61, "---"},
                    {72, "---"},
                    {81, "---"},
                    {92, "---"},
                    {104, "---"},
                    {115, "---"},
                    {129, ">1G"},
                    {139, "---"}});
    // Point lines: number in 6, voltage in 12, current in 13, each centred
    // with the half of the spare blanks rounded to even on the left.
    lines << excitationHead(QStringLiteral("01"));
    lines << QStringLiteral("   01 ") + QStringLiteral("    1.00    ") +
                 QStringLiteral("    1.000m   ");
    lines << QStringLiteral("   02 ") + QStringLiteral("    2.50    ") +
                 QStringLiteral("  500.000m   ");
    lines << QStringLiteral("   03 ") + QStringLiteral("    6.00    ") +
                 QStringLiteral("    1.500    ");
    lines << excitationHead(QStringLiteral("02"));
    lines << QStringLiteral("   01 ") + QStringLiteral("    0.75    ") +
                 QStringLiteral("  750.000m   ");
    // 12.345 shows "12.345", whose half goes to the even 12.34.
    lines << QStringLiteral("   02 ") + QStringLiteral("    12.34   ") +
                 QStringLiteral("    1.000    ");
    return lines;
}

class KvxFilesMakerTest : public ::testing::Test
{
protected:
    // The upload's variables and the read-back's KVX test record, fresh.
    OwnedSession<UploadSession> session;
    OwnedSession<KvxSession> kvx;
    QTemporaryDir dataRoot;
    QTemporaryDir storeDir;
    QTemporaryDir langDir;
    std::optional<QtSettingsStore> store;
    QString savedCurrentFolder;

    void SetUp() override
    {
        ASSERT_TRUE(dataRoot.isValid());
        ASSERT_TRUE(storeDir.isValid());
        ASSERT_TRUE(langDir.isValid());
        // Making folders moves the current folder; it is put back afterwards.
        savedCurrentFolder = QDir::currentPath();
        store.emplace(storeDir.path());
        setSettingsStore(&*store);
        store->SaveSetting(QStringLiteral("Quenby"), QStringLiteral("UserFileTransfert"),
                           QStringLiteral("KVX"), toPlatformPath(dataRoot.path()));
        UploadGlobals& g = uploadGlobals();
        g.UploadFolderStamp = Stamp;
        g.CurrentFile = 1;
        g.DeviceSerial = QStringLiteral("KVX0001");

        // The reader puts a language text into the report's insulation head.
        writeBytes(langDir.filePath(QStringLiteral("en.lng")),
                   crlfLines({QStringLiteral("frmKVXCondensedReport.txtInsulationRes.Text, "
                                             "Insulation (Ohms)")}));
        setAppPathOverride(langDir.path());
        appState().LangFilePath = toPlatformPath(langDir.filePath(QStringLiteral("en.lng")));
        setYieldHook([] {});
    }

    void TearDown() override
    {
        SequentialFiles::instance().closeAll();
        setYieldHook({});
        appState().LangFilePath.clear();
        appState().KvxTestFilePath = Dynamic();
        appState().KvxTestFileNo = Dynamic();
        setAppPathOverride(QString());
        setSettingsStore(nullptr);
        QDir::setCurrent(savedCurrentFolder);
    }

    // The frames of `file` decoded as the upload decodes them when it saves
    // a file, and handed to the maker.
    static void upload(const sim::KvxStoredFile& file)
    {
        KvxHeaderRecord header;
        ParseKvxHeader(sim::kvxHeaderFrame(file), header);
        write(header, sim::kvxDataFrame(file));
    }

    static void write(const KvxHeaderRecord& header, const QByteArray& dataFrame)
    {
        WriteKvxTestFile(header, ParseKvxRecords(SpreadKvxData(dataFrame), header.numberOfTests));
    }

    QString folder() const { return dataRoot.path() + QStringLiteral("/KVX/Files/") + Stamp; }

    QString filePath(const QString& name) const { return folder() + u'/' + name; }

    static QStringList linesOf(const QString& path) { return crlfLinesOf(path); }

    // The row of test n (from 1) in a file with the sample's header.
    static QString rowOf(const QStringList& lines, int n) { return lines.value(29 + n); }

    // Writes one test and answers its row.
    QString rowFor(const sim::KvxTest& test)
    {
        sim::KvxStoredFile f = sampleFile();
        f.serial = QStringLiteral("SN");
        f.tests = {test};
        upload(f);
        return rowOf(linesOf(filePath(QStringLiteral("1-SN.txt"))), 1);
    }

    // Opens the file under a fresh number as the open command leaves it,
    // then clears and reads as it does. Answers the failure number.
    int readBack(const QString& path)
    {
        SequentialFiles& files = SequentialFiles::instance();
        const Int16 no = files.freeFile();
        files.open(no, toPlatformPath(path), SequentialFiles::Mode::Input);
        appState().KvxTestFilePath = Dynamic(toPlatformPath(path));
        appState().KvxTestFileNo = Dynamic(static_cast<double>(no));
        FlushKvxCurves();
        ClearKvxRecord();
        return failureOf([] { ReadKvxTestFile(); });
    }

    static const KvxTapResult& tapOf(const QString& pair)
    {
        const int slot = kvxSlotOfPair(pair);
        EXPECT_NE(slot, 0) << pair.toStdString();
        return kvxTestRecord().taps.at(static_cast<std::size_t>(slot - 1));
    }

    static const KvxTapCurve& curveOf(const QString& pair)
    {
        return kvxTestRecord().curves.at(static_cast<std::size_t>(kvxSlotOfPair(pair) - 1));
    }
};

TEST_F(KvxFilesMakerTest, WholeFileByteForByte)
{
    upload(sampleFile());
    const QString path = filePath(QStringLiteral("1-A_B_1.txt"));
    ASSERT_TRUE(QFileInfo::exists(path));
    const QByteArray bytes = readBytes(path);
    const QByteArray expected = crlfLines(sampleFileLines());
    EXPECT_EQ(bytes, expected);
    // Line by line as well, so that a difference says where it is.
    const QStringList lines = linesOf(path);
    const QStringList want = sampleFileLines();
    ASSERT_EQ(lines.size(), want.size());
    for (qsizetype i = 0; i < want.size(); ++i)
        EXPECT_EQ(lines[i], want[i]) << "line " << i + 1;
    // Windows-1252: one byte for the "é".
    EXPECT_TRUE(bytes.contains(QByteArray("Soci\xE9t\xE9 Test")));
}

TEST_F(KvxFilesMakerTest, TableHeadLinesHaveTheirWidths)
{
    upload(sampleFile());
    const QStringList lines = linesOf(filePath(QStringLiteral("1-A_B_1.txt")));
    EXPECT_EQ(lines[26].size(), 149);
    EXPECT_EQ(lines[27].size(), 151);
    EXPECT_EQ(lines[28].size(), 150);
    EXPECT_EQ(lines[29].size(), 148);
}

TEST_F(KvxFilesMakerTest, ReadBackThroughTheOpenCommandsRoad)
{
    upload(sampleFile());
    ASSERT_EQ(readBack(filePath(QStringLiteral("1-A_B_1.txt"))), 0);
    const KvxTestRecord& r = kvxTestRecord();
    ParseKvxHeaderFields();
    EXPECT_EQ(r.ctSerial, "A/B:1");
    EXPECT_EQ(r.company, "Société Test");
    EXPECT_EQ(r.testClass, "C200");
    EXPECT_EQ(r.instrumentSerial.toText(), "KVX0001");
    EXPECT_EQ(r.notes, "One line.");
    EXPECT_EQ(r.dateTime, "9 Jul.2014   01:02:03");

    const KvxTapResult& t1 = tapOf(QStringLiteral("X1-X2"));
    EXPECT_EQ(t1.tapName, "X1-X2");
    EXPECT_EQ(t1.nominalRatio, "200:5");
    EXPECT_EQ(t1.calculatedRatio, "40");
    EXPECT_EQ(t1.measuredRatio, "40.012");
    EXPECT_EQ(t1.errorPercent, "0.0");
    EXPECT_EQ(t1.phaseAngle, "0.1");
    EXPECT_EQ(t1.polarity, "POS");
    EXPECT_EQ(t1.vsIeee45, "82.00");
    EXPECT_EQ(t1.vsIeee30, "88.40");
    EXPECT_EQ(t1.vsIec1050, "95.20");
    EXPECT_EQ(t1.windingResistance, "0.10040");
    EXPECT_TRUE(t1.insulation.startsWith(QStringLiteral("1.5E+08")));

    // The "Error" row has 13 fields and reads with an empty polarity.
    const KvxTapResult& t2 = tapOf(QStringLiteral("X1-X3"));
    EXPECT_EQ(t2.tapName, "X1-X3");
    EXPECT_EQ(t2.measuredRatio, "");
    EXPECT_EQ(t2.errorPercent, "");
    EXPECT_EQ(t2.phaseAngle, "Error");
    EXPECT_EQ(t2.polarity, "");
    EXPECT_EQ(t2.vsIeee45, "");
    EXPECT_EQ(t2.vsIeee30, "1.01");
    EXPECT_EQ(t2.windingResistance, ">20");
    EXPECT_TRUE(t2.insulation.startsWith(QStringLiteral("<2M")));

    const KvxTapResult& t3 = tapOf(QStringLiteral("X2-X3"));
    EXPECT_EQ(t3.tapName, "X2-X3");
    EXPECT_EQ(t3.calculatedRatio, "20");
    EXPECT_EQ(t3.phaseAngle, "");
    EXPECT_EQ(t3.polarity, "");
    EXPECT_EQ(t3.windingResistance, "");
    EXPECT_TRUE(t3.insulation.startsWith(QStringLiteral(">1G")));

    // Curves: index = point number, currents in milliamperes.
    const KvxTapCurve& c1 = curveOf(QStringLiteral("X1-X2"));
    EXPECT_DOUBLE_EQ(c1.volts[1], 1.0);
    EXPECT_DOUBLE_EQ(c1.volts[2], 2.5);
    EXPECT_DOUBLE_EQ(c1.volts[3], 6.0);
    EXPECT_DOUBLE_EQ(c1.current[1], 1.0);
    EXPECT_DOUBLE_EQ(c1.current[2], 500.0);
    EXPECT_DOUBLE_EQ(c1.current[3], 1500.0);
    const KvxTapCurve& c2 = curveOf(QStringLiteral("X1-X3"));
    EXPECT_DOUBLE_EQ(c2.volts[1], 0.75);
    EXPECT_DOUBLE_EQ(c2.volts[2], 12.34);
    EXPECT_DOUBLE_EQ(c2.current[1], 750.0);
    EXPECT_DOUBLE_EQ(c2.current[2], 1000.0);
}

TEST_F(KvxFilesMakerTest, SerialWithSlashAndColonGivesACleanName)
{
    sim::KvxStoredFile f = sampleFile();
    f.tests.clear();
    upload(f);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), QStringList{"1-A_B_1.txt"});
}

TEST_F(KvxFilesMakerTest, NameStartsWithTheCurrentFile)
{
    uploadGlobals().CurrentFile = 12;
    sim::KvxStoredFile f = sampleFile();
    f.serial = QStringLiteral("CT 7");
    f.tests.clear();
    upload(f);
    EXPECT_TRUE(QFileInfo::exists(filePath(QStringLiteral("12-CT 7.txt"))));
}

TEST(KvxFileNameTest, CleanFileNameReplacesItsElevenCharacters)
{
    EXPECT_EQ(CleanFileName(QStringLiteral("<>*?|/\\:$&%")), QString(11, u'_'));
    EXPECT_EQ(CleanFileName(QStringLiteral("a<b>c")), "a_b_c");
    // A double quote is not among them.
    EXPECT_EQ(CleanFileName(QStringLiteral("a\"b")), "a\"b");
    EXPECT_EQ(CleanFileName(QStringLiteral("Plain-Name_1. x")), "Plain-Name_1. x");
}

TEST_F(KvxFilesMakerTest, DateAndTimeTakeTheSecondFromByte13)
{
    sim::KvxStoredFile f = sampleFile();
    f.tests.clear();
    f.value13 = 3;
    f.second = 59;
    upload(f);
    const QStringList lines = linesOf(filePath(QStringLiteral("1-A_B_1.txt")));
    EXPECT_EQ(lines[22], "Date:            9 Jul.2014");
    EXPECT_EQ(lines[23], "Time:            01:02:03");
}

TEST_F(KvxFilesMakerTest, MonthsBeforeJulyKeepTheirBlank)
{
    sim::KvxStoredFile f = sampleFile();
    f.tests.clear();
    f.day = 25;
    f.month = 1;
    f.year = 24;
    f.hour = 23;
    f.minute = 59;
    f.value13 = 10;
    upload(f);
    const QStringList lines = linesOf(filePath(QStringLiteral("1-A_B_1.txt")));
    EXPECT_EQ(lines[22], "Date:            25 Jan. 2024");
    EXPECT_EQ(lines[23], "Time:            23:59:10");
}

TEST(KvxMonthNameTest, TwelveNamesAndNothingElse)
{
    const QStringList names{"Jan. ", "Feb. ", "Mar. ", "Apr. ", "May. ", "Jun. ",
                            "Jul.",  "Aug.",  "Sep.",  "Oct.",  "Nov.",  "Dec."};
    for (int m = 1; m <= 12; ++m)
        EXPECT_EQ(KvxMonthName(m), names[m - 1]) << m;
    EXPECT_EQ(KvxMonthName(0), "");
    EXPECT_EQ(KvxMonthName(13), "");
    EXPECT_EQ(KvxMonthName(-1), "");
}

TEST(KvxCurrentTextTest, AmperesFromAThousandMilliamperesOn)
{
    OwnedSession<UploadSession> session; // the line under construction
    // 500 mA: "500.000m", 5 blanks to spare, 2.5 -> 2 on the left.
    EXPECT_EQ(KvxCurrentText(500.0, 13), "  500.000m   ");
    ClearTextLine();
    // 1.5 A: "1.500", 8 to spare.
    EXPECT_EQ(KvxCurrentText(1500.0, 13), "    1.500    ");
    ClearTextLine();
    EXPECT_EQ(KvxCurrentText(1000.0, 13), "    1.000    ");
    ClearTextLine();
    EXPECT_EQ(KvxCurrentText(750.0, 13), "  750.000m   ");
    ClearTextLine();
    // Below 1 mA: ".5" -> ".500" -> "0.500", then "m".
    EXPECT_EQ(KvxCurrentText(0.5, 13), "    0.500m   ");
    ClearTextLine();
    // Too wide for its field: no blanks.
    EXPECT_EQ(KvxCurrentText(123456.0, 5), "123.456");
}

TEST(KvxCurrentTextTest, GoesOntoTheLineUnderConstruction)
{
    OwnedSession<UploadSession> session; // the line under construction
    TextLineCentered(QStringLiteral("No."), 6);
    const QString piece = KvxCurrentText(500.0, 13);
    EXPECT_EQ(TextLineResult(), QStringLiteral("  No. ") + piece);
}

TEST_F(KvxFilesMakerTest, MeasuredRatioOfExactlyPointNineShowsDashes)
{
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    t.measuredRatio = 0.9f;
    t.ratioError = 5.0f;
    const QString row = rowFor(t);
    EXPECT_EQ(row.mid(39, 12), "---         ");
    EXPECT_EQ(row.mid(51, 10), "---       ");

    // Just above it, the ratio shows: ".91" -> ".910" -> "0.910".
    t.measuredRatio = 0.91f;
    const QString shown = rowFor(t);
    EXPECT_EQ(shown.mid(39, 12), "0.910       ");
    EXPECT_EQ(shown.mid(51, 10), "5.0       ");
}

TEST_F(KvxFilesMakerTest, RatioFlagClearHidesTheRatio)
{
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    t.measuredRatio = 20.0f;
    t.ratioValid = false;
    const QString row = rowFor(t);
    EXPECT_EQ(row.mid(39, 3), "---");
    EXPECT_EQ(row.mid(51, 3), "---");
}

TEST_F(KvxFilesMakerTest, ErrorAboveAThousand)
{
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    t.measuredRatio = 30.5f;
    t.ratioError = 1000.5f;
    QString row = rowFor(t);
    EXPECT_EQ(row.mid(39, 12), "30.500      ");
    EXPECT_EQ(row.mid(51, 10), ">1000     ");
    // A thousand itself is not above it: "1000.0".
    t.ratioError = 1000.0f;
    row = rowFor(t);
    EXPECT_EQ(row.mid(51, 10), "1000.0    ");
}

TEST_F(KvxFilesMakerTest, PhaseNinetyYieldsErrorAndBlanksForThePolarity)
{
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    t.phase = 90.0f;
    t.kneeIeee45 = 5.0f;
    const QString row = rowFor(t);
    EXPECT_EQ(row.mid(61, 5), "Error");
    // Nothing from the end of "Error" up to the Vs column.
    EXPECT_EQ(row.mid(66, 81 - 66), QString(81 - 66, u' '));
    EXPECT_EQ(row.mid(81, 4), "5.00");
    EXPECT_FALSE(row.contains(QStringLiteral("POS")));
}

TEST_F(KvxFilesMakerTest, PolarityFollowsItsFlag)
{
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    t.phase = -0.04f; // rounds to 0: "0" -> "0.0"
    t.polarityPositive = false;
    QString row = rowFor(t);
    EXPECT_EQ(row.mid(61, 11), "0.0        ");
    EXPECT_EQ(row.mid(72, 3), "NEG");
    t.polarityPositive = true;
    t.phase = 179.96f; // rounds up to 180.0
    row = rowFor(t);
    EXPECT_EQ(row.mid(61, 11), "180.0      ");
    EXPECT_EQ(row.mid(72, 3), "POS");
}

TEST_F(KvxFilesMakerTest, PhaseOfAThousandOrExcitationFlagClearShowsDashes)
{
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    t.phase = 1000.0f;
    t.kneeIeee45 = 5.0f;
    QString row = rowFor(t);
    EXPECT_EQ(row.mid(61, 3), "---");
    EXPECT_EQ(row.mid(72, 3), "---");
    // The knee voltages follow the excitation flag alone.
    EXPECT_EQ(row.mid(81, 4), "5.00");

    t.phase = 10.0f;
    t.excitationValid = false;
    row = rowFor(t);
    EXPECT_EQ(row.mid(61, 3), "---");
    EXPECT_EQ(row.mid(72, 3), "---");
    EXPECT_EQ(row.mid(81, 3), "---");
}

TEST_F(KvxFilesMakerTest, KneeVoltagesAboveOneShow)
{
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    t.kneeIeee45 = 1.0f;      // not above 1
    t.kneeIeee30 = 12.34567f; // longer than its width
    t.kneeIec1050 = 1.004f;   // rounds to 1.00, and shows
    const QString row = rowFor(t);
    EXPECT_EQ(row.mid(81, 11), "---        ");
    EXPECT_EQ(row.mid(92, 12), "12.35       ");
    EXPECT_EQ(row.mid(104, 11), "1.00       ");
}

TEST_F(KvxFilesMakerTest, WindingResistanceTexts)
{
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    const auto winding = [&](float value, bool valid) {
        t.windingResistance = value;
        t.windingValid = valid;
        return rowFor(t).mid(115, 14);
    };
    // A stored 0.0 decodes to 2^-127: not 0, so it shows in the digits.
    EXPECT_EQ(winding(0.0f, true), "0.00000       ");
    EXPECT_EQ(winding(1.0f, false), "---           ");
    EXPECT_EQ(winding(-0.5f, true), "Error         ");
    EXPECT_EQ(winding(1.5f, true), "1.50000       ");
    EXPECT_EQ(winding(20.0f, true), ">20           ");
    // Below 20 as a single, yet its 7 digits show 20: "20.00000".
    EXPECT_EQ(winding(19.999996f, true), "20.00000      ");
}

TEST_F(KvxFilesMakerTest, InsulationTexts)
{
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    // The row from the insulation column on; the volts column follows.
    const auto insulation = [&](float value, bool valid) {
        t.insulation = value;
        t.insulationValid = valid;
        return rowFor(t).mid(129);
    };
    const QString volts = QStringLiteral("---");
    EXPECT_EQ(insulation(5e6f, false), QStringLiteral("---       ") + volts);
    EXPECT_EQ(insulation(-1.0f, true), QStringLiteral("Error     ") + volts);
    EXPECT_EQ(insulation(1.5e9f, true), QStringLiteral(">1G       ") + volts);
    // A thousand million is not above it: the single's own text.
    EXPECT_EQ(insulation(1e9f, true), QStringLiteral("1E+09     ") + volts);
    EXPECT_EQ(insulation(1.9e6f, true), QStringLiteral("<2M       ") + volts);
    EXPECT_EQ(insulation(2e6f, true), QStringLiteral("2000000   ") + volts);
    // Longer than its column: the volts follow with no blank.
    EXPECT_EQ(insulation(1.234568e8f, true), QStringLiteral("1.234568E+08") + volts);
}

TEST_F(KvxFilesMakerTest, StoredInsulationOfZeroIsNotZero)
{
    // Four zero bytes decode to 2^-127: not equal to 0, so with its flag set
    // it reads "<2M".
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    t.insulation = 0.0f;
    t.insulationValid = true;
    EXPECT_EQ(rowFor(t).mid(129, 3), "<2M");
}

TEST_F(KvxFilesMakerTest, NoTestsGivesHeaderAndTableHeadAlone)
{
    sim::KvxStoredFile f = sampleFile();
    f.tests.clear();
    upload(f);
    QStringList want = sampleHeaderLines(QStringLiteral("A/B:1"));
    want << tableHeadLines();
    EXPECT_EQ(readBytes(filePath(QStringLiteral("1-A_B_1.txt"))), crlfLines(want));
}

TEST_F(KvxFilesMakerTest, TwelveTestsAreABoundsError)
{
    sim::KvxStoredFile f = sampleFile();
    f.tests.clear();
    for (int i = 1; i <= 12; ++i)
        f.tests.push_back(plainTest(QStringLiteral("X1-X2"), i));
    KvxHeaderRecord header;
    ParseKvxHeader(sim::kvxHeaderFrame(f), header);
    ASSERT_EQ(header.numberOfTests, 12);
    // The data frame holds the eleven that fit the slot table; the twelfth
    // test is asked of a slot that does not exist.
    f.tests.pop_back();
    const QByteArray dataFrame = sim::kvxDataFrame(f);
    EXPECT_EQ(failureOf([&] { write(header, dataFrame); }), err::SubscriptOutOfRange);
}

TEST_F(KvxFilesMakerTest, ElevenTestsFit)
{
    sim::KvxStoredFile f = sampleFile();
    f.tests.clear();
    for (int i = 1; i <= 11; ++i)
        f.tests.push_back(plainTest(QStringLiteral("X1-X2"), i));
    upload(f);
    const QStringList lines = linesOf(filePath(QStringLiteral("1-A_B_1.txt")));
    EXPECT_TRUE(rowOf(lines, 11).startsWith(QStringLiteral(" 11    X1-X2")));
}

TEST_F(KvxFilesMakerTest, ExcitationTableOnlyForItsFlag)
{
    sim::KvxStoredFile f = sampleFile();
    sim::KvxTest off = plainTest(QStringLiteral("X1-X2"), 1);
    off.excitationValid = false;
    off.points = {{1.0f, 0.5f}};
    sim::KvxTest none = plainTest(QStringLiteral("X1-X3"), 2);
    none.points.clear(); // flag set, no points: the table's head alone
    f.tests = {off, none};
    upload(f);
    const QStringList lines = linesOf(filePath(QStringLiteral("1-A_B_1.txt")));
    ASSERT_EQ(lines.size(), 26 + 4 + 2 + 6);
    EXPECT_EQ(lines.mid(32), excitationHead(QStringLiteral("02")));
}

TEST_F(KvxFilesMakerTest, PointCountUpTo201WritesZerosBeyondTheHundred)
{
    sim::KvxStoredFile f = sampleFile();
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    for (int j = 1; j <= 100; ++j)
        t.points.emplace_back(static_cast<float>(j), 1.0f);
    t.pointCountOverride = 201;
    f.tests = {t};
    upload(f);
    const QStringList lines = linesOf(filePath(QStringLiteral("1-A_B_1.txt")));
    ASSERT_EQ(lines.size(), 26 + 4 + 1 + 6 + 201);
    const qsizetype first = 26 + 4 + 1 + 6;
    // Point 100: " 100" in 6 has 2 to spare; "100.00" in 12 has 6.
    EXPECT_EQ(lines[first + 99], QStringLiteral("  100 ") + QStringLiteral("   100.00   ") +
                                     QStringLiteral("    1.000    "));
    // Point 101 onward: zeros. "0" -> "0.00"; "0" -> "0.000" and "m".
    EXPECT_EQ(lines[first + 100], QStringLiteral("  101 ") + QStringLiteral("    0.00    ") +
                                      QStringLiteral("    0.000m   "));
    EXPECT_EQ(lines[first + 200], QStringLiteral("  201 ") + QStringLiteral("    0.00    ") +
                                      QStringLiteral("    0.000m   "));
}

TEST_F(KvxFilesMakerTest, PointCountAbove201IsABoundsError)
{
    sim::KvxStoredFile f = sampleFile();
    sim::KvxTest t = plainTest(QStringLiteral("X1-X2"), 1);
    t.points = {{1.0f, 1.0f}};
    t.pointCountOverride = 202;
    f.tests = {t};
    EXPECT_EQ(failureOf([&] { upload(f); }), err::SubscriptOutOfRange);
}

TEST_F(KvxFilesMakerTest, ARetryWritesOverItsOwnFile)
{
    sim::KvxStoredFile f = sampleFile();
    f.tests.clear();
    upload(f);
    f.company = QStringLiteral("Second");
    upload(f);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), QStringList{"1-A_B_1.txt"});
    const QStringList lines = linesOf(filePath(QStringLiteral("1-A_B_1.txt")));
    EXPECT_EQ(lines[10], "Company:         Second");
    EXPECT_EQ(lines.size(), 30);
}

TEST_F(KvxFilesMakerTest, FailedOpenWritesNothingAndSaysNothing)
{
    // A folder in place of the file: it can't be opened for output.
    ASSERT_TRUE(QDir().mkpath(filePath(QStringLiteral("1-A_B_1.txt"))));
    sim::KvxStoredFile f = sampleFile();
    EXPECT_EQ(failureOf([&] { upload(f); }), 0);
    EXPECT_TRUE(QFileInfo(filePath(QStringLiteral("1-A_B_1.txt"))).isDir());
    EXPECT_EQ(QDir(folder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"1-A_B_1.txt"});
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
    EXPECT_EQ(uploadGlobals().NbFilesSucces, 0);
    EXPECT_EQ(uploadGlobals().NbFilesFail, 0);
}

TEST_F(KvxFilesMakerTest, FolderIsMadeWhenItListsNothing)
{
    sim::KvxStoredFile f = sampleFile();
    f.tests.clear();
    ASSERT_FALSE(QFileInfo::exists(folder()));
    upload(f);
    EXPECT_TRUE(QFileInfo(folder()).isDir());
    EXPECT_TRUE(QFileInfo::exists(filePath(QStringLiteral("1-A_B_1.txt"))));
}

TEST_F(KvxFilesMakerTest, AnEmptyExistingFolderIsMadeAgain)
{
    ASSERT_TRUE(QDir().mkpath(folder()));
    sim::KvxStoredFile f = sampleFile();
    f.tests.clear();
    upload(f);
    // Making folders tests each stage by making it the current folder, and
    // the existing upload folder is the last stage: the call was made.
    EXPECT_EQ(QFileInfo(QDir::currentPath()).canonicalFilePath(),
              QFileInfo(folder()).canonicalFilePath());
    EXPECT_TRUE(QFileInfo::exists(filePath(QStringLiteral("1-A_B_1.txt"))));
}

TEST_F(KvxFilesMakerTest, AHiddenEntryMakesTheListingNonEmpty)
{
    ASSERT_TRUE(QDir().mkpath(folder()));
    writeBytes(folder() + QStringLiteral("/.hidden"), QByteArray("x"));
    const QString before = QDir::currentPath();
    sim::KvxStoredFile f = sampleFile();
    f.tests.clear();
    upload(f);
    // The folder was not made again, so the current folder did not move.
    EXPECT_EQ(QDir::currentPath(), before);
    EXPECT_TRUE(QFileInfo::exists(filePath(QStringLiteral("1-A_B_1.txt"))));
}

TEST_F(KvxFilesMakerTest, FolderComesFromTheSettingsStore)
{
    const QString sep = pathSep();
    EXPECT_EQ(UploadFolder(QStringLiteral("KVX")),
              toPlatformPath(dataRoot.path()) + sep + "KVX" + sep + "Files" + sep + Stamp + sep);
}

TEST_F(KvxFilesMakerTest, AbsentKeyStartsThePathAtTheSeparator)
{
    QTemporaryDir emptyStore;
    ASSERT_TRUE(emptyStore.isValid());
    QtSettingsStore other(emptyStore.path());
    setSettingsStore(&other);
    const QString sep = pathSep();
    EXPECT_EQ(UploadFolder(QStringLiteral("KVX")), sep + "KVX" + sep + "Files" + sep + Stamp + sep);
    setSettingsStore(&*store);
}

} // namespace
