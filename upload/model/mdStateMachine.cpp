#include "upload/model/mdStateMachine.h"

#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/NumberText.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/Services.h"
#include "upload/model/DeviceRecords.h"
#include "upload/model/PortDiscovery.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"
#include "upload/model/mdKVXFilesMaker.h"
#include "upload/model/mdKvxZblCom.h"
#include "upload/model/mdZBLFilesMaker.h"

namespace quenby {

namespace {

constexpr auto Kvx = "KVX";
constexpr auto Zbl = "ZBL";

// Minimum bytes waiting before a header frame is read.
constexpr Int16 KvxHeaderMinSize = 960;
constexpr Int16 ZblHeaderMinSize = 50;
// Start values of the waits, in ticks, set once the serial number is known.
constexpr Int16 KvxDataStart = 15;
constexpr Int16 ZblDataStart = 5;
constexpr Int16 HeaderStart = 2;
// Limits of the waits as they grow after a bad frame. The KVX data limit is
// below its start value: the first failure brings the wait down to 10. Kept.
constexpr Int16 HeaderWaitLimit = 5;
constexpr Int16 KvxDataWaitLimit = 10;
constexpr Int16 ZblDataWaitLimit = 25;
// Retries of a missing header and of a data frame cut short.
constexpr Int16 HeaderRetries = 40;
constexpr Int16 DataRetries = 30;
// Bytes of a data frame's head looked at before it is read.
constexpr Int32 DataHeadPeek = 10;
// Ticks shown at the end of an upload or after a stop.
constexpr Int16 ClosingTicks = 20;

QString Lang(const char* key)
{
    return GetLanguageText(QString::fromLatin1(key));
}

// The instrument's name in the messages: "DeviceType." and the device type.
QString Type()
{
    return GetLanguageText(deviceTypeKey(uploadGlobals().DeviceType));
}

bool isKvx()
{
    return uploadGlobals().DeviceType == QLatin1String(Kvx);
}

bool isZbl()
{
    return uploadGlobals().DeviceType == QLatin1String(Zbl);
}

bool stopRequested()
{
    return uploadGlobals().StopRequested != False16;
}

// The next state, or StopByUser when a stop was asked for.
void goOrStop(UpState next)
{
    uploadGlobals().UploadState = stopRequested() ? UpState::StopByUser : next;
}

// True when a reply starts "G", "P", `code`. All three bytes are read, so a
// reply shorter than three bytes fails on the array bound.
bool beginsWith(const QByteArray& bytes, unsigned char code)
{
    const int g = rxByte(bytes, 0);
    const int p = rxByte(bytes, 1);
    const int c = rxByte(bytes, 2);
    return g == 'G' && p == 'P' && c == code;
}

// Reading the store: its count of new bytes, and all of them.
QByteArray readStore()
{
    UploadGlobals& g = uploadGlobals();
    g.NbByteToTreat = NumberOfNewBytes();
    return ReadRxBytes(g.NbByteToTreat);
}

// A file index as the long command carries it, one byte.
unsigned char fileIndexByte(Int16 index)
{
    if (index < 0 || index > 255)
        raiseRuntimeError(err::Overflow, QStringLiteral("file index %1").arg(index));
    return static_cast<unsigned char>(index);
}

Int16 growTo(Int16 value, Int16 limit)
{
    const Int16 grown = add16(value, 1);
    return grown > limit ? limit : grown;
}

void doScanPorts()
{
    ScanComPorts();
    uploadGlobals().UploadState = UpState::TryPort;
}

void doTryPort()
{
    TryNextPort();
    uploadGlobals().UploadState = UpState::WaitPortReply;
}

void doWaitPortReply()
{
    if (WaitTicks(3))
        uploadGlobals().UploadState = UpState::CheckPortReply;
}

void doAskSerial()
{
    UploadGlobals& g = uploadGlobals();
    SendShortCommand(cmd::SerialNumber);
    g.PrintMessageText = Lang(UploadKeys::DeviceSerialNumber);
    g.UploadState = UpState::WaitSerial;
}

void doWaitSerial()
{
    if (!WaitTicks(1))
        return;
    UploadGlobals& g = uploadGlobals();
    g.ByteArrayRx = readStore();
    if (g.NbByteToTreat < 10) {
        g.UploadState = UpState::SkipFile; // before any file was asked for: kept
    } else if (beginsWith(g.ByteArrayRx, reply::SerialNumber)) {
        g.DeviceSerial = DecodeSerialNumber(g.ByteArrayRx, g.DeviceType);
        g.DeviceSerialText = g.DeviceSerial;
        if (isKvx()) {
            g.HeaderMinSize = KvxHeaderMinSize;
            g.WaitDataTimeKvx = KvxDataStart;
            g.WaitHeaderTimeKvx = HeaderStart;
        } else if (isZbl()) {
            g.HeaderMinSize = ZblHeaderMinSize;
            g.WaitDataTimeZbl = ZblDataStart;
            g.WaitHeaderTimeZbl = HeaderStart;
        }
        g.PrintMessageText = Lang(UploadKeys::Connect) + QLatin1Char(' ') + Type();
        g.UploadState = UpState::Idle;
        uploadDeviceForm().cmdGetFilesEnabled = true;
    }
    // Another reply leaves the state as it is: after the flush below the
    // next read finds nothing and goes to 99.
    FlushUpload();
}

void doAskFileCount()
{
    SendShortCommand(cmd::FileCount);
    uploadGlobals().UploadState = UpState::WaitFileCount;
}

void doWaitFileCount()
{
    if (!WaitTicks(1))
        return;
    UploadGlobals& g = uploadGlobals();
    g.ByteArrayRx = readStore();
    if (g.NbByteToTreat < 4) {
        g.UploadState = UpState::SkipFile; // before any file was asked for: kept
    } else if (beginsWith(g.ByteArrayRx, reply::FileCount)) {
        g.NbFilesOnDevice = DecodeFileCount(g.ByteArrayRx);
        g.PrintMessageText =
            numberText(g.NbFilesOnDevice) + QLatin1Char(' ') + Lang(UploadKeys::FileOnDevice);
        g.CurrentFile = 0;
        g.UploadState = UpState::NextFile;
    }
    // Another reply leaves the state at 8, with no flush here.
}

void doNextFile()
{
    UploadGlobals& g = uploadGlobals();
    // The end of an upload is decided here alone.
    if (g.CurrentFile >= g.NbFilesOnDevice) {
        g.UploadState = UpState::EndUpload;
        return;
    }
    FlushUpload();
    g.FilesTransfertText =
        numberText(g.CurrentFile) + QLatin1Char('/') + numberText(g.NbFilesOnDevice);
    DisplayTransfert(true);
    g.UploadState = UpState::AskHeader;
    if (isKvx()) {
        g.WaitDataTime = g.WaitDataTimeKvx;
        g.WaitHeaderTime = g.WaitHeaderTimeKvx;
    } else if (isZbl()) {
        g.WaitDataTime = g.WaitDataTimeZbl;
        g.WaitHeaderTime = g.WaitHeaderTimeZbl;
    }
}

void doAskHeader()
{
    UploadGlobals& g = uploadGlobals();
    SendFileRequest(cmd::FileHeader, fileIndexByte(g.CurrentFile));
    g.PrintMessageText = Lang(UploadKeys::UploadInProgress) + QLatin1Char(' ') + Type();
    g.DeviceStatusText = Lang(UploadKeys::UploadInProgress);
    goOrStop(UpState::WaitHeader);
}

void doWaitHeader()
{
    UploadGlobals& g = uploadGlobals();
    if (!WaitTicks(g.WaitHeaderTime))
        return;
    // A stop is noted first; the steps below may still overwrite the state.
    if (stopRequested()) {
        g.UploadState = UpState::StopByUser;
        g.HeaderRetry() = 0;
    }
    g.NbByteToTreat = NumberOfNewBytes();
    if (g.NbByteToTreat < g.HeaderMinSize) {
        // A header that isn't there is waited for 40 more times, then the
        // file is skipped. A stop noted above still counts a retry: kept.
        if (g.HeaderRetry() < HeaderRetries) {
            g.HeaderRetry() = add16(g.HeaderRetry(), 1);
        } else {
            g.UploadState = UpState::SkipFile;
            g.HeaderRetry() = 0;
        }
        return;
    }
    g.ByteArrayHeaderRx = ReadRxBytes(g.NbByteToTreat);
    if (beginsWith(g.ByteArrayHeaderRx, reply::Header)) {
        if (CheckFrame(g.ByteArrayHeaderRx) != False16) {
            goOrStop(UpState::AskData);
        } else {
            // A bad header is asked for again, with a longer wait and no limit
            // on the number of times.
            goOrStop(UpState::NextFile);
            if (isKvx())
                g.WaitHeaderTimeKvx = growTo(g.WaitHeaderTimeKvx, HeaderWaitLimit);
            else if (isZbl())
                g.WaitHeaderTimeZbl = growTo(g.WaitHeaderTimeZbl, HeaderWaitLimit);
        }
    }
    // A reply with another head leaves the state, and its bytes are gone.
    g.HeaderRetry() = 0;
}

void doAskData()
{
    UploadGlobals& g = uploadGlobals();
    SendFileRequest(cmd::FileData, fileIndexByte(g.CurrentFile));
    FlushUpload();
    goOrStop(UpState::WaitData);
}

void doWaitData()
{
    UploadGlobals& g = uploadGlobals();
    if (!WaitTicks(g.WaitDataTime))
        return;
    g.NbByteToTreat = NumberOfNewBytes();
    g.ByteArrayDataRx = PeekRxBytes(DataHeadPeek);
    // The peek sees the start of the store's array even when nothing new
    // arrived: after the flush that is still the header frame, 0x6B. A data
    // reply that never starts keeps the state here with no time-out, and a
    // stop isn't looked at on this path. Kept.
    if (!beginsWith(g.ByteArrayDataRx, reply::Data))
        return;
    // 16-bit arithmetic, as the frame's length is: a length of 32762 or more
    // overflows.
    const Int16 expected = add16(add16(mul16(static_cast<Int16>(rxByte(g.ByteArrayDataRx, 3)), 256),
                                       static_cast<Int16>(rxByte(g.ByteArrayDataRx, 4))),
                                 6);
    if (stopRequested()) {
        g.UploadState = UpState::StopByUser;
        g.DataRetry() = 0;
    }
    if (g.NbByteToTreat < expected && g.DataRetry() < DataRetries) {
        // Cut short: up to 30 more waits of 3 ticks, for either device.
        g.WaitDataTime = 1;
        g.DataRetry() = add16(g.DataRetry(), 1);
        return;
    }
    if (g.NbByteToTreat < expected) {
        g.UploadState = UpState::SkipFile;
        g.DataRetry() = 0;
        return;
    }
    g.DataRetry() = 0;
    g.ByteArrayDataRx = ReadRxBytes(g.NbByteToTreat);
    if (CheckFrame(g.ByteArrayDataRx) != False16) {
        // A stop that came meanwhile still counts the file and leaves it to
        // state 98, so it isn't saved. Kept.
        g.NbFilesSucces = add16(g.NbFilesSucces, 1);
        g.CurrentFile = add16(g.CurrentFile, 1);
        goOrStop(UpState::SaveFile);
    } else {
        // Fetched again, header first, with no limit on the number of times.
        g.NbFilesFail = add16(g.NbFilesFail, 1);
        if (isKvx())
            g.WaitDataTimeKvx = growTo(g.WaitDataTimeKvx, KvxDataWaitLimit);
        else if (isZbl())
            g.WaitDataTimeZbl = growTo(g.WaitDataTimeZbl, ZblDataWaitLimit);
        goOrStop(UpState::NextFile);
    }
}

void doSaveFile()
{
    UploadSession& session = uploadSession();
    const UploadGlobals& g = session.globals;
    // CurrentFile has moved on already, so the file of index 0 is numbered 1.
    if (isKvx()) {
        ParseKvxHeader(g.ByteArrayHeaderRx, session.kvxHeader);
        session.kvxSlots = SpreadKvxData(g.ByteArrayDataRx, session.kvxSlots);
        WriteKvxTestFile(session.kvxHeader,
                         ParseKvxRecords(session.kvxSlots, session.kvxHeader.numberOfTests));
    } else if (isZbl()) {
        ParseZblHeader(g.ByteArrayHeaderRx, session.zblHeader);
        WriteZblTestFile(session.zblHeader,
                         ParseZblRecords(g.ByteArrayDataRx, session.zblHeader.numberOfReadings));
    }
    goOrStop(UpState::NextFile);
}

// Back to Idle with the ready texts, after the end of an upload or a stop.
void showReady()
{
    UploadGlobals& g = uploadGlobals();
    g.UploadState = UpState::Idle;
    DisplayTransfert(false);
    g.PrintMessageText = Lang(UploadKeys::Ready) + QLatin1Char(' ') + Type();
    g.DeviceStatusText = Lang(UploadKeys::StatusReady);
}

void doEndUpload()
{
    UploadGlobals& g = uploadGlobals();
    g.PrintMessageText = Lang(UploadKeys::FilesUploadSucces) + QLatin1Char(' ') + Type();
    if (!WaitTicks(ClosingTicks))
        return;
    showReady();
    const QString counts = Lang(UploadKeys::EndMessage1) + QLatin1Char(' ') +
                           numberText(g.NbFilesSucces) + QLatin1Char(' ') +
                           Lang(UploadKeys::EndMessage2) + QLatin1Char(' ') +
                           numberText(g.CurrentFile);
    // Files skipped in state 99 make the two counts differ; a bad data frame
    // doesn't, since it is fetched again until it passes.
    if (g.NbFilesSucces == g.CurrentFile) {
        showMessage(counts);
    } else {
        // The last key ends with its point and has no word after it: that is
        // the key asked for.
        showMessage(counts + QStringLiteral("\r\n") + Lang(UploadKeys::ErrorCorruption) +
                    QStringLiteral("\r\n") + Lang(UploadKeys::Advice));
    }
    UploadDeviceForm& form = uploadDeviceForm();
    form.cmdGetFilesEnabled = true;
    form.cmdStopEnabled = false;
    DisconnectPort();
    form.timerEnabled = false;
    EndProcess();
}

void doStopByUser()
{
    UploadGlobals& g = uploadGlobals();
    g.PrintMessageText = Lang(UploadKeys::StopByUser) + QLatin1Char(' ') + Type();
    if (!WaitTicks(ClosingTicks))
        return;
    showReady();
    g.StopRequested = False16;
    DisplayTransfert(false);
    // The connection stays: the operator may ask for the files again.
    UploadDeviceForm& form = uploadDeviceForm();
    form.cmdGetFilesEnabled = true;
    form.cmdStopEnabled = false;
}

void doSkipFile()
{
    if (!WaitTicks(4))
        return;
    UploadGlobals& g = uploadGlobals();
    g.CurrentFile = add16(g.CurrentFile, 1);
    goOrStop(UpState::NextFile);
    FlushUpload();
}

void doCheckPortReply()
{
    UploadGlobals& g = uploadGlobals();
    if (IsDataReceived() == False16) {
        g.UploadState = UpState::TryPort;
        DisconnectPort();
        return;
    }
    g.ByteArrayRx = readStore();
    if (g.NbByteToTreat > 2) {
        const int first = rxByte(g.ByteArrayRx, 0);
        const int second = rxByte(g.ByteArrayRx, 1);
        if (first == 'G' && second == 'P') {
            // Any reply code is taken; only these two name the device.
            const int code = rxByte(g.ByteArrayRx, 2);
            if (code == reply::Kvx)
                g.DeviceType = QLatin1String(Kvx);
            else if (code == reply::Zbl)
                g.DeviceType = QLatin1String(Zbl);
            g.UploadState = UpState::AskSerial;
            g.DeviceConnected = True16;
            g.DeviceStatusText = Lang(UploadKeys::StatusConnected);
            g.PrintMessageText = Lang(UploadKeys::DeviceFound);
            uploadDeviceForm().frDeviceVisible = true;
        } else {
            // Some other talker: its bytes go, and the state stays at 100.
            FlushRxBuffer();
        }
    }
    // Staying at 100 ends the attempt: the flag is cleared here, so the next
    // tick finds it false and goes to state 2.
    ClearDataReceived();
}

} // namespace

bool WaitTicks(Int16 n)
{
    Int16& ticks = uploadGlobals().TickCount();
    if (ticks <= n) {
        ticks = add16(ticks, 1);
        return false;
    }
    ticks = 0;
    return true;
}

void FlushUpload()
{
    // The count is read and dropped, as the flush has always done.
    [[maybe_unused]] const Int32 spare = NumberOfNewBytes();
    ClearDataReceived();
    FlushRxBuffer();
}

void InitUpload()
{
    UploadGlobals& g = uploadGlobals();
    g.UploadState = UpState::TryPort;
    g.PrintMessageText = Lang(UploadKeys::TryToConnect);
    g.DeviceStatusText = Lang(UploadKeys::StatusNotConnected);
    // Four reads of the clock, one for each part of the stamp.
    const QDate date = clock().now().date();
    const int hour = clock().now().time().hour();
    const int minute = clock().now().time().minute();
    const int second = clock().now().time().second();
    g.UploadFolderStamp =
        formatNumber(date.year(), u"0000") + QLatin1Char('-') + formatNumber(date.month(), u"00") +
        QLatin1Char('-') + formatNumber(date.day(), u"00") + QLatin1Char(' ') +
        formatNumber(hour, u"00") + QLatin1Char('H') + formatNumber(minute, u"00") +
        QLatin1Char('M') + formatNumber(second, u"00");
}

void CloseUpload()
{
    uploadGlobals().UploadState = UpState::TryPort;
    DisconnectPort();
}

void StateMachineProcess()
{
    // Every state has its case and there is no default, so that a state left
    // out is a compiler warning; a number that names no state does nothing.
    switch (uploadGlobals().UploadState) {
    case UpState::ScanPorts: // nothing ever enters this state
        doScanPorts();
        break;
    case UpState::TryPort:
        doTryPort();
        break;
    case UpState::WaitPortReply:
        doWaitPortReply();
        break;
    case UpState::Idle:
        break; // waits for cmdGetFiles or mnscan
    case UpState::AskSerial:
        doAskSerial();
        break;
    case UpState::WaitSerial:
        doWaitSerial();
        break;
    case UpState::AskFileCount:
        doAskFileCount();
        break;
    case UpState::WaitFileCount:
        doWaitFileCount();
        break;
    case UpState::NextFile:
        doNextFile();
        break;
    case UpState::AskHeader:
        doAskHeader();
        break;
    case UpState::WaitHeader:
        doWaitHeader();
        break;
    case UpState::AskData:
        doAskData();
        break;
    case UpState::WaitData:
        doWaitData();
        break;
    case UpState::SaveFile:
        doSaveFile();
        break;
    case UpState::EndUpload:
        doEndUpload();
        break;
    case UpState::StopByUser:
        doStopByUser();
        break;
    case UpState::SkipFile:
        doSkipFile();
        break;
    case UpState::CheckPortReply:
        doCheckPortReply();
        break;
    }
}

} // namespace quenby
