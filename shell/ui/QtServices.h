// Qt implementations of the services that show or wait: message boxes, the
// folder and file pickers and the printer dialog. The program installs them
// at start; tests use scripted ones.
#pragma once

#include "shell/model/Services.h"

#include <memory>

class QPrinter;

namespace quenby {

class QtMessageService final : public MessageService
{
public:
    MsgAnswer show(const QString& text, MsgButtons buttons, MsgIcon icon,
                   const QString& title) override;
};

class QtFolderDialogService final : public FolderDialogService
{
public:
    QString browseForFolder(const QString& title, const QString& startFolder, int flags) override;
};

class QtFileDialogService final : public FileDialogService
{
public:
    QString getOpenFileName(const OpenFileRequest& request) override;
    QString getSaveFileName(const SaveFileRequest& request) override;
};

// The platform's printer dialog over one printer that lives as long as the
// service: it keeps the operator's last choice of printer and paper from one
// print to the next. On Linux the dialog also offers printing to a PDF file.
class QtPrinterDialogService final : public PrinterDialogService
{
public:
    QtPrinterDialogService();
    ~QtPrinterDialogService() override;
    PrintAnswer showPrinter(const PrintRequest& request) override;
    // The printer the dialog last accepted, for the pages of the job.
    QPrinter& printer();

private:
    std::unique_ptr<QPrinter> m_printer;
};

// Puts the Qt services in and points the yield hook at the event loop.
void installQtServices();

} // namespace quenby
