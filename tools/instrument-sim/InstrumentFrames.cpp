#include "tools/instrument-sim/InstrumentFrames.h"

#include "shell/model/CodePage.h"

#include <bit>
#include <cstdint>

namespace quenby::sim {

namespace {

constexpr unsigned char kG = 0x47;
constexpr unsigned char kP = 0x50;
constexpr unsigned char kH = 0x48;

constexpr unsigned char kIdentify = 201;
constexpr unsigned char kSerialNumber = 204;
constexpr unsigned char kFileCount = 210;
constexpr unsigned char kFileHeader = 211;
constexpr unsigned char kFileData = 212;

constexpr unsigned char kReplyKvx = 0x63;
constexpr unsigned char kReplyZbl = 0x64;
constexpr unsigned char kReplySerial = 0x66;
constexpr unsigned char kReplyFileCount = 0x6A;
constexpr unsigned char kReplyHeader = 0x6B;
constexpr unsigned char kReplyData = 0x6C;

// The shortest serial number reply that the PC takes is 10 bytes: 3 of head,
// 6 of number and the check.
constexpr int kMinSerialBytes = 6;

// Capital omega as the instrument's display codes it.
constexpr char16_t kOmega = 0x03A9;

void putByte(QByteArray& bytes, int offset, int value)
{
    bytes[offset] = static_cast<char>(static_cast<unsigned char>(value & 0xFF));
}

void putUInt16(QByteArray& bytes, int offset, int value)
{
    putByte(bytes, offset, value >> 8);
    putByte(bytes, offset + 1, value);
}

void putUInt32(QByteArray& bytes, int offset, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        putByte(bytes, offset + i, static_cast<int>(value >> (24 - 8 * i)));
}

// Sum of bytes [from, to) modulo 256.
unsigned char sumOf(const QByteArray& bytes, qsizetype from, qsizetype to)
{
    unsigned sum = 0;
    for (qsizetype i = from; i < to; ++i)
        sum += static_cast<unsigned char>(bytes[i]);
    return static_cast<unsigned char>(sum & 0xFF);
}

// "G", "P", code, body, and a check over the code and the body.
QByteArray checkedReply(unsigned char code, const QByteArray& body)
{
    QByteArray reply;
    reply.reserve(body.size() + 4);
    reply.append(static_cast<char>(kG));
    reply.append(static_cast<char>(kP));
    reply.append(static_cast<char>(code));
    reply.append(body);
    reply.append(static_cast<char>(sumOf(reply, 2, reply.size())));
    return reply;
}

} // namespace

void putFloat(QByteArray& bytes, int offset, float value)
{
    putUInt32(bytes, offset, std::bit_cast<std::uint32_t>(value));
}

void putText(QByteArray& bytes, int offset, const QString& text, int chars)
{
    const QString cut = text.left(chars);
    for (int k = 0; k < chars; ++k) {
        int code = 0;
        if (k < cut.size()) {
            const QChar c = cut.at(k);
            if (c.unicode() == kOmega)
                code = kOmega;
            else
                code = static_cast<unsigned char>(encodeText(QStringView(&c, 1)).at(0));
        }
        putUInt16(bytes, offset + 2 * k, code);
    }
}

QByteArray identifyReply(unsigned char code)
{
    // The byte after the code is a check of the code alone, like the other
    // short replies; the PC looks at the first three bytes only.
    return checkedReply(code, QByteArray());
}

QByteArray serialNumberReply(const Instrument& instrument)
{
    QByteArray body;
    if (instrument.kind == DeviceKind::Kvx) {
        body = encodeText(instrument.kvxSerial);
        // A KVX keeps its serial in a fixed field: zero bytes fill it, and the
        // PC adds nothing for them.
        while (body.size() < kMinSerialBytes)
            body.append('\0');
    } else {
        // A ZBL's bytes each show their decimal digits, zeros included, so
        // they go out as they are, however few.
        for (int b : instrument.zblSerialBytes)
            body.append(static_cast<char>(static_cast<unsigned char>(b & 0xFF)));
    }
    return checkedReply(kReplySerial, body);
}

QByteArray fileCountReply(int count)
{
    QByteArray body;
    body.append(static_cast<char>(static_cast<unsigned char>(count & 0xFF)));
    return checkedReply(kReplyFileCount, body);
}

QByteArray framedReply(unsigned char code, const QByteArray& payload)
{
    // The length bytes stay out of the check.
    QByteArray frame(5, '\0');
    putByte(frame, 0, kG);
    putByte(frame, 1, kP);
    putByte(frame, 2, code);
    putUInt16(frame, 3, static_cast<int>(payload.size()));
    frame.append(payload);
    const unsigned sum = code + sumOf(payload, 0, payload.size());
    frame.append(static_cast<char>(static_cast<unsigned char>(sum & 0xFF)));
    return frame;
}

// KVX header: L = 954, 960 bytes in all. Offsets below are frame indexes
// (payload offset + 5).
QByteArray kvxHeaderFrame(const KvxStoredFile& file)
{
    constexpr int kLength = 954;
    constexpr int kHead = 5;
    QByteArray frame(kHead + kLength, '\0');
    putByte(frame, 8, file.fileNumber);
    putUInt16(frame, 9, kLength); // the instrument's record size
    putByte(frame, 11, 1);        // the record is in use
    putByte(frame, 12, static_cast<int>(file.tests.size()));
    putByte(frame, 13, file.value13); // the PC takes its second from here
    putByte(frame, 14, 0);
    putByte(frame, 15, file.day);
    putByte(frame, 16, file.month);
    putByte(frame, 17, file.year);
    putByte(frame, 18, file.hour);
    putByte(frame, 19, file.minute);
    putByte(frame, 20, file.second); // the instrument's own second
    // Each text from its first high byte, one before the first low byte.
    putText(frame, 23, file.company, 26);
    putText(frame, 75, file.serial, 26);
    putText(frame, 127, file.station, 26);
    putText(frame, 179, file.designation, 26);
    putText(frame, 231, file.manufacturer, 26);
    putText(frame, 283, file.operatorName, 26);
    putText(frame, 335, file.temperature, 26);
    putText(frame, 387, file.ratio, 31);
    putText(frame, 449, file.voltageRating, 26);
    putText(frame, 501, file.accuracyClass, 26);
    putText(frame, 553, file.position, 26);
    putText(frame, 605, file.phase, 26);
    putText(frame, 657, file.notes, 151);
    return framedReply(kReplyHeader, frame.mid(kHead));
}

// KVX data: one 942-byte slot per test, in order.
QByteArray kvxDataFrame(const KvxStoredFile& file)
{
    constexpr int kSlot = 942;
    constexpr int kPointsTravelling = 100;
    QByteArray payload(static_cast<qsizetype>(file.tests.size()) * kSlot, '\0');
    for (std::size_t t = 0; t < file.tests.size(); ++t) {
        const KvxTest& test = file.tests[t];
        QByteArray slot(kSlot, '\0');
        putByte(slot, 0, test.testNumber);
        const int count = test.pointCountOverride >= 0 ? test.pointCountOverride
                                                       : static_cast<int>(test.points.size());
        putUInt16(slot, 4, count);
        putUInt32(slot, 6, 0);
        putUInt16(slot, 10, test.ratioFirst);
        putUInt16(slot, 12, test.ratioSecond);
        putFloat(slot, 14, test.phase);
        putFloat(slot, 18, test.calculatedRatio);
        putFloat(slot, 22, test.measuredRatio);
        putFloat(slot, 26, test.ratioError);
        putFloat(slot, 30, test.kneeIeee30);
        putFloat(slot, 34, test.kneeIeee45);
        putFloat(slot, 38, test.kneeIec1050);
        putFloat(slot, 42, test.insulation);
        putFloat(slot, 46, test.windingResistance);
        putFloat(slot, 50, 0.0f);
        for (int j = 0; j < kPointsTravelling && j < static_cast<int>(test.points.size()); ++j) {
            putFloat(slot, 82 + 4 * j, test.points[static_cast<std::size_t>(j)].first);
            putFloat(slot, 482 + 4 * j, test.points[static_cast<std::size_t>(j)].second);
        }
        putByte(slot, 882, test.polarityPositive ? 1 : 0);
        putByte(slot, 883, test.excitationValid ? 1 : 0);
        putByte(slot, 884, test.ratioValid ? 1 : 0);
        putByte(slot, 885, test.insulationValid ? 1 : 0);
        putByte(slot, 886, test.windingValid ? 1 : 0);
        putText(slot, 888, test.tap, 5); // low bytes 889 to 897
        payload.replace(static_cast<qsizetype>(t) * kSlot, kSlot, slot);
    }
    return framedReply(kReplyData, payload);
}

// ZBL header: the payload runs to frame index 354, the last low byte of the
// notes, so L = 350 and the check sits at 355.
QByteArray zblHeaderFrame(const ZblStoredFile& file)
{
    constexpr int kLength = 350;
    constexpr int kHead = 5;
    QByteArray frame(kHead + kLength, '\0');
    putByte(frame, 6, file.fileNumber);
    putUInt16(frame, 7, kLength);
    putByte(frame, 9, 1);
    putByte(frame, 10, static_cast<int>(file.readings.size()));
    putByte(frame, 11, file.testNumber);
    putByte(frame, 12, file.mode);
    putByte(frame, 13, file.day);
    putByte(frame, 14, file.month);
    putByte(frame, 15, file.year);
    putByte(frame, 16, file.hour);
    putByte(frame, 17, file.minute);
    putByte(frame, 18, file.second);
    putText(frame, 19, file.company, 21);
    putText(frame, 61, file.serial, 21);
    putText(frame, 103, file.station, 21);
    putText(frame, 145, file.designation, 21);
    putText(frame, 187, file.manufacturer, 21);
    putText(frame, 229, file.operatorName, 21);
    putText(frame, 271, file.temperature, 21);
    putText(frame, 313, file.notes, 21);
    return framedReply(kReplyHeader, frame.mid(kHead));
}

// ZBL data: one 120-byte record per reading.
QByteArray zblDataFrame(const ZblStoredFile& file)
{
    constexpr int kRecord = 120;
    QByteArray payload(static_cast<qsizetype>(file.readings.size()) * kRecord, '\0');
    for (std::size_t r = 0; r < file.readings.size(); ++r) {
        const ZblReading& reading = file.readings[r];
        QByteArray record(kRecord, '\0');
        putByte(record, 0, reading.readingNumber);
        putText(record, 2, reading.tapA, 5);
        putText(record, 12, reading.windingA1, 5);
        putText(record, 22, reading.windingA2, 5);
        putText(record, 32, reading.resistanceA, 12);
        putText(record, 56, reading.tapB, 5);
        putText(record, 66, reading.windingB1, 5);
        putText(record, 76, reading.windingB2, 5);
        putText(record, 86, reading.resistanceB, 12);
        putUInt16(record, 110, reading.current);
        putByte(record, 112, 0);
        putByte(record, 113, 0);
        putUInt16(record, 114, reading.interval);
        putUInt32(record, 116, 0);
        payload.replace(static_cast<qsizetype>(r) * kRecord, kRecord, record);
    }
    return framedReply(kReplyData, payload);
}

QByteArray replyTo(const Instrument& instrument, const QByteArray& command)
{
    const auto at = [&](int i) { return static_cast<unsigned char>(command[i]); };
    if (command.size() < 4 || at(0) != kH || at(1) != kP)
        return {};
    const unsigned char code = at(2);
    if (command.size() == 4) {
        if (at(3) != code)
            return {};
        switch (code) {
        case kIdentify:
            return identifyReply(instrument.kind == DeviceKind::Kvx ? kReplyKvx : kReplyZbl);
        case kSerialNumber:
            return serialNumberReply(instrument);
        case kFileCount:
            return fileCountReply(instrument.fileCount());
        default:
            return {};
        }
    }
    if (command.size() != 5 || (code != kFileHeader && code != kFileData))
        return {};
    const int index = at(3);
    if (at(4) != static_cast<unsigned char>((code + index) & 0xFF))
        return {};
    if (index >= instrument.fileCount())
        return {};
    const auto i = static_cast<std::size_t>(index);
    if (instrument.kind == DeviceKind::Kvx) {
        return code == kFileHeader ? kvxHeaderFrame(instrument.kvxFiles[i])
                                   : kvxDataFrame(instrument.kvxFiles[i]);
    }
    return code == kFileHeader ? zblHeaderFrame(instrument.zblFiles[i])
                               : zblDataFrame(instrument.zblFiles[i]);
}

} // namespace quenby::sim
