// The state of the open ZBL test: what the ZBL road, its report and its graph
// keep from one command to the next. The application owns one; a test makes
// a fresh one.
#pragma once

#include "shell/model/Session.h"

namespace quenby {

struct ZblSession
{
    // Every field back to its first value.
    void reset() { *this = ZblSession{}; }
};

inline ZblSession& zblSession()
{
    return Slot<ZblSession>::current();
}

} // namespace quenby
