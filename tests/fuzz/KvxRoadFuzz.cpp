// The KVX road on any bytes: the input is a KVX test file in a scratch
// folder, opened under a fresh number and read, then the knee standard is
// chosen in each of the three boxes in turn and the condensed report filled
// for it, as the main window's road does after the operator's click. The
// model routines are called directly; the windows are quiet stand-ins.
#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxTestRecord.h"
#include "kvx/model/KvxTestRoad.h"
#include "shell/model/AppState.h"
#include "shell/model/SequentialFiles.h"
#include "tests/fuzz/FuzzSupport.h"

#include <cstddef>
#include <cstdint>

using namespace quenby;

namespace {

// The test emptied and the file opened, as the open command leaves them.
void openTest(const QString& path)
{
    kvxCondensedReport().lbUnZoomVisible = false;
    kvxCondensedReport().cbCompensationText.clear();
    FlushKvxCurves();
    flushAllTap();
    flushGraph();
    ClearKvxRecord();
    SequentialFiles& files = SequentialFiles::instance();
    const Int16 no = files.freeFile();
    files.open(no, path, SequentialFiles::Mode::Input);
    appState().KvxTestFilePath = Dynamic(path);
    appState().KvxTestFileNo = Dynamic(static_cast<double>(no));
}

// The report filled for the knee standard of box `box`.
void fillReport(int box)
{
    chkKneeType_Click(box);
    appState().ProcessInProgress = True16;
    TreatVisibleTestTexte();
    FillKvxReportTaps();
    ParseKvxHeaderFields();
    FillKvxReportHeader();
    appState().ProcessInProgress = False16;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::runOnTestFile(data, size, QStringLiteral("test.txt"), [](const QString& path) {
        openTest(path);
        ReadKvxTestFile();
        for (int box = 0; box < 3; ++box)
            fillReport(box);
    });
    return 0;
}
