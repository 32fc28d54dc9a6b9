// The simulator's scenario files: the committed samples, each key and its
// default, and the messages of a file that cannot be read.
#include "tools/instrument-sim/ScenarioReader.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>

#include <cmath>
#include <gtest/gtest.h>

using namespace quenby::sim;
using quenby::testing::samplePath;

namespace {

// The message of the error that reading `text` raises; empty if none.
std::string errorOf(const QString& text, std::optional<DeviceKind> kind = std::nullopt)
{
    try {
        readScenario(text, QStringLiteral("t.sim"), kind);
    } catch (const ScenarioError& e) {
        return e.what();
    }
    return {};
}

int errorLine(const QString& text)
{
    try {
        readScenario(text, QStringLiteral("t.sim"));
    } catch (const ScenarioError& e) {
        return e.line();
    }
    return -1;
}

const QString kKvxHead = QStringLiteral("[instrument]\nkind = kvx\n[file]\n");
const QString kZblHead = QStringLiteral("[instrument]\nkind = zbl\n[file]\n");

} // namespace

// --- The samples --------------------------------------------------------------

TEST(scenarioReader, KvxSampleHoldsTwoFilesTheFirstWithElevenFullCurves)
{
    const Instrument i = readScenarioFile(samplePath(QStringLiteral("kvx-instrument.sim")));
    EXPECT_EQ(i.kind, DeviceKind::Kvx);
    EXPECT_EQ(i.kvxSerial, QStringLiteral("KVX20417"));
    ASSERT_EQ(i.fileCount(), 2);
    const KvxStoredFile& f = i.kvxFiles[0];
    EXPECT_EQ(f.fileNumber, 1);
    EXPECT_EQ(f.day, 12);
    EXPECT_EQ(f.month, 3);
    EXPECT_EQ(f.year, 24);
    EXPECT_EQ(f.hour, 9);
    EXPECT_EQ(f.minute, 5);
    EXPECT_EQ(f.second, 41);
    EXPECT_EQ(f.value13, 41); // no second-byte line: byte 13 carries the second
    EXPECT_EQ(f.company, QStringLiteral("Northfield Power Co-op"));
    EXPECT_EQ(f.serial, QStringLiteral("MR-1200-0457"));
    EXPECT_EQ(f.ratio, QStringLiteral("1200:5 MR"));
    EXPECT_EQ(f.accuracyClass, QStringLiteral("C400"));
    ASSERT_EQ(f.tests.size(), 11u);
    for (std::size_t t = 0; t < f.tests.size(); ++t) {
        EXPECT_EQ(f.tests[t].points.size(), 100u) << t;
        EXPECT_EQ(f.tests[t].testNumber, static_cast<int>(t) + 1);
        EXPECT_EQ(f.tests[t].pointCountOverride, -1);
    }
    const KvxTest& first = f.tests[0];
    EXPECT_EQ(first.tap, QStringLiteral("X1-X2"));
    EXPECT_EQ(first.ratioFirst, 200);
    EXPECT_EQ(first.ratioSecond, 5);
    EXPECT_FLOAT_EQ(first.calculatedRatio, 40.0f);
    EXPECT_FLOAT_EQ(first.measuredRatio, 39.912f);
    EXPECT_FLOAT_EQ(first.ratioError, -0.22f);
    EXPECT_FLOAT_EQ(first.phase, 0.14f);
    EXPECT_FLOAT_EQ(first.kneeIeee30, 88.4f);
    EXPECT_FLOAT_EQ(first.kneeIeee45, 82.0f);
    EXPECT_FLOAT_EQ(first.kneeIec1050, 95.2f);
    EXPECT_FLOAT_EQ(first.insulation, 2.4e9f);
    EXPECT_FLOAT_EQ(first.windingResistance, 0.1004f);
    EXPECT_TRUE(first.polarityPositive);
    EXPECT_TRUE(first.excitationValid && first.ratioValid && first.insulationValid &&
                first.windingValid);
    EXPECT_EQ(f.tests[10].tap, QStringLiteral("X1-X5"));

    const KvxStoredFile& g = i.kvxFiles[1];
    ASSERT_EQ(g.tests.size(), 1u);
    EXPECT_FALSE(g.tests[0].insulationValid);
    EXPECT_TRUE(g.tests[0].excitationValid && g.tests[0].ratioValid && g.tests[0].windingValid);
    ASSERT_EQ(g.tests[0].points.size(), 12u);
    EXPECT_FLOAT_EQ(g.tests[0].points[0].first, 25.1f);
    EXPECT_FLOAT_EQ(g.tests[0].points[0].second, 0.0011f);
    EXPECT_FLOAT_EQ(g.tests[0].points[11].first, 1015.4f);
}

TEST(scenarioReader, ZblSampleHoldsTwoFilesTheFirstWithAHundredReadings)
{
    const Instrument i = readScenarioFile(samplePath(QStringLiteral("zbl-instrument.sim")));
    EXPECT_EQ(i.kind, DeviceKind::Zbl);
    EXPECT_EQ(i.zblSerialBytes, (std::vector<int>{4, 17, 2, 9, 0, 6}));
    ASSERT_EQ(i.fileCount(), 2);
    const ZblStoredFile& f = i.zblFiles[0];
    EXPECT_EQ(f.testNumber, 12);
    EXPECT_EQ(f.mode, 2);
    EXPECT_EQ(f.day, 15);
    EXPECT_EQ(f.month, 11);
    EXPECT_EQ(f.year, 24);
    ASSERT_EQ(f.readings.size(), 100u);
    const ZblReading& r = f.readings[0];
    EXPECT_EQ(r.readingNumber, 1);
    EXPECT_EQ(r.tapA, QStringLiteral("16R"));
    EXPECT_EQ(r.windingA1, QStringLiteral("H1"));
    EXPECT_EQ(r.windingA2, QStringLiteral("H2"));
    EXPECT_TRUE(r.resistanceA.endsWith(QStringLiteral(" mΩ"))) << r.resistanceA.toStdString();
    EXPECT_EQ(r.windingB1, QStringLiteral("X1"));
    EXPECT_EQ(r.windingB2, QStringLiteral("X0"));
    EXPECT_EQ(r.current, 10000);
    EXPECT_EQ(r.interval, 5);
    EXPECT_EQ(f.readings[99].readingNumber, 100);
    EXPECT_EQ(f.readings[99].tapA, QStringLiteral("N"));

    const ZblStoredFile& g = i.zblFiles[1];
    EXPECT_EQ(g.mode, 0);
    ASSERT_EQ(g.readings.size(), 6u);
    EXPECT_EQ(g.readings[0].resistanceA, QStringLiteral("1.8734 Ω"));
    EXPECT_EQ(g.readings[0].resistanceB, QStringLiteral("OFF"));
    EXPECT_TRUE(g.readings[0].tapB.isEmpty());
    EXPECT_EQ(g.readings[4].resistanceA, QStringLiteral("OVER"));
    EXPECT_EQ(g.readings[4].current, 100);
}

TEST(scenarioReader, SmallSamplesRead)
{
    const Instrument k = readScenarioFile(samplePath(QStringLiteral("kvx-small.sim")));
    EXPECT_EQ(k.kind, DeviceKind::Kvx);
    ASSERT_EQ(k.fileCount(), 1);
    EXPECT_EQ(k.kvxFiles[0].tests.size(), 2u);
    const Instrument z = readScenarioFile(samplePath(QStringLiteral("zbl-small.sim")));
    EXPECT_EQ(z.kind, DeviceKind::Zbl);
    ASSERT_EQ(z.fileCount(), 1);
    EXPECT_EQ(z.zblFiles[0].readings.size(), 3u);
    EXPECT_EQ(z.zblFiles[0].readings[0].resistanceB, QStringLiteral("845.30 µΩ"));
}

// --- Keys and defaults ------------------------------------------------------

TEST(scenarioReader, EmptyScenarioWithAKindIsAnInstrumentWithoutFiles)
{
    const Instrument k = readScenario(QString(), QStringLiteral("x"), DeviceKind::Kvx);
    EXPECT_EQ(k.kind, DeviceKind::Kvx);
    EXPECT_EQ(k.fileCount(), 0);
    EXPECT_EQ(k.kvxSerial, QStringLiteral("KVX0001"));
    const Instrument z = readScenario(QString(), QStringLiteral("x"), DeviceKind::Zbl);
    EXPECT_EQ(z.kind, DeviceKind::Zbl);
    // Six bytes: the serial reply reaches the PC's least size of 10 bytes.
    EXPECT_EQ(z.zblSerialBytes, (std::vector<int>{0, 0, 0, 0, 0, 1}));
}

TEST(scenarioReader, KindFromTheCommandLineMustAgreeWithTheFile)
{
    EXPECT_EQ(readScenario(kKvxHead, QStringLiteral("x"), DeviceKind::Kvx).kind, DeviceKind::Kvx);
    const std::string e = errorOf(kKvxHead, DeviceKind::Zbl);
    EXPECT_NE(e.find("t.sim:2:"), std::string::npos) << e;
    EXPECT_NE(e.find("describes a KVX, but --kind asks for a ZBL"), std::string::npos) << e;
    // A file without a kind takes the command line's.
    EXPECT_EQ(readScenario(QStringLiteral("[file]\nreading = 1|a|b|1 Ω|1|c|d|2 Ω|10|5\n"),
                           QStringLiteral("x"), DeviceKind::Zbl)
                  .zblFiles.size(),
              1u);
}

TEST(scenarioReader, KindMustBeKnownBeforeTheFirstFile)
{
    EXPECT_NE(errorOf(QStringLiteral("[file]\n"))
                  .find("t.sim:1: the kind of instrument must be "
                        "known"),
              std::string::npos);
    EXPECT_NE(errorOf(QStringLiteral("# nothing\n")).find("the kind of instrument is not given"),
              std::string::npos);
}

TEST(scenarioReader, SerialLineMayComeBeforeTheKind)
{
    const Instrument z = readScenario(
        QStringLiteral("[instrument]\nserial = 12 0 7 1 2 3\nkind = zbl\n"), QStringLiteral("x"));
    EXPECT_EQ(z.zblSerialBytes, (std::vector<int>{12, 0, 7, 1, 2, 3}));
    const Instrument k = readScenario(QStringLiteral("[instrument]\nserial = ABC\nkind = kvx\n"),
                                      QStringLiteral("x"));
    EXPECT_EQ(k.kvxSerial, QStringLiteral("ABC"));
}

TEST(scenarioReader, FileNumbersDefaultToTheirPosition)
{
    const Instrument z = readScenario(kZblHead + QStringLiteral("[file]\n[file]\nnumber = 9\n"
                                                                "test-number = 40\n"),
                                      QStringLiteral("x"));
    ASSERT_EQ(z.zblFiles.size(), 3u);
    EXPECT_EQ(z.zblFiles[0].fileNumber, 1);
    EXPECT_EQ(z.zblFiles[0].testNumber, 1);
    EXPECT_EQ(z.zblFiles[1].fileNumber, 2);
    EXPECT_EQ(z.zblFiles[1].testNumber, 2);
    EXPECT_EQ(z.zblFiles[2].fileNumber, 9);
    EXPECT_EQ(z.zblFiles[2].testNumber, 40);
}

TEST(scenarioReader, SecondByteOverridesTheSecondInByte13)
{
    const Instrument a =
        readScenario(kKvxHead + QStringLiteral("time = 01:02:03\n"), QStringLiteral("x"));
    EXPECT_EQ(a.kvxFiles[0].second, 3);
    EXPECT_EQ(a.kvxFiles[0].value13, 3);
    const Instrument b = readScenario(
        kKvxHead + QStringLiteral("second-byte = 200\ntime = 01:02:03\n"), QStringLiteral("x"));
    EXPECT_EQ(b.kvxFiles[0].second, 3);
    EXPECT_EQ(b.kvxFiles[0].value13, 200);
    const Instrument c = readScenario(
        kKvxHead + QStringLiteral("time = 01:02:03\nsecond-byte = 0\n"), QStringLiteral("x"));
    EXPECT_EQ(c.kvxFiles[0].value13, 0);
}

TEST(scenarioReader, ZblModesByNameOrNumber)
{
    const Instrument z = readScenario(kZblHead + QStringLiteral("mode = Timed\n[file]\nmode = "
                                                                "manual\n[file]\nmode = 5\n"),
                                      QStringLiteral("x"));
    EXPECT_EQ(z.zblFiles[0].mode, 1);
    EXPECT_EQ(z.zblFiles[1].mode, 0);
    EXPECT_EQ(z.zblFiles[2].mode, 5);
}

TEST(scenarioReader, TestKeysFillTheTest)
{
    const Instrument k = readScenario(
        kKvxHead + QStringLiteral("[test]\nnumber = 7\ntap = X2-X4\nnameplate = 600 : 5\n"
                                  "polarity = NEG\nvalid = ratio insulation\npoint = 1.5 0.25\n"
                                  "point = 3   0.5\npoint-count = 150\ninsulation = 2.3e9\n"
                                  "winding = -1\n"),
        QStringLiteral("x"));
    const KvxTest& t = k.kvxFiles[0].tests[0];
    EXPECT_EQ(t.testNumber, 7);
    EXPECT_EQ(t.tap, QStringLiteral("X2-X4"));
    EXPECT_EQ(t.ratioFirst, 600);
    EXPECT_EQ(t.ratioSecond, 5);
    EXPECT_FALSE(t.polarityPositive);
    EXPECT_FALSE(t.excitationValid);
    EXPECT_TRUE(t.ratioValid);
    EXPECT_TRUE(t.insulationValid);
    EXPECT_FALSE(t.windingValid);
    ASSERT_EQ(t.points.size(), 2u);
    EXPECT_FLOAT_EQ(t.points[1].first, 3.0f);
    EXPECT_FLOAT_EQ(t.points[1].second, 0.5f);
    EXPECT_EQ(t.pointCountOverride, 150);
    EXPECT_FLOAT_EQ(t.insulation, 2.3e9f);
    EXPECT_FLOAT_EQ(t.windingResistance, -1.0f);
}

TEST(scenarioReader, ValidNoneClearsEveryFlag)
{
    const Instrument k =
        readScenario(kKvxHead + QStringLiteral("[test]\nvalid = none\n"), QStringLiteral("x"));
    const KvxTest& t = k.kvxFiles[0].tests[0];
    EXPECT_FALSE(t.excitationValid || t.ratioValid || t.insulationValid || t.windingValid);
}

TEST(scenarioReader, CrLfLinesCommentsAndBlanksAreTaken)
{
    const Instrument k = readScenario(
        QStringLiteral("; head\r\n[instrument]\r\n  kind = kvx  \r\n\r\n# c\r\n[file]\r\ncompany "
                       "=  Bay #3 = north  \r\n"),
        QStringLiteral("x"));
    EXPECT_EQ(k.kvxFiles[0].company, QStringLiteral("Bay #3 = north"));
}

TEST(scenarioReader, FullFieldTextsAreTaken)
{
    const Instrument k = readScenario(
        kKvxHead + QStringLiteral("company = %1\nratio = %2\nnotes = %3\n")
                       .arg(QString(26, QLatin1Char('c')), QString(31, QLatin1Char('r')),
                            QString(151, QLatin1Char('n'))),
        QStringLiteral("x"));
    EXPECT_EQ(k.kvxFiles[0].ratio.size(), 31);
    EXPECT_EQ(k.kvxFiles[0].notes.size(), 151);
}

// --- Mistakes ---------------------------------------------------------------

TEST(scenarioReader, MistakesNameTheFileTheLineAndTheRule)
{
    struct Case
    {
        QString text;
        int line;
        const char* words;
    };
    const Case cases[] = {
        {QStringLiteral("kind = kvx\n"), 1, "stands outside any section"},
        {QStringLiteral("[instrument]\nkind = abc\n"), 2, "kind is kvx or zbl"},
        {QStringLiteral("[instrument]\nkind\n"), 2, "expected \"key = value\""},
        {QStringLiteral("[instrument]\n = kvx\n"), 2, "a key is missing"},
        {QStringLiteral("[instrument\n"), 1, "ends with \"]\""},
        {QStringLiteral("[stuff]\n"), 1, "unknown section [stuff]"},
        {QStringLiteral("[instrument]\ncolour = red\n"), 2,
         "unknown key \"colour\" in "
         "[instrument]"},
        {QStringLiteral("[instrument]\n[instrument]\n"), 2, "[instrument] is given twice"},
        {kKvxHead + QStringLiteral("[instrument]\n"), 4, "comes before the first [file]"},
        {kKvxHead + QStringLiteral("company = a\ncompany = b\n"), 5, "\"company\" is given twice"},
        {kKvxHead + QStringLiteral("mode = auto\n"), 4, "unknown key \"mode\" in [file] of a KVX"},
        {kKvxHead + QStringLiteral("reading = 1|a|b|c|d|e|f|g|1|1\n"), 4,
         "unknown key "
         "\"reading\""},
        {kZblHead + QStringLiteral("ratio = 600:5\n"), 4,
         "unknown key \"ratio\" in [file] of a "
         "ZBL"},
        {kZblHead + QStringLiteral("[test]\n"), 4, "[test] belongs to a KVX"},
        {QStringLiteral("[instrument]\nkind = kvx\n[test]\n"), 3, "must follow the [file]"},
        {kKvxHead + QStringLiteral("number = 256\n"), 4, "number is a whole number from 0 to 255"},
        {kKvxHead + QStringLiteral("date = 2024-02-30\n"), 4, "a date reads yyyy-mm-dd"},
        {kKvxHead + QStringLiteral("date = 1999-12-31\n"), 4, "in the years 2000 to 2255"},
        {kKvxHead + QStringLiteral("time = 24:00:00\n"), 4, "a time reads hh:mm:ss"},
        {kKvxHead + QStringLiteral("company = %1\n").arg(QString(27, QLatin1Char('c'))), 4,
         "company holds at most 26 characters"},
        {kKvxHead + QStringLiteral("ratio = %1\n").arg(QString(32, QLatin1Char('r'))), 4,
         "ratio holds at most 31 characters"},
        {kZblHead + QStringLiteral("company = %1\n").arg(QString(22, QLatin1Char('c'))), 4,
         "company holds at most 21 characters"},
        {kKvxHead + QStringLiteral("operator = Жанна\n"), 4, "has no Windows-1252 code"},
        {kKvxHead + QStringLiteral("notes = 5 Ω\n"), 4, "Ω is taken in resistances only"},
        {kKvxHead + QStringLiteral("[test]\ntap = X1-X10\n"), 5, "tap holds at most 5"},
        {kKvxHead + QStringLiteral("[test]\nnameplate = 600/5\n"), 5, "first:second"},
        {kKvxHead + QStringLiteral("[test]\nnameplate = 40000:5\n"), 5, "from 0 to 32767"},
        {kKvxHead + QStringLiteral("[test]\npolarity = up\n"), 5, "polarity is pos or neg"},
        {kKvxHead + QStringLiteral("[test]\nvalid = ratio phase\n"), 5, "\"phase\" is none"},
        {kKvxHead + QStringLiteral("[test]\nphase = 1,5\n"), 5, "phase is a number"},
        {kKvxHead + QStringLiteral("[test]\npoint = 1\n"), 5, "a point is two numbers"},
        {kKvxHead + QStringLiteral("[test]\ncurve = 101 10 0.1\n"), 5,
         "a point count is a whole "
         "number from 1 to 100"},
        {kKvxHead + QStringLiteral("[test]\ncurve = 10 0 0.1\n"), 5, "positive volts and amperes"},
        {kKvxHead + QStringLiteral("[test]\ncurve = 60 10 0.1\ncurve = 41 10 0.1\n"), 6,
         "at most 100 excitation points"},
        {kKvxHead + QStringLiteral("[test]\nspeed = 3\n"), 5, "unknown key \"speed\" in [test]"},
        {kZblHead + QStringLiteral("reading = 1|a|b|c|d|e|f|g|1\n"), 4, "this one has 9"},
        {kZblHead + QStringLiteral("reading = 1|a|b|c|d|e|f|g|70000|1\n"), 4,
         "the current in mA "
         "is a whole number "
         "from 0 to 65535"},
        {kZblHead + QStringLiteral("reading = 123456|a|b|c|d|e|f|g|1|1\n"), 4,
         "tap of channel A "
         "holds at most 5"},
        {kZblHead + QStringLiteral("reading = 1|a|b|1234567890123 Ω|d|e|f|g|1|1\n"), 4,
         "resistance of channel A holds at most 12"},
        {kZblHead + QStringLiteral("mode = fast\n"), 4, "mode (manual, timed, auto or a number)"},
        {QStringLiteral("[instrument]\nkind = zbl\nserial = 1 2 300\n"), 3,
         "a ZBL serial byte is "
         "a whole number from "
         "0 to 255"},
        {QStringLiteral("[instrument]\nkind = zbl\nserial = \n"), 3, "1 to 64 byte values"},
    };
    for (const Case& c : cases) {
        const std::string e = errorOf(c.text);
        const std::string where = "t.sim:" + std::to_string(c.line) + ": ";
        EXPECT_EQ(e.rfind(where, 0), 0u) << c.text.toStdString() << " -> " << e;
        EXPECT_NE(e.find(c.words), std::string::npos) << c.text.toStdString() << " -> " << e;
        EXPECT_EQ(errorLine(c.text), c.line) << c.text.toStdString();
    }
}

TEST(scenarioReader, TwelfthKvxTestIsRefused)
{
    QString text = kKvxHead;
    for (int i = 0; i < 11; ++i)
        text += QStringLiteral("[test]\n");
    EXPECT_NO_THROW(readScenario(text, QStringLiteral("x")));
    text += QStringLiteral("[test]\n");
    EXPECT_NE(errorOf(text).find("at most 11 tests"), std::string::npos);
}

TEST(scenarioReader, ReadingBeyond166IsRefused)
{
    QString text = kZblHead;
    for (int i = 0; i < 166; ++i)
        text += QStringLiteral("reading = 1|H1|H2|1.0 Ω|1|X1|X2|2.0 mΩ|10000|5\n");
    EXPECT_EQ(readScenario(text, QStringLiteral("x")).zblFiles[0].readings.size(), 166u);
    text += QStringLiteral("reading = 1|H1|H2|1.0 Ω|1|X1|X2|2.0 mΩ|10000|5\n");
    const std::string e = errorOf(text);
    EXPECT_NE(e.find("t.sim:170: a ZBL file holds at most 166 readings"), std::string::npos) << e;
}

TEST(scenarioReader, FileThatCannotBeOpenedSaysSo)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    try {
        readScenarioFile(dir.filePath(QStringLiteral("missing.sim")));
        FAIL() << "no error";
    } catch (const ScenarioError& e) {
        EXPECT_NE(std::string(e.what()).find("missing.sim: cannot be opened"), std::string::npos);
    }
}

// --- The made-up curve ------------------------------------------------------

TEST(scenarioReader, MadeUpCurveSpansAnEighthToTwentyTimesTheKneeCurrent)
{
    const auto c = madeUpExcitationCurve(100, 82.0, 0.09);
    ASSERT_EQ(c.size(), 100u);
    EXPECT_NEAR(c.front().second, 0.09 / 8, 1e-7);
    EXPECT_NEAR(c.back().second, 0.09 * 20, 1e-5);
    // Even steps on a log scale.
    const double step = std::log(c[1].second / c[0].second);
    EXPECT_NEAR(std::log(c[60].second / c[59].second), step, 1e-4);
    for (std::size_t j = 1; j < c.size(); ++j) {
        EXPECT_GT(c[j].first, c[j - 1].first) << j;
        EXPECT_GT(c[j].second, c[j - 1].second) << j;
    }
}

TEST(scenarioReader, MadeUpCurveTurnsThrough45DegreesAtTheKnee)
{
    const double kneeV = 246.0;
    const double kneeA = 0.03;
    const auto c = madeUpExcitationCurve(100, kneeV, kneeA);
    const auto slope = [&](std::size_t j) {
        return std::log(c[j + 1].first / c[j].first) / std::log(c[j + 1].second / c[j].second);
    };
    std::size_t k = 0;
    while (c[k + 1].second < kneeA)
        ++k;
    // Steeper than 45 degrees well below the knee, flatter well above it.
    EXPECT_GT(slope(0), 1.4);
    EXPECT_LT(slope(c.size() - 2), 0.2);
    EXPECT_GT(slope(k - 3), 1.0);
    EXPECT_LT(slope(k + 3), 1.0);
    // Between the two points around the knee current the curve passes the
    // knee voltage (log-log interpolation).
    const double f = std::log(kneeA / c[k].second) / std::log(c[k + 1].second / c[k].second);
    const double v = std::exp(std::log(c[k].first) + f * std::log(c[k + 1].first / c[k].first));
    EXPECT_NEAR(v, kneeV, kneeV * 0.002);
}

TEST(scenarioReader, MadeUpCurveOfOnePointIsItsLowestPoint)
{
    const auto c = madeUpExcitationCurve(1, 100.0, 0.08);
    ASSERT_EQ(c.size(), 1u);
    EXPECT_FLOAT_EQ(c[0].second, 0.01f);
    EXPECT_LT(c[0].first, 100.0f);
}
