// The state of the logo's processing for the run: what frmProcessLogo keeps
// as its members. The application owns one; a test makes a fresh one.
#pragma once

#include "logo/model/ProcessLogo.h"
#include "shell/model/Session.h"

namespace quenby {

struct LogoSession
{
    ProcessLogo frmProcessLogo;

    // Every field back to its first value.
    void reset() { *this = LogoSession{}; }
};

inline ProcessLogo& processLogo()
{
    return Slot<LogoSession>::current().frmProcessLogo;
}

} // namespace quenby
