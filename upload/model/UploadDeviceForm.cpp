#include "upload/model/UploadDeviceForm.h"

#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/NumberText.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"
#include "upload/model/mdStateMachine.h"

namespace quenby {

namespace {

// The period of tmrStateMachine in milliseconds; 0 holds it during a tick.
constexpr int TickInterval = 100;

void mirror()
{
    uploadDeviceView().mirror();
}

} // namespace

UploadDeviceForm& uploadDeviceForm()
{
    return uploadSession().form;
}

UploadDeviceView& uploadDeviceView()
{
    return Slot<UploadDeviceView>::current();
}

void EndProcess()
{
    uploadDeviceForm().shown = false;
    uploadDeviceView().hideWindow();
    mirror();
}

void DisplayTransfert(bool show)
{
    UploadDeviceForm& form = uploadDeviceForm();
    form.lbTransfertPurcentVisible = show;
    form.lbFilestransfertVisible = show;
    form.pbTransfertFilesVisible = show;
    mirror();
}

void StartProcess()
{
    UploadDeviceForm& form = uploadDeviceForm();
    form.lbPrintMessage.clear();
    form.timerEnabled = true;
    InitUpload();
    form.frDeviceVisible = false;
    form.cmdGetFilesEnabled = false;
    form.cmdStopEnabled = false;
    DisplayTransfert(false);
    // Hidden, so that the main window's show decides when it is seen.
    form.shown = false;
    uploadDeviceView().hideWindow();
    uploadGlobals().DeviceSerialText.clear();
    // Nothing shows these two again.
    form.lbSuccesVisible = false;
    form.lbFailVisible = false;
    // The window's texts from the language; of them the model keeps the
    // message line.
    form.lbPrintMessage = GetLanguageText(QString::fromLatin1(UploadKeys::TryToConnect));
    uploadDeviceView().fillTexts();
    mirror();
}

void UpdateDisplay()
{
    const UploadGlobals& g = uploadGlobals();
    UploadDeviceForm& form = uploadDeviceForm();
    form.lbPrintMessage = g.PrintMessageText;
    form.statusPanel1 = g.DeviceStatusText;
    form.statusPanel2 = g.PortStatusText;
    form.lbDeviceSerial = g.DeviceSerialText;
    form.lbFilestransfert = g.FilesTransfertText;
    form.lbSucces = numberText(g.NbFilesSucces) + QStringLiteral(" Files");
    form.lbFail = numberText(g.NbFilesFail) + QStringLiteral(" Files");
    if (g.NbFilesOnDevice > 0) {
        const double percent =
            static_cast<double>(g.CurrentFile) / static_cast<double>(g.NbFilesOnDevice) * 100.0;
        form.lbTransfertPurcent = formatNumber(percent, u"0") + QLatin1Char('%');
        form.pbTransfertFilesMax = g.NbFilesOnDevice;
        form.pbTransfertFilesValue = g.CurrentFile;
    }
    mirror();
}

void UploadDevice_Form_Load()
{
    uploadDeviceForm().loaded = true;
    StartProcess();
}

void UploadDevice_Form_QueryUnload()
{
    uploadDeviceForm().timerEnabled = false;
    CloseUpload();
    mirror();
}

void UploadDevice_Form_Unload()
{
    // An unloaded window loses its controls: it is neither loaded nor shown,
    // and the next load starts from the design state.
    uploadDeviceForm() = UploadDeviceForm{};
    mirror();
}

void cmdGetFiles_Click()
{
    UploadDeviceForm& form = uploadDeviceForm();
    UploadGlobals& g = uploadGlobals();
    form.cmdGetFilesEnabled = false;
    form.cmdStopEnabled = true;
    g.PrintMessageText = GetLanguageText(QString::fromLatin1(UploadKeys::GetNumberOfFiles));
    g.UploadState = UpState::AskFileCount;
    // CurrentFile stays: state 8 resets it once the count has arrived.
    g.NbFilesSucces = 0;
    g.NbFilesFail = 0;
    mirror();
}

void cmdStop_Click()
{
    UploadDeviceForm& form = uploadDeviceForm();
    // Enabled at once, so the operator can ask again during the stop's wait.
    form.cmdGetFilesEnabled = true;
    form.cmdStopEnabled = false;
    uploadGlobals().StopRequested = True16;
    mirror();
}

void mnscan_Click()
{
    UploadDeviceForm& form = uploadDeviceForm();
    UploadGlobals& g = uploadGlobals();
    form.frDeviceVisible = false;
    g.DeviceSerialText.clear();
    g.PrintMessageText.clear();
    form.lbDeviceSerial.clear();
    form.lbPrintMessage.clear();
    InitUpload();
    DisplayTransfert(false);
    // The receive filter applies again; TryNextPort closes the port.
    g.DeviceConnected = False16;
    form.cmdGetFilesEnabled = false;
    form.cmdStopEnabled = false;
    mirror();
}

void tmrStateMachine_Timer()
{
    UploadDeviceForm& form = uploadDeviceForm();
    // Interval 0 holds the timer, so that a slow step or the closing message
    // box can't start a second tick.
    form.timerInterval = 0;
    StateMachineProcess();
    UpdateDisplay();
    form.timerInterval = TickInterval;
    mirror();
}

void mnUploadPcDevice_Click()
{
    // Touching the window loads it first, and the load runs StartProcess;
    // the command runs it once more.
    if (!uploadDeviceForm().loaded)
        UploadDevice_Form_Load();
    StartProcess();
    uploadDeviceForm().shown = true;
    mirror();
    uploadDeviceView().bringUp();
}

} // namespace quenby
