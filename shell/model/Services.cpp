#include "shell/model/Services.h"

#include <cstdio>
#include <cstdlib>

namespace quenby {

namespace {
class ExitProgramControl final : public ProgramControl
{
public:
    void endProgram(int exitCode) override
    {
        std::fflush(nullptr);
        std::exit(exitCode);
    }
};
} // namespace

Services& services()
{
    static ExitProgramControl exitControl;
    static Services s{nullptr, nullptr, nullptr, &exitControl};
    return s;
}

MsgAnswer showMessage(const QString& text, MsgButtons buttons, MsgIcon icon, const QString& title)
{
    if (!services().messages) {
        std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
        return buttons == MsgButtons::Ok || buttons == MsgButtons::OkCancel ? MsgAnswer::Ok
                                                                             : MsgAnswer::Yes;
    }
    return services().messages->show(text, buttons, icon, title);
}

void endProgram(int exitCode)
{
    if (services().program)
        services().program->endProgram(exitCode);
    // A program service that returns is a fault of that service: end anyway.
    std::fflush(nullptr);
    std::exit(exitCode);
}

} // namespace quenby
