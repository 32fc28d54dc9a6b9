// The byte pipe to the instrument: one serial port object, opened at the fixed
// line setting, its receive event filtered into the receive store, and the
// command writes. Write operations answer true on failure; their callers
// ignore that and find a missing reply by their time-outs. The link writes
// trace lines to the debug output and to nothing else.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/Dynamic.h"
#include "upload/model/SerialPortDevice.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

namespace quenby {

class CSerialCom
{
public:
    CSerialCom();  // Class_Initialize: makes the port object
    ~CSerialCom(); // Class_Terminate: closes the port if open

    CSerialCom(const CSerialCom&) = delete;
    CSerialCom& operator=(const CSerialCom&) = delete;

    SerialPortDevice& SerialConnection() { return *m_port; }

    // Trace text helpers.
    static Bool16 isPrintable(const QString& c);
    static QString formatHex(const QString& s);
    static QString toPrintable(const QString& s);
    static QString toPrintableB(const QByteArray& bytes);
    static QString bytearraytostring(const QByteArray& bytes);

    // The receive event of the port object.
    void SerialConnection_OnComm();

    // True (as a dynamic boolean) when the port's own buffer is empty.
    Dynamic IshComBufferRxEmpty();
    Bool16 IsDataReceived() const { return m_dataReceived; }
    void FlushFlagDataReceived() { m_dataReceived = False16; }
    // Reads count bytes from the store; answers their trace text.
    QString DataBufferRx(Int32 count);

    // Opens `serialPort` at "115200,n,8,1"; the baud rate and the handshake
    // arguments are taken and ignored. False when the port can't be opened.
    Bool16 OpenPort(Int16 serialPort, Int32 lbaud, Bool16 isHandShaking);
    // Closes the port if open, then always makes a fresh port object.
    void Disconnect();

    // Writes: true on failure.
    Bool16 OutputByte(unsigned char b);
    Bool16 SendCommandKVX(unsigned char cmd); // "H", "P", cmd, cmd in one write
    Bool16 SendCommandByte(unsigned char b);

private:
    void attach();

    std::unique_ptr<SerialPortDevice> m_port;
    Bool16 m_dataReceived = False16;
};

// One trace line to the platform's debug output (ANSI text). Nobody needs to
// listen; tests may catch the lines with a sink in the upload session.
void traceDebugLine(const QString& line);
void setDebugTraceSink(std::function<void(const QString&)> sink); // empty: platform output

} // namespace quenby
