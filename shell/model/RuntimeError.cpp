#include "shell/model/RuntimeError.h"

#include "shell/model/ShellSession.h"

namespace quenby {

QString runtimeErrorText(int number)
{
    switch (number) {
    case err::InvalidProcedureCall:
        return QStringLiteral("Invalid procedure call or argument");
    case err::Overflow:
        return QStringLiteral("Overflow");
    case err::OutOfMemory:
        return QStringLiteral("Out of memory");
    case err::SubscriptOutOfRange:
        return QStringLiteral("Subscript out of range");
    case err::DivisionByZero:
        return QStringLiteral("Division by zero");
    case err::TypeMismatch:
        return QStringLiteral("Type mismatch");
    case err::BadFileNameOrNumber:
        return QStringLiteral("Bad file name or number");
    case err::FileNotFound:
        return QStringLiteral("File not found");
    case err::BadFileMode:
        return QStringLiteral("Bad file mode");
    case err::FileAlreadyOpen:
        return QStringLiteral("File already open");
    case err::DeviceIoError:
        return QStringLiteral("Device I/O error");
    case err::DiskFull:
        return QStringLiteral("Disk full");
    case err::InputPastEndOfFile:
        return QStringLiteral("Input past end of file");
    case err::BadRecordNumber:
        return QStringLiteral("Bad record number");
    case err::TooManyFiles:
        return QStringLiteral("Too many files");
    case err::InternalError:
        return QStringLiteral("Internal error");
    case err::PermissionDenied:
        return QStringLiteral("Permission denied");
    case err::PathFileAccessError:
        return QStringLiteral("Path/File access error");
    case err::PathNotFound:
        return QStringLiteral("Path not found");
    default:
        return QStringLiteral("Application-defined or object-defined error");
    }
}

RuntimeError::RuntimeError(int number, QString where) : m_number(number), m_where(std::move(where))
{
    describe();
}

void RuntimeError::setWhere(const QString& where)
{
    m_where = where;
    describe();
}

void RuntimeError::setDetail(const QString& detail)
{
    m_detail = detail;
    describe();
}

void RuntimeError::describe()
{
    QString d = QStringLiteral("Run-time error '%1': %2").arg(m_number).arg(text());
    if (!m_detail.isEmpty())
        d += QStringLiteral(" \"") + m_detail + QStringLiteral("\"");
    if (!m_where.isEmpty())
        d += QStringLiteral(" (") + m_where + QStringLiteral(")");
    m_what = d.toStdString();
}

void raiseRuntimeError(int number, const QString& where)
{
    throw RuntimeError(number, where);
}

void raiseRuntimeErrorOnValue(int number, const QString& value)
{
    RuntimeError e(number);
    e.setDetail(value);
    throw e;
}

namespace {
QString& currentCommand()
{
    return shellSession().currentCommand;
}
} // namespace

CommandScope::CommandScope(QString command) : m_previous(currentCommand())
{
    currentCommand() = std::move(command);
}

CommandScope::~CommandScope()
{
    currentCommand() = m_previous;
}

QString CommandScope::current()
{
    // A failure met before the shell's session exists names no command.
    return Slot<ShellSession>::installed() ? currentCommand() : QString();
}

} // namespace quenby
