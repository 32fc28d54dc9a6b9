#include "report/ui/ReportWindow.h"

#include <QEventLoop>

namespace quenby {

void ReportWindow::bringUp(QWidget* owner)
{
    if (!m_loaded)
        Form_Load();
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

void ReportWindow::showEvent(QShowEvent* event)
{
    setShown(true);
    QMainWindow::showEvent(event);
}

void ReportWindow::hideEvent(QHideEvent* event)
{
    setShown(false);
    if (m_modalWait)
        m_modalWait->quit();
    QMainWindow::hideEvent(event);
}

} // namespace quenby
