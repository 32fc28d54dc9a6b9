// Fresh session objects for every model test. The test main makes fresh
// platform services and a fresh shell session before each test; a test
// binary that needs more (the KVX or ZBL session, the upload session) adds
// them once, with an inline variable in its support header:
//
//     inline const quenby::testing::FreshEachTest<quenby::KvxSession> freshKvxSession;
#pragma once

#include "shell/model/Session.h"

#include <functional>
#include <memory>

namespace quenby::testing {

// Makes one fresh, installed session object; dropping it uninstalls it.
using SessionMaker = std::function<std::shared_ptr<void>()>;

// Adds a maker that the test main calls before each test, in the order they
// were added; the objects go in the reverse order after the test.
void addFreshSession(SessionMaker maker);

template <class S> struct FreshEachTest
{
    FreshEachTest()
    {
        addFreshSession([] { return std::make_shared<OwnedSession<S>>(); });
    }
};

} // namespace quenby::testing
