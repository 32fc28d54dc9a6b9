#include "shell/model/BatchConversion.h"

#include "shell/model/MainWindowState.h"
#include "shell/model/Platform.h"
#include "shell/model/ProcessStart.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/Services.h"

namespace quenby {

namespace {

// The message table writes into a buffer of this many characters.
constexpr int MessageBufferSize = 160;

const QChar Nul(u'\0');

// A converter's PATH: the kept folders joined with ";", or "" when none is
// kept.
QString keptPathFolders(const QString& folders)
{
    QStringList kept;
    for (const QString& folder : folders.split(QLatin1Char(';')))
        if (keepsPathFolder(folder))
            kept.append(folder);
    return kept.join(QLatin1Char(';'));
}

void runConverter(const QString& converterPath)
{
    // The menu entry was set at start: the file may have gone since.
    const QString path = converterPath;
    if (FileExistsApi(path) != False16)
        RunProgram(path);
}

} // namespace

bool keepsPathFolder(const QString& folder)
{
    const qsizetype at = folder.indexOf(QLatin1String("windows"), 0, Qt::CaseInsensitive);
    return at >= 0 && at < 4;
}

QString environmentBlock(const QStringList& entries)
{
    QString block;
    for (const QString& entry : entries) {
        if (entry.isEmpty())
            break;
        if (entry.left(5).compare(QLatin1String("PATH="), Qt::CaseInsensitive) == 0) {
            const QString folders = keptPathFolders(entry.mid(5));
            if (!folders.isEmpty())
                block += QLatin1String("PATH=") + folders + Nul;
        } else {
            block += entry + Nul;
        }
    }
    block += Nul;
    return block;
}

Int32 RunProgram(const QString& path)
{
    ProcessStart& start = processStart();
    QStringList entries;
    for (int index = 1;; ++index) {
        QString entry = start.environmentEntry(index);
        if (entry.isEmpty())
            break;
        entries.append(std::move(entry));
    }

    ProcessCreation request;
    request.applicationName = path;
    request.commandLine = path;
    request.environmentBlock = environmentBlock(entries);
    request.workingFolder = AppPath();
    const Int32 started = start.createProcess(request);
    if (started == 0) {
        // The text is worked out as the system would word it, and dropped:
        // a converter that cannot start is not worth a message.
        static_cast<void>(SystemErrorText(start.lastError()));
    }
    return started;
}

QString SystemErrorText(Int32 code)
{
    ProcessStart& start = processStart();
    QString text = start.formatMessage(code, MessageBufferSize);
    if (!text.isEmpty()) {
        if (text.endsWith(QLatin1String("\r\n")))
            text.chop(2);
        return text;
    }
    return QLatin1String("Erreur FormatMessage: ") + QString::number(start.lastError()) +
           QLatin1String(" pour obtenir message de l'erreur ") + QString::number(code);
}

void mnBatchConvertKvxPDF_Click()
{
    runConverter(mainWindowState().KvxConverterPath);
}

void mnBatchConvertZblCsv_Click()
{
    runConverter(mainWindowState().ZblConverterPath);
}

void mnRepair_Click(OwnerWindow owner, const std::function<QString()>& warningText)
{
    const QString warning = warningText();
    const QString folder = BrowseForFolder(
        owner, QString(), QStringLiteral("Please select a folder:"), False16, False16);
    if (folder.isEmpty())
        return;
    const MsgAnswer answer =
        showMessage(warning + QLatin1Char(' ') + folder, MsgButtons::YesNo, MsgIcon::None);
    const QString command = QLatin1String("chkdsk ") + folder + QLatin1String(" /x");
    if (answer != MsgAnswer::No && !processStart().shellStart(command))
        raiseRuntimeError(err::FileNotFound, command);
}

} // namespace quenby
