#include "tests/upload/support/ScriptedSerialPort.h"

#include "shell/model/RuntimeError.h"

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

ScriptedPorts::ScriptedPorts()
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
    setSerialPortFactory({});
}

QByteArray ScriptedPorts::deliver(const QByteArray& extra)
{
    QByteArray bytes;
    if (bench.responder) {
        for (; m_answered < bench.writes.size(); ++m_answered)
            bytes += bench.responder(bench.writes[m_answered], m_current ? m_current->CommPort() : 0);
    }
    m_answered = bench.writes.size();
    bytes += extra;
    if (!bytes.isEmpty() && m_current && m_current->PortOpen())
        m_current->receive(bytes);
    return bytes;
}

ScriptedPortList::ScriptedPortList()
{
    setPortListService(this);
}

ScriptedPortList::~ScriptedPortList()
{
    setPortListService(nullptr);
}

PnpEntity ScriptedPortList::com(int number, const QString& description)
{
    PnpEntity e;
    e.caption = QStringLiteral("%1 (COM%2)").arg(description).arg(number);
    return e;
}

} // namespace quenby::testing
