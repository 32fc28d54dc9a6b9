// Platform services that show something or wait for the operator, seen from
// the model. The program plugs in Qt implementations; tests plug in scripted
// ones, so every road of the system runs without a screen.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/SettingsStore.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QString>

#include <functional>

namespace quenby {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel, AbortRetryIgnore };
enum class MsgAnswer { Ok, Cancel, Yes, No, Retry, Abort, Ignore };

class MessageService
{
public:
    virtual ~MessageService() = default;
    // A message box; an empty title means the box has no title of its own.
    virtual MsgAnswer show(const QString& text, MsgButtons buttons, MsgIcon icon,
                           const QString& title) = 0;
};

// Flags of the folder picker, as the browse record holds them.
namespace browse {
inline constexpr int FileSystemFoldersOnly = 1;
inline constexpr int DontGoBelowDomain = 4;
inline constexpr int NewStyle = 64;
inline constexpr int IncludeFiles = 16384;
} // namespace browse

class FolderDialogService
{
public:
    virtual ~FolderDialogService() = default;
    // The chosen folder, or "" when the operator cancels. `flags` is the
    // browse record's flag word; `startFolder` is "" or the folder to select.
    virtual QString browseForFolder(const QString& title, const QString& startFolder,
                                    int flags) = 0;
};

// What an open dialog is asked for: the file name box (a pattern such as
// "*.txt", or a name), the title and the start folder.
struct OpenFileRequest
{
    QString fileName;
    QString title;
    QString initDir;
};

// What a save dialog is asked for: the file name box (a name to propose, or
// ""), the filter pattern (such as "*.zbl"), the title and the start folder.
struct SaveFileRequest
{
    QString fileName;
    QString filter;
    QString title;
    QString initDir;
};

class FileDialogService
{
public:
    virtual ~FileDialogService() = default;
    // The chosen file's full name, or "" when the operator cancels.
    virtual QString getOpenFileName(const OpenFileRequest& request) = 0;
    // The full name the operator chose to save under, as typed (no ending is
    // added and no question is asked about an existing file), or "" when the
    // operator cancels. A service without a save dialog cancels every one.
    virtual QString getSaveFileName(const SaveFileRequest& request)
    {
        static_cast<void>(request);
        return {};
    }
};

// What the printer dialog starts with: the copies box and the page range
// boxes (0 and 0: no range given), and the highest page the range may name.
struct PrintRequest
{
    int copies = 1;
    int fromPage = 0;
    int toPage = 0;
    int maxPage = 9999;
};

// What the printer dialog answers. The copies and the page range are as the
// operator left them; the caller prints the copies itself, one after the
// other, so the printer makes one of each page it is sent.
struct PrintAnswer
{
    bool cancelled = true;
    int copies = 1;
    int fromPage = 0;
    int toPage = 0;
    // "" : the pages go to the printer the dialog chose; else the name of a
    // PDF file they go to instead.
    QString pdfFile;
};

class PrinterDialogService
{
public:
    virtual ~PrinterDialogService() = default;
    virtual PrintAnswer showPrinter(const PrintRequest& request) = 0;
};

class ProgramControl
{
public:
    virtual ~ProgramControl() = default;
    // Ends the process at once with the given status. Does not return.
    virtual void endProgram(int exitCode) = 0;
};

// The clock: the local date and time for stamps, and a millisecond counter
// for delays. The counter wraps like a 32-bit system tick count.
class ClockService
{
public:
    virtual ~ClockService() = default;
    virtual QDateTime now() = 0;
    virtual Int32 milliseconds() = 0;
};

// The system's own clock: milliseconds since the services were made.
class SystemClock final : public ClockService
{
public:
    SystemClock() { m_started.start(); }
    QDateTime now() override { return QDateTime::currentDateTime(); }
    Int32 milliseconds() override;

private:
    QElapsedTimer m_started;
};

// The platform services of the run, owned by the application (a test makes
// fresh ones). A service left empty has the behaviour its accessor names.
struct Services
{
    MessageService* messages = nullptr; // none: the text goes to the error output
    FolderDialogService* folders = nullptr;
    FileDialogService* files = nullptr;       // none: every dialog counts as cancelled
    PrinterDialogService* printers = nullptr; // none: every printer dialog counts as cancelled
    ProgramControl* program = nullptr;        // none: plain process exit
    ClockService* clock = nullptr;            // none: systemClock
    SettingsStore* settings = nullptr;        // none: userSettings
    std::function<void()> yield;              // letting the system breathe; none: nothing
    QString appPathOverride;                  // "" : the program's own folder

    SystemClock systemClock;
    QtSettingsStore userSettings;
};

// The services in use.
Services& services();

// Shows a message through the message service.
MsgAnswer showMessage(const QString& text, MsgButtons buttons = MsgButtons::Ok,
                      MsgIcon icon = MsgIcon::None, const QString& title = {});

// Shows the printer dialog through the printer dialog service.
PrintAnswer showPrinterDialog(const PrintRequest& request);

// The clock in use: the system's own unless a test puts another in.
ClockService& clock();

// Ends the program through the program service.
[[noreturn]] void endProgram(int exitCode);

} // namespace quenby
