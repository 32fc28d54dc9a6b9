// The ZBL road on any bytes: the input is a ZBL test file in a scratch
// folder, opened under a fresh number, read and put into the basic report
// (head, rows, scroll bar, stored compensation, column layout) as the main
// window's road does, then the V graph of each channel filled from the
// report. The model routines are called directly; the windows are quiet
// stand-ins.
#include "report/model/TemperatureCompensation.h"
#include "shell/model/AppState.h"
#include "shell/model/SequentialFiles.h"
#include "tests/fuzz/FuzzSupport.h"
#include "zbl/model/VGraph.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblTestFileReader.h"

#include <cstddef>
#include <cstdint>

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
    compensationDialog().txtTS.clear();
    ZblBasicReportModel& report = zblBasicReport();
    report.cbCompensationText.clear();

    ZblBasicReportTarget target;
    ClearZBLChannelTables();
    ClearZBLCompensedColumns(target);
    ClearZBLRowLines();
    ClearZBLCompensedColumns(target);
    ReadZBLFile();
    FillZBLHeaderControls(target);
    TreatVisibleTAPTexte();

    report.VScroll1Visible = false;
    ZblReport_VScroll1_Change(0);
    report.frResistanceTop = 0;
    const int rows = CheckNumberOfTAPInFiles();
    const ZblTwipRect tap = ZblTapARect(rows);
    appState().ZblScrollOverflowPercent =
        (tap.top + tap.height - ZblReportFormHeight) / ZblReportFormHeight * 100.0;
    if (rows >= 20) {
        report.VScroll1Visible = true;
        report.VScroll1Max = ZblScrollMaximum(rows);
    }

    ParseZBLTableLines();
    FillZBLTapControls(target);
    SetZBLCompensationFromFile(QStringLiteral("ZBL"), target);
    PlaceZBLReportColumns();
    appState().ProcessInProgress = False16;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::runOnTestFile(data, size, QStringLiteral("test.zbl"), [](const QString& path) {
        openTest(path);
        fillReport();
        zblVGraph().openChannelFromReport(QStringLiteral("A"), QStringLiteral("CHANNEL A"));
        zblVGraph().openChannelFromReport(QStringLiteral("B"), QStringLiteral("CHANNEL B"));
    });
    return 0;
}
