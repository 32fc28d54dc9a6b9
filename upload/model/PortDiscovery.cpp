#include "upload/model/PortDiscovery.h"

#include "shell/model/NumberText.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/YieldHook.h"
#include "upload/model/CSerialCom.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"
#include "upload/model/mdKvxZblCom.h"

namespace quenby {

namespace {

// The search opens every port at this rate; the link ignores it and always
// uses its fixed line setting.
constexpr Int32 ProbeBaudRate = 115200;

// The platform's text cut: `length` characters from the 1-based `start`. A
// negative length is an invalid call; a start past the end gives "".
QString midText(const QString& text, qsizetype start, qsizetype length, const QString& where)
{
    if (start < 1 || length < 0)
        raiseRuntimeError(err::InvalidProcedureCall, where);
    return text.mid(start - 1, length);
}

// A dynamic boolean as the link answers it: a number (0 false) or a text.
bool isTrue(const Dynamic& value)
{
    if (value.isText())
        return value.toText().compare(QStringLiteral("True"), Qt::CaseInsensitive) == 0;
    return value.toNumber() != 0;
}

void mirrorForm()
{
    uploadDeviceView().mirror();
}

// Ports named by the COM number in their caption: "USB Serial Port (COM7)".
Int16 listComCaptions(const std::vector<PnpEntity>& devices)
{
    UploadGlobals& g = uploadGlobals();
    UploadDeviceForm& form = uploadDeviceForm();
    Int16 count = 0;
    for (const PnpEntity& device : devices) {
        if (device.captionNull || device.caption.isEmpty() || device.configManagerErrorCode != 0)
            continue;
        const QString& caption = device.caption;
        const qsizetype at = caption.indexOf(QStringLiteral("(COM"), 0, Qt::CaseInsensitive);
        if (at < 0)
            continue;
        // p and q are 1-based positions: p of "(", q of the first ")" searched
        // from p + 1 (0 if there is none).
        const qsizetype p = at + 1;
        const qsizetype close = caption.indexOf(u')', p, Qt::CaseInsensitive);
        const qsizetype q = close < 0 ? 0 : close + 1;
        // The cut is q - p - 1 long from p + 4, so it takes the ")" and may run
        // past it; the parse stops at the first character that is no digit.
        // Without a ")" the length goes negative and the cut fails.
        const Int16 number = toInt16(leadingNumber(midText(caption, p + 4, q - p - 1, caption)));
        if (number >= 17)
            continue; // COM1 to COM16 alone can be found
        form.cbComItems << midText(caption, p + 1, q - p - 1, caption);
        // The list entry is added before the bound is met: an eighteenth port
        // shows in cbCom and then fails on the seventeen-entry list.
        if (count >= PortListSize)
            raiseRuntimeError(err::SubscriptOutOfRange, QStringLiteral("PortList"));
        g.PortList[static_cast<std::size_t>(count)] = number;
        g.PortLocations[static_cast<std::size_t>(count)] =
            QStringLiteral("COM") + QString::number(number);
        count = add16(count, 1);
    }
    return count;
}

// Ports without COM numbers: each working device by its name, numbered by
// its place in the list, the first being 1.
Int16 listDeviceNames(const std::vector<PnpEntity>& devices)
{
    UploadGlobals& g = uploadGlobals();
    UploadDeviceForm& form = uploadDeviceForm();
    Int16 count = 0;
    for (const PnpEntity& device : devices) {
        if (device.captionNull || device.caption.isEmpty() || device.configManagerErrorCode != 0)
            continue;
        if (count >= PortListSize)
            break; // the list holds seventeen; the rest are not offered
        form.cbComItems << device.caption;
        g.PortList[static_cast<std::size_t>(count)] = add16(count, 1);
        g.PortLocations[static_cast<std::size_t>(count)] = device.location;
        count = add16(count, 1);
    }
    return count;
}

} // namespace

void setPortListService(PortListService* service)
{
    uploadSession().portList = service;
}

PortListService* portListService()
{
    return uploadSession().portList;
}

Int16 ScanComPorts()
{
    UploadGlobals& g = uploadGlobals();
    UploadDeviceForm& form = uploadDeviceForm();

    form.cbComItems.clear();
    form.cbComListIndex = -1;
    g.PortList.fill(0);
    for (QString& location : g.PortLocations)
        location.clear();

    Int16 count = 0;
    if (PortListService* service = portListService()) {
        const std::vector<PnpEntity> devices = service->entities();
        count = service->naming() == PortNaming::ComCaption ? listComCaptions(devices)
                                                            : listDeviceNames(devices);
    }

    if (!form.cbComItems.isEmpty())
        form.cbComListIndex = 0;
    mirrorForm();
    return count;
}

void TryNextPort()
{
    UploadGlobals& g = uploadGlobals();

    // Rebuilt on every attempt, so that a key plugged in later is seen.
    const Int16 n = ScanComPorts();
    if (g.PortIndex >= n) {
        // The wrap takes an attempt of its own and opens nothing.
        g.PortIndex = 0;
        return;
    }
    if (g.PortIndex < 0)
        raiseRuntimeError(err::SubscriptOutOfRange, QStringLiteral("PortList"));

    const Int16 port = g.PortList[static_cast<std::size_t>(g.PortIndex)];
    g.PortProbeActive = False16;
    serialCom().Disconnect();

    if (serialCom().OpenPort(port, ProbeBaudRate, False16) == False16) {
        // A port that can't be opened costs the attempt: the wait of state 3
        // still runs and state 100 finds no data.
        g.PortIndex = add16(g.PortIndex, 1);
        return;
    }

    // From here the receive event takes bytes, filtered, before the device is
    // known.
    g.PortProbeActive = True16;
    while (!isTrue(serialCom().IshComBufferRxEmpty()))
        letSystemBreathe();

    SendShortCommand(cmd::Identify);
    g.PortStatusText = QStringLiteral("Port: ") + numberText(port);
    g.PortIndex = add16(g.PortIndex, 1);
}

QString portLocationForNumber(Int16 number)
{
    const PortListService* service = portListService();
    if (service && service->naming() == PortNaming::DeviceName) {
        if (number < 1 || number > PortListSize)
            return {};
        return uploadGlobals().PortLocations[static_cast<std::size_t>(number - 1)];
    }
    return QStringLiteral("COM") + QString::number(number);
}

} // namespace quenby
