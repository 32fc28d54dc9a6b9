#include "shell/ui/QtServices.h"

#include "shell/model/YieldHook.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>

#include <algorithm>

namespace quenby {

MsgAnswer QtMessageService::show(const QString& text, MsgButtons buttons, MsgIcon icon,
                                 const QString& title)
{
    QMessageBox box(QApplication::activeWindow());
    // A box without a title of its own carries the program's name.
    box.setWindowTitle(title.isEmpty() ? QCoreApplication::applicationName() : title);
    box.setText(text);
    switch (icon) {
    case MsgIcon::None:
        box.setIcon(QMessageBox::NoIcon);
        break;
    case MsgIcon::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case MsgIcon::Question:
        box.setIcon(QMessageBox::Question);
        break;
    case MsgIcon::Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case MsgIcon::Information:
        box.setIcon(QMessageBox::Information);
        break;
    }
    switch (buttons) {
    case MsgButtons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case MsgButtons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    case MsgButtons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    case MsgButtons::YesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    case MsgButtons::RetryCancel:
        box.setStandardButtons(QMessageBox::Retry | QMessageBox::Cancel);
        break;
    case MsgButtons::AbortRetryIgnore:
        box.setStandardButtons(QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore);
        break;
    }
    switch (box.exec()) {
    case QMessageBox::Cancel:
        return MsgAnswer::Cancel;
    case QMessageBox::Yes:
        return MsgAnswer::Yes;
    case QMessageBox::No:
        return MsgAnswer::No;
    case QMessageBox::Retry:
        return MsgAnswer::Retry;
    case QMessageBox::Abort:
        return MsgAnswer::Abort;
    case QMessageBox::Ignore:
        return MsgAnswer::Ignore;
    default:
        return MsgAnswer::Ok;
    }
}

QString QtFolderDialogService::browseForFolder(const QString& title, const QString& startFolder,
                                               int flags)
{
    QFileDialog dialog(QApplication::activeWindow(), title, startFolder);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly, (flags & browse::IncludeFiles) == 0);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
}

QString QtFileDialogService::getOpenFileName(const OpenFileRequest& request)
{
    // The file name box holds either a pattern, which becomes the filter, or
    // a name to propose.
    const bool pattern = request.fileName.contains(u'*') || request.fileName.contains(u'?');
    QFileDialog dialog(QApplication::activeWindow(), request.title, request.initDir);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    if (pattern) {
        dialog.setNameFilter(QString(request.fileName).replace(u';', u' '));
    } else if (!request.fileName.isEmpty()) {
        dialog.selectFile(request.fileName);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
}

QString QtFileDialogService::getSaveFileName(const SaveFileRequest& request)
{
    QFileDialog dialog(QApplication::activeWindow(), request.title, request.initDir);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // The caller adds the ending and decides about an existing file itself.
    dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
    if (!request.filter.isEmpty())
        dialog.setNameFilter(QString(request.filter).replace(u';', u' '));
    if (!request.fileName.isEmpty() && !request.fileName.contains(u'*') &&
        !request.fileName.contains(u'?'))
        dialog.selectFile(request.fileName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
}

QtPrinterDialogService::QtPrinterDialogService() = default;
QtPrinterDialogService::~QtPrinterDialogService() = default;

QPrinter& QtPrinterDialogService::printer()
{
    if (!m_printer)
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return *m_printer;
}

PrintAnswer QtPrinterDialogService::showPrinter(const PrintRequest& request)
{
    QPrinter& chosen = printer();
    chosen.setCopyCount(std::max(1, request.copies));
    const bool range = request.fromPage > 0 && request.toPage >= request.fromPage;
    chosen.setPrintRange(range ? QPrinter::PageRange : QPrinter::AllPages);
    chosen.setFromTo(range ? request.fromPage : 0, range ? request.toPage : 0);
    QPrintDialog dialog(&chosen, QApplication::activeWindow());
    dialog.setMinMax(1, std::max(1, request.maxPage));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, true);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    PrintAnswer answer;
    answer.cancelled = false;
    answer.copies = chosen.copyCount();
    answer.fromPage = chosen.fromPage();
    answer.toPage = chosen.toPage();
    // The caller prints each copy itself and every page it paints: the
    // printer makes one of each.
    chosen.setCopyCount(1);
    chosen.setPrintRange(QPrinter::AllPages);
    chosen.setFromTo(0, 0);
    return answer;
}

void installQtServices()
{
    static QtMessageService messages;
    static QtFolderDialogService folders;
    static QtFileDialogService files;
    static QtPrinterDialogService printers;
    services().messages = &messages;
    services().folders = &folders;
    services().files = &files;
    services().printers = &printers;
    setYieldHook([] { QCoreApplication::processEvents(); });
}

} // namespace quenby
