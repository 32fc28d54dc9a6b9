#include "tools/instrument-sim/PtyLine.h"

#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#ifdef __linux__
#include <sys/inotify.h>
#endif
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace quenby::sim {

namespace {

// 115200 baud, 10 bits a byte on the wire (start, 8 data, stop).
constexpr qint64 kBytesPerSecond = 115200 / 10;
constexpr qint64 kNsPerSecond = 1000000000;
// A USB serial converter hands the PC what the line carried in packets about
// a millisecond apart, never a byte at a time: a short reply arrives whole.
constexpr qint64 kPacketNs = 1000000;

QString errnoText()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

PtyLine::PtyLine(InstrumentResponder& responder, qint64 unplugAfter, LogSink log)
    : m_responder(responder), m_unplugAfter(unplugAfter), m_log(std::move(log))
{
    m_pacer.setTimerType(Qt::PreciseTimer);
    m_pacer.setInterval(1);
    connect(&m_pacer, &QTimer::timeout, this, &PtyLine::pump);
    m_clock.start();
}

PtyLine::~PtyLine()
{
    closeAll();
}

void PtyLine::log(const QString& line) const
{
    if (m_log)
        m_log(line);
}

bool PtyLine::open(QString& error)
{
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (m_master < 0) {
        error = QStringLiteral("posix_openpt: %1").arg(errnoText());
        return false;
    }
    if (::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) {
        error = QStringLiteral("grantpt/unlockpt: %1").arg(errnoText());
        closeAll();
        return false;
    }
    const char* name = ::ptsname(m_master);
    if (name == nullptr) {
        error = QStringLiteral("ptsname: %1").arg(errnoText());
        closeAll();
        return false;
    }
    m_slavePath = QString::fromLocal8Bit(name);

    // Raw before the PC opens the other side: no echo of its commands, no
    // line editing, no translation of CR or LF, all 8 bits through.
    termios t{};
    if (::tcgetattr(m_master, &t) == 0) {
        ::cfmakeraw(&t);
        ::cfsetispeed(&t, B115200);
        ::cfsetospeed(&t, B115200);
        ::tcsetattr(m_master, TCSANOW, &t);
    }

    // The simulator holds the slave open itself. When no descriptor of the
    // slave is open, a read on the master fails with EIO at once, so the read
    // notifier would fire without end while the PC has its port closed
    // (between two port trials, or before the upload window opens). With this
    // descriptor held the master just waits for the PC's bytes. It is never
    // read here: every byte written to the master stays for the PC.
    m_slave = ::open(name, O_RDWR | O_NOCTTY);
    if (m_slave < 0) {
        error = QStringLiteral("open %1: %2").arg(m_slavePath, errnoText());
        closeAll();
        return false;
    }
    ::fcntl(m_master, F_SETFL, ::fcntl(m_master, F_GETFL) | O_NONBLOCK);
    ::fcntl(m_master, F_SETFD, FD_CLOEXEC);
    ::fcntl(m_slave, F_SETFD, FD_CLOEXEC);

    m_readNotifier = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    connect(m_readNotifier, &QSocketNotifier::activated, this, &PtyLine::readMaster);

#ifdef __linux__
    // Each close of the slave by the PC is seen here; the simulator's own
    // descriptor stays open until the end, so every close is the PC's.
    m_closeWatch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_closeWatch >= 0 &&
        ::inotify_add_watch(m_closeWatch, name, IN_CLOSE_WRITE | IN_CLOSE_NOWRITE) >= 0) {
        m_closeNotifier = new QSocketNotifier(m_closeWatch, QSocketNotifier::Read, this);
        connect(m_closeNotifier, &QSocketNotifier::activated, this, &PtyLine::readCloseWatch);
    }
#endif
    return true;
}

void PtyLine::readCloseWatch()
{
#ifdef __linux__
    if (m_closeWatch < 0)
        return;
    alignas(inotify_event) char buffer[4096];
    bool closed = false;
    for (;;) {
        const ssize_t n = ::read(m_closeWatch, buffer, sizeof buffer);
        if (n <= 0)
            break;
        for (ssize_t at = 0; at < n;) {
            const auto* e = reinterpret_cast<const inotify_event*>(buffer + at);
            if ((e->mask & (IN_CLOSE_WRITE | IN_CLOSE_NOWRITE)) != 0)
                closed = true;
            at += static_cast<ssize_t>(sizeof(inotify_event) + e->len);
        }
    }
    if (closed)
        portClosed();
#endif
}

void PtyLine::portClosed()
{
    // A closed port receives nothing: what was still to go out of a reply is
    // lost, and so is what the PC left unread, as with a real adapter. The
    // next opening starts on a quiet line.
    qint64 lost = 0;
    for (const Piece& p : m_queue)
        lost += p.bytes.size() - p.sent;
    m_queue.clear();
    m_pacer.stop();
    int unread = 0;
    if (m_slave >= 0 && ::ioctl(m_slave, FIONREAD, &unread) == 0 && unread > 0)
        ::tcflush(m_slave, TCIFLUSH);
    log(QStringLiteral("port closed by the PC: %1 bytes not sent and %2 unread bytes dropped")
            .arg(lost)
            .arg(unread));
}

void PtyLine::readMaster()
{
    QByteArray received;
    char buffer[4096];
    for (;;) {
        const ssize_t n = ::read(m_master, buffer, sizeof buffer);
        if (n > 0) {
            received.append(buffer, n);
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 && errno != EAGAIN && errno != EWOULDBLOCK) {
            log(QStringLiteral("line read failed: %1; no more commands are read").arg(errnoText()));
            m_readNotifier->setEnabled(false);
        }
        break;
    }
    if (received.isEmpty())
        return;
    // A close of the port before these bytes came must be dealt with first,
    // or it would drop the reply to them.
    readCloseWatch();
    const qint64 now = m_clock.nsecsElapsed();
    for (Outgoing& o : m_responder.receive(received)) {
        Piece p;
        p.bytes = std::move(o.bytes);
        p.queuedNs = now;
        p.pauseNs = qint64(o.pauseBeforeMs) * 1000000;
        m_queue.push_back(std::move(p));
    }
    if (!m_queue.empty() && !m_pacer.isActive()) {
        m_pacer.start();
        pump();
    }
}

void PtyLine::pump()
{
    const qint64 now = m_clock.nsecsElapsed();
    while (!m_queue.empty() && m_master >= 0) {
        Piece& p = m_queue.front();
        if (p.startNs < 0) {
            // A pause counts from when the line fell quiet, or from the
            // command if the line was quiet already.
            const qint64 start = std::max(m_lineFreeNs, p.queuedNs) + p.pauseNs;
            if (now < start)
                break;
            p.startNs = start;
        }
        // Each packet carries what the line will have carried by its end.
        const qint64 due = std::min<qint64>(p.bytes.size(), (now - p.startNs + kPacketNs) *
                                                                kBytesPerSecond / kNsPerSecond);
        qint64 toSend = due - p.sent;
        if (m_unplugAfter > 0)
            toSend = std::min(toSend, m_unplugAfter - m_totalSent);
        if (toSend > 0) {
            const ssize_t n =
                ::write(m_master, p.bytes.constData() + p.sent, static_cast<size_t>(toSend));
            if (n > 0) {
                p.sent += n;
                m_totalSent += n;
            } else if (n < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR) {
                log(QStringLiteral("line write failed: %1").arg(errnoText()));
                m_queue.clear();
                break;
            }
            // A full line (the PC reads slower than the line rate) keeps
            // the rest for the next slice.
        }
        if (m_unplugAfter > 0 && m_totalSent >= m_unplugAfter) {
            unplug();
            return;
        }
        if (p.sent < p.bytes.size())
            break;
        const qint64 wireEnd = p.startNs + (p.bytes.size() * kNsPerSecond) / kBytesPerSecond;
        m_lineFreeNs = std::max(wireEnd, now);
        log(QStringLiteral("sent %1 bytes").arg(p.bytes.size()));
        m_queue.pop_front();
    }
    if (m_queue.empty())
        m_pacer.stop();
}

void PtyLine::unplug()
{
    log(QStringLiteral("unplugged after %1 bytes").arg(m_totalSent));
    m_queue.clear();
    m_pacer.stop();
    closeAll();
    if (m_onUnplugged)
        m_onUnplugged();
}

void PtyLine::closeAll()
{
    if (m_closeNotifier != nullptr) {
        m_closeNotifier->setEnabled(false);
        delete m_closeNotifier;
        m_closeNotifier = nullptr;
    }
    if (m_closeWatch >= 0) {
        ::close(m_closeWatch);
        m_closeWatch = -1;
    }
    if (m_readNotifier != nullptr) {
        m_readNotifier->setEnabled(false);
        delete m_readNotifier;
        m_readNotifier = nullptr;
    }
    if (m_slave >= 0) {
        ::close(m_slave);
        m_slave = -1;
    }
    if (m_master >= 0) {
        ::close(m_master);
        m_master = -1;
    }
}

} // namespace quenby::sim
