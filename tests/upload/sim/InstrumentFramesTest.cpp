// The instrument's replies and frames, read back by hand at the offsets where
// the PC looks for each field. Nothing here uses the PC's decoder: the bytes
// are compared with values worked out from the layout (IEEE singles written
// out in hex, checks summed by hand).
#include "tools/instrument-sim/InstrumentFrames.h"

#include <QByteArray>

#include <cstdint>
#include <gtest/gtest.h>

using namespace quenby::sim;

namespace {

int at(const QByteArray& bytes, qsizetype i)
{
    return static_cast<unsigned char>(bytes.at(i));
}

int be16(const QByteArray& bytes, qsizetype i)
{
    return at(bytes, i) * 256 + at(bytes, i + 1);
}

std::uint32_t be32(const QByteArray& bytes, qsizetype i)
{
    return (std::uint32_t(at(bytes, i)) << 24) | (std::uint32_t(at(bytes, i + 1)) << 16) |
           (std::uint32_t(at(bytes, i + 2)) << 8) | std::uint32_t(at(bytes, i + 3));
}

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(static_cast<char>(v));
    return out;
}

// Low bytes two apart from firstLow to lastLow, up to the first 0, as Latin-1.
QString lowText(const QByteArray& bytes, qsizetype firstLow, qsizetype lastLow)
{
    QString s;
    for (qsizetype i = firstLow; i <= lastLow; i += 2) {
        if (at(bytes, i) == 0)
            break;
        s.append(QChar(at(bytes, i)));
    }
    return s;
}

// True when every high byte of a text field is 0.
bool highBytesZero(const QByteArray& bytes, qsizetype firstLow, qsizetype lastLow)
{
    for (qsizetype i = firstLow - 1; i < lastLow; i += 2) {
        if (at(bytes, i) != 0)
            return false;
    }
    return true;
}

// The frame rule: check = code + payload mod 256, and L + 5 = U.
void expectSoundFrame(const QByteArray& frame, int code)
{
    ASSERT_GE(frame.size(), 6);
    EXPECT_EQ(at(frame, 0), 0x47);
    EXPECT_EQ(at(frame, 1), 0x50);
    EXPECT_EQ(at(frame, 2), code);
    const int length = be16(frame, 3);
    EXPECT_EQ(length + 5, frame.size() - 1);
    unsigned sum = static_cast<unsigned>(code);
    for (qsizetype i = 5; i < frame.size() - 1; ++i)
        sum += static_cast<unsigned>(at(frame, i));
    EXPECT_EQ(at(frame, frame.size() - 1), static_cast<int>(sum % 256));
}

KvxStoredFile sampleKvxFile()
{
    KvxStoredFile f;
    f.fileNumber = 7;
    f.day = 9;
    f.month = 7;
    f.year = 14;
    f.hour = 1;
    f.minute = 2;
    f.second = 33;
    f.value13 = 3;
    f.company = QStringLiteral("Northgrid Utilities");
    f.serial = QStringLiteral("CT-4471");
    f.station = QStringLiteral("Elmfield 132 kV");
    f.designation = QStringLiteral("Bay 3 phase A");
    f.manufacturer = QStringLiteral("Harlow Instruments");
    f.operatorName = QStringLiteral("R. Méndez");
    f.temperature = QStringLiteral("21°C");
    f.ratio = QStringLiteral("600:5 multi-ratio, taps X1 to X5"); // 32 characters, one cut
    f.voltageRating = QStringLiteral("15 kV");
    f.accuracyClass = QStringLiteral("C400");
    f.position = QStringLiteral("Bushing H1");
    f.phase = QStringLiteral("A");
    f.notes = QString(151, QLatin1Char('n'));
    KvxTest a;
    a.testNumber = 1;
    a.tap = QStringLiteral("X1-X2");
    a.ratioFirst = 600;
    a.ratioSecond = 5;
    a.phase = 0.25f;
    a.calculatedRatio = 120.0f;
    a.measuredRatio = 120.0f;
    a.ratioError = -2.0f;
    a.kneeIeee30 = 1.0f;
    a.kneeIeee45 = 0.5f;
    a.kneeIec1050 = 0.1f;
    a.insulation = 1.0e9f;
    a.windingResistance = 0.0f;
    a.polarityPositive = true;
    a.excitationValid = false;
    a.ratioValid = true;
    a.insulationValid = false;
    a.windingValid = true;
    for (int j = 0; j < 100; ++j)
        a.points.emplace_back(static_cast<float>(j), -static_cast<float>(j));
    KvxTest b;
    b.testNumber = 2;
    b.tap = QStringLiteral("X2-X5");
    b.ratioFirst = 1200;
    b.ratioSecond = 1;
    b.polarityPositive = false;
    b.points = {{2.0f, 0.5f}};
    f.tests = {a, b};
    return f;
}

ZblStoredFile sampleZblFile()
{
    ZblStoredFile f;
    f.fileNumber = 4;
    f.testNumber = 12;
    f.mode = 2;
    f.day = 3;
    f.month = 5;
    f.year = 14;
    f.hour = 9;
    f.minute = 8;
    f.second = 7;
    f.company = QStringLiteral("Westmoor Power");
    f.serial = QStringLiteral("TX-88120");
    f.station = QStringLiteral("Ashby Sub");
    f.designation = QStringLiteral("T2 HV side");
    f.manufacturer = QStringLiteral("Calder Electric");
    f.operatorName = QStringLiteral("J. Okafor");
    f.temperature = QStringLiteral("18 C");
    f.notes = QStringLiteral("Oil 42 C, tap changer in good order"); // over 21, cut
    ZblReading r1;
    r1.readingNumber = 1;
    r1.tapA = QStringLiteral("N 10");
    r1.windingA1 = QStringLiteral("H1");
    r1.windingA2 = QStringLiteral("H2");
    r1.resistanceA = QStringLiteral("12.34mΩ");
    r1.tapB = QStringLiteral("1");
    r1.windingB1 = QStringLiteral("X1");
    r1.windingB2 = QStringLiteral("X0");
    r1.resistanceB = QStringLiteral("OFF");
    r1.current = 1500;
    r1.interval = 5;
    ZblReading r2;
    r2.readingNumber = 2;
    r2.tapA = QStringLiteral("2");
    r2.resistanceA = QStringLiteral("694.48µΩ");
    r2.current = 65535;
    r2.interval = 300;
    f.readings = {r1, r2};
    return f;
}

Instrument kvxInstrument()
{
    Instrument i;
    i.kind = DeviceKind::Kvx;
    i.kvxSerial = QStringLiteral("KVX1234");
    KvxStoredFile second = sampleKvxFile();
    second.fileNumber = 8;
    second.tests.resize(1);
    i.kvxFiles = {sampleKvxFile(), second};
    return i;
}

Instrument zblInstrument()
{
    Instrument i;
    i.kind = DeviceKind::Zbl;
    i.zblSerialBytes = {12, 0, 7, 1, 2, 3};
    ZblStoredFile second = sampleZblFile();
    second.testNumber = 13;
    second.readings.clear();
    i.zblFiles = {sampleZblFile(), second};
    return i;
}

const int kTestSlot0 = 5;       // frame index of the first slot
const int kTestSlot1 = 5 + 942; // frame index of the second slot

} // namespace

// --- Short replies -------------------------------------------------------

TEST(instrumentFrames, IdentifyReplyIsHeadCodeAndACheckOfTheCode)
{
    EXPECT_EQ(identifyReply(0x63), bytesOf({0x47, 0x50, 0x63, 0x63}));
    EXPECT_EQ(identifyReply(0x64), bytesOf({0x47, 0x50, 0x64, 0x64}));
    EXPECT_EQ(identifyReply(0x99), bytesOf({0x47, 0x50, 0x99, 0x99}));
}

TEST(instrumentFrames, KvxSerialReplyCarriesTheTextAndItsCheck)
{
    Instrument kvx = kvxInstrument();
    // 0x66 + "KVX1234" = 0x66 + 0x4B + 0x56 + 0x58 + 0x31 + 0x32 + 0x33 + 0x34 = 0x229.
    EXPECT_EQ(serialNumberReply(kvx),
              bytesOf({0x47, 0x50, 0x66, 0x4B, 0x56, 0x58, 0x31, 0x32, 0x33, 0x34, 0x29}));
}

TEST(instrumentFrames, ShortKvxSerialIsFilledWithZerosToTheLeastReplySize)
{
    Instrument kvx;
    kvx.kind = DeviceKind::Kvx;
    kvx.kvxSerial = QStringLiteral("K1");
    // 10 bytes, the least the PC takes; zeros add nothing to the check.
    EXPECT_EQ(serialNumberReply(kvx),
              bytesOf({0x47, 0x50, 0x66, 0x4B, 0x31, 0, 0, 0, 0, (0x66 + 0x4B + 0x31) % 256}));
}

TEST(instrumentFrames, ZblSerialReplyCarriesItsBytesAsTheyAre)
{
    Instrument zbl;
    zbl.kind = DeviceKind::Zbl;
    zbl.zblSerialBytes = {12, 0, 7};
    EXPECT_EQ(serialNumberReply(zbl), bytesOf({0x47, 0x50, 0x66, 12, 0, 7, 0x66 + 12 + 7}));
    zbl.zblSerialBytes = {200, 100, 255, 1, 2, 3};
    // 0x66 + 200 + 100 + 255 + 6 = 663 = 2 x 256 + 151.
    EXPECT_EQ(serialNumberReply(zbl), bytesOf({0x47, 0x50, 0x66, 200, 100, 255, 1, 2, 3, 151}));
}

TEST(instrumentFrames, FileCountReplyWrapsItsCheck)
{
    EXPECT_EQ(fileCountReply(2), bytesOf({0x47, 0x50, 0x6A, 2, 0x6C}));
    EXPECT_EQ(fileCountReply(0), bytesOf({0x47, 0x50, 0x6A, 0, 0x6A}));
    // 0x6A + 0xFF = 0x169.
    EXPECT_EQ(fileCountReply(255), bytesOf({0x47, 0x50, 0x6A, 0xFF, 0x69}));
}

TEST(instrumentFrames, FramedReplyLeavesTheLengthOutOfTheCheck)
{
    EXPECT_EQ(framedReply(0x6C, bytesOf({0x10, 0x20})),
              bytesOf({0x47, 0x50, 0x6C, 0x00, 0x02, 0x10, 0x20, 0x9C}));
    EXPECT_EQ(framedReply(0x6B, QByteArray()), bytesOf({0x47, 0x50, 0x6B, 0, 0, 0x6B}));
    // 300 bytes of 0xFF: L = 0x012C; check = 0x6C + 300 x 255 = 76608 = 0x12B40, so 0x40.
    const QByteArray big = framedReply(0x6C, QByteArray(300, char(0xFF)));
    EXPECT_EQ(big.size(), 306);
    EXPECT_EQ(at(big, 3), 0x01);
    EXPECT_EQ(at(big, 4), 0x2C);
    EXPECT_EQ(at(big, 305), 0x40);
}

// --- Value encoders -------------------------------------------------------

TEST(instrumentFrames, FloatsGoOutAsBigEndianSingles)
{
    QByteArray b(12, '\0');
    putFloat(b, 0, 1.0f);
    putFloat(b, 4, -2.0f);
    putFloat(b, 8, 0.1f);
    EXPECT_EQ(b, bytesOf({0x3F, 0x80, 0, 0, 0xC0, 0, 0, 0, 0x3D, 0xCC, 0xCC, 0xCD}));
    putFloat(b, 2, 600.0f); // 0x44160000, over the tail of 1.0 and the head of -2.0
    EXPECT_EQ(b.left(8), bytesOf({0x3F, 0x80, 0x44, 0x16, 0, 0, 0, 0}));
}

TEST(instrumentFrames, TextsAreSixteenBitBigEndianWithWindows1252LowBytes)
{
    QByteArray b(12, char(0x55));
    putText(b, 1, QStringLiteral("é€"), 5);
    // "é" is 0xE9 and "€" 0x80 in Windows-1252; the rest of the field is zero.
    EXPECT_EQ(b, bytesOf({0x55, 0, 0xE9, 0, 0x80, 0, 0, 0, 0, 0, 0, 0x55}));
}

TEST(instrumentFrames, OmegaIsStoredAsCode937)
{
    QByteArray b(6, '\0');
    putText(b, 0, QStringLiteral("mΩ"), 3);
    EXPECT_EQ(b, bytesOf({0, 0x6D, 0x03, 0xA9, 0, 0}));
}

TEST(instrumentFrames, CharacterOutsideTheCodePageBecomesAQuestionMark)
{
    QByteArray b(4, '\0');
    putText(b, 0, QStringLiteral("ж"), 2);
    EXPECT_EQ(b, bytesOf({0, '?', 0, 0}));
}

TEST(instrumentFrames, TextLongerThanItsFieldIsCut)
{
    QByteArray b(8, char(0x11));
    putText(b, 0, QStringLiteral("ABCDE"), 3);
    EXPECT_EQ(b, bytesOf({0, 'A', 0, 'B', 0, 'C', 0x11, 0x11}));
}

// --- KVX header -------------------------------------------------------------

TEST(instrumentFrames, KvxHeaderIs960BytesWithLength954)
{
    const QByteArray h = kvxHeaderFrame(sampleKvxFile());
    ASSERT_EQ(h.size(), 960);
    EXPECT_EQ(be16(h, 3), 954);
    expectSoundFrame(h, 0x6B);
}

TEST(instrumentFrames, KvxHeaderNumbersSitAtTheirIndexes)
{
    const QByteArray h = kvxHeaderFrame(sampleKvxFile());
    EXPECT_EQ(at(h, 8), 7);   // file number
    EXPECT_EQ(at(h, 12), 2);  // tests
    EXPECT_EQ(at(h, 15), 9);  // day
    EXPECT_EQ(at(h, 16), 7);  // month
    EXPECT_EQ(at(h, 17), 14); // year - 2000
    EXPECT_EQ(at(h, 18), 1);  // hour
    EXPECT_EQ(at(h, 19), 2);  // minute
}

TEST(instrumentFrames, KvxHeaderSecondThePcReadsIsByte13)
{
    const QByteArray h = kvxHeaderFrame(sampleKvxFile());
    EXPECT_EQ(at(h, 13), 3);
    // The instrument's own second lies at 20, where the PC does not look.
    EXPECT_EQ(at(h, 20), 33);
}

TEST(instrumentFrames, KvxHeaderTextsSitBetweenTheirFirstAndLastLowBytes)
{
    const QByteArray h = kvxHeaderFrame(sampleKvxFile());
    EXPECT_EQ(lowText(h, 24, 74), QStringLiteral("Northgrid Utilities"));
    EXPECT_EQ(lowText(h, 76, 126), QStringLiteral("CT-4471"));
    EXPECT_EQ(lowText(h, 128, 178), QStringLiteral("Elmfield 132 kV"));
    EXPECT_EQ(lowText(h, 180, 230), QStringLiteral("Bay 3 phase A"));
    EXPECT_EQ(lowText(h, 232, 282), QStringLiteral("Harlow Instruments"));
    EXPECT_EQ(lowText(h, 284, 334), QStringLiteral("R. Méndez"));
    EXPECT_EQ(lowText(h, 336, 386), QStringLiteral("21°C"));
    EXPECT_EQ(lowText(h, 388, 448), QStringLiteral("600:5 multi-ratio, taps X1 to X"));
    EXPECT_EQ(lowText(h, 450, 500), QStringLiteral("15 kV"));
    EXPECT_EQ(lowText(h, 502, 552), QStringLiteral("C400"));
    EXPECT_EQ(lowText(h, 554, 604), QStringLiteral("Bushing H1"));
    EXPECT_EQ(lowText(h, 606, 656), QStringLiteral("A"));
    EXPECT_EQ(lowText(h, 658, 958), QString(151, QLatin1Char('n')));
    for (auto [first, last] : {std::pair{24, 74}, {76, 126}, {388, 448}, {658, 958}})
        EXPECT_TRUE(highBytesZero(h, first, last)) << first;
}

TEST(instrumentFrames, KvxHeaderFullTextRunsToItsLastLowByteAndNoFurther)
{
    KvxStoredFile f = sampleKvxFile();
    f.company = QString(26, QLatin1Char('C'));
    f.serial = QStringLiteral("S");
    f.ratio = QString(31, QLatin1Char('R'));
    const QByteArray h = kvxHeaderFrame(f);
    EXPECT_EQ(at(h, 74), 'C');
    EXPECT_EQ(at(h, 75), 0); // high byte of the serial's first character
    EXPECT_EQ(at(h, 76), 'S');
    EXPECT_EQ(at(h, 448), 'R');
    EXPECT_EQ(at(h, 449), 0);
}

TEST(instrumentFrames, KvxHeaderOfAFileWithoutTestsCountsNone)
{
    KvxStoredFile f;
    f.tests.clear();
    const QByteArray h = kvxHeaderFrame(f);
    EXPECT_EQ(h.size(), 960);
    EXPECT_EQ(at(h, 12), 0);
}

// --- KVX data ---------------------------------------------------------------

TEST(instrumentFrames, KvxDataHasOne942ByteSlotPerTest)
{
    const QByteArray d = kvxDataFrame(sampleKvxFile());
    EXPECT_EQ(d.size(), 2 * 942 + 6);
    EXPECT_EQ(be16(d, 3), 1884);
    expectSoundFrame(d, 0x6C);
}

TEST(instrumentFrames, KvxDataOfElevenTestsIs10368Bytes)
{
    KvxStoredFile f = sampleKvxFile();
    f.tests.resize(11);
    const QByteArray d = kvxDataFrame(f);
    EXPECT_EQ(d.size(), 10368);
    EXPECT_EQ(be16(d, 3), 10362);
    expectSoundFrame(d, 0x6C);
}

TEST(instrumentFrames, KvxDataOfNoTestsIsAnEmptyFrame)
{
    KvxStoredFile f;
    EXPECT_EQ(kvxDataFrame(f), bytesOf({0x47, 0x50, 0x6C, 0, 0, 0x6C}));
}

TEST(instrumentFrames, KvxSlotNumbersAndSinglesSitAtTheirOffsets)
{
    const QByteArray d = kvxDataFrame(sampleKvxFile());
    const int s = kTestSlot0;
    EXPECT_EQ(at(d, s + 0), 1);
    EXPECT_EQ(be16(d, s + 4), 100);
    EXPECT_EQ(be16(d, s + 10), 600);
    EXPECT_EQ(be16(d, s + 12), 5);
    EXPECT_EQ(be32(d, s + 14), 0x3E800000u); // 0.25
    EXPECT_EQ(be32(d, s + 18), 0x42F00000u); // 120
    EXPECT_EQ(be32(d, s + 22), 0x42F00000u); // 120
    EXPECT_EQ(be32(d, s + 26), 0xC0000000u); // -2
    EXPECT_EQ(be32(d, s + 30), 0x3F800000u); // knee IEEE 30: 1
    EXPECT_EQ(be32(d, s + 34), 0x3F000000u); // knee IEEE 45: 0.5
    EXPECT_EQ(be32(d, s + 38), 0x3DCCCCCDu); // knee IEC 10-50: 0.1
    EXPECT_EQ(be32(d, s + 42), 0x4E6E6B28u); // insulation 1e9
    EXPECT_EQ(be32(d, s + 46), 0x00000000u); // winding 0
}

TEST(instrumentFrames, KvxSlotFlagsAreOneOrZero)
{
    const QByteArray d = kvxDataFrame(sampleKvxFile());
    EXPECT_EQ(at(d, kTestSlot0 + 882), 1); // polarity positive
    EXPECT_EQ(at(d, kTestSlot0 + 883), 0); // excitation not valid
    EXPECT_EQ(at(d, kTestSlot0 + 884), 1); // ratio valid
    EXPECT_EQ(at(d, kTestSlot0 + 885), 0); // insulation not valid
    EXPECT_EQ(at(d, kTestSlot0 + 886), 1); // winding valid
    EXPECT_EQ(at(d, kTestSlot1 + 882), 0); // second test: negative polarity
    EXPECT_EQ(at(d, kTestSlot1 + 883), 1);
}

TEST(instrumentFrames, KvxSlotTapTextHasItsLowBytesFrom889To897)
{
    const QByteArray d = kvxDataFrame(sampleKvxFile());
    EXPECT_EQ(lowText(d, kTestSlot0 + 889, kTestSlot0 + 897), QStringLiteral("X1-X2"));
    EXPECT_TRUE(highBytesZero(d, kTestSlot0 + 889, kTestSlot0 + 897));
    EXPECT_EQ(lowText(d, kTestSlot1 + 889, kTestSlot1 + 897), QStringLiteral("X2-X5"));
    EXPECT_EQ(at(d, kTestSlot0 + 898), 0);
}

TEST(instrumentFrames, KvxSlotCurvesAreVoltagesFrom82AndCurrentsFrom482)
{
    const QByteArray d = kvxDataFrame(sampleKvxFile());
    EXPECT_EQ(be32(d, kTestSlot0 + 82), 0u);                    // 0 V
    EXPECT_EQ(be32(d, kTestSlot0 + 86), 0x3F800000u);           // 1 V
    EXPECT_EQ(be32(d, kTestSlot0 + 90), 0x40000000u);           // 2 V
    EXPECT_EQ(be32(d, kTestSlot0 + 82 + 4 * 99), 0x42C60000u);  // 99 V
    EXPECT_EQ(be32(d, kTestSlot0 + 482), 0x80000000u);          // -0 A
    EXPECT_EQ(be32(d, kTestSlot0 + 486), 0xBF800000u);          // -1 A
    EXPECT_EQ(be32(d, kTestSlot0 + 482 + 4 * 99), 0xC2C60000u); // -99 A
    // The second test has one point; the rest of its lists stays zero.
    EXPECT_EQ(be16(d, kTestSlot1 + 4), 1);
    EXPECT_EQ(be32(d, kTestSlot1 + 82), 0x40000000u);  // 2 V
    EXPECT_EQ(be32(d, kTestSlot1 + 482), 0x3F000000u); // 0.5 A
    EXPECT_EQ(be32(d, kTestSlot1 + 86), 0u);
    EXPECT_EQ(be32(d, kTestSlot1 + 486), 0u);
}

TEST(instrumentFrames, KvxSlotCarriesAtMost100PointsButCountsThemAll)
{
    KvxStoredFile f = sampleKvxFile();
    f.tests.resize(1);
    f.tests[0].points.emplace_back(1000.0f, 1000.0f);
    const QByteArray d = kvxDataFrame(f);
    EXPECT_EQ(d.size(), 942 + 6);
    EXPECT_EQ(be16(d, 5 + 4), 101);
    // Point 101 would start at 482, the first current: that stays -0 A.
    EXPECT_EQ(be32(d, 5 + 482), 0x80000000u);
    EXPECT_EQ(at(d, 5 + 882), 1); // the flags that follow are untouched
}

TEST(instrumentFrames, KvxSlotPointCountCanBeOverridden)
{
    KvxStoredFile f = sampleKvxFile();
    f.tests[1].pointCountOverride = 150;
    const QByteArray d = kvxDataFrame(f);
    EXPECT_EQ(be16(d, kTestSlot1 + 4), 150);
    f.tests[1].pointCountOverride = 0;
    EXPECT_EQ(be16(kvxDataFrame(f), kTestSlot1 + 4), 0);
}

// --- ZBL header ---------------------------------------------------------------

TEST(instrumentFrames, ZblHeaderPayloadRunsToIndex354)
{
    const QByteArray h = zblHeaderFrame(sampleZblFile());
    EXPECT_EQ(h.size(), 356);
    EXPECT_EQ(be16(h, 3), 350);
    EXPECT_GE(h.size(), 50); // the least size the PC waits for
    expectSoundFrame(h, 0x6B);
}

TEST(instrumentFrames, ZblHeaderNumbersSitAtTheirIndexes)
{
    const QByteArray h = zblHeaderFrame(sampleZblFile());
    EXPECT_EQ(at(h, 6), 4);   // file number
    EXPECT_EQ(at(h, 10), 2);  // readings
    EXPECT_EQ(at(h, 11), 12); // test number
    EXPECT_EQ(at(h, 12), 2);  // mode
    EXPECT_EQ(at(h, 13), 3);
    EXPECT_EQ(at(h, 14), 5);
    EXPECT_EQ(at(h, 15), 14);
    EXPECT_EQ(at(h, 16), 9);
    EXPECT_EQ(at(h, 17), 8);
    EXPECT_EQ(at(h, 18), 7);
}

TEST(instrumentFrames, ZblHeaderTextsSitBetweenTheirFirstAndLastLowBytes)
{
    const QByteArray h = zblHeaderFrame(sampleZblFile());
    EXPECT_EQ(lowText(h, 20, 60), QStringLiteral("Westmoor Power"));
    EXPECT_EQ(lowText(h, 62, 102), QStringLiteral("TX-88120"));
    EXPECT_EQ(lowText(h, 104, 144), QStringLiteral("Ashby Sub"));
    EXPECT_EQ(lowText(h, 146, 186), QStringLiteral("T2 HV side"));
    EXPECT_EQ(lowText(h, 188, 228), QStringLiteral("Calder Electric"));
    EXPECT_EQ(lowText(h, 230, 270), QStringLiteral("J. Okafor"));
    EXPECT_EQ(lowText(h, 272, 312), QStringLiteral("18 C"));
    // 21 characters, the last low byte at 354.
    EXPECT_EQ(lowText(h, 314, 354), QStringLiteral("Oil 42 C, tap changer"));
    EXPECT_EQ(at(h, 354), 'r');
    EXPECT_TRUE(highBytesZero(h, 314, 354));
}

// --- ZBL data -----------------------------------------------------------------

TEST(instrumentFrames, ZblDataHasOne120ByteRecordPerReading)
{
    const QByteArray d = zblDataFrame(sampleZblFile());
    EXPECT_EQ(d.size(), 2 * 120 + 6);
    EXPECT_EQ(be16(d, 3), 240);
    expectSoundFrame(d, 0x6C);
    ZblStoredFile none;
    EXPECT_EQ(zblDataFrame(none), bytesOf({0x47, 0x50, 0x6C, 0, 0, 0x6C}));
}

TEST(instrumentFrames, ZblRecordFieldsSitAtTheirOffsets)
{
    const QByteArray d = zblDataFrame(sampleZblFile());
    const int r = 5;
    EXPECT_EQ(at(d, r + 0), 1);
    EXPECT_EQ(lowText(d, r + 3, r + 11), QStringLiteral("N 10"));
    EXPECT_EQ(lowText(d, r + 13, r + 21), QStringLiteral("H1"));
    EXPECT_EQ(lowText(d, r + 23, r + 31), QStringLiteral("H2"));
    EXPECT_EQ(lowText(d, r + 57, r + 65), QStringLiteral("1"));
    EXPECT_EQ(lowText(d, r + 67, r + 75), QStringLiteral("X1"));
    EXPECT_EQ(lowText(d, r + 77, r + 85), QStringLiteral("X0"));
    EXPECT_EQ(lowText(d, r + 87, r + 109), QStringLiteral("OFF"));
    EXPECT_EQ(be16(d, r + 110), 1500);
    EXPECT_EQ(be16(d, r + 114), 5);
    // The second record starts 120 bytes on.
    EXPECT_EQ(at(d, r + 120), 2);
    EXPECT_EQ(lowText(d, r + 120 + 3, r + 120 + 11), QStringLiteral("2"));
    EXPECT_EQ(be16(d, r + 120 + 110), 65535);
    EXPECT_EQ(be16(d, r + 120 + 114), 300);
}

TEST(instrumentFrames, ZblResistanceTextCarriesOmegaAsCode937)
{
    const QByteArray d = zblDataFrame(sampleZblFile());
    const int r = 5;
    // "12.34mΩ" at 32 to 55: seven codes, then zeros.
    EXPECT_EQ(d.mid(r + 32, 24), bytesOf({0,    '1',  0, '2', 0, '.', 0, '3', 0, '4', 0, 'm',
                                          0x03, 0xA9, 0, 0,   0, 0,   0, 0,   0, 0,   0, 0}));
    // "694.48µΩ": "µ" is 0xB5 in Windows-1252.
    EXPECT_EQ(d.mid(r + 120 + 32, 18),
              bytesOf({0, '6', 0, '9', 0, '4', 0, '.', 0, '4', 0, '8', 0, 0xB5, 0x03, 0xA9, 0, 0}));
}

// --- Replies to commands ------------------------------------------------------

TEST(instrumentFrames, ShortCommandsGetTheirReplies)
{
    const Instrument kvx = kvxInstrument();
    const Instrument zbl = zblInstrument();
    EXPECT_EQ(replyTo(kvx, bytesOf({0x48, 0x50, 201, 201})), bytesOf({0x47, 0x50, 0x63, 0x63}));
    EXPECT_EQ(replyTo(zbl, bytesOf({0x48, 0x50, 201, 201})), bytesOf({0x47, 0x50, 0x64, 0x64}));
    EXPECT_EQ(replyTo(kvx, bytesOf({0x48, 0x50, 204, 204})), serialNumberReply(kvx));
    EXPECT_EQ(replyTo(zbl, bytesOf({0x48, 0x50, 204, 204})),
              bytesOf({0x47, 0x50, 0x66, 12, 0, 7, 1, 2, 3, (0x66 + 12 + 7 + 6) % 256}));
    EXPECT_EQ(replyTo(kvx, bytesOf({0x48, 0x50, 210, 210})), bytesOf({0x47, 0x50, 0x6A, 2, 0x6C}));
}

TEST(instrumentFrames, LongCommandsGetTheFramesOfTheIndexedFile)
{
    const Instrument kvx = kvxInstrument();
    // (211 + 1) mod 256 = 212.
    const QByteArray h = replyTo(kvx, bytesOf({0x48, 0x50, 211, 1, 212}));
    ASSERT_EQ(h.size(), 960);
    EXPECT_EQ(at(h, 8), 8);
    EXPECT_EQ(at(h, 12), 1);
    const QByteArray d = replyTo(kvx, bytesOf({0x48, 0x50, 212, 0, 212}));
    EXPECT_EQ(d.size(), 2 * 942 + 6);
    const Instrument zbl = zblInstrument();
    const QByteArray zh = replyTo(zbl, bytesOf({0x48, 0x50, 211, 1, 212}));
    ASSERT_EQ(zh.size(), 356);
    EXPECT_EQ(at(zh, 11), 13);
    EXPECT_EQ(replyTo(zbl, bytesOf({0x48, 0x50, 212, 1, 213})),
              bytesOf({0x47, 0x50, 0x6C, 0, 0, 0x6C}));
}

TEST(instrumentFrames, LongCommandCheckWrapsAt256)
{
    Instrument zbl;
    zbl.kind = DeviceKind::Zbl;
    zbl.zblFiles.resize(61);
    zbl.zblFiles[60].testNumber = 99;
    // 211 + 60 = 271 wraps to 15.
    const QByteArray h = replyTo(zbl, bytesOf({0x48, 0x50, 0xD3, 0x3C, 0x0F}));
    ASSERT_EQ(h.size(), 356);
    EXPECT_EQ(at(h, 11), 99);
}

TEST(instrumentFrames, CommandsItDoesNotTakeGetNoReply)
{
    const Instrument kvx = kvxInstrument();
    EXPECT_TRUE(replyTo(kvx, bytesOf({0x48, 0x50, 211, 0, 210})).isEmpty()); // bad check
    EXPECT_TRUE(replyTo(kvx, bytesOf({0x48, 0x50, 211, 2, 213})).isEmpty()); // no third file
    EXPECT_TRUE(replyTo(kvx, bytesOf({0x48, 0x50, 212, 255, 211})).isEmpty());
    EXPECT_TRUE(replyTo(kvx, bytesOf({0x48, 0x50, 201, 204})).isEmpty());      // codes differ
    EXPECT_TRUE(replyTo(kvx, bytesOf({0x48, 0x50, 205, 205})).isEmpty());      // unknown code
    EXPECT_TRUE(replyTo(kvx, bytesOf({0x48, 0x50, 201, 201, 146})).isEmpty()); // short code, long
    EXPECT_TRUE(replyTo(kvx, bytesOf({0x48, 0x51, 201, 201})).isEmpty());
    EXPECT_TRUE(replyTo(kvx, bytesOf({0x47, 0x50, 201, 201})).isEmpty());
    EXPECT_TRUE(replyTo(kvx, bytesOf({0x48, 0x50, 201})).isEmpty());
    EXPECT_TRUE(replyTo(kvx, QByteArray()).isEmpty());
    Instrument empty;
    EXPECT_TRUE(replyTo(empty, bytesOf({0x48, 0x50, 211, 0, 211})).isEmpty());
    EXPECT_EQ(replyTo(empty, bytesOf({0x48, 0x50, 210, 210})),
              bytesOf({0x47, 0x50, 0x6A, 0, 0x6A}));
}
