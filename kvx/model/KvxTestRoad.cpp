#include "kvx/model/KvxTestRoad.h"

#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxReportWindow.h"
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxTestRecord.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/AppState.h"
#include "shell/model/DataFolders.h"
#include "shell/model/MainWindowState.h"
#include "shell/model/MainWindowView.h"
#include "shell/model/YieldHook.h"

namespace quenby {

namespace {
void showProgress(bool show)
{
    mainWindowView().showProgress(show);
}

void status(const char* key)
{
    setStatusText(QString::fromLatin1(key));
    mainWindowView().mirrorMainWindow();
}

// Waits for the operator's click on a knee box. The rest of the menu stays
// usable meanwhile, so another command may run inside this wait; the inner
// road is then released first by a click. That is known and left so.
void waitForKneeChoice()
{
    MainWindowState& main = mainWindowState();
    main.chkKneeTypeVisible = {true, true, true};
    main.KneeChoiceDone = False16;
    mainWindowView().mirrorMainWindow();
    while (main.KneeChoiceDone == False16)
        mainWindowView().waitForEvents();
}

void reportCommand(const char* standard)
{
    // The report window unloaded and loaded again.
    kvxReportWindow().hideReport();
    KvxReport_Form_Load();
    appState().KneeStandard = QString::fromLatin1(standard);
    // These kept commands set the busy flag and never clear it; they are out
    // of reach in this version, and that is left as it is.
    appState().ProcessInProgress = True16;
    showProgress(true);
    ParseKvxHeaderFields();
    FillKvxReportHeader();
    FillKvxReportTaps();
    kvxReportWindow().fillReportTexts();
    showProgress(false);
    kvxReportWindow().mirrorReport();
    kvxReportWindow().bringUpReport();
}
} // namespace

void EmptyKvxTest()
{
    FlushKvxCurves();
    flushAllTap();
    flushGraph();
    ClearKvxRecord();
}

void FillKvxReportForStandard(const QString& standard)
{
    appState().KneeStandard = standard;
    kvxTestRecord().kneeTypeText = standard;
    appState().ProcessInProgress = True16;
    TreatVisibleTestTexte();
    FillKvxReportTaps();
    ParseKvxHeaderFields();
    FillKvxReportHeader();
    appState().ProcessInProgress = False16;
}

void OpenKvxTestForReport(const QString& path, const QString& standard)
{
    EmptyKvxTest();
    OpenKvxTestFileAt(path);
    ReadKvxTestFile();
    FillKvxReportForStandard(standard);
}

QString kneeStandardOfBox(int index)
{
    switch (index) {
    case 0:
        return QStringLiteral("IEEE 30");
    case 1:
        return QStringLiteral("IEEE 45");
    default:
        return QStringLiteral("AINSI/IEC10/50");
    }
}

void chkKneeType_Click(int index)
{
    MainWindowState& main = mainWindowState();
    appState().KneeStandard = kneeStandardOfBox(index);
    main.chkKneeTypeVisible = {false, false, false};
    kvxTestRecord().kneeTypeText = appState().KneeStandard;
    // Clearing the boxes raises the click once more for the box that was
    // set, which repeats these steps to no effect.
    const bool wasChecked =
        index >= 0 && index < 3 && main.chkKneeTypeChecked[static_cast<std::size_t>(index)];
    main.chkKneeTypeChecked = {false, false, false};
    if (wasChecked)
        chkKneeType_Click(index);
    main.KneeChoiceDone = True16;
    mainWindowView().mirrorMainWindow();
}

void mnKVXFiles_Click()
{
    mainWindowView().hideReports();
    kvxReportWindow().fillReportTexts();
    kvxCondensedReport().lbUnZoomVisible = false;

    const Bool16 cancelled = SelectKvxTestFile();

    // Whatever the answer, the test is emptied before it is tested: a
    // cancelled dialog leaves an empty test behind.
    kvxCondensedReport().cbCompensationText.clear();
    EmptyKvxTest();
    kvxReportWindow().mirrorReport();
    if (cancelled != False16)
        return;

    ReadKvxTestFile();
    status(MainStatusKeys::ProcessProgress);

    waitForKneeChoice();

    appState().ProcessInProgress = True16;
    showProgress(true);
    FillKvxReportForStandard(appState().KneeStandard);
    // The wait on the busy flag ends at once, since the flag was just cleared.
    while (appState().ProcessInProgress != False16)
        letSystemBreathe();
    showProgress(false);
    status(MainStatusKeys::Ready);
    kvxReportWindow().mirrorReport();
    kvxReportWindow().bringUpReport();
}

void mnKVXCRIEEE30_Click()
{
    reportCommand("IEEE 30");
}

void mnKVXIEEE45_Click()
{
    reportCommand("IEEE 45");
}

void mnKVXANSIIEC1050_Click()
{
    reportCommand("AINSI/IEC10/50");
}

} // namespace quenby
