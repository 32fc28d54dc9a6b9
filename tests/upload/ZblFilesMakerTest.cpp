// The ZBL test file maker: frames built by the instrument's side of the wire,
// parsed as an upload parses them, written into a data root held by a
// temporary settings store, then compared byte for byte with a file laid out
// by hand from the rules and read back through the ZBL reader.
#include "upload/model/mdZBLFilesMaker.h"

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
#include "upload/model/UploadFolder.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"
#include "upload/model/mdKvxZblCom.h"
#include "zbl/model/ZblSession.h"
#include "zbl/model/ZblTestFileReader.h"
#include "zbl/model/ZblTestRecord.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <ostream>

using namespace quenby;
using namespace quenby::testing;

namespace {

const QString Stamp = QStringLiteral("2024-11-15_090733");
const QString Omega = QString(QChar(0x03A9));

QString dashes(int n)
{
    return QString(n, u'-');
}

// A table row by the print-zone rule: each item after the first starts at
// the next multiple of 14 strictly beyond the end of the line so far.
QString zoned(const QStringList& items)
{
    QString line;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (i > 0) {
            const qsizetype next = (line.size() / 14 + 1) * 14;
            line += QString(next - line.size(), u' ');
        }
        line += items[i];
    }
    return line;
}

// The maker writes the head the ZBL reader and the save know.
const QString TableHead = QString::fromLatin1(ZblTableHead);

sim::ZblReading reading(const QString& tapA, const QString& a1, const QString& a2,
                        const QString& resA, const QString& tapB, const QString& b1,
                        const QString& b2, const QString& resB, int current, int interval)
{
    sim::ZblReading r;
    r.tapA = tapA;
    r.windingA1 = a1;
    r.windingA2 = a2;
    r.resistanceA = resA;
    r.tapB = tapB;
    r.windingB1 = b1;
    r.windingB2 = b2;
    r.resistanceB = resB;
    r.current = current;
    r.interval = interval;
    return r;
}

sim::ZblStoredFile sampleFile()
{
    sim::ZblStoredFile f;
    f.testNumber = 12;
    f.mode = 1;
    f.day = 15;
    f.month = 11;
    f.year = 24;
    f.hour = 9;
    f.minute = 7;
    f.second = 33;
    f.serial = QStringLiteral("ZBL-1");
    f.company = QStringLiteral("Société Test");
    f.station = QStringLiteral("Station 1");
    f.designation = QStringLiteral("T1");
    f.manufacturer = QStringLiteral("Maker");
    f.operatorName = QStringLiteral("Op");
    f.temperature = QStringLiteral("20 C");
    f.notes = QStringLiteral("None");
    f.readings = {
        reading("1", "H1", "H2", "12.34 m" + Omega, "1", "X1", "X2", "OFF", 1000, 5),
        reading("2 A", "H1", "H3", "OVER", "2", "X1", "X3", "1.5 µ" + Omega, 1500, 10),
        reading("3", "H1", "H4", "9.87 " + Omega, "3", "X1", "X4", "0.5 " + Omega, 0, 0),
    };
    return f;
}

QStringList headerLines(const QString& rule, const QString& dateTime, const QString& mode)
{
    return {rule,
            QStringLiteral("ZBL Report    "),
            QStringLiteral("Date/Time:    ") + dateTime,
            QStringLiteral("Mode:         ") + mode,
            QStringLiteral("Serial:       ZBL-1"),
            QStringLiteral("Company:      Société Test"),
            QStringLiteral("Station:      Station 1"),
            QStringLiteral("Designation:  T1"),
            QStringLiteral("Manufacturer: Maker"),
            QStringLiteral("Operator:     Op"),
            QStringLiteral("Temperature:  20 C"),
            QStringLiteral("Notes:        None"),
            dashes(136),
            TableHead,
            dashes(136)};
}

QStringList sampleFileLines()
{
    QStringList lines =
        headerLines(dashes(88), QStringLiteral("15 Nov.2024   09:07:33"), QStringLiteral("Timed"));
    // Omega came in as "O" and gets its "hm"; OFF and OVER stay; 1000 mA is
    // a range, 1500 and 0 are not; the tap's blank becomes "_".
    lines << zoned(
        {"-", "1", "H1-H2", "12.34 mOhm", "1", "X1-X2", "OFF", "1A", " 5sec", "00:00:00"});
    lines << zoned(
        {"-", "2_A", "H1-H3", "OVER", "2", "X1-X3", "1.5 µOhm", " 1500", " 10sec", "00:00:00"});
    lines << zoned(
        {"-", "3", "H1-H4", "9.87 Ohm", "3", "X1-X4", "0.5 Ohm", " 0", " 0sec", "00:00:00"});
    lines << dashes(136);
    return lines;
}

class ZblFilesMakerTest : public ::testing::Test
{
protected:
    // The upload's variables and the read-back's ZBL test record, fresh.
    OwnedSession<UploadSession> session;
    OwnedSession<ZblSession> zbl;
    QTemporaryDir dataRoot;
    QTemporaryDir storeDir;
    std::optional<QtSettingsStore> store;
    QString savedCurrentFolder;

    void SetUp() override
    {
        ASSERT_TRUE(dataRoot.isValid());
        ASSERT_TRUE(storeDir.isValid());
        // Making folders moves the current folder; it is put back afterwards.
        savedCurrentFolder = QDir::currentPath();
        store.emplace(storeDir.path());
        setSettingsStore(&*store);
        store->SaveSetting(QStringLiteral("Quenby"), QStringLiteral("UserFileTransfert"),
                           QStringLiteral("ZBL"), toPlatformPath(dataRoot.path()));
        uploadGlobals().UploadFolderStamp = Stamp;
        uploadGlobals().CurrentFile = 1;
        setYieldHook([] {});
    }

    void TearDown() override
    {
        SequentialFiles::instance().closeAll();
        setYieldHook({});
        appState().ZblTestFilePath = Dynamic();
        appState().ZblTestFileNo = Dynamic();
        setSettingsStore(nullptr);
        QDir::setCurrent(savedCurrentFolder);
    }

    // The frames of `file` decoded as the upload decodes them when it saves
    // a file, and handed to the maker.
    static void upload(const sim::ZblStoredFile& file)
    {
        ZblHeaderRecord header;
        ParseZblHeader(sim::zblHeaderFrame(file), header);
        write(header, sim::zblDataFrame(file));
    }

    static void write(const ZblHeaderRecord& header, const QByteArray& dataFrame)
    {
        WriteZblTestFile(header, ParseZblRecords(dataFrame, header.numberOfReadings));
    }

    QString folder() const { return dataRoot.path() + QStringLiteral("/ZBL/Files/") + Stamp; }
    QString filePath(const QString& name) const { return folder() + u'/' + name; }

    static QStringList linesOf(const QString& path) { return crlfLinesOf(path); }

    // The rows of a one-file upload of `readings` with the sample header.
    QStringList rowsFor(const std::vector<sim::ZblReading>& readings)
    {
        sim::ZblStoredFile f = sampleFile();
        f.readings = readings;
        upload(f);
        const QStringList lines = linesOf(filePath(QStringLiteral("1-12.zbl")));
        return lines.mid(15, lines.size() - 16);
    }

    // Both halves of the open command's ZBL road. Answers the failure number.
    int readBack(const QString& path, ZblReportFill& report)
    {
        SequentialFiles& files = SequentialFiles::instance();
        const Int16 no = files.freeFile();
        files.open(no, toPlatformPath(path), SequentialFiles::Mode::Input);
        appState().ZblTestFilePath = Dynamic(toPlatformPath(path));
        appState().ZblTestFileNo = Dynamic(static_cast<double>(no));
        zblTestRecord() = ZblTestRecord{};
        return failureOf([&report] {
            ClearZBLChannelTables();
            ClearZBLCompensedColumns(report);
            ClearZBLRowLines();
            ClearZBLCompensedColumns(report);
            ReadZBLFile();
            FillZBLHeaderControls(report);
            ParseZBLTableLines();
            FillZBLTapControls(report);
            SetZBLCompensationFromFile(QStringLiteral("ZBL"), report);
        });
    }
};

TEST_F(ZblFilesMakerTest, WholeFileByteForByte)
{
    upload(sampleFile());
    const QString path = filePath(QStringLiteral("1-12.zbl"));
    ASSERT_TRUE(QFileInfo::exists(path));
    const QByteArray bytes = readBytes(path);
    EXPECT_EQ(bytes, crlfLines(sampleFileLines()));
    const QStringList lines = linesOf(path);
    const QStringList want = sampleFileLines();
    ASSERT_EQ(lines.size(), want.size());
    for (qsizetype i = 0; i < want.size(); ++i)
        EXPECT_EQ(lines[i], want[i]) << "line " << i + 1;
    // Windows-1252: one byte each for "é" and "µ".
    EXPECT_TRUE(bytes.contains(QByteArray("Soci\xE9t\xE9 Test")));
    EXPECT_TRUE(bytes.contains(QByteArray("1.5 \xB5Ohm")));
}

TEST_F(ZblFilesMakerTest, ReadBackThroughTheReader)
{
    upload(sampleFile());
    ZblReportFill report;
    ASSERT_EQ(readBack(filePath(QStringLiteral("1-12.zbl")), report), 0);
    const ZblTestRecord& r = zblTestRecord();
    EXPECT_EQ(r.FileName, "1-12.zbl");
    EXPECT_EQ(r.DateTimeText, "15 Nov.2024   09:07:33");
    EXPECT_EQ(r.ModeText, "Timed");
    EXPECT_EQ(report.head.txtXFRSerialNumber, "ZBL-1");
    EXPECT_EQ(report.head.txtCompany, "Société Test");
    EXPECT_EQ(report.head.txtStation, "Station 1");
    EXPECT_EQ(report.head.txtDesignator, "T1");
    EXPECT_EQ(report.head.txtManufacturer, "Maker");
    EXPECT_EQ(report.head.txtOperator, "Op");
    EXPECT_EQ(report.head.txtTemperature, "20 C");
    EXPECT_EQ(report.head.txtNotes, "None");

    EXPECT_EQ(report.cell(ZblReportColumn::TapA, 0), "1");
    EXPECT_EQ(report.cell(ZblReportColumn::WindingA, 0), "H1-H2");
    EXPECT_EQ(report.cell(ZblReportColumn::ResA, 0), "12.34 mOhm");
    EXPECT_EQ(report.cell(ZblReportColumn::TapB, 0), "1");
    EXPECT_EQ(report.cell(ZblReportColumn::WindingB, 0), "X1-X2");
    EXPECT_EQ(report.cell(ZblReportColumn::ResB, 0), "OFF");
    EXPECT_EQ(report.cell(ZblReportColumn::TotalTime, 0), "00:00:00");
    EXPECT_EQ(r.CurrentText[0], "1 A");
    EXPECT_DOUBLE_EQ(r.IntervalSeconds[0], 5.0);

    // The tap with a blank arrives as one token.
    EXPECT_EQ(report.cell(ZblReportColumn::TapA, 1), "2_A");
    EXPECT_EQ(report.cell(ZblReportColumn::WindingA, 1), "H1-H3");

    EXPECT_EQ(report.cell(ZblReportColumn::TapA, 2), "3");
    EXPECT_EQ(report.cell(ZblReportColumn::ResA, 2), "9.87 Ohm");
    EXPECT_EQ(report.cell(ZblReportColumn::ResB, 2), ".5 Ohm");
    EXPECT_EQ(r.CurrentText[2], "0");
    EXPECT_DOUBLE_EQ(r.IntervalSeconds[2], 0.0);
}

TEST_F(ZblFilesMakerTest, NameIsTheIndexAndTheTestNumberOnly)
{
    // Neither the serial nor the mode reaches the name.
    sim::ZblStoredFile f = sampleFile();
    f.serial = QStringLiteral("ZBL/9");
    f.mode = 2;
    f.testNumber = 7;
    f.readings.clear();
    upload(f);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), QStringList{"1-7.zbl"});
}

TEST_F(ZblFilesMakerTest, NameFollowsTheCurrentFile)
{
    uploadGlobals().CurrentFile = 3;
    sim::ZblStoredFile f = sampleFile();
    f.testNumber = 0;
    f.readings.clear();
    upload(f);
    EXPECT_TRUE(QFileInfo::exists(filePath(QStringLiteral("3-0.zbl"))));
}

TEST(ZblFileNameTest, TheTwoFilters)
{
    EXPECT_EQ(ZblCleanFileName(QStringLiteral("<>*?|/\\:$&%")), QString(11, u'_'));
    EXPECT_EQ(ZblCleanFileName(QStringLiteral("a\"b 1")), "a\"b 1");
    EXPECT_EQ(ZblBlankFileNameCharacters(QStringLiteral("*/\\<>:?\"|")), QString(9, u' '));
    EXPECT_EQ(ZblBlankFileNameCharacters(QStringLiteral("1-12.zbl")), "1-12.zbl");
    // The second filter leaves the first one's characters it does not know.
    EXPECT_EQ(ZblBlankFileNameCharacters(QStringLiteral("a$b&c%d_")), "a$b&c%d_");
}

TEST(ZblMonthNameTest, TwelveNamesAndNothingElse)
{
    const QStringList names{"Jan.", "Feb.", "Mar.", "Apr.", "May",  "Jun.",
                            "Jul.", "Aug.", "Sep.", "Oct.", "Nov.", "Dec."};
    for (int m = 1; m <= 12; ++m)
        EXPECT_EQ(ZblMonthName(m), names[m - 1]) << m;
    EXPECT_EQ(ZblMonthName(0), "");
    EXPECT_EQ(ZblMonthName(13), "");
}

TEST_F(ZblFilesMakerTest, DateInMayAndSingleDigits)
{
    sim::ZblStoredFile f = sampleFile();
    f.day = 3;
    f.month = 5;
    f.year = 14;
    f.hour = 9;
    f.minute = 8;
    f.second = 7;
    f.readings.clear();
    upload(f);
    const QStringList lines = linesOf(filePath(QStringLiteral("1-12.zbl")));
    EXPECT_EQ(lines[2], "Date/Time:    3 May2014   09:08:07");
}

TEST_F(ZblFilesMakerTest, ModeTextsAndTheFirstRule)
{
    const auto firstLines = [&](int mode) {
        sim::ZblStoredFile f = sampleFile();
        f.mode = mode;
        f.readings.clear();
        upload(f);
        return linesOf(filePath(QStringLiteral("1-12.zbl"))).mid(0, 4);
    };
    QStringList lines = firstLines(0);
    EXPECT_EQ(lines[0], dashes(76));
    EXPECT_EQ(lines[3], "Mode:         Manual");
    lines = firstLines(1);
    EXPECT_EQ(lines[0], dashes(88));
    EXPECT_EQ(lines[3], "Mode:         Timed");
    lines = firstLines(2);
    EXPECT_EQ(lines[0], dashes(88));
    EXPECT_EQ(lines[3], "Mode:         Auto T/C");
    lines = firstLines(7);
    EXPECT_EQ(lines[0], dashes(88));
    EXPECT_EQ(lines[3], "Mode:         Auto T/C");
}

TEST_F(ZblFilesMakerTest, NoReadingsGivesHeaderThenTheClosingLine)
{
    sim::ZblStoredFile f = sampleFile();
    f.mode = 0;
    f.readings.clear();
    upload(f);
    QStringList want =
        headerLines(dashes(76), QStringLiteral("15 Nov.2024   09:07:33"), QStringLiteral("Manual"));
    want << dashes(136);
    EXPECT_EQ(readBytes(filePath(QStringLiteral("1-12.zbl"))), crlfLines(want));
}

TEST_F(ZblFilesMakerTest, OffAndOverStayAndOmegaGetsItsHm)
{
    const QStringList rows = rowsFor({
        reading("1", "H1", "H2", "OFF", "1", "X1", "X2", "OVER", 10, 1),
        reading("2", "H1", "H2", "12.34m" + Omega, "2", "X1", "X2", "7" + Omega, 10, 1),
    });
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0],
              zoned({"-", "1", "H1-H2", "OFF", "1", "X1-X2", "OVER", "10mA", " 1sec", "00:00:00"}));
    EXPECT_EQ(rows[1], zoned({"-", "2", "H1-H2", "12.34mOhm", "2", "X1-X2", "7Ohm", "10mA", " 1sec",
                              "00:00:00"}));
}

TEST_F(ZblFilesMakerTest, CurrentsBecomeRangesOnlyWhenEqual)
{
    const QStringList rows = rowsFor({
        reading("1", "H1", "H2", "OFF", "1", "X1", "X2", "OFF", 10000, 1),
        reading("2", "H1", "H2", "OFF", "2", "X1", "X2", "OFF", 1000, 1),
        reading("3", "H1", "H2", "OFF", "3", "X1", "X2", "OFF", 100, 1),
        reading("4", "H1", "H2", "OFF", "4", "X1", "X2", "OFF", 10, 1),
        reading("5", "H1", "H2", "OFF", "5", "X1", "X2", "OFF", 1500, 1),
        reading("6", "H1", "H2", "OFF", "6", "X1", "X2", "OFF", 0, 1),
        reading("7", "H1", "H2", "OFF", "7", "X1", "X2", "OFF", 65535, 65535),
    });
    ASSERT_EQ(rows.size(), 7);
    const QStringList currents{"10A", "1A", "100mA", "10mA", " 1500", " 0", " 65535"};
    for (int i = 0; i < 7; ++i) {
        const QString tap = QString::number(i + 1);
        const QString interval = i == 6 ? QStringLiteral(" 65535sec") : QStringLiteral(" 1sec");
        EXPECT_EQ(rows[i], zoned({"-", tap, "H1-H2", "OFF", tap, "X1-X2", "OFF", currents[i],
                                  interval, "00:00:00"}))
            << i;
    }
}

TEST_F(ZblFilesMakerTest, BlanksOfTapsAndWindingsBecomeUnderscores)
{
    const QStringList rows = rowsFor({
        reading("T 1", "H 1", "H2", "1.0 " + Omega, "T 2", "X1", "X 2", "2.0 " + Omega, 100, 3),
    });
    ASSERT_EQ(rows.size(), 1);
    // The resistances keep their blank.
    EXPECT_EQ(rows[0], zoned({"-", "T_1", "H_1-H2", "1.0 Ohm", "T_2", "X1-X_2", "2.0 Ohm", "100mA",
                              " 3sec", "00:00:00"}));
}

TEST_F(ZblFilesMakerTest, EmptyFieldsOfAReading)
{
    // Empty texts: the tap becomes "---", the winding is just its "-", and
    // an empty resistance gets its "hm" all the same.
    const QStringList rows = rowsFor({reading("", "", "", "", "", "", "", "", 0, 0)});
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0], zoned({"-", "---", "-", "hm", "---", "-", "hm", " 0", " 0sec", "00:00:00"}));
}

TEST_F(ZblFilesMakerTest, ReadingsWithTheSameTapAreTwoRowsWithNothingLeftOver)
{
    // The record is reused: the second reading's shorter texts must not keep
    // the tail of the first's.
    const QStringList rows = rowsFor({
        reading("5 A", "H10", "H20", "123.45 m" + Omega, "5 A", "X10", "X20", "OFF", 1000, 30),
        reading("5", "H1", "H2", "1 " + Omega, "5", "X1", "X2", "OFF", 1000, 30),
    });
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0], zoned({"-", "5_A", "H10-H20", "123.45 mOhm", "5_A", "X10-X20", "OFF", "1A",
                              " 30sec", "00:00:00"}));
    EXPECT_EQ(rows[1],
              zoned({"-", "5", "H1-H2", "1 Ohm", "5", "X1-X2", "OFF", "1A", " 30sec", "00:00:00"}));
}

TEST_F(ZblFilesMakerTest, ALongFieldPushesTheRestToTheNextZone)
{
    // "12345.678 mOhm" is 14 characters: ending on a zone's edge, it pushes
    // the next item one zone further on.
    const QStringList rows = rowsFor({
        reading("1", "H1", "H2", "12345.678 m" + Omega, "1", "X1", "X2", "OFF", 10, 1),
    });
    ASSERT_EQ(rows.size(), 1);
    // Zones: "-" 0, "1" 14, "H1-H2" 28, the resistance 42 to 56, so tap B at 70.
    EXPECT_EQ(rows[0].mid(42, 28), QStringLiteral("12345.678 mOhm") + QString(14, u' '));
    EXPECT_EQ(rows[0].mid(70, 1), "1");
}

TEST_F(ZblFilesMakerTest, FrameShorterThanItsReadingsIsABoundsError)
{
    sim::ZblStoredFile f = sampleFile();
    ZblHeaderRecord header;
    ParseZblHeader(sim::zblHeaderFrame(f), header);
    ASSERT_EQ(header.numberOfReadings, 3);
    f.readings.pop_back();
    const QByteArray dataFrame = sim::zblDataFrame(f);
    EXPECT_EQ(failureOf([&] { write(header, dataFrame); }), err::SubscriptOutOfRange);
}

TEST_F(ZblFilesMakerTest, FailedOpenWritesNothingAndSaysNothing)
{
    ASSERT_TRUE(QDir().mkpath(filePath(QStringLiteral("1-12.zbl"))));
    EXPECT_EQ(failureOf([] { upload(sampleFile()); }), 0);
    EXPECT_TRUE(QFileInfo(filePath(QStringLiteral("1-12.zbl"))).isDir());
    EXPECT_EQ(QDir(folder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"1-12.zbl"});
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
}

TEST_F(ZblFilesMakerTest, TwoUploadsWithTheSameIndexAndTestNumberOverwrite)
{
    sim::ZblStoredFile f = sampleFile();
    upload(f);
    f.readings.resize(1);
    f.notes = QStringLiteral("Second");
    upload(f);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), QStringList{"1-12.zbl"});
    const QStringList lines = linesOf(filePath(QStringLiteral("1-12.zbl")));
    EXPECT_EQ(lines.size(), 15 + 1 + 1);
    EXPECT_EQ(lines[11], "Notes:        Second");
}

TEST_F(ZblFilesMakerTest, FolderIsMadeWhenItListsNothing)
{
    ASSERT_FALSE(QFileInfo::exists(folder()));
    sim::ZblStoredFile f = sampleFile();
    f.readings.clear();
    upload(f);
    EXPECT_TRUE(QFileInfo(folder()).isDir());
    EXPECT_TRUE(QFileInfo::exists(filePath(QStringLiteral("1-12.zbl"))));
}

TEST_F(ZblFilesMakerTest, AnEmptyExistingFolderIsMadeAgain)
{
    ASSERT_TRUE(QDir().mkpath(folder()));
    sim::ZblStoredFile f = sampleFile();
    f.readings.clear();
    upload(f);
    // Making folders tests each stage by making it the current folder, and
    // the existing upload folder is the last stage: the call was made.
    EXPECT_EQ(QFileInfo(QDir::currentPath()).canonicalFilePath(),
              QFileInfo(folder()).canonicalFilePath());
}

TEST_F(ZblFilesMakerTest, AHiddenEntryMakesTheListingNonEmpty)
{
    ASSERT_TRUE(QDir().mkpath(folder()));
    writeBytes(folder() + QStringLiteral("/.hidden"), QByteArray("x"));
    const QString before = QDir::currentPath();
    sim::ZblStoredFile f = sampleFile();
    f.readings.clear();
    upload(f);
    EXPECT_EQ(QDir::currentPath(), before);
    EXPECT_TRUE(QFileInfo::exists(filePath(QStringLiteral("1-12.zbl"))));
}

TEST_F(ZblFilesMakerTest, FolderComesFromTheSettingsStore)
{
    const QString sep = pathSep();
    EXPECT_EQ(UploadFolder(QStringLiteral("ZBL")),
              toPlatformPath(dataRoot.path()) + sep + "ZBL" + sep + "Files" + sep + Stamp + sep);
    QTemporaryDir emptyStore;
    ASSERT_TRUE(emptyStore.isValid());
    QtSettingsStore other(emptyStore.path());
    setSettingsStore(&other);
    EXPECT_EQ(UploadFolder(QStringLiteral("ZBL")), sep + "ZBL" + sep + "Files" + sep + Stamp + sep);
    setSettingsStore(&*store);
}

} // namespace
