#include "upload/model/CTimer.h"

#include "shell/model/Services.h"
#include "shell/model/YieldHook.h"

namespace quenby {

CTimer::CTimer() = default;

void CTimer::SetTimeOutMs(Int16 ms)
{
    m_start = GetCurrentTime();
    // A single product added to the start and rounded halves to even; a
    // deadline past the 32-bit range is an overflow.
    const float delay = static_cast<float>(ms) * m_factor;
    m_end = toInt32(static_cast<double>(m_start) + static_cast<double>(delay));
}

void CTimer::DelayMs(Int16 ms)
{
    SetTimeOutMs(ms);
    while (GetCurrentTime() < m_end)
        letSystemBreathe();
}

Bool16 CTimer::isTimeOut()
{
    return toBool16(GetCurrentTime() >= m_end);
}

void CTimer::factorDelay(Int16 n)
{
    m_factor = static_cast<float>(n / 10.0 + 1.0);
}

Int32 CTimer::GetCurrentTime()
{
    return clock().milliseconds();
}

} // namespace quenby
