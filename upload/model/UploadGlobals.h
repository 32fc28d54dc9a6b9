// The upload's program-long variables: the state machine's state, counters,
// waits and texts, the port search's list, and the two serial objects. They
// survive from one opening of the upload window to the next until something
// sets them.
#pragma once

#include "shell/model/Checked.h"

#include <QByteArray>
#include <QString>

#include <array>

namespace quenby {

class CSerialCom;
class CCommBuffCirculaire;

inline constexpr int PortListSize = 17; // entries 0 to 16

struct UploadGlobals
{
    Int16 UploadState = 0;
    Bool16 StopRequested = False16;
    QString DeviceType; // "KVX" or "ZBL"; empty until a device was seen
    QString DeviceSerial;
    Int16 NbFilesOnDevice = 0;
    Int16 CurrentFile = 0; // the file being fetched; also the count dealt with
    Int16 NbFilesSucces = 0;
    Int16 NbFilesFail = 0;
    Int32 NbByteToTreat = 0;
    QByteArray ByteArrayRx;
    QByteArray ByteArrayHeaderRx;
    QByteArray ByteArrayDataRx;
    Int16 HeaderMinSize = 0; // 960 for a KVX, 50 for a ZBL
    Int16 WaitHeaderTimeKvx = 2;
    Int16 WaitHeaderTimeZbl = 2;
    Int16 WaitDataTimeKvx = 15;
    Int16 WaitDataTimeZbl = 5;
    Int16 WaitHeaderTime = 0;
    Int16 WaitDataTime = 0;
    // One array of wait counters: HeaderRetry, DataRetry, TickCount.
    std::array<Int16, 3> WaitCounters{};
    Int16& HeaderRetry() { return WaitCounters[0]; }
    Int16& DataRetry() { return WaitCounters[1]; }
    Int16& TickCount() { return WaitCounters[2]; }

    QString PrintMessageText;
    QString DeviceStatusText;
    QString PortStatusText;
    QString DeviceSerialText;
    QString FilesTransfertText;
    QString UploadFolderStamp;

    // Receive filter gates.
    Bool16 DeviceConnected = False16;
    Bool16 PortProbeActive = False16;

    // Port search.
    std::array<Int16, PortListSize> PortList{};
    Int16 PortIndex = 0;
    // The device path behind each entry of PortList where ports have no COM
    // number: entry i holds the port numbered i + 1.
    std::array<QString, PortListSize> PortLocations;
};

UploadGlobals& uploadGlobals();

// The two serial objects, made on first use and kept until the process ends.
CSerialCom& serialCom();
CCommBuffCirculaire& commBuffer();

// Tests: every variable back to its first value, fresh serial objects; the
// protocol's slot table, device records and payload store zeroed too.
void resetUploadGlobals();

} // namespace quenby
