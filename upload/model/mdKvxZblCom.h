// The instrument's command protocol: the commands the PC writes, the checks
// and decoders of the replies, and the byte layout of the stored tests. The
// decoders are pure: they take bytes and give values.
// Indexes are into the whole reply as received, "G" at index 0. Multi-byte
// integers are big-endian; texts are 16-bit characters read by their low byte.
#pragma once

#include "shell/model/Checked.h"
#include "upload/model/DeviceRecords.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <vector>

namespace quenby {

// Command codes.
namespace cmd {
inline constexpr unsigned char Identify = 201;     // short; reply 0x63 KVX, 0x64 ZBL
inline constexpr unsigned char SerialNumber = 204; // short; reply 0x66
inline constexpr unsigned char FileCount = 210;    // short; reply 0x6A
inline constexpr unsigned char FileHeader = 211;   // long; reply 0x6B
inline constexpr unsigned char FileData = 212;     // long; reply 0x6C
} // namespace cmd

namespace reply {
inline constexpr unsigned char Kvx = 0x63;
inline constexpr unsigned char Zbl = 0x64;
inline constexpr unsigned char SerialNumber = 0x66;
inline constexpr unsigned char FileCount = 0x6A;
inline constexpr unsigned char Header = 0x6B;
inline constexpr unsigned char Data = 0x6C;
} // namespace reply

// Byte `index` of a received array, 0 to 255; an index outside the array
// raises "Subscript out of range".
int rxByte(const QByteArray& bytes, qsizetype index);

// Writes "H", "P", code, index, (code + index) mod 256 as five one-byte writes.
void SendFileRequest(unsigned char code, unsigned char fileIndex);

// The serial number text of a reply ("0" when its check fails).
QString DecodeSerialNumber(const QByteArray& bytes, const QString& deviceType);
// The file count of a reply (0 when its check fails).
Int16 DecodeFileCount(const QByteArray& bytes);
// The store of a KVX data frame's tests: 11 slots of 1751 byte positions, of
// which the first 942 hold one test; and the payload store of CheckFrame.
inline constexpr int KvxDeviceSlotCount = 11;
inline constexpr int KvxSlotSize = 1751; // byte positions, 942 used
inline constexpr int KvxSlotUsed = 942;
inline constexpr int PayloadStoreSize = 20001;
using KvxSlotTable = std::array<std::array<unsigned char, KvxSlotSize>, KvxDeviceSlotCount>;
using PayloadStore = std::array<unsigned char, PayloadStoreSize>;

// Check and length of a header or data frame; copies the payload into the
// upload session's payload store (20,001 bytes; a longer payload raises a
// bounds error).
Bool16 CheckFrame(const QByteArray& frame);
// The payload store of the upload session, as the last CheckFrame left it.
PayloadStore& payloadStore();

void ParseKvxHeader(const QByteArray& frame, KvxHeaderRecord& header);
void ParseZblHeader(const QByteArray& frame, ZblHeaderRecord& header);
// A KVX data frame's payload spread over `slots`, 942 bytes a slot: payload
// byte i goes to slot i div 942 at i mod 942, and a twelfth slot is a bounds
// error. Positions the payload does not reach keep what `slots` held there.
KvxSlotTable SpreadKvxData(const QByteArray& frame, const KvxSlotTable& slots = {});
// The test in slot `slot` of the table; a slot outside 0 to 10 is a bounds
// error.
KvxDeviceRecord ParseKvxRecord(const KvxSlotTable& slots, Int16 slot);
// The tests of slots 0 to numberOfTests - 1, in order.
std::vector<KvxDeviceRecord> ParseKvxRecords(const KvxSlotTable& slots, Int16 numberOfTests);
// Decodes reading `index` of a ZBL data frame into `record`; every field is
// set, so a record used again keeps nothing of the last reading.
void ParseZblRecord(const QByteArray& frame, Int16 index, ZblDeviceRecord& record);
// Readings 0 to numberOfReadings - 1 of a ZBL data frame, in order; a frame
// shorter than that is a bounds error.
std::vector<ZblDeviceRecord> ParseZblRecords(const QByteArray& frame, Int16 numberOfReadings);

// Value decoders over a byte array (a slot or a frame) at an offset.
Int16 ReadDeviceInt16(const unsigned char* record, int size, int offset);
Int32 ReadDeviceInt31(const unsigned char* record, int size, int offset);
Bool16 ReadDeviceFlag(const unsigned char* record, int size, int offset);
float ReadDeviceFloat(const unsigned char* record, int size, int offset);
// A text field: low bytes two apart from `firstLow` to `lastLow`, ending at a
// low byte of 0, each low byte a character of the ANSI code page.
QString ReadDeviceText(const QByteArray& bytes, qsizetype firstLow, qsizetype lastLow);
// The tap of a ZBL channel A: the same walk, but the whole code
// high x 256 + low, not the low byte, becomes the character.
QString ReadDeviceTextWholeCode(const QByteArray& bytes, qsizetype firstLow, qsizetype lastLow);
// A wide text field: `chars` characters of high x 256 + low from `first`,
// ending at a low byte of 0; code 937 becomes "O".
QString ReadDeviceWideText(const QByteArray& bytes, qsizetype first, int chars);

// Thin wrappers over the store and the port.
Int32 NumberOfNewBytes();
void FlushRxBuffer();
QByteArray ReadRxBytes(Int32 count);
QByteArray PeekRxBytes(Int32 count);
Bool16 IsDataReceived();
void ClearDataReceived();
void DisconnectPort();
void SendShortCommand(unsigned char code);
void SendOneByte(unsigned char b);

} // namespace quenby
