#include "tools/instrument-sim/InstrumentResponder.h"

#include <utility>

namespace quenby::sim {

namespace {

constexpr char kH = 0x48;
constexpr char kP = 0x50;
constexpr unsigned char kIdentify = 201;
constexpr unsigned char kSerialNumber = 204;
constexpr unsigned char kFileCount = 210;
constexpr unsigned char kFileHeader = 211;
constexpr unsigned char kFileData = 212;

// Quiet time around the noise, long enough for the PC to read each piece on
// its own.
constexpr int kNoiseGapMs = 30;

QString commandName(unsigned char code)
{
    switch (code) {
    case kIdentify:
        return QStringLiteral("identify");
    case kSerialNumber:
        return QStringLiteral("serial number");
    case kFileCount:
        return QStringLiteral("file count");
    case kFileHeader:
        return QStringLiteral("header");
    case kFileData:
        return QStringLiteral("data");
    default:
        return QStringLiteral("unknown command %1").arg(code);
    }
}

} // namespace

QString hexText(QByteArrayView bytes, int most)
{
    const auto one = [](char c) {
        return QStringLiteral("%1")
            .arg(static_cast<unsigned char>(c), 2, 16, QLatin1Char('0'))
            .toUpper();
    };
    QStringList parts;
    if (bytes.size() <= most) {
        for (char c : bytes)
            parts << one(c);
    } else {
        const int head = most - 4;
        for (int i = 0; i < head; ++i)
            parts << one(bytes[i]);
        parts << QStringLiteral("...");
        for (qsizetype i = bytes.size() - 3; i < bytes.size(); ++i)
            parts << one(bytes[i]);
    }
    return parts.join(QLatin1Char(' '));
}

InstrumentResponder::InstrumentResponder(Instrument instrument, FaultOptions faults, LogSink log)
    : m_instrument(std::move(instrument)), m_faults(faults), m_log(std::move(log))
{
}

void InstrumentResponder::log(const QString& line) const
{
    if (m_log)
        m_log(line);
}

void InstrumentResponder::dropStray(qsizetype count)
{
    log(QStringLiteral("stray bytes dropped: %1").arg(hexText(m_pending.first(count))));
    m_pending.remove(0, count);
}

std::vector<Outgoing> InstrumentResponder::receive(QByteArrayView bytes)
{
    std::vector<Outgoing> out;
    m_pending.append(bytes.data(), bytes.size());
    for (;;) {
        const qsizetype h = m_pending.indexOf(kH);
        if (h < 0) {
            if (!m_pending.isEmpty())
                dropStray(m_pending.size());
            break;
        }
        if (h > 0)
            dropStray(h);
        if (m_pending.size() < 2)
            break;
        if (m_pending[1] != kP) {
            // Not a command after all: look for the next "H" behind this one.
            dropStray(1);
            continue;
        }
        if (m_pending.size() < 3)
            break;
        const auto code = static_cast<unsigned char>(m_pending[2]);
        const bool isLong = code == kFileHeader || code == kFileData;
        const qsizetype need = isLong ? 5 : 4;
        if (m_pending.size() < need)
            break;
        if (!isLong && static_cast<unsigned char>(m_pending[3]) != code) {
            // A short command repeats its code; without that it was no command.
            dropStray(1);
            continue;
        }
        const QByteArray command = m_pending.first(need);
        m_pending.remove(0, need);
        handle(command, out);
    }
    return out;
}

void InstrumentResponder::handle(const QByteArray& command, std::vector<Outgoing>& out)
{
    ++m_commands;
    const auto code = static_cast<unsigned char>(command[2]);
    QString name = commandName(code);
    if (command.size() == 5)
        name += QStringLiteral(" of file %1").arg(static_cast<unsigned char>(command[3]));
    log(QStringLiteral("command %1: %2 (%3)").arg(m_commands).arg(name, hexText(command)));

    if (m_faults.silent || (m_faults.silentAfter > 0 && m_commands > m_faults.silentAfter)) {
        log(QStringLiteral("no reply: silent"));
        return;
    }
    QByteArray reply = replyTo(m_instrument, command);
    if (reply.isEmpty()) {
        if (command.size() == 5 &&
            static_cast<unsigned char>(command[4]) !=
                static_cast<unsigned char>((code + static_cast<unsigned char>(command[3])) & 0xFF))
            log(QStringLiteral("no reply: the check of the command is wrong"));
        else if (command.size() == 5)
            log(QStringLiteral("no reply: no file of that index (%1 stored)")
                    .arg(m_instrument.fileCount()));
        else
            log(QStringLiteral("no reply: unknown command"));
        return;
    }

    QString faults;
    int pause = 0;
    if (code == kIdentify) {
        if (m_faults.identifyCode) {
            reply = identifyReply(static_cast<unsigned char>(*m_faults.identifyCode));
            faults += QStringLiteral(", reply code changed");
        }
        if (m_faults.noise) {
            // A lone byte and a run behind 0xFF: the PC drops both while it
            // probes a port, so a real reply still follows.
            out.push_back({QByteArray(1, '\0'), 0});
            out.push_back({QByteArray::fromHex("FF47506363"), kNoiseGapMs});
            log(QStringLiteral("noise: 00, then FF 47 50 63 63"));
            pause = kNoiseGapMs;
        }
    }
    const auto spoil = [&](int& sent, int badAt, int cutAt, int cutBytes) {
        ++sent;
        if (sent == badAt) {
            const char last = reply.back();
            reply.back() = static_cast<char>(static_cast<unsigned char>(last) + 1);
            faults += QStringLiteral(", wrong check");
        }
        if (sent == cutAt) {
            const qsizetype keep = cutBytes < 0 ? reply.size() / 2 : cutBytes;
            if (keep < reply.size()) {
                faults += QStringLiteral(", cut to %1 of %2 bytes").arg(keep).arg(reply.size());
                reply.truncate(keep);
            }
        }
    };
    if (code == kFileHeader)
        spoil(m_headersSent, m_faults.badHeaderCheck, m_faults.cutHeader, m_faults.cutHeaderBytes);
    else if (code == kFileData)
        spoil(m_dataSent, m_faults.badDataCheck, m_faults.cutData, m_faults.cutDataBytes);

    log(QStringLiteral("reply to %1: %2 bytes%3: %4")
            .arg(name)
            .arg(reply.size())
            .arg(faults, hexText(reply)));
    if (!reply.isEmpty())
        out.push_back({reply, pause});
}

} // namespace quenby::sim
