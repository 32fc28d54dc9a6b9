// Reading a ten-tap KVX test file with full curves (119 points a tap), the
// way the open command does: open under a fresh number, flush, clear, read.
// The file is closed after each read so that numbers do not run out. The run
// has its own sessions, as the program has.
#include "kvx/model/KvxSession.h"
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxTestRecord.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/Services.h"
#include "shell/model/Session.h"
#include "shell/model/ShellSession.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace quenby;

namespace {

void readTenTapFile(benchmark::State& state)
{
    OwnedSession<Services> services;
    OwnedSession<ShellSession> shell;
    OwnedSession<KvxSession> kvx;
    QTemporaryDir dir;
    const QString lang = dir.filePath(QStringLiteral("en.lng"));
    QFile langFile(lang);
    if (!langFile.open(QIODevice::WriteOnly) ||
        langFile.write("frmKVXCondensedReport.txtInsulationRes.Text, Insulation\r\n") < 0) {
        state.SkipWithError("cannot write the language file");
        return;
    }
    langFile.close();
    setAppPathOverride(dir.path());
    appState().LangFilePath = lang;

    const QString path = QStringLiteral(QUENBY_SAMPLES_DIR "/kvx-ten-taps.txt");
    SequentialFiles& files = SequentialFiles::instance();
    for (auto _ : state) {
        const Int16 no = files.freeFile();
        files.open(no, path, SequentialFiles::Mode::Input);
        appState().KvxTestFilePath = Dynamic(path);
        appState().KvxTestFileNo = Dynamic(static_cast<double>(no));
        FlushKvxCurves();
        ClearKvxRecord();
        ReadKvxTestFile();
        benchmark::DoNotOptimize(kvxTestRecord().curves[9].current[119]);
        files.close(no);
    }
    state.SetBytesProcessed(state.iterations() * QFile(path).size());
    setAppPathOverride(QString());
}

} // namespace

BENCHMARK(readTenTapFile)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
