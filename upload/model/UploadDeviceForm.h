// The upload window as a model: the state of its controls and its events.
// The window mirrors this state and forwards its events here, so the whole
// road from the main menu to the closing message runs without a screen.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

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

UploadDeviceForm& uploadDeviceForm();

// What the window does for the model; each is optional.
struct UploadFormHooks
{
    std::function<void()> fillTexts;  // FillTextsUploadDevice on the window
    std::function<void()> mirror;     // show the model's state
    std::function<void()> hideWindow; // EndProcess
    std::function<void()> bringUp;    // focus if visible, else modal show over the main window
};
UploadFormHooks& uploadFormHooks();

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

// Tests: the window's design state back.
void resetUploadDeviceForm();

} // namespace quenby
