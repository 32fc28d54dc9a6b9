// Letting the system breathe: long loops of the model hand control to the
// message queue once a row or once a point through this one hook. The shell
// sets it to process pending events; without a shell it does nothing.
#pragma once

#include <functional>

namespace quenby {

void letSystemBreathe();
void setYieldHook(std::function<void()> hook);

} // namespace quenby
