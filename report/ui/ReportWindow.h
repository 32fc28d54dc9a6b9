// What the report windows share.
//
// ModalWindow: brought up over its owner as a modal window whose caller waits
// until the window goes away. A refill from the window's own menu hides it
// and shows it again inside that wait, so the wait lasts until the window
// stays hidden. The V graph is one, the reports too.
//
// ReportWindow: a report, made once and only hidden afterwards, loaded on
// first use, with its compensation box: a pick goes into the report's model,
// the model opens the compensation dialog, and the window mirrors the model
// once the dialog is done.
#pragma once

#include <QComboBox>
#include <QMainWindow>
#include <QStringList>

class QEventLoop;

namespace quenby {

// The compensation box of a scrolled report page: the mouse wheel over it
// scrolls the page unless the box has the focus, so that scrolling past it
// never picks a material (and never opens the dialog).
class PageComboBox final : public QComboBox
{
public:
    explicit PageComboBox(QWidget* parent);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

class ModalWindow : public QMainWindow
{
    Q_OBJECT

public:
    // Focus if the window is visible; else a modal show over `owner` that
    // returns once the window stays hidden.
    void showModalOver(QWidget* owner);
    // A window that makes its page later makes it here at the latest, before
    // it is shown.
    void setVisible(bool visible) override;

protected:
    ModalWindow() = default;
    void hideEvent(QHideEvent* event) override;

private:
    QEventLoop* m_modalWait = nullptr;
};

class ReportWindow : public ModalWindow
{
    Q_OBJECT

public:
    // The load step: the model's load, then the window mirrors the model. It
    // needs the language, so it runs on first use.
    void Form_Load();
    bool loaded() const { return m_loaded; }

    // Loads the window if need be, then focus or a modal show over `owner`.
    void bringUp(QWidget* owner = nullptr);

    // Copies the report model into the controls. Does nothing before the load.
    virtual void mirrorModel() = 0;

    // The items, the chosen entry and the text of a report's compensation box
    // on the box, without raising its events.
    static void mirrorCompensation(QComboBox& box, const QStringList& items, int index,
                                   const QString& text);

protected:
    ReportWindow() = default;
    // The report model's own load (KvxReport_Form_Load, ZblReport_Form_Load).
    virtual void loadModel() = 0;
    // The report's model keeps whether the window is on screen.
    virtual void setShown(bool shown) = 0;
    // The operator picked entry `index`, reading `text`: into the model, and
    // the model's click, which shows the compensation dialog modally.
    virtual void compensationPicked(int index, const QString& text) = 0;

    // The event of the compensation box `box`.
    void cbCompensation_Click(QComboBox& box, int index);

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

    bool m_loaded = false;
};

} // namespace quenby
