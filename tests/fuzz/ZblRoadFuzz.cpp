// The ZBL road on any bytes: the input is a ZBL test file in a scratch
// folder, opened under a fresh number, read and put into the basic report
// (head, rows, scroll bar, stored compensation, column layout) as the main
// window's road does, then the V graph of each channel filled from the
// report, the report's print-out walked through its pages, the report saved
// under a new name beside the test, and its CSV made as the batch converter
// makes it. The model routines are called directly; the windows are quiet
// stand-ins.
#include "report/model/TemperatureCompensation.h"
#include "shell/model/AppState.h"
#include "shell/model/SequentialFiles.h"
#include "tests/fuzz/FuzzSupport.h"
#include "zbl/model/VGraph.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblCsvExport.h"
#include "zbl/model/ZblPrintReport.h"
#include "zbl/model/ZblReportSave.h"
#include "zbl/model/ZblTestFileReader.h"

#include <QFileInfo>

#include <cstddef>
#include <cstdint>
#include <optional>

using namespace quenby;

namespace {

void openTest(const QString& path)
{
    SequentialFiles& files = SequentialFiles::instance();
    const Int16 no = files.freeFile();
    files.open(no, path, SequentialFiles::Mode::Input);
    appState().ZblTestFilePath = Dynamic(path);
    appState().ZblTestFileNo = Dynamic(static_cast<double>(no));
}

void fillReport()
{
    appState().ProcessInProgress = True16;
    FillZblReportFromOpenTest();
    appState().ProcessInProgress = False16;
}

// The save dialog answers with one name beside the test.
class SaveBeside final : public FileDialogService
{
public:
    explicit SaveBeside(QString path) : m_path(std::move(path)) {}
    QString getOpenFileName(const OpenFileRequest&) override { return {}; }
    QString getSaveFileName(const SaveFileRequest&) override { return m_path; }

private:
    QString m_path;
};

void printSaveAndExport(const QString& path)
{
    int pages = 0;
    ZblReport_mnuBasicReport_Click(
        ZblColumnHeadTexts{}, [] { return std::optional<int>(2); },
        [&pages](const ZblPrintReportModel&) {
            ++pages;
            return true;
        });
    // Never more than four pages a copy.
    if (pages > 2 * ZblPrintReportModel::MostPages)
        __builtin_trap();
    SaveBeside dialog(QFileInfo(path).absolutePath() + QStringLiteral("/saved.zbl"));
    services().files = &dialog;
    SaveZBLReport();
    services().files = nullptr;
    static_cast<void>(zblReportCsv(zblBasicReport(), zblTestRecord(), zblReportTableRows()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::runOnTestFile(data, size, QStringLiteral("test.zbl"), [](const QString& path) {
        openTest(path);
        fillReport();
        zblVGraph().openChannelFromReport(QStringLiteral("A"), QStringLiteral("CHANNEL A"));
        zblVGraph().openChannelFromReport(QStringLiteral("B"), QStringLiteral("CHANNEL B"));
        printSaveAndExport(path);
    });
    return 0;
}
