// The upload window: a small window whose timer drives the instrument. Each
// tick of tmrStateMachine runs one step of the upload state machine, which
// looks for the instrument on the serial ports, reads its serial number and,
// on the operator's word, fetches its stored tests into the data folders. The
// window shows the port found, the device, the progress of the transfer and
// the machine's messages, and its status bar the device and port states.
#pragma once

#include <QMainWindow>

class QLabel;
class QTimer;

namespace quenby {

class frmUploadDevice final : public QMainWindow
{
    Q_OBJECT

public:
    // The period of the state machine's tick, in milliseconds.
    static constexpr int TickMilliseconds = 100;

    // The one instance, made on first touch; closing only hides it.
    static frmUploadDevice& instance();

    void FillTextsUploadDevice();

    QTimer* tmrStateMachine() const { return m_timer; }
    // Panel 1 (device state) or 2 (port state) of the status bar.
    QLabel* statusPanel(int panel) const;

private:
    frmUploadDevice();

    QTimer* m_timer = nullptr;
    QLabel* m_panel1 = nullptr;
    QLabel* m_panel2 = nullptr;
};

} // namespace quenby
