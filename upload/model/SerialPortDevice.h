// The serial port as the link sees it: a port object with the handful of
// properties and the one receive event that the link uses. The program puts
// in a Qt serial port; tests put in a scripted one. Bytes are handed over on
// the window thread, through the receive handler, between other events.
#pragma once

#include "shell/model/Checked.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

namespace quenby {

// Error numbers of the port object.
namespace err {
inline constexpr int PortInvalid = 8002;     // "Invalid port number"
inline constexpr int PortAlreadyOpen = 8005; // "Port already open"
inline constexpr int PortNotOpen = 8012;     // "The device is not open"
inline constexpr int PortWriteFailed = 8020; // "Error writing comm device"
} // namespace err

// The receive event's kind for arriving bytes.
inline constexpr Int16 comEvReceive = 2;

class SerialPortDevice
{
public:
    virtual ~SerialPortDevice() = default;

    // The port number, COM1 being 1.
    virtual Int16 CommPort() const = 0;
    virtual void setCommPort(Int16 number) = 0;
    // The line setting as text, "115200,n,8,1".
    virtual void setSettings(const QString& settings) = 0;
    virtual void setInputMode(Int16 mode) = 0;  // 1: binary
    virtual void setInputLen(Int16 length) = 0; // 0: all that waits
    virtual void setRThreshold(Int16 threshold) = 0;
    virtual void setRTSEnable(bool enable) = 0;

    virtual bool PortOpen() const = 0;
    // Opening a port that can't be opened raises RuntimeError (PortInvalid or
    // PortAlreadyOpen); closing never fails.
    virtual void setPortOpen(bool open) = 0;

    // Bytes waiting in the port's own buffer.
    virtual Int16 InBufferCount() const = 0;
    // Takes every waiting byte.
    virtual QByteArray Input() = 0;
    // Writes the bytes; raises RuntimeError when the port is closed or the
    // write fails.
    virtual void Output(const QByteArray& bytes) = 0;
    // The kind of the event being delivered: comEvReceive for bytes.
    virtual Int16 CommEvent() const = 0;

    // The receive event. The port calls it on the window thread.
    void setOnComm(std::function<void()> handler) { m_onComm = std::move(handler); }

protected:
    void raiseOnComm()
    {
        if (m_onComm)
            m_onComm();
    }

private:
    std::function<void()> m_onComm;
};

// Makes a fresh port object; the link asks for one at creation and at each
// Disconnect. Until a factory is set in the upload session, a port that never
// opens is made.
using SerialPortFactory = std::function<std::unique_ptr<SerialPortDevice>()>;
void setSerialPortFactory(SerialPortFactory factory); // empty restores the default
std::unique_ptr<SerialPortDevice> makeSerialPort();

} // namespace quenby
