#include "report/ui/ReportWindow.h"

#include "localisation/ui/WindowTexts.h"
#include "shell/model/RuntimeError.h"

#include <QComboBox>
#include <QEventLoop>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace quenby {

PageComboBox::PageComboBox(QWidget* parent) : QComboBox(parent)
{
    // A click or Tab gives it the focus, the wheel alone does not.
    setFocusPolicy(Qt::StrongFocus);
}

void PageComboBox::wheelEvent(QWheelEvent* event)
{
    if (!hasFocus()) {
        event->ignore(); // on to the page, which scrolls
        return;
    }
    QComboBox::wheelEvent(event);
}

void ModalWindow::showModalOver(QWidget* owner)
{
    if (isVisible()) {
        raise();
        activateWindow();
        return;
    }
    if (owner && parentWidget() != owner)
        setParent(owner, windowFlags() | Qt::Window);
    setWindowModality(Qt::ApplicationModal);
    show();
    QEventLoop wait;
    m_modalWait = &wait;
    while (isVisible())
        wait.exec();
    m_modalWait = nullptr;
}

void ModalWindow::hideEvent(QHideEvent* event)
{
    if (m_modalWait)
        m_modalWait->quit();
    QMainWindow::hideEvent(event);
}

void ReportWindow::Form_Load()
{
    m_loaded = true;
    loadModel();
    mirrorModel();
}

void ReportWindow::bringUp(QWidget* owner)
{
    if (!m_loaded)
        Form_Load();
    showModalOver(owner);
}

void ReportWindow::mirrorCompensation(QComboBox& box, const QStringList& items, int index,
                                      const QString& text)
{
    const QSignalBlocker quiet(&box);
    bool sameItems = box.count() == items.size();
    for (int i = 0; sameItems && i < box.count(); ++i)
        sameItems = box.itemText(i) == items.at(i);
    if (!sameItems) {
        box.clear();
        box.addItems(items);
    }
    box.setCurrentIndex(index >= 0 && index < box.count() ? index : -1);
    // The text of an editable box may be other than its chosen item.
    if (box.currentText() != text)
        box.setEditText(text);
}

void ReportWindow::cbCompensation_Click(QComboBox& box, int index)
{
    const CommandScope scope(QStringLiteral("cbCompensation_Click"));
    // Opens the compensation dialog modally; its OK fills the compensated
    // column(s) before this returns.
    compensationPicked(index, box.itemText(index));
    mirrorModel();
}

void ModalWindow::setVisible(bool visible)
{
    if (auto* later = dynamic_cast<KeptControlTexts*>(this); later && visible)
        later->makeControls();
    QMainWindow::setVisible(visible);
}

void ReportWindow::showEvent(QShowEvent* event)
{
    setShown(true);
    QMainWindow::showEvent(event);
}

void ReportWindow::hideEvent(QHideEvent* event)
{
    setShown(false);
    ModalWindow::hideEvent(event);
}

} // namespace quenby
