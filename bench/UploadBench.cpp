// A whole upload from the instrument simulator, timed: the upload loop on its
// 100 ms tick, the real serial port on the simulator's pseudo-terminal, and
// the files written to a scratch folder. For each stored file it prints the
// bytes on the wire, their wire time at 115200 baud (10 bits a byte), the
// ticks the loop spent on the file and the time that took; then the whole
// upload from Get Files to the end state.
//
//   build-release/bench/bench_upload [scenario.sim ...]
//
// Without arguments it uploads samples/kvx-instrument.sim (an 11-test file
// and a 2-test file) and samples/zbl-instrument.sim (100 readings and 4).
#include "shell/model/AppState.h"
#include "shell/model/Services.h"
#include "shell/model/Session.h"
#include "shell/model/SettingsStore.h"
#include "shell/model/ShellSession.h"
#include "tools/instrument-sim/InstrumentFrames.h"
#include "tools/instrument-sim/ScenarioReader.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"
#include "upload/model/mdKvxZblCom.h"
#include "upload/model/mdStateMachine.h"
#include "upload/platform/QtSerialPortDevice.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <vector>

using namespace quenby;

namespace {

constexpr double BitsPerByte = 10.0; // start, 8 data, stop
constexpr double BaudRate = 115200.0;

// The upload window as the bench has it: nothing on screen.
class NoWindow final : public UploadDeviceView
{
public:
    void fillTexts() override {}
    void mirror() override {}
    void hideWindow() override {}
    void bringUp() override {}
};

struct FileRun
{
    qint64 wireBytes = 0;
    int ticks = 0;
    qint64 elapsedMs = 0;
};

struct UploadRun
{
    bool ended = false;
    int ticksToEnd = 0;
    qint64 elapsedMs = 0;
    std::vector<FileRun> files;
};

qint64 wireBytesOf(const sim::Instrument& instrument, int file)
{
    const auto i = static_cast<std::size_t>(file);
    if (instrument.kind == sim::DeviceKind::Kvx)
        return sim::kvxHeaderFrame(instrument.kvxFiles[i]).size() +
               sim::kvxDataFrame(instrument.kvxFiles[i]).size();
    return sim::zblHeaderFrame(instrument.zblFiles[i]).size() +
           sim::zblDataFrame(instrument.zblFiles[i]).size();
}

// Drives the loop as the upload window's timer does: a tick, then the next
// one 100 ms after the tick ended. Each upload has a fresh upload session
// with the Qt serial port and the system's port list in it.
UploadRun upload(const sim::Instrument& instrument)
{
    OwnedSession<UploadSession> session;
    installSerialServices();
    NoWindow window;
    Installed<UploadDeviceView> view(window);

    UploadRun run;
    QElapsedTimer clock;
    bool pressed = false;
    int ticks = 0;
    int fileStartTick = 0;
    qint64 fileStartMs = 0;
    Int16 fileInHand = -1;

    QTimer tick;
    tick.setSingleShot(true);
    QEventLoop loop;
    QObject::connect(&tick, &QTimer::timeout, [&] {
        tmrStateMachine_Timer();
        const UploadGlobals& g = uploadGlobals();
        if (pressed)
            ++ticks;
        if (!pressed && g.UploadState == UpState::Idle && uploadDeviceForm().cmdGetFilesEnabled) {
            cmdGetFiles_Click();
            pressed = true;
            clock.start();
        }
        if (pressed && g.UploadState == UpState::AskHeader && fileInHand != g.CurrentFile) {
            fileInHand = g.CurrentFile;
            fileStartTick = ticks;
            fileStartMs = clock.elapsed();
        }
        if (pressed && g.UploadState == UpState::SaveFile) {
            FileRun f;
            f.wireBytes = wireBytesOf(instrument, g.CurrentFile - 1);
            f.ticks = ticks - fileStartTick + 1; // the save tick is the file's last
            f.elapsedMs = clock.elapsed() - fileStartMs;
            run.files.push_back(f);
        }
        if (pressed && g.UploadState == UpState::EndUpload) {
            run.ended = true;
            run.ticksToEnd = ticks;
            run.elapsedMs = clock.elapsed();
            loop.quit();
            return;
        }
        if (uploadDeviceForm().timerEnabled)
            tick.start(uploadDeviceForm().timerInterval);
    });
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, &loop, &QEventLoop::quit);
    guard.start(300000);

    UploadDevice_Form_Load();
    tick.start(uploadDeviceForm().timerInterval);
    loop.exec();
    UploadDevice_Form_QueryUnload();
    UploadDevice_Form_Unload();
    return run;
}

void report(const QString& scenario, const sim::Instrument& instrument, const UploadRun& run)
{
    std::printf("\n%s (%s, %d files)\n", qPrintable(scenario),
                instrument.kind == sim::DeviceKind::Kvx ? "KVX" : "ZBL", instrument.fileCount());
    if (!run.ended) {
        std::printf("  the upload did not end\n");
        return;
    }
    std::printf("  %-6s %10s %12s %8s %14s %12s\n", "file", "wire bytes", "wire time", "ticks",
                "tick schedule", "measured");
    for (std::size_t i = 0; i < run.files.size(); ++i) {
        const FileRun& f = run.files[i];
        std::printf("  %-6zu %10lld %9.0f ms %8d %11d ms %9lld ms\n", i + 1,
                    static_cast<long long>(f.wireBytes),
                    f.wireBytes * BitsPerByte / BaudRate * 1000.0, f.ticks, f.ticks * 100,
                    static_cast<long long>(f.elapsedMs));
    }
    std::printf("  Get Files to the end state: %d ticks, schedule %d ms, measured %lld ms\n",
                run.ticksToEnd, run.ticksToEnd * 100, static_cast<long long>(run.elapsedMs));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    OwnedSession<Services> services;
    OwnedSession<ShellSession> shell;
    QStringList scenarios = app.arguments().mid(1);
    if (scenarios.isEmpty())
        scenarios = {QStringLiteral(QUENBY_SAMPLES_DIR "/kvx-instrument.sim"),
                     QStringLiteral(QUENBY_SAMPLES_DIR "/zbl-instrument.sim")};

    QTemporaryDir data;
    QTemporaryDir storeDir;
    QtSettingsStore store(storeDir.path());
    setSettingsStore(&store);
    store.SaveSetting("Quenby", "UserFileTransfert", "KVX", data.path());
    store.SaveSetting("Quenby", "UserFileTransfert", "ZBL", data.path());
    // The loop's messages come from the language file.
    appState().LangFilePath = QStringLiteral(QUENBY_LANG_DIR "/en.lng");

    for (const QString& scenario : scenarios) {
        const sim::Instrument instrument = sim::readScenarioFile(scenario);
        QProcess simulator;
        simulator.start(QStringLiteral(QUENBY_INSTRUMENT_SIM), {scenario});
        if (!simulator.waitForStarted() || !simulator.waitForReadyRead(10000)) {
            std::fprintf(stderr, "the simulator did not start\n");
            return 1;
        }
        qputenv("QUENBY_EXTRA_PORTS", simulator.readLine().trimmed());
        report(scenario, instrument, upload(instrument));
        simulator.terminate();
        simulator.waitForFinished();
    }
    setSettingsStore(nullptr);
    return 0;
}
