#include "upload/platform/QtSerialPortDevice.h"

#include "shell/model/RuntimeError.h"
#include "upload/model/PortDiscovery.h"
#include "upload/model/UploadSession.h"
#include "upload/platform/QtPortList.h"

#include <QObject>
#include <QSerialPort>

#include <algorithm>

namespace quenby {

namespace {

// The line setting as the port object takes it: "baud,parity,data,stop".
struct LineSetting
{
    qint32 baud = 115200;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};

LineSetting parseSettings(const QString& text)
{
    LineSetting s;
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 4)
        raiseRuntimeError(err::InvalidProcedureCall, text);
    bool ok = false;
    s.baud = parts[0].trimmed().toInt(&ok);
    if (!ok || s.baud <= 0)
        raiseRuntimeError(err::InvalidProcedureCall, text);
    const QString parity = parts[1].trimmed().toLower();
    if (parity == QLatin1String("n"))
        s.parity = QSerialPort::NoParity;
    else if (parity == QLatin1String("e"))
        s.parity = QSerialPort::EvenParity;
    else if (parity == QLatin1String("o"))
        s.parity = QSerialPort::OddParity;
    else if (parity == QLatin1String("m"))
        s.parity = QSerialPort::MarkParity;
    else if (parity == QLatin1String("s"))
        s.parity = QSerialPort::SpaceParity;
    else
        raiseRuntimeError(err::InvalidProcedureCall, text);
    const int bits = parts[2].trimmed().toInt(&ok);
    if (!ok || bits < 5 || bits > 8)
        raiseRuntimeError(err::InvalidProcedureCall, text);
    s.dataBits = static_cast<QSerialPort::DataBits>(bits);
    const QString stop = parts[3].trimmed();
    if (stop == QLatin1String("1"))
        s.stopBits = QSerialPort::OneStop;
    else if (stop == QLatin1String("1.5"))
        s.stopBits = QSerialPort::OneAndHalfStop;
    else if (stop == QLatin1String("2"))
        s.stopBits = QSerialPort::TwoStop;
    else
        raiseRuntimeError(err::InvalidProcedureCall, text);
    return s;
}

// One port of the system. Qt delivers its bytes on the thread that made it,
// the window thread, where the link's receive event expects them.
class QtSerialPortDevice final : public SerialPortDevice
{
public:
    QtSerialPortDevice()
    {
        QObject::connect(&m_port, &QSerialPort::readyRead, &m_port, [this] {
            // The receive event reads what waits; whatever it leaves stays
            // for the next one.
            m_event = comEvReceive;
            raiseOnComm();
            m_event = 0;
        });
        QObject::connect(&m_port, &QSerialPort::errorOccurred, &m_port,
                         [this](QSerialPort::SerialPortError error) {
                             // A port that went away (a key pulled out, a cable cut)
                             // is closed: later writes fail and nothing arrives,
                             // which the upload meets through its time-outs.
                             if (error == QSerialPort::ResourceError && m_port.isOpen())
                                 m_port.close();
                         });
    }

    Int16 CommPort() const override { return m_number; }
    void setCommPort(Int16 number) override
    {
        if (m_port.isOpen())
            raiseRuntimeError(err::PortAlreadyOpen, QStringLiteral("CommPort"));
        m_number = number;
    }
    void setSettings(const QString& settings) override { m_setting = parseSettings(settings); }
    void setInputMode(Int16) override {}  // bytes are always binary here
    void setInputLen(Int16) override {}   // Input always takes all that waits
    void setRThreshold(Int16) override {} // every run of bytes raises the event
    void setRTSEnable(bool enable) override
    {
        m_rts = enable;
        if (m_port.isOpen())
            applyRts();
    }

    bool PortOpen() const override { return m_port.isOpen(); }
    void setPortOpen(bool open) override
    {
        if (!open) {
            if (m_port.isOpen())
                m_port.close();
            return;
        }
        if (m_port.isOpen())
            raiseRuntimeError(err::PortAlreadyOpen, m_port.portName());
        const QString location = portLocationForNumber(m_number);
        if (location.isEmpty())
            raiseRuntimeError(err::PortInvalid, QStringLiteral("port %1").arg(m_number));
        m_port.setPortName(location);
        m_port.setBaudRate(m_setting.baud);
        m_port.setParity(m_setting.parity);
        m_port.setDataBits(m_setting.dataBits);
        m_port.setStopBits(m_setting.stopBits);
        m_port.setFlowControl(QSerialPort::NoFlowControl);
        if (!m_port.open(QIODevice::ReadWrite))
            raiseRuntimeError(err::PortInvalid,
                              location + QStringLiteral(": ") + m_port.errorString());
        applyRts();
    }

    Int16 InBufferCount() const override
    {
        return static_cast<Int16>(std::min<qint64>(m_port.bytesAvailable(), 32767));
    }
    QByteArray Input() override { return m_port.readAll(); }
    void Output(const QByteArray& bytes) override
    {
        if (!m_port.isOpen())
            raiseRuntimeError(err::PortNotOpen, QStringLiteral("port %1").arg(m_number));
        if (m_port.write(bytes) != bytes.size())
            raiseRuntimeError(err::PortWriteFailed,
                              m_port.portName() + QStringLiteral(": ") + m_port.errorString());
    }
    Int16 CommEvent() const override { return m_event; }

private:
    void applyRts()
    {
        // A virtual port (a pseudo-terminal) has no modem lines and refuses
        // the request; the line is then simply not there, which is harmless.
        if (!m_port.setRequestToSend(m_rts) &&
            m_port.error() == QSerialPort::UnsupportedOperationError)
            m_port.clearError();
    }

    QSerialPort m_port;
    Int16 m_number = 1;
    LineSetting m_setting;
    bool m_rts = false;
    Int16 m_event = 0;
};

} // namespace

void installSerialServices()
{
    setSerialPortFactory([] { return std::make_unique<QtSerialPortDevice>(); });
    // The session keeps the list for as long as it lives.
    UploadSession& session = uploadSession();
    session.ownedPortList = std::make_unique<QtPortList>();
    setPortListService(session.ownedPortList.get());
}

} // namespace quenby
