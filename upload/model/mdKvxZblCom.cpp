#include "upload/model/mdKvxZblCom.h"

#include "shell/model/CodePage.h"
#include "shell/model/RuntimeError.h"
#include "upload/model/CCommBuffCirculaire.h"
#include "upload/model/CSerialCom.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"

#include <cmath>

namespace quenby {

namespace {

[[noreturn]] void outOfRange(qsizetype index)
{
    raiseRuntimeError(err::SubscriptOutOfRange, QStringLiteral("byte %1").arg(index));
}

// Byte `offset` of a fixed record (a slot of the table, or a frame).
int recordByte(const unsigned char* record, int size, int offset)
{
    if (offset < 0 || offset >= size)
        outOfRange(offset);
    return record[offset];
}

// One character of the ANSI code page for a byte.
QString ansiCharacter(int byte)
{
    const char c = static_cast<char>(byte);
    return decodeText(QByteArrayView(&c, 1), CodePage::Windows1252);
}

// Sum of bytes `first` to `last` of a reply, modulo 256.
int byteSum(const QByteArray& bytes, qsizetype first, qsizetype last)
{
    int sum = 0;
    for (qsizetype i = first; i <= last; ++i)
        sum = (sum + rxByte(bytes, i)) % 256;
    return sum;
}

// The tap of a KVX slot: five low bytes two apart, all taken; a 0 does not end
// this field (intended: it becomes a character like any other).
QString slotTapText(const unsigned char* slot, int size, int firstLow, int lastLow)
{
    QByteArray lows;
    for (int i = firstLow; i <= lastLow; i += 2)
        lows.append(static_cast<char>(recordByte(slot, size, i)));
    return decodeText(lows, CodePage::Windows1252);
}

} // namespace

int rxByte(const QByteArray& bytes, qsizetype index)
{
    if (index < 0 || index >= bytes.size())
        outOfRange(index);
    return static_cast<unsigned char>(bytes.at(index));
}

void SendFileRequest(unsigned char code, unsigned char fileIndex)
{
    // The long command: five one-byte writes, the last a check modulo 256.
    CSerialCom& link = serialCom();
    link.SendCommandByte('H');
    link.SendCommandByte('P');
    link.SendCommandByte(code);
    link.SendCommandByte(fileIndex);
    link.SendCommandByte(static_cast<unsigned char>((code + fileIndex) % 256));
}

QString DecodeSerialNumber(const QByteArray& bytes, const QString& deviceType)
{
    // Bytes 3 to U-1 are the number, byte U the sum of bytes 2 to U-1.
    const qsizetype last = bytes.size() - 1;
    if (byteSum(bytes, 2, last - 1) != rxByte(bytes, last))
        return QStringLiteral("0");

    const bool zbl = deviceType == QLatin1String("ZBL");
    QString text;
    for (qsizetype i = 3; i <= last - 1; ++i) {
        const int b = rxByte(bytes, i);
        if (zbl)
            text += QString::number(b); // every byte by its decimal digits
        else if (b != 0)
            text += ansiCharacter(b); // a KVX's zero bytes add nothing
    }
    if (zbl || !text.startsWith(QLatin1String("KVX")))
        return QStringLiteral("#") + text;
    return text;
}

Int16 DecodeFileCount(const QByteArray& bytes)
{
    const qsizetype last = bytes.size() - 1;
    if (byteSum(bytes, 2, last - 1) != rxByte(bytes, last))
        return 0;
    return static_cast<Int16>(rxByte(bytes, 3));
}

Bool16 CheckFrame(const QByteArray& frame)
{
    // "G", "P", code, L high, L low, L payload bytes, check. The check is the
    // code plus the payload, the length bytes left out.
    const qsizetype last = frame.size() - 1;
    int sum = rxByte(frame, 2);
    for (qsizetype i = 5; i <= last - 1; ++i)
        sum = (sum + rxByte(frame, i)) % 256;
    if (sum % 256 != rxByte(frame, last))
        return False16;

    // 16-bit arithmetic: a first length byte of 128 or more overflows.
    const Int16 length = add16(mul16(static_cast<Int16>(rxByte(frame, 3)), 256),
                               static_cast<Int16>(rxByte(frame, 4)));

    // The payload store holds 20,001 bytes; a longer payload is the bounds
    // failure.
    auto& store = payloadStore();
    for (qsizetype i = 5; i <= last - 1; ++i) {
        const qsizetype at = i - 5;
        if (at >= PayloadStoreSize)
            outOfRange(at);
        store[static_cast<std::size_t>(at)] = static_cast<unsigned char>(rxByte(frame, i));
    }
    // Trailing bytes make the frame fail.
    return toBool16(static_cast<qsizetype>(length) + 5 == last);
}

void ParseKvxHeader(const QByteArray& frame, KvxHeaderRecord& header)
{
    header.fileNumber = static_cast<Int16>(rxByte(frame, 8));
    header.value9 = rxByte(frame, 9) * 256 + rxByte(frame, 10);
    header.flag11 = toBool16(rxByte(frame, 11) != 0);
    header.numberOfTests = static_cast<Int16>(rxByte(frame, 12));
    header.value13 = static_cast<Int16>(rxByte(frame, 13));
    header.value14 = static_cast<Int16>(rxByte(frame, 14));
    header.day = static_cast<Int16>(rxByte(frame, 15));
    header.month = static_cast<Int16>(rxByte(frame, 16));
    header.year = static_cast<Int16>(rxByte(frame, 17));
    header.hour = static_cast<Int16>(rxByte(frame, 18));
    header.minute = static_cast<Int16>(rxByte(frame, 19));
    // Intended: the second comes from byte 13, the same byte as value13;
    // byte 20 is never read.
    header.second = static_cast<Int16>(rxByte(frame, 13));

    // Texts: first and last low byte of each field.
    header.Company = ReadDeviceText(frame, 24, 74);
    header.Serial = ReadDeviceText(frame, 76, 126);
    header.Station = ReadDeviceText(frame, 128, 178);
    header.Designation = ReadDeviceText(frame, 180, 230);
    header.Manufacturer = ReadDeviceText(frame, 232, 282);
    header.Operator = ReadDeviceText(frame, 284, 334);
    header.Temperature = ReadDeviceText(frame, 336, 386);
    header.Ratio = ReadDeviceText(frame, 388, 448);
    header.VoltageRating = ReadDeviceText(frame, 450, 500);
    header.Class = ReadDeviceText(frame, 502, 552);
    header.Position = ReadDeviceText(frame, 554, 604);
    header.Phase = ReadDeviceText(frame, 606, 656);
    header.Notes = ReadDeviceText(frame, 658, 958);
}

void ParseZblHeader(const QByteArray& frame, ZblHeaderRecord& header)
{
    header.fileNumber = static_cast<Int16>(rxByte(frame, 6));
    header.value7 = rxByte(frame, 7) * 256 + rxByte(frame, 8);
    header.flag9 = toBool16(rxByte(frame, 9) != 0);
    header.numberOfReadings = static_cast<Int16>(rxByte(frame, 10));
    header.testNumber = static_cast<Int16>(rxByte(frame, 11));
    header.mode = static_cast<Int16>(rxByte(frame, 12));
    header.day = static_cast<Int16>(rxByte(frame, 13));
    header.month = static_cast<Int16>(rxByte(frame, 14));
    header.year = static_cast<Int16>(rxByte(frame, 15));
    header.hour = static_cast<Int16>(rxByte(frame, 16));
    header.minute = static_cast<Int16>(rxByte(frame, 17));
    header.second = static_cast<Int16>(rxByte(frame, 18));

    header.Company = ReadDeviceText(frame, 20, 60);
    header.Serial = ReadDeviceText(frame, 62, 102);
    header.Station = ReadDeviceText(frame, 104, 144);
    header.Designation = ReadDeviceText(frame, 146, 186);
    header.Manufacturer = ReadDeviceText(frame, 188, 228);
    header.Operator = ReadDeviceText(frame, 230, 270);
    header.Temperature = ReadDeviceText(frame, 272, 312);
    header.Notes = ReadDeviceText(frame, 314, 354);
}

KvxSlotTable SpreadKvxData(const QByteArray& frame, const KvxSlotTable& slots)
{
    // Payload byte i goes to slot i div 942 at i mod 942; a twelfth slot is
    // outside the table.
    KvxSlotTable table = slots;
    const qsizetype last = frame.size() - 1;
    for (qsizetype i = 5; i <= last - 1; ++i) {
        const qsizetype payloadIndex = i - 5;
        const qsizetype slot = payloadIndex / KvxSlotUsed;
        if (slot >= KvxDeviceSlotCount)
            outOfRange(slot);
        table[static_cast<std::size_t>(slot)]
             [static_cast<std::size_t>(payloadIndex % KvxSlotUsed)] =
                 static_cast<unsigned char>(rxByte(frame, i));
    }
    return table;
}

KvxDeviceRecord ParseKvxRecord(const KvxSlotTable& slots, Int16 slot)
{
    if (slot < 0 || slot >= KvxDeviceSlotCount)
        outOfRange(slot);
    const unsigned char* s = slots[static_cast<std::size_t>(slot)].data();
    const int n = KvxSlotSize;
    KvxDeviceRecord r;

    r.testNumber = static_cast<Int16>(recordByte(s, n, 0));
    r.numberOfPoints = ReadDeviceInt16(s, n, 4);
    r.value6 = ReadDeviceInt31(s, n, 6);
    r.ratioFirst = ReadDeviceInt16(s, n, 10);
    r.ratioSecond = ReadDeviceInt16(s, n, 12);
    r.phase = ReadDeviceFloat(s, n, 14);
    r.calculatedRatio = ReadDeviceFloat(s, n, 18);
    r.measuredRatio = ReadDeviceFloat(s, n, 22);
    r.ratioError = ReadDeviceFloat(s, n, 26);
    r.kneeIeee30 = ReadDeviceFloat(s, n, 30);
    r.kneeIeee45 = ReadDeviceFloat(s, n, 34);
    r.kneeIec1050 = ReadDeviceFloat(s, n, 38);
    r.insulation = ReadDeviceFloat(s, n, 42);
    r.windingResistance = ReadDeviceFloat(s, n, 46);
    r.value50 = ReadDeviceFloat(s, n, 50);
    // 100 voltages from 82 and 100 currents from 482, four bytes each; the
    // rest of the room stays 0.
    for (int k = 0; k < KvxDeviceRecord::PointsRead; ++k) {
        r.voltages[static_cast<std::size_t>(k)] = ReadDeviceFloat(s, n, 82 + 4 * k);
        r.currents[static_cast<std::size_t>(k)] = ReadDeviceFloat(s, n, 482 + 4 * k);
    }
    r.polarityPositive = ReadDeviceFlag(s, n, 882);
    r.excitationValid = ReadDeviceFlag(s, n, 883);
    r.ratioValid = ReadDeviceFlag(s, n, 884);
    r.insulationValid = ReadDeviceFlag(s, n, 885);
    r.windingValid = ReadDeviceFlag(s, n, 886);
    r.tap = slotTapText(s, n, 889, 897);
    return r;
}

std::vector<KvxDeviceRecord> ParseKvxRecords(const KvxSlotTable& slots, Int16 numberOfTests)
{
    std::vector<KvxDeviceRecord> tests;
    for (Int16 test = 0; test < numberOfTests; ++test)
        tests.push_back(ParseKvxRecord(slots, test));
    return tests;
}

void ParseZblRecord(const QByteArray& frame, Int16 index, ZblDeviceRecord& record)
{
    // Record `index` starts at payload offset 120 x index, the payload at 5.
    const qsizetype base = 5 + 120 * static_cast<qsizetype>(index);
    const auto at = [&](int offset) { return rxByte(frame, base + offset); };

    record.readingNumber = static_cast<Int16>(at(0));
    // Text fields of 10 bytes: the high byte first, so the low bytes are at
    // 3, 5 .. 11 of a field starting at 2.
    record.tapA = ReadDeviceTextWholeCode(frame, base + 3, base + 11);
    record.windingA1 = ReadDeviceText(frame, base + 13, base + 21);
    record.windingA2 = ReadDeviceText(frame, base + 23, base + 31);
    record.resistanceA = ReadDeviceWideText(frame, base + 32, 12);
    record.tapB = ReadDeviceText(frame, base + 57, base + 65);
    record.windingB1 = ReadDeviceText(frame, base + 67, base + 75);
    record.windingB2 = ReadDeviceText(frame, base + 77, base + 85);
    record.resistanceB = ReadDeviceWideText(frame, base + 86, 12);
    record.current = at(110) * 256 + at(111);
    record.value112 = static_cast<Int16>(at(112));
    record.value113 = static_cast<Int16>(at(113));
    record.interval = at(114) * 256 + at(115);
    // Intended weights 1024, 512, 256, 1, and a byte 118 of 255 counts as 0.
    const int b118 = at(118) == 255 ? 0 : at(118);
    record.value116 = at(116) * 1024 + at(117) * 512 + b118 * 256 + at(119);
}

std::vector<ZblDeviceRecord> ParseZblRecords(const QByteArray& frame, Int16 numberOfReadings)
{
    std::vector<ZblDeviceRecord> readings;
    ZblDeviceRecord record; // one record for every reading: each parse sets every field
    for (Int16 r = 0; r < numberOfReadings; ++r) {
        ParseZblRecord(frame, r, record);
        readings.push_back(record);
    }
    return readings;
}

Int16 ReadDeviceInt16(const unsigned char* record, int size, int offset)
{
    const int value = recordByte(record, size, offset) * 256 + recordByte(record, size, offset + 1);
    if (value > 32768)
        return 0;          // no negative results: the upper half reads as 0
    return toInt16(value); // 32768 itself overflows
}

Int32 ReadDeviceInt31(const unsigned char* record, int size, int offset)
{
    int first = recordByte(record, size, offset);
    if (first > 127)
        first -= 128; // the sign bit is dropped
    return first * 16777216 + recordByte(record, size, offset + 1) * 65536 +
           recordByte(record, size, offset + 2) * 256 + recordByte(record, size, offset + 3);
}

Bool16 ReadDeviceFlag(const unsigned char* record, int size, int offset)
{
    return toBool16(recordByte(record, size, offset) == 1);
}

float ReadDeviceFloat(const unsigned char* record, int size, int offset)
{
    // A big-endian single taken apart by hand, with no special cases: the
    // hidden bit is always set, so 0 bytes give 2^-127, and an infinity or
    // not-a-number gives a large finite value.
    const int hi = recordByte(record, size, offset) * 256 + recordByte(record, size, offset + 1);
    const int lo =
        recordByte(record, size, offset + 2) * 256 + recordByte(record, size, offset + 3);
    const double sign = hi >= 32768 ? -1.0 : 1.0;
    int exponent = ((hi & 0x7F80) >> 7) - 127;
    if (exponent > 127)
        exponent = 127;
    const double fraction = static_cast<double>((hi & 127) | 128) / 128.0 + lo / (128.0 * 65536.0);
    return static_cast<float>(std::ldexp(fraction, exponent) * sign);
}

QString ReadDeviceText(const QByteArray& bytes, qsizetype firstLow, qsizetype lastLow)
{
    QByteArray lows;
    for (qsizetype i = firstLow; i <= lastLow; i += 2) {
        const int low = rxByte(bytes, i);
        if (low == 0)
            break;
        lows.append(static_cast<char>(low));
    }
    return decodeText(lows, CodePage::Windows1252);
}

QString ReadDeviceTextWholeCode(const QByteArray& bytes, qsizetype firstLow, qsizetype lastLow)
{
    QString text;
    for (qsizetype i = firstLow; i <= lastLow; i += 2) {
        const int low = rxByte(bytes, i);
        if (low == 0)
            break;
        const int code = rxByte(bytes, i - 1) * 256 + low;
        // Codes of one byte go through the code page like the other texts; a
        // code above 255 has no byte of its own and is taken as its character.
        if (code <= 255)
            text += ansiCharacter(code);
        else
            text += QChar(static_cast<char16_t>(code));
    }
    return text;
}

QString ReadDeviceWideText(const QByteArray& bytes, qsizetype first, int chars)
{
    // Each character is high x 256 + low; the display's capital omega (937)
    // becomes "O", which the file maker completes to "Ohm".
    QString text;
    for (int k = 0; k < chars; ++k) {
        const qsizetype at = first + 2 * static_cast<qsizetype>(k);
        const int high = rxByte(bytes, at);
        const int low = rxByte(bytes, at + 1);
        if (low == 0)
            break;
        int code = high * 256 + low;
        if (code == 937)
            code = 'O';
        text += QChar(static_cast<char16_t>(code));
    }
    return text;
}

PayloadStore& payloadStore()
{
    return uploadSession().payloadStore;
}

Int32 NumberOfNewBytes()
{
    return toInt32(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber());
}

void FlushRxBuffer()
{
    commBuffer().flushPutIndexBuffer();
}

QByteArray ReadRxBytes(Int32 count)
{
    return commBuffer().GetDataOnBuffer(count);
}

QByteArray PeekRxBytes(Int32 count)
{
    return commBuffer().PeekDataBuffer(count);
}

Bool16 IsDataReceived()
{
    return serialCom().IsDataReceived();
}

void ClearDataReceived()
{
    serialCom().FlushFlagDataReceived();
}

void DisconnectPort()
{
    serialCom().Disconnect();
}

void SendShortCommand(unsigned char code)
{
    serialCom().SendCommandKVX(code); // true on failure; the caller's time-out finds it
}

void SendOneByte(unsigned char b)
{
    serialCom().SendCommandByte(b);
}

} // namespace quenby
