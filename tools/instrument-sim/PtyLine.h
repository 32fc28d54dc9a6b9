// The simulator's end of the wire: a pseudo-terminal whose slave side the PC
// opens as its serial port. Bytes read from the master go to the responder;
// its replies are paced out at the line rate of 115200 baud, 8N1 (10 bits a
// byte, about 86.8 us a byte), in small slices on a fine timer, so that a
// 10 KB frame takes about 0.9 s as it would from a real instrument. When the
// PC closes its port, what was still to be sent is dropped (on Linux, where
// the close can be seen). POSIX only.
#pragma once

#include "tools/instrument-sim/InstrumentResponder.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <deque>
#include <functional>

class QSocketNotifier;

namespace quenby::sim {

class PtyLine : public QObject
{
public:
    using LogSink = std::function<void(const QString&)>;

    // `unplugAfter`: bytes after which the line closes for good; 0 never.
    PtyLine(InstrumentResponder& responder, qint64 unplugAfter, LogSink log);
    ~PtyLine() override;

    // Opens the pseudo-terminal; false with the reason in `error`.
    bool open(QString& error);
    QString slavePath() const { return m_slavePath; }
    // Called once the line was closed by --unplug-after.
    void setOnUnplugged(std::function<void()> onUnplugged)
    {
        m_onUnplugged = std::move(onUnplugged);
    }

private:
    struct Piece
    {
        QByteArray bytes;
        qint64 queuedNs = 0; // on the line's clock
        qint64 pauseNs = 0;  // quiet time before the first byte
        qsizetype sent = 0;
        qint64 startNs = -1;
    };

    void readMaster();
    void readCloseWatch();
    void portClosed();
    void pump();
    void unplug();
    void closeAll();
    void log(const QString& line) const;

    InstrumentResponder& m_responder;
    qint64 m_unplugAfter;
    LogSink m_log;
    std::function<void()> m_onUnplugged;
    int m_master = -1;
    int m_slave = -1;
    QString m_slavePath;
    QSocketNotifier* m_readNotifier = nullptr;
    int m_closeWatch = -1; // inotify descriptor watching the slave's closes (Linux)
    QSocketNotifier* m_closeNotifier = nullptr;
    QTimer m_pacer;
    QElapsedTimer m_clock;
    std::deque<Piece> m_queue;
    qint64 m_lineFreeNs = 0; // when the last byte queued has left
    qint64 m_totalSent = 0;
};

} // namespace quenby::sim
