#include "shell/model/YieldHook.h"

#include "shell/model/Services.h"

namespace quenby {

void letSystemBreathe()
{
    if (const auto& hook = services().yield)
        hook();
}

void setYieldHook(std::function<void()> h)
{
    services().yield = std::move(h);
}

} // namespace quenby
