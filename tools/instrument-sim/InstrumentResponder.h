// The instrument's behaviour on the line, free of any port: it assembles
// commands from the bytes as they come ("H", "P", code, code for a short
// command; "H", "P", 211 or 212, file index, check for a long one), drops
// stray bytes until a command starts, and hands back the pieces to send, with
// the faults of the options applied. The simulator paces the pieces out on
// its pseudo-terminal; tests call it directly.
#pragma once

#include "tools/instrument-sim/InstrumentFrames.h"
#include "tools/instrument-sim/SimOptions.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>
#include <vector>

namespace quenby::sim {

// One piece for the line: the bytes, and the quiet time before them.
struct Outgoing
{
    QByteArray bytes;
    int pauseBeforeMs = 0;
};

// Hex text of bytes, "47 50 6B ..." with long runs shortened around the middle.
QString hexText(QByteArrayView bytes, int most = 16);

class InstrumentResponder
{
public:
    using LogSink = std::function<void(const QString&)>;

    InstrumentResponder(Instrument instrument, FaultOptions faults, LogSink log = {});

    // Takes bytes received, in any slicing; returns what to send for the
    // commands they complete, in order.
    std::vector<Outgoing> receive(QByteArrayView bytes);

    int commandCount() const { return m_commands; }
    // Bytes held while a command is incomplete.
    qsizetype pendingBytes() const { return m_pending.size(); }

private:
    void handle(const QByteArray& command, std::vector<Outgoing>& out);
    void dropStray(qsizetype count);
    void log(const QString& line) const;

    Instrument m_instrument;
    FaultOptions m_faults;
    LogSink m_log;
    QByteArray m_pending;
    int m_commands = 0;
    int m_headersSent = 0;
    int m_dataSent = 0;
};

} // namespace quenby::sim
