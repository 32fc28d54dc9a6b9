// The upload window: a small window whose timer drives the instrument. Each
// tick of tmrStateMachine runs one step of the upload state machine, which
// looks for the instrument on the serial ports, reads its serial number and,
// on the operator's word, fetches its stored tests into the data folders. The
// window shows the port found, the device, the progress of the transfer and
// the machine's messages, and its status bar the device and port states.
#pragma once

#include "report/ui/ReportWindow.h"
#include "upload/model/UploadDeviceForm.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace quenby {

// The window holds no rule of its own: its controls mirror the upload
// window's model (upload/model/UploadDeviceForm.h) and its events go there.
// It is the view that model asks for.
class frmUploadDevice final : public ModalWindow, public UploadDeviceView
{
    Q_OBJECT

public:
    // The period of the state machine's tick, in milliseconds.
    static constexpr int TickMilliseconds = 100;

    // The one instance, made on first touch; closing only hides it.
    static frmUploadDevice& instance();

    void FillTextsUploadDevice();

    // Load: StartProcess, once for each load of the window.
    void Form_Load();
    // Shows the model's state in the controls and starts or stops the timer.
    void mirrorModel();

    // The model's view: the texts, the mirror, hidden, and brought up over
    // the main window.
    void fillTexts() override { FillTextsUploadDevice(); }
    void mirror() override { mirrorModel(); }
    void hideWindow() override { hide(); }
    void bringUp() override;

    QTimer* tmrStateMachine() const { return m_timer; }
    // Panel 1 (device state) or 2 (port state) of the status bar.
    QLabel* statusPanel(int panel) const;

protected:
    // The model keeps whether the window is on screen.
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    frmUploadDevice();
    void tick();

    bool m_loaded = false; // the model's word, as last mirrored
    QTimer* m_timer = nullptr;
    QLabel* m_lbPrintMessage = nullptr;
    QLabel* m_lbDeviceSerial = nullptr;
    QLabel* m_lbFilestransfert = nullptr;
    QLabel* m_lbTransfertPurcent = nullptr;
    QLabel* m_lbSucces = nullptr;
    QLabel* m_lbFail = nullptr;
    QGroupBox* m_frDevice = nullptr;
    QPushButton* m_cmdGetFiles = nullptr;
    QPushButton* m_cmdStop = nullptr;
    QProgressBar* m_pbTransfertFiles = nullptr;
    QComboBox* m_cbCom = nullptr;
    QLabel* m_panel1 = nullptr;
    QLabel* m_panel2 = nullptr;
};

} // namespace quenby
