// The upload of one stored file on any bytes: the input is what the
// instrument sends for it, and the file maker writes the test file under a
// data root in a scratch folder.
//
//   byte 0      bit 0: the instrument, 0 a KVX, 1 a ZBL; bit 1: the length
//               and the check of both frames are made right before use, so
//               that mutations get past the frame check to the decoders
//   then        the header frame, "G", "P", 0x6B, length high, length low,
//               payload, check; its length bytes say where it ends
//   the rest    the data frame, "G", "P", 0x6C, ...
//
// As the upload loop does: a frame counts when it starts with its reply code
// and passes the frame check; with both, the loop's save step decodes the
// header and the tests or readings and writes the file. The serial number and
// file count decoders read the header frame as well.
#include "shell/model/DataFolders.h"
#include "shell/model/SettingsStore.h"
#include "tests/fuzz/FuzzSupport.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"
#include "upload/model/mdKvxZblCom.h"
#include "upload/model/mdStateMachine.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace quenby;

namespace {

// The length of the frame at the start of `bytes`, as its length bytes give
// it, at most what there is.
qsizetype frameLength(QByteArrayView bytes)
{
    if (bytes.size() < 5)
        return bytes.size();
    const qsizetype payload =
        static_cast<unsigned char>(bytes[3]) * 256 + static_cast<unsigned char>(bytes[4]);
    return std::min(bytes.size(), payload + 6);
}

// The frame with its head, length and check as a sound frame of `code` has
// them; the payload stays.
QByteArray repaired(QByteArray frame, unsigned char code)
{
    if (frame.size() < 6)
        return frame;
    const qsizetype payload = frame.size() - 6;
    frame[0] = 'G';
    frame[1] = 'P';
    frame[2] = static_cast<char>(code);
    frame[3] = static_cast<char>(payload / 256 % 256);
    frame[4] = static_cast<char>(payload % 256);
    unsigned sum = code;
    for (qsizetype i = 5; i < frame.size() - 1; ++i)
        sum += static_cast<unsigned char>(frame[i]);
    frame[frame.size() - 1] = static_cast<char>(sum % 256);
    return frame;
}

bool sound(const QByteArray& frame, unsigned char code)
{
    return frame.size() >= 3 && frame[0] == 'G' && frame[1] == 'P' &&
           static_cast<unsigned char>(frame[2]) == code && CheckFrame(frame) != False16;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return 0;
    tools::ToolSessions sessions;
    OwnedSession<UploadSession> upload;
    const fuzz::Scratch scratch;

    const bool zbl = (data[0] & 1) != 0;
    const bool repair = (data[0] & 2) != 0;
    const QByteArray frames = fuzz::inputBytes(data + 1, size - 1);
    const qsizetype headerLength = frameLength(frames);
    QByteArray header = frames.left(headerLength);
    QByteArray body = frames.mid(headerLength);
    if (repair) {
        header = repaired(header, reply::Header);
        body = repaired(body, reply::Data);
    }

    const QString instrument = zbl ? QStringLiteral("ZBL") : QStringLiteral("KVX");
    settingsStore().SaveSetting(QLatin1String(SettingsAppData),
                                QLatin1String(SectionUserFileTransfert), instrument,
                                scratch.path());
    UploadGlobals& g = uploadGlobals();
    g.DeviceType = instrument;
    g.DeviceSerial = zbl ? QStringLiteral("#123") : QStringLiteral("KVX0001");
    g.UploadFolderStamp = QStringLiteral("2014-03-09 14H05M07");
    // The first file, counted before it is saved.
    g.CurrentFile = 1;

    // Each decoder on its own: a failure of one keeps none of the others out.
    fuzz::runRoad([&] { DecodeSerialNumber(header, instrument); });
    fuzz::runRoad([&] { DecodeFileCount(header); });
    fuzz::runRoad([&] {
        if (!sound(header, reply::Header) || !sound(body, reply::Data))
            return;
        g.ByteArrayHeaderRx = header;
        g.ByteArrayDataRx = body;
        g.UploadState = UpState::SaveFile;
        StateMachineProcess();
    });
    return 0;
}
