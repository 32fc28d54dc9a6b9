// The road from the knee click to the filled condensed report, on the
// ten-tap sample (119 points a tap):
//  - kneeClickToFilledReport: the file read once beforehand; each run sets the
//    knee standard and runs TreatVisibleTestTexte, FillKvxReportTaps (with the
//    curves drawn and the knees found), ParseKvxHeaderFields and
//    FillKvxReportHeader on the model;
//  - fileReadAndKneeClickToFilledReport: the same with the open command's
//    flushes and the file read in each run;
//  - kneeClickToFilledReportOnScreen: the model road, then the report window
//    mirrors the model (cells, head, chart), offscreen, with the yields
//    processing events as in the program.
// The standard alternates between two values, so that the knees move on
// every run as they do after a knee command.
#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxTestRecord.h"
#include "kvx/model/KvxTestRoad.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "shell/model/AppState.h"
#include "shell/model/DataFolders.h"
#include "shell/model/Platform.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/YieldHook.h"
#include "tools/ToolSessions.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace quenby;

namespace {

const QString SamplePath = QStringLiteral(QUENBY_SAMPLES_DIR "/kvx-ten-taps.txt");

// A language file beside a scratch program folder, for the lookups of the
// read and of the window's texts.
class BenchLanguage
{
public:
    bool install()
    {
        const QString lang = m_dir.filePath(QStringLiteral("en.lng"));
        QFile file(lang);
        if (!file.open(QIODevice::WriteOnly) ||
            file.write("frmKVXCondensedReport.txtInsulationRes.Text, Insulation\r\n") < 0)
            return false;
        file.close();
        setAppPathOverride(m_dir.path());
        appState().LangFilePath = lang;
        return true;
    }
    ~BenchLanguage() { setAppPathOverride(QString()); }

private:
    QTemporaryDir m_dir;
};

// The open command's order: the report emptied, the curves and the record
// cleared, the file read. The file is closed so that numbers do not run out.
void readSample()
{
    EmptyKvxTest();
    OpenKvxTestFileAt(SamplePath);
    ReadKvxTestFile();
    SequentialFiles::instance().close(static_cast<Int16>(appState().KvxTestFileNo.toNumber()));
}

// The knee click and the fill of the report.
void kneeClickAndFill(bool ieee45)
{
    FillKvxReportForStandard(QString::fromLatin1(ieee45 ? KneeStandardIeee45 : KneeStandardIeee30));
}

void kneeClickToFilledReport(benchmark::State& state)
{
    tools::ToolSessions sessions;
    BenchLanguage language;
    if (!language.install()) {
        state.SkipWithError("cannot write the language file");
        return;
    }
    setYieldHook({});
    readSample();
    bool ieee45 = false;
    for (auto _ : state) {
        kneeClickAndFill(ieee45 = !ieee45);
        benchmark::DoNotOptimize(kvxReportGraph().cursor(10).x);
    }
}

void fileReadAndKneeClickToFilledReport(benchmark::State& state)
{
    tools::ToolSessions sessions;
    BenchLanguage language;
    if (!language.install()) {
        state.SkipWithError("cannot write the language file");
        return;
    }
    setYieldHook({});
    bool ieee45 = false;
    for (auto _ : state) {
        readSample();
        kneeClickAndFill(ieee45 = !ieee45);
        benchmark::DoNotOptimize(kvxReportGraph().cursor(10).x);
    }
}

// The window case needs an application object; without a display it runs
// offscreen. Made once and kept, as the report window lives on.
void makeApplication()
{
    static int argc = 1;
    static char name[] = "bench_kvx_report";
    static char* argv[] = {name, nullptr};
    if (QApplication::instance())
        return;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(argc, argv);
}

void kneeClickToFilledReportOnScreen(benchmark::State& state)
{
    tools::ToolSessions sessions;
    makeApplication();
    BenchLanguage language;
    if (!language.install()) {
        state.SkipWithError("cannot write the language file");
        return;
    }
    frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
    report.FillTextsKvxCondensedReport();
    setYieldHook([] { QCoreApplication::processEvents(); });
    readSample();
    bool ieee45 = false;
    for (auto _ : state) {
        kneeClickAndFill(ieee45 = !ieee45);
        report.mirrorModel();
        benchmark::DoNotOptimize(report.CWGraph1().cursorValue(10));
    }
    setYieldHook({});
}

} // namespace

BENCHMARK(kneeClickToFilledReport)->Unit(benchmark::kMicrosecond);
BENCHMARK(fileReadAndKneeClickToFilledReport)->Unit(benchmark::kMicrosecond);
BENCHMARK(kneeClickToFilledReportOnScreen)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
