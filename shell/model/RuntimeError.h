// The one run-time failure of the system.
//
// Where the system ends the program on bad input (a malformed file, an array
// bound, an integer overflow, a missing language file), the code raises a
// RuntimeError carrying the platform-like error number and text. Nothing in the
// model catches it except where a routine is documented to swallow errors; the
// shell's top-level handler shows it and ends the program.
#pragma once

#include <QString>
#include <exception>
#include <string>

namespace quenby {

// Platform-like error numbers.
namespace err {
inline constexpr int InvalidProcedureCall = 5;
inline constexpr int Overflow = 6;
inline constexpr int OutOfMemory = 7;
inline constexpr int SubscriptOutOfRange = 9;
inline constexpr int DivisionByZero = 11;
inline constexpr int TypeMismatch = 13;
inline constexpr int BadFileNameOrNumber = 52;
inline constexpr int FileNotFound = 53;
inline constexpr int BadFileMode = 54;
inline constexpr int FileAlreadyOpen = 55;
inline constexpr int DeviceIoError = 57;
inline constexpr int DiskFull = 61;
inline constexpr int InputPastEndOfFile = 62;
inline constexpr int BadRecordNumber = 63;
inline constexpr int TooManyFiles = 67;
inline constexpr int InternalError = 51;
inline constexpr int PermissionDenied = 70;
inline constexpr int PathFileAccessError = 75;
inline constexpr int PathNotFound = 76;
} // namespace err

// The platform's text for an error number ("Overflow", "Input past end of file").
QString runtimeErrorText(int number);

class RuntimeError : public std::exception
{
public:
    explicit RuntimeError(int number, QString where = {});

    int number() const { return m_number; }
    QString text() const { return runtimeErrorText(m_number); }
    // The file, routine or value the failure is about, if known.
    QString where() const { return m_where; }
    void setWhere(const QString& where);
    // The offending value, if any ("X1" for a text that is no number).
    QString detail() const { return m_detail; }
    void setDetail(const QString& detail);

    const char* what() const noexcept override { return m_what.c_str(); }

private:
    void describe();

    int m_number;
    QString m_where;
    QString m_detail;
    std::string m_what;
};

[[noreturn]] void raiseRuntimeError(int number, const QString& where = {});
// The same for a failure about a value rather than a file.
[[noreturn]] void raiseRuntimeErrorOnValue(int number, const QString& value);

// Names the menu command or start-up step that is running, so that the fatal
// message can say which command failed. Scopes nest; the innermost wins.
class CommandScope
{
public:
    explicit CommandScope(QString command);
    ~CommandScope();
    CommandScope(const CommandScope&) = delete;
    CommandScope& operator=(const CommandScope&) = delete;

    // The running command, or "" outside any.
    static QString current();

private:
    QString m_previous;
};

} // namespace quenby
