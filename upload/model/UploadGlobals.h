// The upload's program-long variables: the state machine's state, counters,
// waits and texts, and the port search's list. They live in the upload
// session (upload/model/UploadSession.h) and survive from one opening of the
// upload window to the next until something sets them.
#pragma once

#include "shell/model/Checked.h"

#include <QByteArray>
#include <QString>

#include <array>

namespace quenby {

class CSerialCom;
class CCommBuffCirculaire;

inline constexpr int PortListSize = 17; // entries 0 to 16

// The states of the upload loop, by their numbers. The loop starts at 0, which
// names no state; a number that names none does nothing.
enum class UpState : Int16 {
    ScanPorts = 1, // nothing ever enters this state
    TryPort = 2,
    WaitPortReply = 3,
    Idle = 4,
    AskSerial = 5,
    WaitSerial = 6,
    AskFileCount = 7,
    WaitFileCount = 8,
    NextFile = 9,
    AskHeader = 10,
    WaitHeader = 11,
    AskData = 12,
    WaitData = 13,
    SaveFile = 14,
    EndUpload = 15,
    StopByUser = 98,
    SkipFile = 99,
    CheckPortReply = 100,
};

struct UploadGlobals
{
    UpState UploadState{};
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

// The variables of the upload session in force.
UploadGlobals& uploadGlobals();

// The two serial objects of the upload session in force, made on first use
// and kept as long as the session.
CSerialCom& serialCom();
CCommBuffCirculaire& commBuffer();

} // namespace quenby
