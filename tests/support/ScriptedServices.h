// Scripted stand-ins for the services that show or wait, for tests: message
// boxes answer from a queue and record what they showed, the folder picker
// and the open and save dialogs answer from queues, the printer dialog
// answers from a queue and prints into a PDF file, and ending the program
// throws ProgramEnded so that a test can see the end without losing its
// process.
#pragma once

#include "shell/model/Services.h"

#include <QString>
#include <QStringList>

#include <deque>
#include <stdexcept>
#include <vector>

namespace quenby::testing {

struct ShownMessage
{
    QString text;
    MsgButtons buttons;
    MsgIcon icon;
    QString title;
};

class ScriptedMessages final : public MessageService
{
public:
    MsgAnswer show(const QString& text, MsgButtons buttons, MsgIcon icon,
                   const QString& title) override;
    std::deque<MsgAnswer> answers; // taken from the front; empty answers Ok
    std::vector<ShownMessage> shown;
};

struct FolderRequest
{
    QString title;
    QString startFolder;
    int flags;
};

class ScriptedFolders final : public FolderDialogService
{
public:
    QString browseForFolder(const QString& title, const QString& startFolder, int flags) override;
    std::deque<QString> answers; // empty answers "" (cancel)
    std::vector<FolderRequest> requests;
};

class ScriptedFiles final : public FileDialogService
{
public:
    QString getOpenFileName(const OpenFileRequest& request) override;
    QString getSaveFileName(const SaveFileRequest& request) override;
    std::deque<QString> answers; // empty answers "" (cancel)
    std::vector<OpenFileRequest> requests;
    std::deque<QString> saveAnswers; // the save dialog's; empty answers "" (cancel)
    std::vector<SaveFileRequest> saveRequests;
};

// The printer dialog answers from a queue (empty: cancel) and sends the
// pages of every accepted job to the PDF file `pdfFile`: a queued answer
// gives the cancel, or the copies and page range the operator would leave.
class ScriptedPrinter final : public PrinterDialogService
{
public:
    PrintAnswer showPrinter(const PrintRequest& request) override;
    // Queues the answer of an operator who prints `copies` copies, leaving
    // the page range the dialog reads and the print ignores.
    void accept(int copies = 1, int fromPage = 0, int toPage = 0);
    std::deque<PrintAnswer> answers;
    std::vector<PrintRequest> requests;
    QString pdfFile;
};

struct ProgramEnded : std::runtime_error
{
    explicit ProgramEnded(int code) : std::runtime_error("program ended"), exitCode(code) {}
    int exitCode;
};

class ScriptedProgram final : public ProgramControl
{
public:
    void endProgram(int exitCode) override { throw ProgramEnded(exitCode); }
};

// A clock that tells the times it is given: each read of now() takes the
// next of `times`, the last one staying once the queue is down to it; the
// millisecond counter moves only when a test moves it.
class ScriptedClock final : public ClockService
{
public:
    QDateTime now() override;
    Int32 milliseconds() override { return ms; }
    std::deque<QDateTime> times;
    int reads = 0;
    Int32 ms = 0;
};

// Puts the scripted services in for the lifetime of the scope.
class ScriptedServices
{
public:
    ScriptedServices();
    ~ScriptedServices();
    ScriptedServices(const ScriptedServices&) = delete;
    ScriptedServices& operator=(const ScriptedServices&) = delete;

    ScriptedMessages messages;
    ScriptedFolders folders;
    ScriptedFiles files;
    ScriptedPrinter printer;
    ScriptedProgram program;
    ScriptedClock clock;

private:
    Services m_saved;
};

} // namespace quenby::testing
