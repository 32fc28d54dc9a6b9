#include "shell/model/Services.h"

#include "shell/model/Session.h"

#include <cstdio>
#include <cstdlib>

namespace quenby {

Int32 SystemClock::milliseconds()
{
    // Milliseconds since the clock was made, wrapping at 32 bits.
    return static_cast<Int32>(static_cast<std::uint32_t>(m_started.elapsed()));
}

Services& services()
{
    return Slot<Services>::current();
}

ClockService& clock()
{
    Services& s = services();
    return s.clock ? *s.clock : s.systemClock;
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

PrintAnswer showPrinterDialog(const PrintRequest& request)
{
    if (!services().printers)
        return {};
    return services().printers->showPrinter(request);
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
