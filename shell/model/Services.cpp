#include "shell/model/Services.h"

#include <QElapsedTimer>

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
class SystemClock final : public ClockService
{
public:
    SystemClock() { m_started.start(); }
    QDateTime now() override { return QDateTime::currentDateTime(); }
    Int32 milliseconds() override
    {
        // Milliseconds since the program started, wrapping at 32 bits.
        return static_cast<Int32>(static_cast<std::uint32_t>(m_started.elapsed()));
    }

private:
    QElapsedTimer m_started;
};
} // namespace

Services& services()
{
    static ExitProgramControl exitControl;
    static Services s{nullptr, nullptr, nullptr, &exitControl, nullptr};
    return s;
}

ClockService& clock()
{
    static SystemClock system;
    return services().clock ? *services().clock : system;
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
