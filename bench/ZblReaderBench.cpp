// Reading the 122-row ZBL test file the way the open command does, into a
// plain report fill: open under a fresh number, the clears, the read, the
// head, the table and the stored compensation. The file is closed after each
// read so that numbers do not run out. The run has its own sessions, as the
// program has.
#include "shell/model/AppState.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/Services.h"
#include "shell/model/Session.h"
#include "shell/model/ShellSession.h"
#include "zbl/model/ZblSession.h"
#include "zbl/model/ZblTestFileReader.h"
#include "zbl/model/ZblTestRecord.h"

#include <QFile>
#include <benchmark/benchmark.h>

#include <memory>

using namespace quenby;

namespace {

void readRowsFile(benchmark::State& state)
{
    OwnedSession<Services> services;
    OwnedSession<ShellSession> shell;
    OwnedSession<ZblSession> zbl;
    // The fill is large; keep it off the stack.
    auto report = std::make_unique<ZblReportFill>();

    const QString path = QStringLiteral(QUENBY_SAMPLES_DIR "/zbl-autotc-122-rows.zbl");
    SequentialFiles& files = SequentialFiles::instance();
    for (auto _ : state) {
        const Int16 no = files.freeFile();
        files.open(no, path, SequentialFiles::Mode::Input);
        appState().ZblTestFilePath = Dynamic(path);
        appState().ZblTestFileNo = Dynamic(static_cast<double>(no));
        ClearZBLChannelTables();
        ClearZBLCompensedColumns(*report);
        ClearZBLRowLines();
        ClearZBLCompensedColumns(*report);
        ReadZBLFile();
        FillZBLHeaderControls(*report);
        ParseZBLTableLines();
        FillZBLTapControls(*report);
        SetZBLCompensationFromFile(QStringLiteral("ZBL"), *report);
        benchmark::DoNotOptimize(zblTestRecord().RowLine[121]);
        files.close(no);
    }
    state.SetBytesProcessed(state.iterations() * QFile(path).size());
}

} // namespace

BENCHMARK(readRowsFile)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
