#include "upload/model/SerialPortDevice.h"

#include "shell/model/RuntimeError.h"
#include "upload/model/UploadSession.h"

namespace quenby {

namespace {

// The port object of a system without serial ports: it never opens, and
// writing to it fails as writing to a closed port does.
class AbsentSerialPort final : public SerialPortDevice
{
public:
    Int16 CommPort() const override { return m_number; }
    void setCommPort(Int16 number) override { m_number = number; }
    void setSettings(const QString&) override {}
    void setInputMode(Int16) override {}
    void setInputLen(Int16) override {}
    void setRThreshold(Int16) override {}
    void setRTSEnable(bool) override {}
    bool PortOpen() const override { return false; }
    void setPortOpen(bool open) override
    {
        if (open)
            raiseRuntimeError(err::PortInvalid, QStringLiteral("COM%1").arg(m_number));
    }
    Int16 InBufferCount() const override { return 0; }
    QByteArray Input() override { return {}; }
    void Output(const QByteArray&) override
    {
        raiseRuntimeError(err::PortNotOpen, QStringLiteral("COM%1").arg(m_number));
    }
    Int16 CommEvent() const override { return 0; }

private:
    Int16 m_number = 1;
};

} // namespace

void setSerialPortFactory(SerialPortFactory factory)
{
    uploadSession().serialPortFactory = std::move(factory);
}

std::unique_ptr<SerialPortDevice> makeSerialPort()
{
    if (const SerialPortFactory& factory = uploadSession().serialPortFactory)
        return factory();
    return std::make_unique<AbsentSerialPort>();
}

} // namespace quenby
