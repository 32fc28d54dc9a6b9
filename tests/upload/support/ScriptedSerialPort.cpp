#include "tests/upload/support/ScriptedSerialPort.h"

#include "shell/model/AppState.h"
#include "shell/model/DataFolders.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/YieldHook.h"
#include "tests/support/TestFiles.h"
#include "upload/model/mdStateMachine.h"

#include <QDir>

#include <map>
#include <stdexcept>

namespace quenby::testing {

namespace {
QString hexBytes(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex(' '));
}
} // namespace

void ScriptedSerialPort::setCommPort(Int16 number)
{
    m_number = number;
    m_bench.calls << QStringLiteral("CommPort=%1").arg(number);
}

void ScriptedSerialPort::setSettings(const QString& settings)
{
    m_bench.calls << QStringLiteral("Settings=") + settings;
}

void ScriptedSerialPort::setInputMode(Int16 mode)
{
    m_bench.calls << QStringLiteral("InputMode=%1").arg(mode);
}

void ScriptedSerialPort::setInputLen(Int16 length)
{
    m_bench.calls << QStringLiteral("InputLen=%1").arg(length);
}

void ScriptedSerialPort::setRThreshold(Int16 threshold)
{
    m_bench.calls << QStringLiteral("RThreshold=%1").arg(threshold);
}

void ScriptedSerialPort::setRTSEnable(bool enable)
{
    m_bench.calls << QStringLiteral("RTSEnable=%1").arg(enable ? "true" : "false");
}

void ScriptedSerialPort::setPortOpen(bool open)
{
    m_bench.calls << QStringLiteral("PortOpen=%1").arg(open ? "true" : "false");
    if (open) {
        if (m_open)
            raiseRuntimeError(err::PortAlreadyOpen, QStringLiteral("COM%1").arg(m_number));
        if (m_bench.refusedPorts.count(m_number))
            raiseRuntimeError(err::PortInvalid, QStringLiteral("COM%1").arg(m_number));
        m_open = true;
        m_bench.openPort = m_number;
    } else {
        if (m_open && m_bench.openPort == m_number)
            m_bench.openPort = 0;
        m_open = false;
    }
}

Int16 ScriptedSerialPort::InBufferCount() const
{
    return static_cast<Int16>(m_input.size() + m_bench.pending.size());
}

QByteArray ScriptedSerialPort::Input()
{
    QByteArray all = m_input;
    m_input.clear();
    return all;
}

void ScriptedSerialPort::Output(const QByteArray& bytes)
{
    m_bench.calls << QStringLiteral("Output=") + hexBytes(bytes);
    if (!m_open)
        raiseRuntimeError(err::PortNotOpen, QStringLiteral("COM%1").arg(m_number));
    if (m_bench.writesFail)
        raiseRuntimeError(err::PortWriteFailed, QStringLiteral("COM%1").arg(m_number));
    m_bench.writes.push_back(bytes);
}

void ScriptedSerialPort::receive(const QByteArray& bytes, Int16 event)
{
    m_input += bytes;
    m_event = event;
    raiseOnComm();
    m_event = 0;
}

ScriptedPorts::ScriptedPorts() : m_session(uploadSession())
{
    setSerialPortFactory([this]() -> std::unique_ptr<SerialPortDevice> {
        auto port = std::make_unique<ScriptedSerialPort>(bench);
        m_current = port.get();
        ++bench.portsMade;
        return port;
    });
}

ScriptedPorts::~ScriptedPorts()
{
    // The link closes its scripted port while the bench is still there.
    m_session.link.reset();
    m_session.serialPortFactory = {};
}

QByteArray ScriptedPorts::deliver(const QByteArray& extra)
{
    QByteArray bytes;
    if (bench.responder) {
        for (; m_answered < bench.writes.size(); ++m_answered)
            bytes +=
                bench.responder(bench.writes[m_answered], m_current ? m_current->CommPort() : 0);
    }
    m_answered = bench.writes.size();
    bytes += extra;
    if (!bytes.isEmpty() && m_current && m_current->PortOpen())
        m_current->receive(bytes);
    return bytes;
}

ScriptedPortList::ScriptedPortList() : m_session(uploadSession())
{
    setPortListService(this);
}

ScriptedPortList::~ScriptedPortList()
{
    if (m_session.portList == this)
        m_session.portList = nullptr;
}

PnpEntity ScriptedPortList::com(int number, const QString& description)
{
    PnpEntity e;
    e.caption = QStringLiteral("%1 (COM%2)").arg(description).arg(number);
    return e;
}

QByteArray ScriptedPorts::deliverPending()
{
    if (bench.pending.isEmpty() || !m_current || !m_current->PortOpen())
        return {};
    const QByteArray bytes = bench.pending;
    bench.pending.clear();
    m_current->receive(bytes);
    return bytes;
}

std::function<QByteArray(const QByteArray&, int)> commandResponder(CommandAnswer answer)
{
    auto gathered = std::make_shared<QByteArray>();
    return [gathered, answer](const QByteArray& write, int port) {
        *gathered += write;
        QByteArray replies;
        while (gathered->size() >= 3) {
            const auto code = static_cast<unsigned char>(gathered->at(2));
            const qsizetype length = (code == 211 || code == 212) ? 5 : 4;
            if (gathered->size() < length)
                break;
            replies += answer(gathered->left(length), port);
            gathered->remove(0, length);
        }
        return replies;
    };
}

namespace {

// The rig's language: a text of its own for each key, so that a test can tell
// every message from the others.
const std::map<QString, QString>& rigTexts()
{
    static const std::map<QString, QString> texts = {
        {"frmUploadDevice.lbPrintMessage.TryToConnect", "Looking for a device"},
        {"frmUploadDevice.lbPrintMessage.DeviceFound", "Device found"},
        {"frmUploadDevice.lbPrintMessage.DeviceSerialNumber", "Reading its serial"},
        {"frmUploadDevice.lbPrintMessage.GetNumberOfFiles", "Counting the files"},
        {"frmUploadDevice.lbPrintMessage.FileOnDevice", "files stored"},
        {"frmUploadDevice.lbPrintMessage.Connect", "Linked to"},
        {"frmUploadDevice.lbPrintMessage.FilesUploadSucces", "All files read from"},
        {"frmUploadDevice.lbPrintMessage.StopByUser", "Stopped talking to"},
        {"frmUploadDevice.lbPrintMessage.Ready", "Ready for"},
        {"frmUploadDevice.lbPrintMessage.UploadInProgress", "Reading files"},
        {"frmUploadDevice.lbDeviceStatus.Caption", "Offline"},
        {"frmUploadDevice.lbDeviceStatus.Connect", "Online"},
        {"frmUploadDevice.lbDeviceStatus.Ready", "Idle"},
        {"frmUploadDevice.msgBox.EndMessage1", "Files received:"},
        {"frmUploadDevice.msgBox.EndMessage2", "out of"},
        {"frmUploadDevice.msgBox.ErrorCorruption", "Some files were skipped."},
        {"frmUploadDevice.msgBox.", "Check the cable and try again."},
        {"DeviceType.KVX", "(KVX set)"},
        {"DeviceType.ZBL", "(ZBL meter)"},
    };
    return texts;
}

constexpr auto AdviceKey = "frmUploadDevice.msgBox.";

} // namespace

UploadRig::UploadRig()
{
    if (!m_programDir.isValid() || !m_dataDir.isValid() || !m_storeDir.isValid())
        throw std::runtime_error("no temporary folder");
    setAppPathOverride(m_programDir.path());
    writeLanguage(true);

    m_store = std::make_unique<QtSettingsStore>(m_storeDir.path());
    setSettingsStore(m_store.get());
    const QString root = toPlatformPath(m_dataDir.path());
    m_store->SaveSetting(SettingsAppData, SectionUserFileTransfert, QStringLiteral("KVX"), root);
    m_store->SaveSetting(SettingsAppData, SectionUserFileTransfert, QStringLiteral("ZBL"), root);
    // The data folders exist, as the start-up check leaves them.
    QDir(m_dataDir.path()).mkpath(QStringLiteral("KVX/Files"));
    QDir(m_dataDir.path()).mkpath(QStringLiteral("ZBL/Files"));

    setYieldHook([this] {
        if (++yields > yieldLimit)
            throw std::runtime_error("the yield loop does not end");
        ports.deliverPending();
        if (onYield)
            onYield();
    });
}

UploadRig::~UploadRig()
{
    setYieldHook({});
    setSettingsStore(nullptr);
    appState().LangFilePath.clear();
    setAppPathOverride({});
}

QString UploadRig::text(const QString& key)
{
    const auto it = rigTexts().find(key);
    return it == rigTexts().end() ? key : it->second;
}

void UploadRig::writeLanguage(bool withAdvice)
{
    QStringList lines;
    for (const auto& [key, value] : rigTexts())
        if (withAdvice || key != QLatin1String(AdviceKey))
            lines << key + QStringLiteral(", ") + value;
    const QString file = toPlatformPath(m_programDir.filePath(QStringLiteral("rig.lng")));
    writeBytes(file, crlfLines(lines));
    appState().LangFilePath = file;
}

QString UploadRig::dataRoot() const
{
    return toPlatformPath(m_dataDir.path());
}

QString UploadRig::kvxUploadFolder(const QString& stamp) const
{
    return dataRoot() + pathSep() + QStringLiteral("KVX") + pathSep() + QStringLiteral("Files") +
           pathSep() + stamp;
}

QString UploadRig::zblUploadFolder(const QString& stamp) const
{
    return dataRoot() + pathSep() + QStringLiteral("ZBL") + pathSep() + QStringLiteral("Files") +
           pathSep() + stamp;
}

void UploadRig::tick()
{
    tmrStateMachine_Timer();
    ports.deliver();
}

int UploadRig::ticksUntil(UpState state, int limit)
{
    for (int ticks = 1; ticks <= limit; ++ticks) {
        tick();
        if (uploadGlobals().UploadState == state)
            return ticks;
    }
    return -1;
}

} // namespace quenby::testing
