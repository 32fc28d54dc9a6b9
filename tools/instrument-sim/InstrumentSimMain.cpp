// quenby-instrument-sim [options] [scenario.sim]: plays a KVX or a ZBL
// instrument on a pseudo-terminal, for demonstrations of an upload without an
// instrument and for the end-to-end tests of the serial path. The first line
// on stdout is the device path for the PC to open; see --help and
// docs/instrument-sim.md.
#include "tools/instrument-sim/InstrumentResponder.h"
#include "tools/instrument-sim/PtyLine.h"
#include "tools/instrument-sim/ScenarioReader.h"
#include "tools/instrument-sim/SimOptions.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

using namespace quenby::sim;

namespace {

// SIGTERM and SIGINT write a byte here; the event loop reads it and quits.
int g_signalPipe[2] = {-1, -1};

void onSignal(int)
{
    const char b = 1;
    [[maybe_unused]] const ssize_t n = ::write(g_signalPipe[1], &b, 1);
}

void printLine(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toLocal8Bit();
    std::fprintf(stream, "%s\n", bytes.constData());
    std::fflush(stream);
}

bool watchSignals()
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, g_signalPipe) != 0)
        return false;
    struct sigaction sa = {};
    sa.sa_handler = onSignal;
    sigemptyset(&sa.sa_mask);
    sa.sa_flags = SA_RESTART;
    return ::sigaction(SIGTERM, &sa, nullptr) == 0 && ::sigaction(SIGINT, &sa, nullptr) == 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();

    QString error;
    const std::optional<SimOptions> options = parseSimOptions(args, error);
    if (!options) {
        printLine(stderr, QStringLiteral("quenby-instrument-sim: %1").arg(error));
        std::fputs(qPrintable(simUsage()), stderr);
        return 2;
    }
    if (options->help) {
        std::fputs(qPrintable(simUsage()), stdout);
        return 0;
    }

    Instrument instrument;
    try {
        // Without a file: an instrument with no stored files and the
        // scenario's default serial.
        instrument = options->scenarioPath.isEmpty()
                         ? readScenario(QString(), QStringLiteral("--kind"), options->kind)
                         : readScenarioFile(options->scenarioPath, options->kind);
    } catch (const ScenarioError& e) {
        std::fprintf(stderr, "quenby-instrument-sim: %s\n", e.what());
        return 1;
    }

    const bool logging = options->log;
    const auto log = [logging](const QString& line) {
        if (logging)
            printLine(stderr, QStringLiteral("sim: ") + line);
    };
    log(QStringLiteral("a %1 with %2 stored files")
            .arg(instrument.kind == DeviceKind::Kvx ? QStringLiteral("KVX") : QStringLiteral("ZBL"))
            .arg(instrument.fileCount()));

    InstrumentResponder responder(instrument, options->faults, log);
    PtyLine line(responder, options->faults.unplugAfter, log);
    if (!line.open(error)) {
        printLine(stderr, QStringLiteral("quenby-instrument-sim: %1").arg(error));
        return 1;
    }
    line.setOnUnplugged([] { QCoreApplication::exit(0); });

    if (!watchSignals()) {
        printLine(stderr, QStringLiteral("quenby-instrument-sim: cannot watch signals"));
        return 1;
    }
    QSocketNotifier signalNotifier(g_signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&signalNotifier, &QSocketNotifier::activated, &app, [&] {
        char b = 0;
        [[maybe_unused]] const ssize_t n = ::read(g_signalPipe[0], &b, 1);
        log(QStringLiteral("signal: ending"));
        QCoreApplication::exit(0);
    });

    std::optional<QSocketNotifier> stdinNotifier;
    if (options->exitOnStdinEof) {
        stdinNotifier.emplace(STDIN_FILENO, QSocketNotifier::Read);
        QObject::connect(&*stdinNotifier, &QSocketNotifier::activated, &app, [&] {
            char buffer[256];
            const ssize_t n = ::read(STDIN_FILENO, buffer, sizeof buffer);
            if (n == 0 || (n < 0 && errno != EINTR && errno != EAGAIN)) {
                stdinNotifier->setEnabled(false);
                log(QStringLiteral("end of stdin: ending"));
                QCoreApplication::exit(0);
            }
        });
    }

    // The path first, alone on its line, so that a script or a test can read it.
    printLine(stdout, line.slavePath());
    return app.exec();
}
