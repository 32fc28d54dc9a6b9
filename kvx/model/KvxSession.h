// The state of the open KVX test: what the KVX road, its report and its graph
// keep from one command to the next. The application owns one; a test makes
// a fresh one.
#pragma once

#include "shell/model/Session.h"

namespace quenby {

struct KvxSession
{
    // Every field back to its first value.
    void reset() { *this = KvxSession{}; }
};

inline KvxSession& kvxSession()
{
    return Slot<KvxSession>::current();
}

} // namespace quenby
