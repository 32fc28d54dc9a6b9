// The print-outs to a PDF file, offscreen, page by page, side by side with a
// reference that prints the same form as a picture:
//  - kvxReportPage: the condensed report of the ten-tap sample, filled,
//    printed through mnPrint (one page, vector output);
//  - zblReportFourPages: the 122-row sample printed through mnuBasicReport
//    (four pages of 33 rows);
//  - rasterPageReference: the ZBL print-out's first page drawn into a
//    picture at the printer's resolution and that picture printed, as a
//    print of a window's grab would do.
// Each reports the time per page and, as counters, the bytes of the file per
// page.
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxTestRoad.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "shell/model/AppState.h"
#include "shell/model/DataFolders.h"
#include "shell/model/Platform.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/Services.h"
#include "shell/model/YieldHook.h"
#include "shell/ui/FormPrinter.h"
#include "shell/ui/PrintPages.h"
#include "tools/ToolSessions.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/ui/frmPrintZBLBasicReport.h"
#include "zbl/ui/frmZBLBasicReport.h"

#include <QApplication>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace quenby;

namespace {

// Every printer dialog answers one copy into the PDF file.
class PdfPrinter final : public PrinterDialogService
{
public:
    explicit PdfPrinter(QString file) : m_file(std::move(file)) {}
    PrintAnswer showPrinter(const PrintRequest&) override
    {
        PrintAnswer answer;
        answer.cancelled = false;
        answer.pdfFile = m_file;
        return answer;
    }

private:
    QString m_file;
};

class OneSample final : public FileDialogService
{
public:
    explicit OneSample(QString path) : m_path(std::move(path)) {}
    QString getOpenFileName(const OpenFileRequest&) override { return m_path; }

private:
    QString m_path;
};

struct PrintRoad
{
    PrintRoad()
    {
        setAppPathOverride(QStringLiteral(QUENBY_LANG_DIR));
        appState().LangFilePath = QStringLiteral(QUENBY_LANG_DIR "/en.lng");
        services().printers = &printer;
        setYieldHook({});
    }
    ~PrintRoad()
    {
        services().printers = nullptr;
        services().files = nullptr;
        setAppPathOverride(QString());
    }
    double bytes() const { return static_cast<double>(QFileInfo(pdf).size()); }

    tools::ToolSessions sessions;
    QTemporaryDir dir;
    QString pdf = dir.filePath(QStringLiteral("print.pdf"));
    PdfPrinter printer{pdf};
};

void kvxReportPage(benchmark::State& state)
{
    PrintRoad road;
    EmptyKvxTest();
    OpenKvxTestFileAt(QStringLiteral(QUENBY_SAMPLES_DIR "/kvx-ten-taps.txt"));
    ReadKvxTestFile();
    SequentialFiles::instance().closeAll();
    FillKvxReportForStandard(QString::fromLatin1(KneeStandardIeee30));
    frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
    report.FillTextsKvxCondensedReport();
    report.mirrorModel();
    for (auto _ : state)
        report.mnPrint_Click();
    state.counters["bytes_per_page"] = road.bytes();
}
BENCHMARK(kvxReportPage)->Unit(benchmark::kMillisecond);

void openZblSample(OneSample& sample)
{
    services().files = &sample;
    mnZBLFiles_Click();
    SequentialFiles::instance().closeAll();
    frmZBLBasicReport& report = frmZBLBasicReport::instance();
    report.FillTextsZblBasicReport();
    frmPrintZBLBasicReport::instance().FillTextsPrintZblBasicReport();
    report.mirrorModel();
}

void zblReportFourPages(benchmark::State& state)
{
    PrintRoad road;
    OneSample sample(QStringLiteral(QUENBY_SAMPLES_DIR "/zbl-autotc-122-rows.zbl"));
    openZblSample(sample);
    for (auto _ : state)
        frmZBLBasicReport::instance().mnuBasicReport_Click();
    state.SetItemsProcessed(state.iterations() * 4);
    state.counters["bytes_per_page"] = road.bytes() / 4;
    state.counters["pages"] = benchmark::Counter(static_cast<double>(state.iterations() * 4),
                                                 benchmark::Counter::kIsRate);
}
BENCHMARK(zblReportFourPages)->Unit(benchmark::kMillisecond);

void rasterPageReference(benchmark::State& state)
{
    PrintRoad road;
    OneSample sample(QStringLiteral(QUENBY_SAMPLES_DIR "/zbl-autotc-122-rows.zbl"));
    openZblSample(sample);
    frmZBLBasicReport::instance().mnuBasicReport_Click(); // the paper twin as on page 4
    frmPrintZBLBasicReport& paper = frmPrintZBLBasicReport::instance();
    for (auto _ : state) {
        std::unique_ptr<QPrinter> printer = makePdfPrinter(road.pdf);
        QPainter painter(printer.get());
        const QRectF page = printer->pageLayout().paintRectPixels(printer->resolution());
        QImage picture(page.size().toSize(), QImage::Format_RGB32);
        picture.fill(Qt::white);
        {
            QPainter onPicture(&picture);
            paintForm(paper, onPicture, QRectF(QPointF(0, 0), page.size()));
        }
        painter.drawImage(QPointF(0, 0), picture);
    }
    state.counters["bytes_per_page"] = road.bytes();
}
BENCHMARK(rasterPageReference)->Unit(benchmark::kMillisecond);

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
