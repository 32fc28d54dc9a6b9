// What the report windows share: made once and only hidden afterwards, loaded
// on first use, and brought up over their owner as a modal window whose
// caller waits until the report goes away. A refill from the report's own
// menu hides it and shows it again inside that wait, so the wait lasts until
// the report stays hidden.
#pragma once

#include <QMainWindow>

class QEventLoop;

namespace quenby {

class ReportWindow : public QMainWindow
{
    Q_OBJECT

public:
    // The load step; it needs the language, so it runs on first use.
    virtual void Form_Load() = 0;
    bool loaded() const { return m_loaded; }

    // Focus if the report is visible; else a modal show over `owner` that
    // returns once the report stays hidden.
    void bringUp(QWidget* owner = nullptr);

protected:
    ReportWindow() = default;
    // The report's model keeps whether the window is on screen.
    virtual void setShown(bool shown) = 0;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

    bool m_loaded = false;

private:
    QEventLoop* m_modalWait = nullptr;
};

} // namespace quenby
