#include "shell/ui/QtProcessStart.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#include <cerrno>
#include <vector>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <unistd.h>
#endif

namespace quenby {

namespace {

// The entries of a block: "NAME=value" texts up to the empty one that ends it.
QProcessEnvironment environmentOf(const QString& block)
{
    // Made empty, not inherited: the process gets these entries and no other.
    QProcessEnvironment environment;
    for (const QString& entry : block.split(QChar(u'\0'))) {
        if (entry.isEmpty())
            break;
        // Names such as "=C:" begin with the sign: look for it after the first character.
        const qsizetype sign = entry.indexOf(QLatin1Char('='), 1);
        if (sign < 0)
            environment.insert(entry, QString());
        else
            environment.insert(entry.left(sign), entry.mid(sign + 1));
    }
    return environment;
}

#ifdef Q_OS_WIN
Int32 systemLastError()
{
    return static_cast<Int32>(GetLastError());
}
#else
// A start that failed in the child leaves no code in this process: it then
// counts as a program that is not there, the common cause.
Int32 systemLastError()
{
    return errno != 0 ? errno : ENOENT;
}
#endif

} // namespace

QString QtProcessStart::environmentEntry(int index)
{
    if (index < 1)
        return {};
#ifdef Q_OS_WIN
    // Windows keeps its block sorted by name, as this list is.
    const QStringList entries = QProcessEnvironment::systemEnvironment().toStringList();
    return index <= entries.size() ? entries.at(index - 1) : QString();
#else
    for (int i = 1; environ[i - 1] != nullptr; ++i)
        if (i == index)
            return QString::fromLocal8Bit(environ[i - 1]);
    return {};
#endif
}

Int32 QtProcessStart::createProcess(const ProcessCreation& request)
{
    QProcess process;
    process.setProgram(request.applicationName);
    // The command line names the program first; whatever follows it are the
    // arguments.
    if (request.commandLine != request.applicationName)
        process.setArguments(QProcess::splitCommand(request.commandLine).mid(1));
    process.setProcessEnvironment(environmentOf(request.environmentBlock));
    process.setWorkingDirectory(request.workingFolder);
#ifdef Q_OS_WIN
    // The block goes to the system as it stands: Qt would put a PATH of its
    // own into an environment that has none.
    const QString block = request.environmentBlock;
    process.setCreateProcessArgumentsModifier([&block](QProcess::CreateProcessArguments* args) {
        args->environment = const_cast<char16_t*>(reinterpret_cast<const char16_t*>(block.utf16()));
    });
#endif
    errno = 0;
    if (!process.startDetached()) {
        m_lastError = systemLastError();
        return 0;
    }
    return 1;
}

QString QtProcessStart::formatMessage(Int32 code, int bufferSize)
{
#ifdef Q_OS_WIN
    std::vector<wchar_t> buffer(static_cast<std::size_t>(bufferSize));
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, static_cast<DWORD>(code), 0, buffer.data(),
                                        static_cast<DWORD>(bufferSize), nullptr);
    if (length == 0) {
        m_lastError = systemLastError();
        return {};
    }
    return QString::fromWCharArray(buffer.data(), static_cast<qsizetype>(length));
#else
    const QString text = qt_error_string(code);
    if (text.isEmpty()) {
        m_lastError = EINVAL;
        return {};
    }
    // The text and its ending NUL must fit in the buffer.
    if (text.size() >= bufferSize) {
        m_lastError = ERANGE;
        return {};
    }
    return text;
#endif
}

bool QtProcessStart::shellStart(const QString& commandLine)
{
    QStringList parts = QProcess::splitCommand(commandLine);
    if (parts.isEmpty()) {
        m_lastError = ENOENT;
        return false;
    }
    QProcess process;
    process.setProgram(parts.takeFirst());
    process.setArguments(parts);
#ifdef Q_OS_WIN
    process.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments* args) {
        args->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
        args->startupInfo->wShowWindow = SW_SHOWMINIMIZED;
    });
#endif
    errno = 0;
    if (!process.startDetached()) {
        m_lastError = systemLastError();
        return false;
    }
    return true;
}

} // namespace quenby
