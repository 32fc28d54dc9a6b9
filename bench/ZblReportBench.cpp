// The road of a 122-row ZBL test from the open dialog to the report shown:
//  - openToFilledReport: mnZBLFiles_Click on the model, the dialog answered
//    with the sample's name, the report shown by a window that does nothing;
//  - openToReportOnScreen: the same, then the report window mirrors its
//    122 rows of nine cells, offscreen.
// Each run closes the file it opened so that numbers do not run out.
#include "shell/model/AppState.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/Services.h"
#include "shell/model/SettingsStore.h"
#include "tools/ToolSessions.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/ui/frmZBLBasicReport.h"

#include <QApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace quenby;

namespace {

const QString SamplePath = QStringLiteral(QUENBY_SAMPLES_DIR "/zbl-autotc-122-rows.zbl");

class SampleDialog final : public FileDialogService
{
public:
    QString getOpenFileName(const OpenFileRequest&) override { return SamplePath; }
};

struct Road
{
    Road()
    {
        setSettingsStore(&store);
        services().files = &dialog;
    }
    ~Road()
    {
        services().files = nullptr;
        setSettingsStore(nullptr);
    }
    tools::ToolSessions sessions; // first: the road's settings go into its services
    QTemporaryDir dir;
    QtSettingsStore store{dir.path()};
    SampleDialog dialog;
};

void openToFilledReport(benchmark::State& state)
{
    Road road;
    for (auto _ : state) {
        mnZBLFiles_Click();
        SequentialFiles::instance().closeAll();
    }
}
BENCHMARK(openToFilledReport)->Unit(benchmark::kMillisecond);

void openToReportOnScreen(benchmark::State& state)
{
    Road road;
    frmZBLBasicReport& report = frmZBLBasicReport::instance();
    for (auto _ : state) {
        mnZBLFiles_Click();
        report.mirrorModel();
        SequentialFiles::instance().closeAll();
    }
}
BENCHMARK(openToReportOnScreen)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
