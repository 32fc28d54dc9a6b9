#include "upload/model/CSerialCom.h"

#include "shell/model/CodePage.h"
#include "shell/model/NumberText.h"
#include "shell/model/RuntimeError.h"
#include "upload/model/CCommBuffCirculaire.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"

#include <QLoggingCategory>
#include <QtGlobal>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace quenby {

namespace {

// Debug output for whoever asks for it: QT_LOGGING_RULES="quenby.serial.debug=true".
Q_LOGGING_CATEGORY(lcSerial, "quenby.serial", QtInfoMsg)

const QString LineSetting = QStringLiteral("115200,n,8,1");
const QString CrLf = QStringLiteral("\r\n");

// The port number as the trace lines show it: a blank before it for the sign.
QString portText(Int16 number)
{
    return signedNumberText(number);
}

} // namespace

void traceDebugLine(const QString& line)
{
    if (const auto& sink = uploadSession().debugTraceSink) {
        sink(line);
        return;
    }
#ifdef Q_OS_WIN
    const QByteArray ansi = encodeText(line);
    OutputDebugStringA(ansi.constData());
#else
    QString shown = line;
    while (shown.endsWith(QLatin1Char('\n')) || shown.endsWith(QLatin1Char('\r')))
        shown.chop(1);
    qCDebug(lcSerial).noquote() << shown;
#endif
}

void setDebugTraceSink(std::function<void(const QString&)> sink)
{
    uploadSession().debugTraceSink = std::move(sink);
}

CSerialCom::CSerialCom() : m_port(makeSerialPort())
{
    attach();
}

CSerialCom::~CSerialCom()
{
    // Class_Terminate: the port number is read first, then the port closed if
    // it is open. Closing a port never fails.
    try {
        (void)m_port->CommPort();
        if (m_port->PortOpen())
            m_port->setPortOpen(false);
    } catch (const RuntimeError&) {
    }
}

void CSerialCom::attach()
{
    m_port->setOnComm([this]() { SerialConnection_OnComm(); });
}

Bool16 CSerialCom::isPrintable(const QString& c)
{
    // The first byte of the text as held in memory: the low byte of its first
    // 16-bit unit. An empty text has none, as the platform says.
    if (c.isEmpty())
        raiseRuntimeError(err::InvalidProcedureCall, QStringLiteral("isPrintable"));
    const int b = c.at(0).unicode() & 0xFF;
    if ((b < 0x20 || b > 0x7E) && b < 128)
        return False16;
    return True16;
}

QString CSerialCom::formatHex(const QString& s)
{
    if (s.size() >= 2)
        return s;
    return QString(2 - s.size(), QLatin1Char('0')) + s;
}

QString CSerialCom::toPrintable(const QString& s)
{
    QString text;
    for (qsizetype i = 0; i < s.size(); ++i) {
        const QString c = s.mid(i, 1);
        if (isPrintable(c)) {
            text += c;
        } else {
            const QByteArray ansi = encodeText(c);
            const int code = ansi.isEmpty() ? 0 : static_cast<unsigned char>(ansi.at(0));
            text += QStringLiteral("\\x") + formatHex(QString::number(code, 16).toUpper());
        }
    }
    return text;
}

QString CSerialCom::toPrintableB(const QByteArray& bytes)
{
    return toPrintable(bytearraytostring(bytes));
}

QString CSerialCom::bytearraytostring(const QByteArray& bytes)
{
    return decodeText(bytes, CodePage::Windows1252);
}

void CSerialCom::SerialConnection_OnComm()
{
    if (m_port->CommEvent() != comEvReceive)
        return; // break, framing, overrun: ignored
    const QByteArray bytes = m_port->Input();
    (void)toPrintableB(bytes); // the trace text is built and not written

    const UploadGlobals& globals = uploadGlobals();
    if (globals.DeviceConnected) {
        commBuffer().PutDataOnBuffer(bytes);
        m_dataReceived = True16;
        return;
    }
    if (!globals.PortProbeActive)
        return;
    // While probing, a lone byte or noise that starts with 0xFF can't make a
    // port look like an instrument.
    if (bytes.size() >= 2 && static_cast<unsigned char>(bytes.at(0)) < 255) {
        commBuffer().PutDataOnBuffer(bytes);
        m_dataReceived = True16;
    }
}

Dynamic CSerialCom::IshComBufferRxEmpty()
{
    return Dynamic(static_cast<int>(toBool16(m_port->InBufferCount() == 0)));
}

QString CSerialCom::DataBufferRx(Int32 count)
{
    return toPrintableB(commBuffer().GetDataOnBuffer(count));
}

Bool16 CSerialCom::OpenPort(Int16 serialPort, Int32 lbaud, Bool16 isHandShaking)
{
    // The line setting is always the same; these two change nothing.
    (void)lbaud;
    (void)isHandShaking;

    m_dataReceived = False16;
    const QString number = portText(serialPort);
    if (m_port->PortOpen()) {
        traceDebugLine(QStringLiteral("Port ") + number + QStringLiteral(" déjà ouvert") + CrLf);
        m_port->setPortOpen(false);
    }
    traceDebugLine(QStringLiteral("About to setup port ") + number + CrLf);
    m_port->setCommPort(serialPort);
    m_port->setSettings(LineSetting);
    m_port->setInputMode(1);  // binary: Input gives bytes
    m_port->setInputLen(0);   // Input takes all that waits
    m_port->setRThreshold(1); // an event for every byte or run of bytes
    m_port->setRTSEnable(true);
    traceDebugLine(QStringLiteral("About to open port ") + number + CrLf);
    traceDebugLine(QStringLiteral("Port status: ") +
                   (m_port->PortOpen() ? QStringLiteral("True") : QStringLiteral("False")) + CrLf);

    bool failed = false;
    try {
        m_port->setPortOpen(true);
    } catch (const RuntimeError&) {
        failed = true;
    }
    if (failed) {
        traceDebugLine(QStringLiteral("Cannot open port ") + number + CrLf);
        return False16;
    }
    traceDebugLine(QStringLiteral("Port ") + number + QStringLiteral(" ouvert") + CrLf);
    return True16;
}

void CSerialCom::Disconnect()
{
    if (m_port->PortOpen()) {
        (void)m_port->CommPort();
        m_port->setPortOpen(false);
    }
    // Always a fresh object, so that each candidate port starts clean.
    m_port = makeSerialPort();
    attach();
}

namespace {

// A write with errors caught: true when the port raised.
Bool16 writeCaught(SerialPortDevice& port, const QByteArray& bytes)
{
    try {
        port.Output(bytes);
    } catch (const RuntimeError&) {
        return True16;
    }
    return False16;
}

} // namespace

Bool16 CSerialCom::OutputByte(unsigned char b)
{
    const QByteArray text(1, static_cast<char>(b)); // the byte as a one-character string
    (void)toPrintable(bytearraytostring(text));
    return writeCaught(*m_port, text);
}

Bool16 CSerialCom::SendCommandKVX(unsigned char cmd)
{
    QByteArray bytes;
    bytes.append('H').append('P').append(static_cast<char>(cmd)).append(static_cast<char>(cmd));
    (void)toPrintableB(bytes);
    return writeCaught(*m_port, bytes);
}

Bool16 CSerialCom::SendCommandByte(unsigned char b)
{
    const QByteArray bytes(1, static_cast<char>(b));
    (void)toPrintableB(bytes);
    return writeCaught(*m_port, bytes);
}

} // namespace quenby
