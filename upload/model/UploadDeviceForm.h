// The upload window as a model: the state of its controls and its events.
// The window mirrors this state and forwards its events here, so the whole
// road from the main menu to the closing message runs without a screen.
#pragma once

#include <QString>
#include <QStringList>

namespace quenby {

struct UploadDeviceForm
{
    bool loaded = false;
    bool shown = false;

    // Captions.
    QString lbPrintMessage = QStringLiteral("No Device Found!");
    QString lbDeviceSerial = QStringLiteral("?????");
    QString lbFilestransfert = QStringLiteral("----/----");
    QString lbTransfertPurcent = QStringLiteral("0%");
    QString lbSucces = QStringLiteral("-------");
    QString lbFail = QStringLiteral("-------");
    QString statusPanel1;
    QString statusPanel2;

    // Visible and enabled states.
    bool frDeviceVisible = true;
    bool cmdGetFilesEnabled = true;
    bool cmdStopEnabled = true;
    bool lbTransfertPurcentVisible = true;
    bool lbFilestransfertVisible = true;
    bool pbTransfertFilesVisible = true;
    bool lbSuccesVisible = true;
    bool lbFailVisible = true;
    int pbTransfertFilesMax = 100;
    int pbTransfertFilesValue = 0;

    // cbCom: the ports found, and the selected entry (-1 none).
    QStringList cbComItems;
    int cbComListIndex = -1;

    // tmrStateMachine: 0 as interval stops it during a tick.
    bool timerEnabled = false;
    int timerInterval = 100;
};

// The window's state in the upload session in force.
UploadDeviceForm& uploadDeviceForm();

// What the model asks of the upload window. The application installs
// frmUploadDevice behind it; a test installs a scripted one.
class UploadDeviceView
{
public:
    virtual ~UploadDeviceView() = default;
    // FillTextsUploadDevice: the window's texts from the language.
    virtual void fillTexts() = 0;
    // The model's state changed: the controls show it.
    virtual void mirror() = 0;
    // The window goes out of sight.
    virtual void hideWindow() = 0;
    // Focus if the window is visible, else a modal show over the main window.
    virtual void bringUp() = 0;
};

// The view in force; asking when none is installed raises std::logic_error.
UploadDeviceView& uploadDeviceView();

// Operations of the window.
void EndProcess();
void DisplayTransfert(bool show);
void StartProcess();
void UpdateDisplay();

// Events.
void UploadDevice_Form_Load();        // StartProcess, once per load
void UploadDevice_Form_QueryUnload(); // timer off, CloseUpload
void UploadDevice_Form_Unload();      // the window unloads itself
void cmdGetFiles_Click();
void cmdStop_Click();
void mnscan_Click();
void tmrStateMachine_Timer(); // one tick: interval 0, a step, UpdateDisplay, interval 100

// The main window's command: StartProcess, then bring the window up.
void mnUploadPcDevice_Click();

} // namespace quenby
