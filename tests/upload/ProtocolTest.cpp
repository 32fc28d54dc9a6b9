// The instrument's command protocol: the commands on the wire, the checks of
// the replies, the frame check and its payload store, the field layout of the
// header and data frames, and the value decoders. Test frames are built by
// hand from the byte offsets of each layout, and then cross-checked with the
// frames the instrument simulator builds.
#include "shell/model/RuntimeError.h"
#include "tests/support/Failure.h"
#include "tests/upload/support/ScriptedSerialPort.h"
#include "tools/instrument-sim/InstrumentFrames.h"
#include "upload/model/CCommBuffCirculaire.h"
#include "upload/model/CSerialCom.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"
#include "upload/model/mdKvxZblCom.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <vector>

using namespace quenby;
using namespace quenby::testing;

namespace {

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (int v : values)
        bytes.append(static_cast<char>(static_cast<unsigned char>(v)));
    return bytes;
}

void setByte(QByteArray& bytes, qsizetype index, int value)
{
    bytes[index] = static_cast<char>(static_cast<unsigned char>(value));
}

// A text as the instrument stores it: low bytes two apart from `firstLow`,
// each with the high byte `high` before it.
void setText(QByteArray& bytes, qsizetype firstLow, const QByteArray& text, int high = 0)
{
    for (qsizetype k = 0; k < text.size(); ++k) {
        setByte(bytes, firstLow + 2 * k - 1, high);
        bytes[firstLow + 2 * k] = text[k];
    }
}

// A big-endian word at `at`.
void setWord(QByteArray& bytes, qsizetype at, int value)
{
    setByte(bytes, at, (value >> 8) & 0xFF);
    setByte(bytes, at + 1, value & 0xFF);
}

// "G", "P", code, L, payload, and the check: code plus payload modulo 256.
QByteArray frameOf(int code, const QByteArray& payload)
{
    QByteArray frame = bytesOf({0x47, 0x50, code, 0, 0});
    setWord(frame, 3, static_cast<int>(payload.size()));
    frame.append(payload);
    int sum = code;
    for (char c : payload)
        sum += static_cast<unsigned char>(c);
    frame.append(static_cast<char>(sum % 256));
    return frame;
}

// A short reply whose last byte is the sum of bytes 2 to U-1.
QByteArray shortReply(int code, const QByteArray& body)
{
    QByteArray reply = bytesOf({0x47, 0x50, code}) + body;
    int sum = 0;
    for (qsizetype i = 2; i < reply.size(); ++i)
        sum += static_cast<unsigned char>(reply[i]);
    reply.append(static_cast<char>(sum % 256));
    return reply;
}

float decodeFloat(std::initializer_list<int> four)
{
    const QByteArray b = bytesOf(four);
    return ReadDeviceFloat(reinterpret_cast<const unsigned char*>(b.constData()),
                           static_cast<int>(b.size()), 0);
}

Int16 decodeInt16(std::initializer_list<int> two)
{
    const QByteArray b = bytesOf(two);
    return ReadDeviceInt16(reinterpret_cast<const unsigned char*>(b.constData()),
                           static_cast<int>(b.size()), 0);
}

Int32 decodeInt31(std::initializer_list<int> four)
{
    const QByteArray b = bytesOf(four);
    return ReadDeviceInt31(reinterpret_cast<const unsigned char*>(b.constData()),
                           static_cast<int>(b.size()), 0);
}

// The four bytes of a single, big-endian, from its sign, biased exponent and
// 23-bit fraction.
void setSingle(QByteArray& bytes, qsizetype at, int sign, int biasedExponent, int fraction)
{
    const unsigned bits = (static_cast<unsigned>(sign) << 31) |
                          (static_cast<unsigned>(biasedExponent) << 23) |
                          static_cast<unsigned>(fraction);
    setByte(bytes, at, static_cast<int>(bits >> 24));
    setByte(bytes, at + 1, static_cast<int>((bits >> 16) & 0xFF));
    setByte(bytes, at + 2, static_cast<int>((bits >> 8) & 0xFF));
    setByte(bytes, at + 3, static_cast<int>(bits & 0xFF));
}

class protocol : public ::testing::Test
{
protected:
    OwnedSession<UploadSession> session; // before the ports, which it outlives
    ScriptedPorts ports;
};

} // namespace

// Commands.

TEST_F(protocol, AFileRequestIsFiveOneByteWritesWithAWrappingCheck)
{
    ASSERT_EQ(quenby::serialCom().OpenPort(3, 115200, False16), True16);
    SendFileRequest(211, 60); // 211 + 60 = 271 wraps to 15
    ASSERT_EQ(ports.bench.writes.size(), 5u);
    EXPECT_EQ(ports.bench.writes[0], bytesOf({0x48}));
    EXPECT_EQ(ports.bench.writes[1], bytesOf({0x50}));
    EXPECT_EQ(ports.bench.writes[2], bytesOf({0xD3}));
    EXPECT_EQ(ports.bench.writes[3], bytesOf({0x3C}));
    EXPECT_EQ(ports.bench.writes[4], bytesOf({0x0F}));
}

TEST_F(protocol, AFileRequestForTheFirstFileChecksWithTheCodeAlone)
{
    ASSERT_EQ(quenby::serialCom().OpenPort(3, 115200, False16), True16);
    SendFileRequest(cmd::FileData, 0);
    ASSERT_EQ(ports.bench.writes.size(), 5u);
    EXPECT_EQ(ports.bench.writes[2], bytesOf({0xD4}));
    EXPECT_EQ(ports.bench.writes[3], bytesOf({0x00}));
    EXPECT_EQ(ports.bench.writes[4], bytesOf({0xD4}));
}

TEST_F(protocol, AFileRequestOnAFailingPortStillTriesEveryByte)
{
    ASSERT_EQ(quenby::serialCom().OpenPort(3, 115200, False16), True16);
    ports.bench.calls.clear();
    ports.bench.writesFail = true;
    SendFileRequest(cmd::FileHeader, 1);
    EXPECT_EQ(ports.bench.calls.size(), 5);
    EXPECT_TRUE(ports.bench.writes.empty());
}

TEST_F(protocol, AShortCommandIsOneWriteOfFourBytes)
{
    ASSERT_EQ(quenby::serialCom().OpenPort(3, 115200, False16), True16);
    SendShortCommand(cmd::SerialNumber);
    SendOneByte(0x41);
    ASSERT_EQ(ports.bench.writes.size(), 2u);
    EXPECT_EQ(ports.bench.writes[0], bytesOf({0x48, 0x50, 0xCC, 0xCC}));
    EXPECT_EQ(ports.bench.writes[1], bytesOf({0x41}));
}

TEST_F(protocol, CommandsMatchWhatTheSimulatedInstrumentAnswers)
{
    ASSERT_EQ(quenby::serialCom().OpenPort(3, 115200, False16), True16);
    sim::Instrument instrument;
    instrument.kvxFiles.resize(2);
    SendShortCommand(cmd::FileCount);
    EXPECT_EQ(sim::replyTo(instrument, ports.bench.writes.back()), sim::fileCountReply(2));
    ports.bench.writes.clear();
    SendFileRequest(cmd::FileHeader, 1);
    QByteArray longCommand;
    for (const QByteArray& w : ports.bench.writes)
        longCommand += w;
    EXPECT_EQ(sim::replyTo(instrument, longCommand), sim::kvxHeaderFrame(instrument.kvxFiles[1]));
}

// Short replies.

TEST_F(protocol, KvxSerialWithoutItsPrefixGetsAHash)
{
    EXPECT_EQ(DecodeSerialNumber(shortReply(0x66, QByteArrayLiteral("ABC")), QStringLiteral("KVX")),
              QStringLiteral("#ABC"));
}

TEST_F(protocol, KvxSerialWithItsPrefixStays)
{
    EXPECT_EQ(
        DecodeSerialNumber(shortReply(0x66, QByteArrayLiteral("KVX123")), QStringLiteral("KVX")),
        QStringLiteral("KVX123"));
}

TEST_F(protocol, KvxSerialZeroBytesAddNothing)
{
    const QByteArray body = bytesOf({'K', 0, 'V', 'X', '9', 0, 0});
    EXPECT_EQ(DecodeSerialNumber(shortReply(0x66, body), QStringLiteral("KVX")),
              QStringLiteral("KVX9"));
}

TEST_F(protocol, ZblSerialBytesGiveTheirDecimalDigits)
{
    EXPECT_EQ(DecodeSerialNumber(shortReply(0x66, bytesOf({1, 2, 3})), QStringLiteral("ZBL")),
              QStringLiteral("#123"));
    EXPECT_EQ(DecodeSerialNumber(shortReply(0x66, bytesOf({12, 0, 7})), QStringLiteral("ZBL")),
              QStringLiteral("#1207"));
    // Every byte gives all its digits.
    EXPECT_EQ(DecodeSerialNumber(shortReply(0x66, bytesOf({255})), QStringLiteral("ZBL")),
              QStringLiteral("#255"));
}

TEST_F(protocol, SerialWithABadCheckIsZero)
{
    QByteArray reply = shortReply(0x66, QByteArrayLiteral("KVX123"));
    setByte(reply, reply.size() - 1, (static_cast<unsigned char>(reply.back()) + 1) % 256);
    EXPECT_EQ(DecodeSerialNumber(reply, QStringLiteral("KVX")), QStringLiteral("0"));
    EXPECT_EQ(DecodeSerialNumber(reply, QStringLiteral("ZBL")), QStringLiteral("0"));
}

TEST_F(protocol, SerialCheckCountsTheReplyCode)
{
    // A check over the serial bytes alone, leaving out byte 2, fails.
    QByteArray reply = bytesOf({0x47, 0x50, 0x66, 'K', 'V', 'X', '1'});
    reply.append(static_cast<char>(('K' + 'V' + 'X' + '1') % 256));
    EXPECT_EQ(DecodeSerialNumber(reply, QStringLiteral("KVX")), QStringLiteral("0"));
}

TEST_F(protocol, SerialDecodeAgreesWithTheSimulatedInstrument)
{
    sim::Instrument kvx;
    kvx.kvxSerial = QStringLiteral("KVX0042");
    EXPECT_EQ(DecodeSerialNumber(sim::serialNumberReply(kvx), QStringLiteral("KVX")),
              QStringLiteral("KVX0042"));
    kvx.kvxSerial = QStringLiteral("AB");
    EXPECT_EQ(DecodeSerialNumber(sim::serialNumberReply(kvx), QStringLiteral("KVX")),
              QStringLiteral("#AB"));
    sim::Instrument zbl;
    zbl.kind = sim::DeviceKind::Zbl;
    zbl.zblSerialBytes = {12, 0, 7};
    EXPECT_EQ(DecodeSerialNumber(sim::serialNumberReply(zbl), QStringLiteral("ZBL")),
              QStringLiteral("#1207"));
}

TEST_F(protocol, FileCountIsByteThree)
{
    EXPECT_EQ(DecodeFileCount(shortReply(0x6A, bytesOf({5}))), 5);
    EXPECT_EQ(DecodeFileCount(shortReply(0x6A, bytesOf({255}))), 255);
    EXPECT_EQ(DecodeFileCount(sim::fileCountReply(17)), 17);
}

TEST_F(protocol, FileCountWithABadCheckIsZero)
{
    QByteArray reply = shortReply(0x6A, bytesOf({5}));
    setByte(reply, 4, 0x00);
    EXPECT_EQ(DecodeFileCount(reply), 0);
}

TEST_F(protocol, ARepliesByteOutsideTheArrayIsABoundsFailure)
{
    EXPECT_EQ(failureOf([] { rxByte(bytesOf({1, 2}), 2); }), err::SubscriptOutOfRange);
    EXPECT_EQ(failureOf([] { rxByte(bytesOf({1, 2}), -1); }), err::SubscriptOutOfRange);
    EXPECT_EQ(rxByte(bytesOf({1, 0xFE}), 1), 0xFE);
    EXPECT_EQ(failureOf([] { DecodeFileCount(QByteArray()); }), err::SubscriptOutOfRange);
}

// Frame check.

TEST_F(protocol, AFrameWithItsCheckAndLengthRightIsCorrect)
{
    const QByteArray frame = bytesOf({0x47, 0x50, 0x6C, 0x00, 0x02, 0x10, 0x20, 0x9C});
    EXPECT_EQ(CheckFrame(frame), True16);
    EXPECT_EQ(payloadStore()[0], 0x10);
    EXPECT_EQ(payloadStore()[1], 0x20);
}

TEST_F(protocol, ATrailingByteMakesTheFrameFail)
{
    const QByteArray frame = bytesOf({0x47, 0x50, 0x6C, 0x00, 0x02, 0x10, 0x20, 0x9C, 0x9C});
    // The check still holds over the new last byte: 0x6C + 0x10 + 0x20 + 0x9C
    // is 0x138, so a trailing 0x38 passes the check and fails by length.
    QByteArray trailing = bytesOf({0x47, 0x50, 0x6C, 0x00, 0x02, 0x10, 0x20, 0x9C, 0x38});
    EXPECT_EQ(CheckFrame(frame), False16);
    EXPECT_EQ(CheckFrame(trailing), False16);
    // The payload store took the bytes up to the last one all the same.
    EXPECT_EQ(payloadStore()[2], 0x9C);
}

TEST_F(protocol, ABadCheckFails)
{
    EXPECT_EQ(CheckFrame(bytesOf({0x47, 0x50, 0x6C, 0x00, 0x02, 0x10, 0x20, 0x9D})), False16);
}

TEST_F(protocol, TheLengthBytesAreOutsideTheCheck)
{
    // Length 3 against a payload of 2: the check holds, the length disagrees.
    EXPECT_EQ(CheckFrame(bytesOf({0x47, 0x50, 0x6C, 0x00, 0x03, 0x10, 0x20, 0x9C})), False16);
    // A length counted into the check would make 0x9E; that fails.
    EXPECT_EQ(CheckFrame(bytesOf({0x47, 0x50, 0x6C, 0x00, 0x02, 0x10, 0x20, 0x9E})), False16);
}

TEST_F(protocol, AnEmptyPayloadIsAFrameOfSix)
{
    EXPECT_EQ(CheckFrame(bytesOf({0x47, 0x50, 0x6B, 0x00, 0x00, 0x6B})), True16);
}

TEST_F(protocol, AFirstLengthByteOf128OverflowsOnceTheCheckHolds)
{
    EXPECT_EQ(failureOf([] {
                  CheckFrame(bytesOf({0x47, 0x50, 0x6C, 0x80, 0x00, 0x10, 0x7C}));
              }),
              err::Overflow);
    // 0x7F 0xFF is the largest length; it disagrees and fails quietly.
    EXPECT_EQ(CheckFrame(bytesOf({0x47, 0x50, 0x6C, 0x7F, 0xFF, 0x10, 0x7C})), False16);
    // With a bad check the length is never computed.
    EXPECT_EQ(CheckFrame(bytesOf({0x47, 0x50, 0x6C, 0x80, 0x00, 0x10, 0x7D})), False16);
}

TEST_F(protocol, ThePayloadStoreHolds20001Bytes)
{
    QByteArray payload(PayloadStoreSize, '\x01');
    setByte(payload, PayloadStoreSize - 1, 0x77);
    EXPECT_EQ(CheckFrame(frameOf(0x6C, payload)), True16);
    EXPECT_EQ(payloadStore()[PayloadStoreSize - 1], 0x77);

    payload.append('\x01');
    const QByteArray tooLong = frameOf(0x6C, payload);
    EXPECT_EQ(failureOf([&] { CheckFrame(tooLong); }), err::SubscriptOutOfRange);
}

TEST_F(protocol, SimulatedFramesPassTheCheck)
{
    sim::KvxStoredFile kvx;
    kvx.tests.resize(3);
    EXPECT_EQ(CheckFrame(sim::kvxHeaderFrame(kvx)), True16);
    EXPECT_EQ(CheckFrame(sim::kvxDataFrame(kvx)), True16);
    sim::ZblStoredFile zbl;
    zbl.readings.resize(4);
    EXPECT_EQ(CheckFrame(sim::zblHeaderFrame(zbl)), True16);
    EXPECT_EQ(CheckFrame(sim::zblDataFrame(zbl)), True16);
}

// Value decoders.

TEST_F(protocol, FloatsDecodeByTheirParts)
{
    EXPECT_EQ(decodeFloat({0x3F, 0x80, 0x00, 0x00}), 1.0f);
    EXPECT_EQ(decodeFloat({0xC0, 0x00, 0x00, 0x00}), -2.0f);
    EXPECT_EQ(decodeFloat({0x41, 0x20, 0x00, 0x00}), 10.0f);
    EXPECT_EQ(decodeFloat({0x3D, 0xCC, 0xCC, 0xCD}), 0.1f);
    EXPECT_EQ(decodeFloat({0x42, 0xB4, 0x00, 0x00}), 90.0f);
}

TEST_F(protocol, ZeroBytesDecodeToTwoToTheMinus127)
{
    const float tiny = decodeFloat({0x00, 0x00, 0x00, 0x00});
    EXPECT_EQ(tiny, std::ldexp(1.0f, -127));
    EXPECT_NE(tiny, 0.0f);
    // A negative zero likewise, with its sign.
    EXPECT_EQ(decodeFloat({0x80, 0x00, 0x00, 0x00}), -std::ldexp(1.0f, -127));
    // A denormal's fraction gets the hidden bit all the same: 1.5 x 2^-127.
    EXPECT_EQ(decodeFloat({0x00, 0x40, 0x00, 0x00}), 1.5f * std::ldexp(1.0f, -127));
}

TEST_F(protocol, InfinityAndNotANumberDecodeToLargeFiniteValues)
{
    const float inf = decodeFloat({0x7F, 0x80, 0x00, 0x00});
    EXPECT_TRUE(std::isfinite(inf));
    EXPECT_EQ(inf, std::ldexp(1.0f, 127));
    EXPECT_EQ(decodeFloat({0xFF, 0x80, 0x00, 0x00}), -std::ldexp(1.0f, 127));
    // All fraction bits set at the limited exponent: the largest single.
    EXPECT_EQ(decodeFloat({0x7F, 0xFF, 0xFF, 0xFF}), std::numeric_limits<float>::max());
}

TEST_F(protocol, Int16AboveTheSignBitIsZeroAnd32768Overflows)
{
    EXPECT_EQ(decodeInt16({0xFF, 0xFF}), 0);
    EXPECT_EQ(decodeInt16({0x80, 0x01}), 0);
    EXPECT_EQ(decodeInt16({0x7F, 0xFF}), 32767);
    EXPECT_EQ(decodeInt16({0x01, 0x02}), 258);
    EXPECT_EQ(failureOf([] { decodeInt16({0x80, 0x00}); }), err::Overflow);
}

TEST_F(protocol, Int31DropsTheSignBit)
{
    EXPECT_EQ(decodeInt31({0x12, 0x34, 0x56, 0x78}), 0x12345678);
    EXPECT_EQ(decodeInt31({0x80, 0x00, 0x00, 0x01}), 1);
    EXPECT_EQ(decodeInt31({0xFF, 0xFF, 0xFF, 0xFF}), 0x7FFFFFFF);
}

TEST_F(protocol, AFlagIsTrueOnlyForOne)
{
    const QByteArray b = bytesOf({1, 0, 2, 0xFF});
    const auto* p = reinterpret_cast<const unsigned char*>(b.constData());
    EXPECT_EQ(ReadDeviceFlag(p, 4, 0), True16);
    EXPECT_EQ(ReadDeviceFlag(p, 4, 1), False16);
    EXPECT_EQ(ReadDeviceFlag(p, 4, 2), False16);
    EXPECT_EQ(ReadDeviceFlag(p, 4, 3), False16);
}

TEST_F(protocol, DecodersOutsideTheRecordAreABoundsFailure)
{
    const QByteArray b = bytesOf({1, 2, 3});
    const auto* p = reinterpret_cast<const unsigned char*>(b.constData());
    EXPECT_EQ(failureOf([&] { ReadDeviceInt16(p, 3, 2); }), err::SubscriptOutOfRange);
    EXPECT_EQ(failureOf([&] { ReadDeviceFloat(p, 3, 0); }), err::SubscriptOutOfRange);
    EXPECT_EQ(failureOf([&] { ReadDeviceInt31(p, 3, 0); }), err::SubscriptOutOfRange);
    EXPECT_EQ(failureOf([&] { ReadDeviceFlag(p, 3, 3); }), err::SubscriptOutOfRange);
}

// Texts.

TEST_F(protocol, TextsReadLowBytesAndStopAtTheFirstZero)
{
    QByteArray bytes(12, '\0');
    setText(bytes, 1, QByteArrayLiteral("AB"), 0x05); // high bytes ignored
    setByte(bytes, 7, 'Z');                           // after the zero at 5
    EXPECT_EQ(ReadDeviceText(bytes, 1, 11), QStringLiteral("AB"));
    // The last low byte is inclusive.
    EXPECT_EQ(ReadDeviceText(bytes, 1, 3), QStringLiteral("AB"));
    EXPECT_EQ(ReadDeviceText(bytes, 1, 1), QStringLiteral("A"));
    EXPECT_EQ(ReadDeviceText(bytes, 7, 11), QStringLiteral("Z"));
}

TEST_F(protocol, TextLowBytesGoThroughTheAnsiCodePage)
{
    QByteArray bytes(6, '\0');
    setText(bytes, 1, bytesOf({0xE9, 0x80, 0xB0}));
    EXPECT_EQ(ReadDeviceText(bytes, 1, 5), QStringLiteral("\u00e9\u20ac\u00b0"));
}

TEST_F(protocol, ATextRunningPastTheArrayIsABoundsFailure)
{
    QByteArray bytes(4, '\0');
    setText(bytes, 1, QByteArrayLiteral("AB"));
    EXPECT_EQ(failureOf([&] { ReadDeviceText(bytes, 1, 5); }), err::SubscriptOutOfRange);
}

TEST_F(protocol, AWideTextTurnsTheCapitalOmegaIntoO)
{
    const QByteArray bytes = bytesOf({0x00, 0x31, 0x03, 0xA9, 0x00, 0x00});
    EXPECT_EQ(ReadDeviceWideText(bytes, 0, 3), QStringLiteral("1O"));
}

TEST_F(protocol, AWideTextTakesTheWholeCodeAndEndsAtALowZero)
{
    // 0x20AC is the euro sign as a code; 0x0100 has a low byte of 0 and ends
    // the text although its high byte is not 0.
    const QByteArray bytes = bytesOf({0x20, 0xAC, 0x00, 0xE9, 0x01, 0x00, 0x00, 0x41});
    EXPECT_EQ(ReadDeviceWideText(bytes, 0, 4), QStringLiteral("\u20ac\u00e9"));
    // Never more than the given number of characters.
    EXPECT_EQ(ReadDeviceWideText(bytesOf({0x00, 0x41, 0x00, 0x42}), 0, 1), QStringLiteral("A"));
}

TEST_F(protocol, TheWholeCodeTextUsesTheHighByteToo)
{
    QByteArray bytes(8, '\0');
    setText(bytes, 1, QByteArrayLiteral("1A"));
    setByte(bytes, 2, 0x01); // the second character is 0x0141
    EXPECT_EQ(ReadDeviceTextWholeCode(bytes, 1, 7), QStringLiteral("1\u0141"));
    // The low-byte reader of the same bytes takes "1A".
    EXPECT_EQ(ReadDeviceText(bytes, 1, 7), QStringLiteral("1A"));
    // Codes below 256 go through the code page like the other texts.
    setByte(bytes, 2, 0x00);
    setByte(bytes, 3, 0x80);
    EXPECT_EQ(ReadDeviceTextWholeCode(bytes, 1, 7), QStringLiteral("1\u20ac"));
}

// KVX header.

namespace {

// A KVX header frame of 960 bytes laid out by hand.
QByteArray kvxHeaderByHand()
{
    QByteArray payload(954, '\0');
    QByteArray head(5, '\0'); // stands for indexes 0 to 4 while laying out
    QByteArray f = head + payload;
    setByte(f, 8, 4);   // file number
    setWord(f, 9, 954); // a 16-bit value no reader uses
    setByte(f, 11, 1);
    setByte(f, 12, 3);  // tests
    setByte(f, 13, 33); // also the second
    setByte(f, 14, 14);
    setByte(f, 15, 9);
    setByte(f, 16, 7);
    setByte(f, 17, 14);
    setByte(f, 18, 1);
    setByte(f, 19, 2);
    setByte(f, 20, 44); // never read
    setText(f, 24, QByteArrayLiteral("Hydro Nord"));
    setText(f, 76, QByteArrayLiteral("SN-77"), 0x12);
    setText(f, 128, QByteArrayLiteral("Poste 4"));
    setText(f, 180, QByteArrayLiteral("CT 1"));
    setText(f, 232, QByteArrayLiteral("ACME"));
    setText(f, 284, QByteArrayLiteral("J. Doe"));
    setText(f, 336, QByteArrayLiteral("21 C"));
    setText(f, 388, QByteArray(31, 'R')); // the whole field, no zero after it
    setText(f, 450, QByteArrayLiteral("15 kV"));
    setText(f, 502, QByteArrayLiteral("C200"));
    setText(f, 554, QByteArrayLiteral("X1-X5"));
    setText(f, 606, QByteArrayLiteral("A"));
    setText(f, 658, QByteArray(150, 'n') + "!");
    return frameOf(0x6B, f.mid(5));
}

} // namespace

TEST_F(protocol, AKvxHeaderIsReadFromItsOffsets)
{
    const QByteArray frame = kvxHeaderByHand();
    ASSERT_EQ(frame.size(), 960);
    EXPECT_EQ(CheckFrame(frame), True16);

    KvxHeaderRecord h;
    ParseKvxHeader(frame, h);
    EXPECT_EQ(h.fileNumber, 4);
    EXPECT_EQ(h.value9, 954);
    EXPECT_EQ(h.flag11, True16);
    EXPECT_EQ(h.numberOfTests, 3);
    EXPECT_EQ(h.value13, 33);
    EXPECT_EQ(h.value14, 14);
    EXPECT_EQ(h.day, 9);
    EXPECT_EQ(h.month, 7);
    EXPECT_EQ(h.year, 14);
    EXPECT_EQ(h.hour, 1);
    EXPECT_EQ(h.minute, 2);
    EXPECT_EQ(h.Company, QStringLiteral("Hydro Nord"));
    EXPECT_EQ(h.Serial, QStringLiteral("SN-77"));
    EXPECT_EQ(h.Station, QStringLiteral("Poste 4"));
    EXPECT_EQ(h.Designation, QStringLiteral("CT 1"));
    EXPECT_EQ(h.Manufacturer, QStringLiteral("ACME"));
    EXPECT_EQ(h.Operator, QStringLiteral("J. Doe"));
    EXPECT_EQ(h.Temperature, QStringLiteral("21 C"));
    EXPECT_EQ(h.Ratio, QString(31, QLatin1Char('R')));
    EXPECT_EQ(h.VoltageRating, QStringLiteral("15 kV"));
    EXPECT_EQ(h.Class, QStringLiteral("C200"));
    EXPECT_EQ(h.Position, QStringLiteral("X1-X5"));
    EXPECT_EQ(h.Phase, QStringLiteral("A"));
    EXPECT_EQ(h.Notes, QString(150, QLatin1Char('n')) + QLatin1Char('!'));
}

TEST_F(protocol, AKvxHeadersSecondTakesIndex13)
{
    QByteArray frame = kvxHeaderByHand();
    KvxHeaderRecord h;
    ParseKvxHeader(frame, h);
    EXPECT_EQ(h.second, 33);
    setByte(frame, 20, 59);
    setByte(frame, 13, 5);
    ParseKvxHeader(frame, h);
    EXPECT_EQ(h.second, 5);
    EXPECT_EQ(h.value13, 5);
}

TEST_F(protocol, AShortKvxHeaderIsABoundsFailure)
{
    const QByteArray frame = kvxHeaderByHand().left(900);
    KvxHeaderRecord h;
    EXPECT_EQ(failureOf([&] { ParseKvxHeader(frame, h); }), err::SubscriptOutOfRange);
}

TEST_F(protocol, AKvxHeaderAgreesWithTheSimulatedInstrument)
{
    sim::KvxStoredFile file;
    file.fileNumber = 6;
    file.day = 28;
    file.month = 2;
    file.year = 23;
    file.hour = 17;
    file.minute = 45;
    file.second = 12;
    file.value13 = 50;
    file.company = QStringLiteral("Soci\u00e9t\u00e9");
    file.serial = QStringLiteral("A/B:1");
    file.station = QStringLiteral("S");
    file.designation = QStringLiteral("D");
    file.manufacturer = QStringLiteral("M");
    file.operatorName = QStringLiteral("O");
    file.temperature = QStringLiteral("20\u00b0C");
    file.ratio = QStringLiteral("600:5");
    file.voltageRating = QStringLiteral("V");
    file.accuracyClass = QStringLiteral("0.3");
    file.position = QStringLiteral("P");
    file.phase = QStringLiteral("B");
    file.notes = QStringLiteral("note");
    file.tests.resize(2);

    const QByteArray frame = sim::kvxHeaderFrame(file);
    EXPECT_EQ(frame.size(), 960);
    KvxHeaderRecord h;
    ParseKvxHeader(frame, h);
    EXPECT_EQ(h.fileNumber, 6);
    EXPECT_EQ(h.numberOfTests, 2);
    EXPECT_EQ(h.day, 28);
    EXPECT_EQ(h.month, 2);
    EXPECT_EQ(h.year, 23);
    EXPECT_EQ(h.hour, 17);
    EXPECT_EQ(h.minute, 45);
    EXPECT_EQ(h.second, 50); // byte 13, not the instrument's own second
    EXPECT_EQ(h.Company, file.company);
    EXPECT_EQ(h.Serial, file.serial);
    EXPECT_EQ(h.Station, file.station);
    EXPECT_EQ(h.Designation, file.designation);
    EXPECT_EQ(h.Manufacturer, file.manufacturer);
    EXPECT_EQ(h.Operator, file.operatorName);
    EXPECT_EQ(h.Temperature, file.temperature);
    EXPECT_EQ(h.Ratio, file.ratio);
    EXPECT_EQ(h.VoltageRating, file.voltageRating);
    EXPECT_EQ(h.Class, file.accuracyClass);
    EXPECT_EQ(h.Position, file.position);
    EXPECT_EQ(h.Phase, file.phase);
    EXPECT_EQ(h.Notes, file.notes);
}

// ZBL header.

namespace {

QByteArray zblHeaderByHand()
{
    QByteArray f(355, '\0'); // indexes 0 to 354; the head is filled by frameOf
    setByte(f, 6, 2);
    setWord(f, 7, 350);
    setByte(f, 9, 0);
    setByte(f, 10, 12);
    setByte(f, 11, 7);
    setByte(f, 12, 2);
    setByte(f, 13, 3);
    setByte(f, 14, 5);
    setByte(f, 15, 14);
    setByte(f, 16, 9);
    setByte(f, 17, 8);
    setByte(f, 18, 7);
    setText(f, 20, QByteArray(21, 'c'));
    setText(f, 62, QByteArrayLiteral("ZS-1"));
    setText(f, 104, QByteArrayLiteral("Station"));
    setText(f, 146, QByteArrayLiteral("T1"));
    setText(f, 188, QByteArrayLiteral("Maker"));
    setText(f, 230, QByteArrayLiteral("Op"));
    setText(f, 272, QByteArrayLiteral("35"));
    setText(f, 314, QByteArrayLiteral("end"), 0x07);
    return frameOf(0x6B, f.mid(5));
}

} // namespace

TEST_F(protocol, AZblHeaderIsReadFromItsOffsets)
{
    const QByteArray frame = zblHeaderByHand();
    EXPECT_EQ(CheckFrame(frame), True16);
    ZblHeaderRecord h;
    ParseZblHeader(frame, h);
    EXPECT_EQ(h.fileNumber, 2);
    EXPECT_EQ(h.value7, 350);
    EXPECT_EQ(h.flag9, False16);
    EXPECT_EQ(h.numberOfReadings, 12);
    EXPECT_EQ(h.testNumber, 7);
    EXPECT_EQ(h.mode, 2);
    EXPECT_EQ(h.day, 3);
    EXPECT_EQ(h.month, 5);
    EXPECT_EQ(h.year, 14);
    EXPECT_EQ(h.hour, 9);
    EXPECT_EQ(h.minute, 8);
    EXPECT_EQ(h.second, 7);
    EXPECT_EQ(h.Company, QString(21, QLatin1Char('c')));
    EXPECT_EQ(h.Serial, QStringLiteral("ZS-1"));
    EXPECT_EQ(h.Station, QStringLiteral("Station"));
    EXPECT_EQ(h.Designation, QStringLiteral("T1"));
    EXPECT_EQ(h.Manufacturer, QStringLiteral("Maker"));
    EXPECT_EQ(h.Operator, QStringLiteral("Op"));
    EXPECT_EQ(h.Temperature, QStringLiteral("35"));
    EXPECT_EQ(h.Notes, QStringLiteral("end"));
}

TEST_F(protocol, AZblHeaderAgreesWithTheSimulatedInstrument)
{
    sim::ZblStoredFile file;
    file.fileNumber = 3;
    file.testNumber = 42;
    file.mode = 1;
    file.day = 31;
    file.month = 12;
    file.year = 24;
    file.hour = 23;
    file.minute = 59;
    file.second = 58;
    file.company = QStringLiteral("Company");
    file.serial = QStringLiteral("Serial");
    file.station = QStringLiteral("Station");
    file.designation = QStringLiteral("Designation");
    file.manufacturer = QStringLiteral("Manufacturer");
    file.operatorName = QStringLiteral("Operator");
    file.temperature = QStringLiteral("Temperature");
    file.notes = QStringLiteral("Notes of twenty-one c");
    file.readings.resize(5);

    ZblHeaderRecord h;
    ParseZblHeader(sim::zblHeaderFrame(file), h);
    EXPECT_EQ(h.fileNumber, 3);
    EXPECT_EQ(h.numberOfReadings, 5);
    EXPECT_EQ(h.testNumber, 42);
    EXPECT_EQ(h.mode, 1);
    EXPECT_EQ(h.day, 31);
    EXPECT_EQ(h.month, 12);
    EXPECT_EQ(h.year, 24);
    EXPECT_EQ(h.hour, 23);
    EXPECT_EQ(h.minute, 59);
    EXPECT_EQ(h.second, 58);
    EXPECT_EQ(h.Company, file.company);
    EXPECT_EQ(h.Serial, file.serial);
    EXPECT_EQ(h.Station, file.station);
    EXPECT_EQ(h.Designation, file.designation);
    EXPECT_EQ(h.Manufacturer, file.manufacturer);
    EXPECT_EQ(h.Operator, file.operatorName);
    EXPECT_EQ(h.Temperature, file.temperature);
    EXPECT_EQ(h.Notes, file.notes);
}

// KVX data.

namespace {

// One 942-byte slot laid out by hand.
QByteArray kvxSlotByHand(int testNumber)
{
    QByteArray s(942, '\0');
    setByte(s, 0, testNumber);
    setWord(s, 4, 3);    // points
    setByte(s, 6, 0x81); // sign bit dropped: 0x01020304
    setByte(s, 7, 0x02);
    setByte(s, 8, 0x03);
    setByte(s, 9, 0x04);
    setWord(s, 10, 600);
    setWord(s, 12, 5);
    setSingle(s, 14, 0, 127 + 6, 0x340000); // 90.0 = 1.40625 x 2^6
    setSingle(s, 18, 0, 127 + 6, 0x700000); // 120.0
    setSingle(s, 22, 0, 127 + 6, 0x6F0000); // 119.5
    setSingle(s, 26, 1, 127 - 1, 0x000000); // -0.5
    setSingle(s, 30, 0, 127 + 8, 0x480000); // 400.0
    setSingle(s, 34, 0, 127 + 8, 0x700000); // 480.0
    setSingle(s, 38, 0, 127 + 9, 0x160000); // 600.0
    // Insulation left as 0 bytes: decodes to 2^-127.
    setSingle(s, 46, 0, 127 - 2, 0x000000);           // 0.25
    setSingle(s, 50, 0, 127 + 0, 0x000000);           // 1.0
    setSingle(s, 82, 0, 127 + 3, 0x200000);           // voltage 0: 10.0
    setSingle(s, 82 + 4 * 99, 0, 127 + 4, 0x000000);  // voltage 99: 16.0
    setSingle(s, 482, 0, 127 - 1, 0x000000);          // current 0: 0.5
    setSingle(s, 482 + 4 * 99, 0, 127 + 1, 0x000000); // current 99: 2.0
    setByte(s, 882, 1);
    setByte(s, 883, 1);
    setByte(s, 884, 0);
    setByte(s, 885, 2); // only 1 is true
    setByte(s, 886, 1);
    setText(s, 889, bytesOf({'X', '1', 0, 'X', '3'}));
    return s;
}

} // namespace

TEST_F(protocol, SpreadPutsEach942BytesIntoTheirOwnSlot)
{
    QByteArray payload = kvxSlotByHand(1) + kvxSlotByHand(2);
    setByte(payload, 941, 0xA1);
    setByte(payload, 942 + 941, 0xB2);
    const KvxSlotTable slots = SpreadKvxData(frameOf(0x6C, payload));
    EXPECT_EQ(slots[0][0], 1);
    EXPECT_EQ(slots[0][941], 0xA1);
    EXPECT_EQ(slots[1][0], 2);
    EXPECT_EQ(slots[1][941], 0xB2);
    // The positions past 942 are never written.
    EXPECT_EQ(slots[0][942], 0);
}

TEST_F(protocol, ASpreadKeepsWhatItsPayloadDoesNotReach)
{
    KvxSlotTable before{};
    before[0][10] = 0x55;
    before[1][0] = 0x66;
    before[0][942] = 0x77;
    const KvxSlotTable slots = SpreadKvxData(frameOf(0x6C, QByteArray(5, '\x01')), before);
    EXPECT_EQ(slots[0][4], 1);
    // The payload ends at byte 4: the rest of the table is as it was.
    EXPECT_EQ(slots[0][5], 0);
    EXPECT_EQ(slots[0][10], 0x55);
    EXPECT_EQ(slots[1][0], 0x66);
    EXPECT_EQ(slots[0][942], 0x77);
}

TEST_F(protocol, ElevenSlotsFitAndATwelfthIsABoundsFailure)
{
    QByteArray payload(11 * 942, '\x03');
    EXPECT_EQ(SpreadKvxData(frameOf(0x6C, payload))[10][941], 3);

    payload.append('\x04');
    const QByteArray frame = frameOf(0x6C, payload);
    EXPECT_EQ(failureOf([&] { SpreadKvxData(frame); }), err::SubscriptOutOfRange);
}

TEST_F(protocol, AKvxRecordIsReadFromItsSlotOffsets)
{
    const KvxSlotTable slots = SpreadKvxData(frameOf(0x6C, kvxSlotByHand(1) + kvxSlotByHand(9)));
    const KvxDeviceRecord r = ParseKvxRecord(slots, 1);
    EXPECT_EQ(r.testNumber, 9);
    EXPECT_EQ(r.numberOfPoints, 3);
    EXPECT_EQ(r.value6, 0x01020304);
    EXPECT_EQ(r.ratioFirst, 600);
    EXPECT_EQ(r.ratioSecond, 5);
    EXPECT_EQ(r.phase, 90.0f);
    EXPECT_EQ(r.calculatedRatio, 120.0f);
    EXPECT_EQ(r.measuredRatio, 119.5f);
    EXPECT_EQ(r.ratioError, -0.5f);
    EXPECT_EQ(r.kneeIeee30, 400.0f);
    EXPECT_EQ(r.kneeIeee45, 480.0f);
    EXPECT_EQ(r.kneeIec1050, 600.0f);
    EXPECT_EQ(r.insulation, std::ldexp(1.0f, -127));
    EXPECT_EQ(r.windingResistance, 0.25f);
    EXPECT_EQ(r.value50, 1.0f);
    EXPECT_EQ(r.voltages[0], 10.0f);
    EXPECT_EQ(r.voltages[99], 16.0f);
    EXPECT_EQ(r.currents[0], 0.5f);
    EXPECT_EQ(r.currents[99], 2.0f);
    // Points that hold 0 bytes decode to 2^-127 like any stored 0.
    EXPECT_EQ(r.voltages[1], std::ldexp(1.0f, -127));
    // Only 100 of the 201 are read.
    EXPECT_EQ(r.voltages[100], 0.0f);
    EXPECT_EQ(r.polarityPositive, True16);
    EXPECT_EQ(r.excitationValid, True16);
    EXPECT_EQ(r.ratioValid, False16);
    EXPECT_EQ(r.insulationValid, False16);
    EXPECT_EQ(r.windingValid, True16);
    // All five tap characters are taken, the zero among them.
    EXPECT_EQ(r.tap, QStringLiteral("X1") + QChar(0) + QStringLiteral("X3"));
    // Slot 0 holds its own test.
    EXPECT_EQ(ParseKvxRecord(slots, 0).testNumber, 1);
}

TEST_F(protocol, ASlotAboveTenIsABoundsFailure)
{
    const KvxSlotTable slots{};
    EXPECT_EQ(failureOf([&] { ParseKvxRecord(slots, 10); }), 0);
    EXPECT_EQ(failureOf([&] { ParseKvxRecord(slots, 11); }), err::SubscriptOutOfRange);
    EXPECT_EQ(failureOf([&] { ParseKvxRecord(slots, -1); }), err::SubscriptOutOfRange);
    // The tests of a frame stop at the twelfth.
    EXPECT_EQ(ParseKvxRecords(slots, 11).size(), 11u);
    EXPECT_EQ(failureOf([&] { ParseKvxRecords(slots, 12); }), err::SubscriptOutOfRange);
}

TEST_F(protocol, APointCountOf32768InASlotOverflows)
{
    QByteArray slot = kvxSlotByHand(1);
    setWord(slot, 4, 32768);
    const KvxSlotTable slots = SpreadKvxData(frameOf(0x6C, slot));
    EXPECT_EQ(failureOf([&] { ParseKvxRecord(slots, 0); }), err::Overflow);
}

TEST_F(protocol, AKvxRecordAgreesWithTheSimulatedInstrument)
{
    sim::KvxStoredFile file;
    sim::KvxTest a;
    a.testNumber = 1;
    a.tap = QStringLiteral("X1-X2");
    a.ratioFirst = 1200;
    a.ratioSecond = 5;
    a.phase = 0.25f;
    a.calculatedRatio = 240.0f;
    a.measuredRatio = 239.87f;
    a.ratioError = -0.054f;
    a.kneeIeee30 = 101.5f;
    a.kneeIeee45 = 95.25f;
    a.kneeIec1050 = 120.125f;
    a.insulation = 5.5e9f;
    a.windingResistance = 0.3125f;
    a.polarityPositive = false;
    a.ratioValid = true;
    a.insulationValid = false;
    for (int j = 0; j < 120; ++j)
        a.points.emplace_back(0.5f * static_cast<float>(j + 1), 0.001f * static_cast<float>(j + 1));
    sim::KvxTest b;
    b.testNumber = 2;
    b.tap = QStringLiteral("X2-X5");
    file.tests = {a, b};

    const QByteArray frame = sim::kvxDataFrame(file);
    ASSERT_EQ(CheckFrame(frame), True16);
    const std::vector<KvxDeviceRecord> tests = ParseKvxRecords(SpreadKvxData(frame), 2);
    ASSERT_EQ(tests.size(), 2u);
    const KvxDeviceRecord& r = tests[0];
    EXPECT_EQ(r.testNumber, 1);
    EXPECT_EQ(r.numberOfPoints, 120);
    EXPECT_EQ(r.ratioFirst, 1200);
    EXPECT_EQ(r.ratioSecond, 5);
    EXPECT_EQ(r.phase, a.phase);
    EXPECT_EQ(r.calculatedRatio, a.calculatedRatio);
    EXPECT_EQ(r.measuredRatio, a.measuredRatio);
    EXPECT_EQ(r.ratioError, a.ratioError);
    EXPECT_EQ(r.kneeIeee30, a.kneeIeee30);
    EXPECT_EQ(r.kneeIeee45, a.kneeIeee45);
    EXPECT_EQ(r.kneeIec1050, a.kneeIec1050);
    EXPECT_EQ(r.insulation, a.insulation);
    EXPECT_EQ(r.windingResistance, a.windingResistance);
    for (int j = 0; j < 100; ++j) {
        EXPECT_EQ(r.voltages[static_cast<std::size_t>(j)],
                  a.points[static_cast<std::size_t>(j)].first)
            << j;
        EXPECT_EQ(r.currents[static_cast<std::size_t>(j)],
                  a.points[static_cast<std::size_t>(j)].second)
            << j;
    }
    EXPECT_EQ(r.polarityPositive, False16);
    EXPECT_EQ(r.excitationValid, True16);
    EXPECT_EQ(r.ratioValid, True16);
    EXPECT_EQ(r.insulationValid, False16);
    EXPECT_EQ(r.tap, QStringLiteral("X1-X2"));
    EXPECT_EQ(tests[1].testNumber, 2);
    EXPECT_EQ(tests[1].tap, QStringLiteral("X2-X5"));
    // The simulator stores 0.0 for b's phase: it decodes to 2^-127.
    EXPECT_EQ(tests[1].phase, std::ldexp(1.0f, -127));
}

// ZBL data.

namespace {

// One 120-byte reading laid out by hand.
QByteArray zblReadingByHand(int number, const QByteArray& tapA, const QByteArray& resistanceA)
{
    QByteArray r(120, '\0');
    setByte(r, 0, number);
    setText(r, 3, tapA);
    setText(r, 13, QByteArrayLiteral("H1"));
    setText(r, 23, QByteArrayLiteral("H2"));
    for (qsizetype k = 0; k < resistanceA.size() / 2; ++k) {
        r[32 + 2 * k] = resistanceA[2 * k];
        r[33 + 2 * k] = resistanceA[2 * k + 1];
    }
    setText(r, 57, QByteArrayLiteral("B5"), 0x33); // high bytes ignored on channel B
    setText(r, 67, QByteArrayLiteral("X1"));
    setText(r, 77, QByteArrayLiteral("X0"));
    // Channel B: "OFF" as wide text.
    const QByteArray off = bytesOf({0, 'O', 0, 'F', 0, 'F'});
    for (qsizetype k = 0; k < off.size(); ++k)
        r[86 + k] = off[k];
    setWord(r, 110, 50000); // unsigned
    setByte(r, 112, 7);
    setByte(r, 113, 8);
    setWord(r, 114, 65535);
    return r;
}

} // namespace

TEST_F(protocol, AZblReadingIsReadFromItsOffsets)
{
    const QByteArray resistance =
        bytesOf({0, '1', 0, '2', 0, '.', 0, '3', 0, '4', 0, 'm', 0x03, 0xA9});
    QByteArray payload = zblReadingByHand(1, QByteArrayLiteral("1"), QByteArray()) +
                         zblReadingByHand(2, QByteArrayLiteral("12R"), resistance);
    // Byte 116 x 1024 + byte 117 x 512 + byte 118 x 256 + byte 119.
    setByte(payload, 120 + 116, 1);
    setByte(payload, 120 + 117, 2);
    setByte(payload, 120 + 118, 3);
    setByte(payload, 120 + 119, 4);
    const QByteArray frame = frameOf(0x6C, payload);

    ZblDeviceRecord r;
    ParseZblRecord(frame, 1, r);
    EXPECT_EQ(r.readingNumber, 2);
    EXPECT_EQ(r.tapA, QStringLiteral("12R"));
    EXPECT_EQ(r.windingA1, QStringLiteral("H1"));
    EXPECT_EQ(r.windingA2, QStringLiteral("H2"));
    EXPECT_EQ(r.resistanceA, QStringLiteral("12.34mO"));
    EXPECT_EQ(r.tapB, QStringLiteral("B5"));
    EXPECT_EQ(r.windingB1, QStringLiteral("X1"));
    EXPECT_EQ(r.windingB2, QStringLiteral("X0"));
    EXPECT_EQ(r.resistanceB, QStringLiteral("OFF"));
    EXPECT_EQ(r.current, 50000);
    EXPECT_EQ(r.value112, 7);
    EXPECT_EQ(r.value113, 8);
    EXPECT_EQ(r.interval, 65535);
    EXPECT_EQ(r.value116, 1 * 1024 + 2 * 512 + 3 * 256 + 4);
}

TEST_F(protocol, AZblByte118Of255CountsAsZero)
{
    QByteArray payload = zblReadingByHand(1, QByteArrayLiteral("1"), QByteArray());
    setByte(payload, 116, 0);
    setByte(payload, 117, 1);
    setByte(payload, 118, 255);
    setByte(payload, 119, 9);
    ZblDeviceRecord r;
    ParseZblRecord(frameOf(0x6C, payload), 0, r);
    EXPECT_EQ(r.value116, 512 + 9);
}

TEST_F(protocol, TheTapOfChannelATakesTheWholeCode)
{
    QByteArray payload = zblReadingByHand(1, QByteArrayLiteral("1A"), QByteArray());
    setByte(payload, 4, 0x01); // high byte of the second tap character
    ZblDeviceRecord r;
    ParseZblRecord(frameOf(0x6C, payload), 0, r);
    EXPECT_EQ(r.tapA, QStringLiteral("1\u0141"));
}

TEST_F(protocol, AReusedZblRecordKeepsNothingOfTheLastReading)
{
    const QByteArray longText =
        bytesOf({0, 'O', 0, 'V', 0, 'E', 0, 'R', 0, 'L', 0, 'O', 0, 'A', 0, 'D'});
    const QByteArray frame =
        frameOf(0x6C, zblReadingByHand(1, QByteArrayLiteral("12345"), longText) +
                          zblReadingByHand(2, QByteArrayLiteral("7"), QByteArray()));
    ZblDeviceRecord r;
    ParseZblRecord(frame, 0, r);
    ASSERT_EQ(r.tapA, QStringLiteral("12345"));
    ASSERT_EQ(r.resistanceA, QStringLiteral("OVERLOAD"));
    ParseZblRecord(frame, 1, r);
    EXPECT_EQ(r.readingNumber, 2);
    EXPECT_EQ(r.tapA, QStringLiteral("7"));
    EXPECT_EQ(r.resistanceA, QString());
}

TEST_F(protocol, ReadingPastTheEndOfAZblFrameIsABoundsFailure)
{
    const QByteArray frame =
        frameOf(0x6C, zblReadingByHand(1, QByteArrayLiteral("1"), QByteArray()));
    ZblDeviceRecord r;
    EXPECT_EQ(failureOf([&] { ParseZblRecord(frame, 0, r); }), 0);
    EXPECT_EQ(failureOf([&] { ParseZblRecord(frame, 1, r); }), err::SubscriptOutOfRange);
    // The readings of a frame in one call: as many as it holds, no more.
    EXPECT_EQ(ParseZblRecords(frame, 1).size(), 1u);
    EXPECT_EQ(failureOf([&] { ParseZblRecords(frame, 2); }), err::SubscriptOutOfRange);
}

TEST_F(protocol, AZblReadingAgreesWithTheSimulatedInstrument)
{
    sim::ZblStoredFile file;
    sim::ZblReading a;
    a.readingNumber = 1;
    a.tapA = QStringLiteral("16R");
    a.windingA1 = QStringLiteral("H1");
    a.windingA2 = QStringLiteral("H3");
    a.resistanceA = QStringLiteral("12.34m\u03a9");
    a.tapB = QStringLiteral("N");
    a.windingB1 = QStringLiteral("X1");
    a.windingB2 = QStringLiteral("X2");
    a.resistanceB = QStringLiteral("OVER");
    a.current = 10000;
    a.interval = 30;
    sim::ZblReading b = a;
    b.readingNumber = 2;
    b.tapA = QStringLiteral("1");
    file.readings = {a, b};

    const QByteArray frame = sim::zblDataFrame(file);
    ASSERT_EQ(CheckFrame(frame), True16);
    ZblDeviceRecord r;
    ParseZblRecord(frame, 0, r);
    EXPECT_EQ(r.readingNumber, 1);
    EXPECT_EQ(r.tapA, QStringLiteral("16R"));
    EXPECT_EQ(r.windingA1, QStringLiteral("H1"));
    EXPECT_EQ(r.windingA2, QStringLiteral("H3"));
    EXPECT_EQ(r.resistanceA, QStringLiteral("12.34mO"));
    EXPECT_EQ(r.tapB, QStringLiteral("N"));
    EXPECT_EQ(r.windingB1, QStringLiteral("X1"));
    EXPECT_EQ(r.windingB2, QStringLiteral("X2"));
    EXPECT_EQ(r.resistanceB, QStringLiteral("OVER"));
    EXPECT_EQ(r.current, 10000);
    EXPECT_EQ(r.interval, 30);
    ParseZblRecord(frame, 1, r);
    EXPECT_EQ(r.readingNumber, 2);
    EXPECT_EQ(r.tapA, QStringLiteral("1"));
}

// Thin wrappers.

TEST_F(protocol, WrappersReachTheStoreAndTheFlag)
{
    ASSERT_EQ(quenby::serialCom().OpenPort(3, 115200, False16), True16);
    uploadGlobals().DeviceConnected = True16;
    ports.current()->receive(bytesOf({0x47, 0x50, 0x6A, 0x02, 0x6C}));
    EXPECT_EQ(IsDataReceived(), True16);
    EXPECT_EQ(NumberOfNewBytes(), 5);
    EXPECT_EQ(PeekRxBytes(2), bytesOf({0x47, 0x50}));
    EXPECT_EQ(NumberOfNewBytes(), 5);
    EXPECT_EQ(ReadRxBytes(3), bytesOf({0x47, 0x50, 0x6A}));
    EXPECT_EQ(NumberOfNewBytes(), 2);
    ClearDataReceived();
    EXPECT_EQ(IsDataReceived(), False16);
    FlushRxBuffer();
    EXPECT_EQ(NumberOfNewBytes(), 0);
    EXPECT_EQ(commBuffer().getIndex(), 0);
}

TEST_F(protocol, DisconnectPortRenewsThePortObject)
{
    ASSERT_EQ(quenby::serialCom().OpenPort(3, 115200, False16), True16);
    ports.bench.calls.clear();
    DisconnectPort();
    EXPECT_EQ(ports.bench.calls, QStringList{QStringLiteral("PortOpen=false")});
    EXPECT_EQ(ports.bench.portsMade, 2);
}
