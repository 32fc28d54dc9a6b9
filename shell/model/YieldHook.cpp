#include "shell/model/YieldHook.h"

namespace quenby {

namespace {
std::function<void()>& hook()
{
    static std::function<void()> h;
    return h;
}
} // namespace

void letSystemBreathe()
{
    if (hook())
        hook()();
}

void setYieldHook(std::function<void()> h)
{
    hook() = std::move(h);
}

} // namespace quenby
