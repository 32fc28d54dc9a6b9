// The simulator program itself: started as a process, its pseudo-terminal
// opened with plain POSIX calls as a serial port would be, commands written
// and replies read back byte for byte. Waits are bounded by generous limits
// that only guard against a hang; where a test asks that nothing came, it
// first waits for the simulator's log to show that the command was handled.
#include "tests/support/TestFiles.h"
#include "tools/instrument-sim/InstrumentFrames.h"
#include "tools/instrument-sim/ScenarioReader.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

using namespace quenby::sim;
using quenby::testing::samplePath;

namespace {

// A guard against a hang, never a measure of speed.
constexpr int kPatienceMs = 15000;

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(static_cast<char>(v));
    return out;
}

const QByteArray kIdentify = bytesOf({0x48, 0x50, 201, 201});
const QByteArray kIdentifyKvx = bytesOf({0x47, 0x50, 0x63, 0x63});

QByteArray header(int index)
{
    return bytesOf({0x48, 0x50, 211, index, (211 + index) % 256});
}

QByteArray data(int index)
{
    return bytesOf({0x48, 0x50, 212, index, (212 + index) % 256});
}

QString kvxSample()
{
    return samplePath(QStringLiteral("kvx-instrument.sim"));
}

void ensureApplication()
{
    if (QCoreApplication::instance() == nullptr) {
        static int argc = 1;
        static char name[] = "test_instrument_sim_process";
        static char* argv[] = {name, nullptr};
        static QCoreApplication app(argc, argv);
    }
}

// One run of the simulator and the PC's end of its line.
class SimRun
{
public:
    explicit SimRun(const QStringList& args)
    {
        ensureApplication();
        m_process.setProgram(QStringLiteral(QUENBY_INSTRUMENT_SIM));
        m_process.setArguments(args);
        m_process.start();
        if (!m_process.waitForStarted(kPatienceMs))
            return;
        QElapsedTimer t;
        t.start();
        while (!m_process.canReadLine() && t.elapsed() < kPatienceMs &&
               m_process.state() == QProcess::Running)
            m_process.waitForReadyRead(100);
        if (m_process.canReadLine())
            m_path = QString::fromLocal8Bit(m_process.readLine()).trimmed();
    }

    ~SimRun()
    {
        closePort();
        if (m_process.state() != QProcess::NotRunning) {
            m_process.terminate();
            if (!m_process.waitForFinished(kPatienceMs))
                m_process.kill();
            m_process.waitForFinished(kPatienceMs);
        }
    }

    QString path() const { return m_path; }
    QProcess& process() { return m_process; }

    // Opens the device raw at 115200 8N1, as the PC's serial port does.
    bool openPort()
    {
        m_fd = ::open(m_path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        if (m_fd < 0)
            return false;
        termios t{};
        if (::tcgetattr(m_fd, &t) != 0)
            return false;
        ::cfmakeraw(&t);
        ::cfsetispeed(&t, B115200);
        ::cfsetospeed(&t, B115200);
        return ::tcsetattr(m_fd, TCSANOW, &t) == 0;
    }

    void closePort()
    {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = -1;
    }

    bool send(const QByteArray& bytes)
    {
        qsizetype done = 0;
        while (done < bytes.size()) {
            const ssize_t n =
                ::write(m_fd, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
            if (n < 0 && errno != EAGAIN && errno != EINTR)
                return false;
            if (n > 0)
                done += n;
        }
        return true;
    }

    // Reads until `count` bytes came, or the line hung up, or patience ran out.
    QByteArray read(qsizetype count)
    {
        QByteArray got;
        QElapsedTimer t;
        t.start();
        while (got.size() < count && t.elapsed() < kPatienceMs) {
            pollfd p{m_fd, POLLIN, 0};
            const int r = ::poll(&p, 1, 100);
            if (r <= 0)
                continue;
            if ((p.revents & POLLIN) != 0) {
                char buffer[4096];
                const size_t want = static_cast<size_t>(
                    std::min<qsizetype>(count - got.size(), qsizetype(sizeof buffer)));
                const ssize_t n = ::read(m_fd, buffer, want);
                if (n > 0) {
                    got.append(buffer, n);
                    continue;
                }
                if (n == 0 || (errno != EAGAIN && errno != EINTR)) {
                    m_hungUp = true;
                    break;
                }
            } else if ((p.revents & (POLLHUP | POLLERR)) != 0) {
                m_hungUp = true;
                break;
            }
        }
        return got;
    }

    // Whatever arrives within `ms`.
    QByteArray readFor(int ms)
    {
        QByteArray got;
        QElapsedTimer t;
        t.start();
        while (t.elapsed() < ms) {
            pollfd p{m_fd, POLLIN, 0};
            if (::poll(&p, 1, 10) > 0 && (p.revents & POLLIN) != 0) {
                char buffer[4096];
                const ssize_t n = ::read(m_fd, buffer, sizeof buffer);
                if (n > 0)
                    got.append(buffer, n);
            }
        }
        return got;
    }

    bool hungUp() const { return m_hungUp; }

    // Waits until the simulator's log on stderr holds `text`.
    bool waitForLog(const QString& text)
    {
        m_process.setReadChannel(QProcess::StandardError);
        QElapsedTimer t;
        t.start();
        for (;;) {
            m_log += QString::fromLocal8Bit(m_process.readAllStandardError());
            if (m_log.contains(text))
                return true;
            if (t.elapsed() > kPatienceMs || m_process.state() != QProcess::Running)
                return false;
            m_process.waitForReadyRead(100);
        }
    }
    QString log() const { return m_log; }

    bool finish(int& exitCode)
    {
        if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(kPatienceMs))
            return false;
        exitCode = m_process.exitCode();
        return m_process.exitStatus() == QProcess::NormalExit;
    }

private:
    QProcess m_process;
    QString m_path;
    QString m_log;
    int m_fd = -1;
    bool m_hungUp = false;
};

// A run with the KVX sample, its port open.
#define START_KVX(run, ...)                                                                        \
    SimRun run(QStringList{__VA_ARGS__} << kvxSample());                                           \
    ASSERT_FALSE(run.path().isEmpty());                                                            \
    ASSERT_TRUE(run.openPort())

} // namespace

TEST(instrumentSimProcess, PrintsTheDevicePathFirst)
{
    SimRun run({QStringLiteral("--kind"), QStringLiteral("kvx")});
    ASSERT_TRUE(run.path().startsWith(QStringLiteral("/dev/"))) << run.path().toStdString();
    struct stat st
    {
    };
    ASSERT_EQ(::stat(run.path().toLocal8Bit().constData(), &st), 0);
    EXPECT_TRUE(S_ISCHR(st.st_mode));
}

TEST(instrumentSimProcess, AnswersAsTheKvxOfItsScenario)
{
    START_KVX(run, QStringLiteral("--log"));
    const Instrument kvx = readScenarioFile(kvxSample());
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), kIdentifyKvx);
    ASSERT_TRUE(run.send(bytesOf({0x48, 0x50, 204, 204})));
    // "KVX20417": 0x66 + 0x4B + 0x56 + 0x58 + 0x32 + 0x30 + 0x34 + 0x31 + 0x37 = 0x25D.
    EXPECT_EQ(run.read(12),
              bytesOf({0x47, 0x50, 0x66, 0x4B, 0x56, 0x58, 0x32, 0x30, 0x34, 0x31, 0x37, 0x5D}));
    ASSERT_TRUE(run.send(bytesOf({0x48, 0x50, 210, 210})));
    EXPECT_EQ(run.read(5), bytesOf({0x47, 0x50, 0x6A, 2, 0x6C}));
    for (int f = 0; f < 2; ++f) {
        const QByteArray h = kvxHeaderFrame(kvx.kvxFiles[static_cast<std::size_t>(f)]);
        ASSERT_TRUE(run.send(header(f)));
        EXPECT_EQ(run.read(h.size()), h) << f;
        const QByteArray d = kvxDataFrame(kvx.kvxFiles[static_cast<std::size_t>(f)]);
        ASSERT_TRUE(run.send(data(f)));
        EXPECT_EQ(run.read(d.size()), d) << f;
    }
    EXPECT_EQ(kvxDataFrame(kvx.kvxFiles[0]).size(), 10368);
}

TEST(instrumentSimProcess, AnswersAsTheZblOfItsScenario)
{
    SimRun run({samplePath(QStringLiteral("zbl-instrument.sim"))});
    ASSERT_TRUE(run.openPort());
    const Instrument zbl = readScenarioFile(samplePath(QStringLiteral("zbl-instrument.sim")));
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), bytesOf({0x47, 0x50, 0x64, 0x64}));
    ASSERT_TRUE(run.send(bytesOf({0x48, 0x50, 204, 204})));
    // 0x66 + 4 + 17 + 2 + 9 + 0 + 6 = 0x8C.
    EXPECT_EQ(run.read(10), bytesOf({0x47, 0x50, 0x66, 4, 17, 2, 9, 0, 6, 0x8C}));
    const QByteArray h = zblHeaderFrame(zbl.zblFiles[0]);
    ASSERT_TRUE(run.send(header(0)));
    EXPECT_EQ(run.read(h.size()), h);
    const QByteArray d = zblDataFrame(zbl.zblFiles[0]);
    ASSERT_EQ(d.size(), 100 * 120 + 6);
    ASSERT_TRUE(run.send(data(0)));
    EXPECT_EQ(run.read(d.size()), d);
}

TEST(instrumentSimProcess, KindAloneIsAnInstrumentWithoutFiles)
{
    SimRun run({QStringLiteral("--kind"), QStringLiteral("zbl")});
    ASSERT_TRUE(run.openPort());
    ASSERT_TRUE(run.send(bytesOf({0x48, 0x50, 210, 210})));
    EXPECT_EQ(run.read(5), bytesOf({0x47, 0x50, 0x6A, 0, 0x6A}));
}

TEST(instrumentSimProcess, LongCommandInFiveOneByteWritesIsAnswered)
{
    START_KVX(run);
    const QByteArray command = header(1);
    for (char b : command) {
        ASSERT_TRUE(run.send(QByteArray(1, b)));
        ::usleep(3000);
    }
    const QByteArray h = kvxHeaderFrame(readScenarioFile(kvxSample()).kvxFiles[1]);
    EXPECT_EQ(run.read(h.size()), h);
}

TEST(instrumentSimProcess, StrayBytesAndABadCheckGetNoReply)
{
    START_KVX(run);
    // Stray bytes, a long command with a bad check and one for a file it does
    // not hold: the first bytes back are those of the identify that follows.
    ASSERT_TRUE(run.send(bytesOf({0x00, 0x13, 0x48}) + bytesOf({0x48, 0x50, 211, 0, 210}) +
                         header(7) + kIdentify));
    EXPECT_EQ(run.read(4), kIdentifyKvx);
}

TEST(instrumentSimProcess, ReplyIsPacedAtTheLineRate)
{
    START_KVX(run);
    const qsizetype size = 10368;
    // 10 bits a byte at 115200 baud: about 0.9 s on the wire.
    const qint64 wireNs = size * 10 * 1000000000LL / 115200;
    QElapsedTimer t;
    t.start();
    ASSERT_TRUE(run.send(data(0)));
    const QByteArray first = run.read(1);
    ASSERT_EQ(first.size(), 1);
    const qint64 firstNs = t.nsecsElapsed();
    const QByteArray rest = run.read(size - 1);
    const qint64 lastNs = t.nsecsElapsed();
    ASSERT_EQ(rest.size(), size - 1);
    // Lower bound only: the frame is not delivered at once.
    EXPECT_GE(lastNs - firstNs, wireNs / 2) << (lastNs - firstNs) / 1000000 << " ms";
}

TEST(instrumentSimProcess, BadHeaderCheckSpoilsTheFirstHeaderOnly)
{
    START_KVX(run, QStringLiteral("--bad-header-check"), QStringLiteral("1"));
    const QByteArray good = kvxHeaderFrame(readScenarioFile(kvxSample()).kvxFiles[0]);
    ASSERT_TRUE(run.send(header(0)));
    const QByteArray bad = run.read(good.size());
    ASSERT_EQ(bad.size(), good.size());
    EXPECT_EQ(bad.chopped(1), good.chopped(1));
    EXPECT_EQ(static_cast<unsigned char>(bad.back()),
              (static_cast<unsigned char>(good.back()) + 1) % 256);
    ASSERT_TRUE(run.send(header(0)));
    EXPECT_EQ(run.read(good.size()), good);
}

TEST(instrumentSimProcess, BadDataCheckSpoilsTheSecondDataFrame)
{
    START_KVX(run, QStringLiteral("--bad-data-check=2"));
    const Instrument kvx = readScenarioFile(kvxSample());
    const QByteArray good0 = kvxDataFrame(kvx.kvxFiles[0]);
    const QByteArray good1 = kvxDataFrame(kvx.kvxFiles[1]);
    ASSERT_TRUE(run.send(data(0)));
    EXPECT_EQ(run.read(good0.size()), good0);
    ASSERT_TRUE(run.send(data(1)));
    const QByteArray bad = run.read(good1.size());
    ASSERT_EQ(bad.size(), good1.size());
    EXPECT_EQ(bad.chopped(1), good1.chopped(1));
    EXPECT_NE(bad.back(), good1.back());
}

TEST(instrumentSimProcess, CutDataStopsShortAndTheNextReplyFollows)
{
    START_KVX(run, QStringLiteral("--cut-data"), QStringLiteral("1:500"));
    const QByteArray good = kvxDataFrame(readScenarioFile(kvxSample()).kvxFiles[0]);
    ASSERT_TRUE(run.send(data(0)));
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(504), good.left(500) + kIdentifyKvx);
}

TEST(instrumentSimProcess, CutHeaderSendsHalfAFrameByDefault)
{
    START_KVX(run, QStringLiteral("--cut-header"), QStringLiteral("1"));
    const QByteArray good = kvxHeaderFrame(readScenarioFile(kvxSample()).kvxFiles[0]);
    ASSERT_TRUE(run.send(header(0)));
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(484), good.left(480) + kIdentifyKvx);
}

TEST(instrumentSimProcess, SilentAnswersNothing)
{
    START_KVX(run, QStringLiteral("--silent"), QStringLiteral("--log"));
    ASSERT_TRUE(run.send(kIdentify));
    ASSERT_TRUE(run.waitForLog(QStringLiteral("command 1: identify")));
    ASSERT_TRUE(run.waitForLog(QStringLiteral("no reply: silent")));
    EXPECT_TRUE(run.readFor(200).isEmpty());
}

TEST(instrumentSimProcess, SilentAfterAnswersTheFirstCommandsOnly)
{
    START_KVX(run, QStringLiteral("--silent-after"), QStringLiteral("1"), QStringLiteral("--log"));
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), kIdentifyKvx);
    ASSERT_TRUE(run.send(kIdentify));
    ASSERT_TRUE(run.waitForLog(QStringLiteral("command 2: identify")));
    ASSERT_TRUE(run.waitForLog(QStringLiteral("no reply: silent")));
    EXPECT_TRUE(run.readFor(200).isEmpty());
}

TEST(instrumentSimProcess, NoiseComesInPiecesBeforeTheIdentifyReply)
{
    START_KVX(run, QStringLiteral("--noise"));
    ASSERT_TRUE(run.send(kIdentify));
    QElapsedTimer t;
    t.start();
    const QByteArray lone = run.read(1);
    const qint64 loneMs = t.elapsed();
    const QByteArray run2 = run.read(5);
    const QByteArray reply = run.read(4);
    const qint64 replyMs = t.elapsed();
    EXPECT_EQ(lone, QByteArray(1, '\0'));
    EXPECT_EQ(run2, bytesOf({0xFF, 0x47, 0x50, 0x63, 0x63}));
    EXPECT_EQ(reply, kIdentifyKvx);
    // Two quiet gaps of 30 ms keep the pieces apart; half of that at least.
    EXPECT_GE(replyMs - loneMs, 30);
}

TEST(instrumentSimProcess, IdentifyCodeChangesTheReplyCode)
{
    START_KVX(run, QStringLiteral("--identify-code"), QStringLiteral("0x65"));
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), bytesOf({0x47, 0x50, 0x65, 0x65}));
}

TEST(instrumentSimProcess, UnplugClosesTheLineAfterItsBytesAndExits)
{
    START_KVX(run, QStringLiteral("--unplug-after"), QStringLiteral("100"));
    const QByteArray good = kvxDataFrame(readScenarioFile(kvxSample()).kvxFiles[0]);
    ASSERT_TRUE(run.send(data(0)));
    const QByteArray got = run.read(good.size());
    EXPECT_EQ(got, good.left(100));
    EXPECT_TRUE(run.hungUp());
    int code = -1;
    ASSERT_TRUE(run.finish(code));
    EXPECT_EQ(code, 0);
}

TEST(instrumentSimProcess, LogShowsCommandsAndReplies)
{
    START_KVX(run, QStringLiteral("--log"));
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), kIdentifyKvx);
    EXPECT_TRUE(run.waitForLog(QStringLiteral("sim: command 1: identify (48 50 C9 C9)")));
    EXPECT_TRUE(run.waitForLog(QStringLiteral("sim: reply to identify: 4 bytes: 47 50 63 63")));
    EXPECT_TRUE(run.waitForLog(QStringLiteral("sim: sent 4 bytes")));
}

TEST(instrumentSimProcess, WithoutLogStderrStaysQuiet)
{
    START_KVX(run);
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), kIdentifyKvx);
    run.process().terminate();
    int code = -1;
    ASSERT_TRUE(run.finish(code));
    EXPECT_TRUE(run.process().readAllStandardError().isEmpty());
}

#ifdef __linux__
TEST(instrumentSimProcess, PortClosedMidReplyStartsQuietOnReopening)
{
    START_KVX(run, QStringLiteral("--log"));
    ASSERT_TRUE(run.send(data(0)));
    EXPECT_EQ(run.read(100).size(), 100);
    run.closePort();
    ASSERT_TRUE(run.waitForLog(QStringLiteral("port closed by the PC")));
    ASSERT_TRUE(run.openPort());
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), kIdentifyKvx);
}
#endif

TEST(instrumentSimProcess, PortOpenedAgainStillAnswers)
{
    START_KVX(run);
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), kIdentifyKvx);
    run.closePort();
    ASSERT_TRUE(run.openPort());
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), kIdentifyKvx);
}

TEST(instrumentSimProcess, EndsOnEndOfStdinWhenAsked)
{
    START_KVX(run, QStringLiteral("--exit-on-stdin-eof"));
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), kIdentifyKvx);
    run.process().closeWriteChannel();
    int code = -1;
    ASSERT_TRUE(run.finish(code));
    EXPECT_EQ(code, 0);
}

TEST(instrumentSimProcess, KeepsRunningAtEndOfStdinOtherwise)
{
    START_KVX(run, QStringLiteral("--log"));
    run.process().closeWriteChannel();
    // Still answering after its stdin ended.
    ASSERT_TRUE(run.send(kIdentify));
    EXPECT_EQ(run.read(4), kIdentifyKvx);
    EXPECT_EQ(run.process().state(), QProcess::Running);
}

TEST(instrumentSimProcess, EndsCleanlyOnSigterm)
{
    START_KVX(run);
    run.process().terminate();
    int code = -1;
    ASSERT_TRUE(run.finish(code));
    EXPECT_EQ(code, 0);
}

TEST(instrumentSimProcess, EndsCleanlyOnSigint)
{
    START_KVX(run);
    ASSERT_EQ(::kill(static_cast<pid_t>(run.process().processId()), SIGINT), 0);
    int code = -1;
    ASSERT_TRUE(run.finish(code));
    EXPECT_EQ(code, 0);
}

TEST(instrumentSimProcess, ScenarioMistakeEndsWithStatus1)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("bad.sim"));
    quenby::testing::writeBytes(path, "[instrument]\nkind = abc\n");
    SimRun run({path});
    int code = -1;
    ASSERT_TRUE(run.finish(code));
    EXPECT_EQ(code, 1);
    EXPECT_TRUE(run.path().isEmpty());
    const QString err = QString::fromLocal8Bit(run.process().readAllStandardError());
    EXPECT_TRUE(err.contains(QStringLiteral("bad.sim:2: kind is kvx or zbl"))) << err.toStdString();
}

TEST(instrumentSimProcess, OptionMistakeEndsWithStatus2AndTheUsage)
{
    SimRun run({QStringLiteral("--kind"), QStringLiteral("kvx"), QStringLiteral("--cut-data")});
    int code = -1;
    ASSERT_TRUE(run.finish(code));
    EXPECT_EQ(code, 2);
    const QString err = QString::fromLocal8Bit(run.process().readAllStandardError());
    EXPECT_TRUE(err.contains(QStringLiteral("--cut-data takes N or N:BYTES"))) << err.toStdString();
    EXPECT_TRUE(err.contains(QStringLiteral("usage: quenby-instrument-sim")));
}

TEST(instrumentSimProcess, HelpPrintsTheUsage)
{
    SimRun run({QStringLiteral("--help")});
    int code = -1;
    ASSERT_TRUE(run.finish(code));
    EXPECT_EQ(code, 0);
    // The first line read as the path is the usage's first line.
    EXPECT_TRUE(run.path().startsWith(QStringLiteral("usage: quenby-instrument-sim")));
    const QString rest = QString::fromLocal8Bit(run.process().readAllStandardOutput());
    for (const char* option : {"--kind", "--log", "--exit-on-stdin-eof", "--bad-header-check",
                               "--bad-data-check", "--cut-header", "--cut-data", "--silent ",
                               "--silent-after", "--noise", "--identify-code", "--unplug-after"})
        EXPECT_TRUE(rest.contains(QLatin1String(option))) << option;
}
