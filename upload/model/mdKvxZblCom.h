// The instrument's command protocol: the commands the PC writes, the checks
// and decoders of the replies, and the byte layout of the stored tests.
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
inline constexpr unsigned char Identify = 201;   // short; reply 0x63 KVX, 0x64 ZBL
inline constexpr unsigned char SerialNumber = 204; // short; reply 0x66
inline constexpr unsigned char FileCount = 210;  // short; reply 0x6A
inline constexpr unsigned char FileHeader = 211; // long; reply 0x6B
inline constexpr unsigned char FileData = 212;   // long; reply 0x6C
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
// Check and length of a header or data frame; copies the payload into the
// payload store (20,001 bytes; a longer payload raises a bounds error).
Bool16 CheckFrame(const QByteArray& frame);

void ParseKvxHeader(const QByteArray& frame, KvxHeaderRecord& header);
void ParseZblHeader(const QByteArray& frame, ZblHeaderRecord& header);
// Spreads a KVX data frame's payload over the slot table, 942 bytes a slot.
void SpreadKvxData(const QByteArray& frame);
// Decodes slot `slot` of the slot table into kvxDeviceRecords()[slot].
void ParseKvxRecord(Int16 slot);
// Decodes reading `index` of a ZBL data frame.
void ParseZblRecord(const QByteArray& frame, Int16 index, ZblDeviceRecord& record);

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

// Module store.
inline constexpr int KvxDeviceSlotCount = 11;
inline constexpr int KvxSlotSize = 1751; // byte positions, 942 used
inline constexpr int KvxSlotUsed = 942;
inline constexpr int PayloadStoreSize = 20001;
using KvxSlotTable = std::array<std::array<unsigned char, KvxSlotSize>, KvxDeviceSlotCount>;
KvxSlotTable& kvxSlotTable();
std::array<KvxDeviceRecord, KvxDeviceSlotCount>& kvxDeviceRecords();
std::array<unsigned char, PayloadStoreSize>& payloadStore();

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
