#include "shell/model/FatalError.h"

#include "shell/model/Services.h"

namespace quenby {

QString fatalErrorMessage(const RuntimeError& error, const QString& command)
{
    QString text =
        QStringLiteral("Run-time error '%1':\n\n%2").arg(error.number()).arg(error.text());
    if (!error.detail().isEmpty() || !error.where().isEmpty() || !command.isEmpty())
        text += QStringLiteral("\n");
    if (!error.detail().isEmpty())
        text += QStringLiteral("\nValue: \"") + error.detail() + QStringLiteral("\"");
    if (!error.where().isEmpty())
        text += QStringLiteral("\nFile: ") + error.where();
    if (!command.isEmpty())
        text += QStringLiteral("\nCommand: ") + command;
    return text;
}

void reportFatalError(const RuntimeError& error)
{
    showMessage(fatalErrorMessage(error, CommandScope::current()), MsgButtons::Ok,
                MsgIcon::Critical, QStringLiteral("Quenby"));
    endProgram(error.number() > 0 && error.number() < 256 ? error.number() : 1);
}

} // namespace quenby
