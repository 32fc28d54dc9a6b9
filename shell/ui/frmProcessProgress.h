// The busy window: a status text and a row of dots that move while a long
// job runs. It shows no real progress. The dots move on each tick of
// tmrProgress, which runs all the time; ticks only arrive while the long job
// yields, so the dots keep the pace of the work. One instance, made on first
// touch and only ever hidden.
#pragma once

#include <QWidget>

class QFrame;
class QLabel;
class QPushButton;
class QTimer;

namespace quenby {

class frmProcessProgress final : public QWidget
{
    Q_OBJECT

public:
    static frmProcessProgress& instance();

    // Centres the window on frmMain. Raises Overflow when the main window
    // lies beyond the 16-bit range of twips (about 2184 pixels at 96 dpi).
    void SetPositionForm();
    void FillTextsProcessProgress();
    // One tick of tmrProgress.
    void tmrProgress_Timer();

    QLabel* lbTexteStatus() const { return m_lbTexteStatus; }
    QLabel* lbPoint() const { return m_lbPoint; }
    QTimer* tmrProgress() const { return m_tmrProgress; }

private:
    frmProcessProgress();

    QLabel* m_lbTexteStatus = nullptr;
    QLabel* m_lbPoint = nullptr;
    QTimer* m_tmrProgress = nullptr;
    QPushButton* m_Command1 = nullptr;
    QFrame* m_Line1 = nullptr;
    QFrame* m_Line2 = nullptr;
};

} // namespace quenby
