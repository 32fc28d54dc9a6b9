// A millisecond delay and time-out. Part of the link library; the upload loop
// does not use it, its pacing comes from the window timer's ticks.
#pragma once

#include "shell/model/Checked.h"

namespace quenby {

class CTimer
{
public:
    CTimer(); // factor 1.0

    // Waits ms x factor milliseconds, letting the system breathe on each pass.
    void DelayMs(Int16 ms);
    // Sets the deadline the same way and returns at once.
    void SetTimeOutMs(Int16 ms);
    Bool16 isTimeOut();
    // factor = n / 10 + 1.0
    void factorDelay(Int16 n);
    // The system's millisecond count, from the clock service.
    Int32 GetCurrentTime();

    float factor() const { return m_factor; }
    Int32 start() const { return m_start; }
    Int32 end() const { return m_end; }

private:
    Int32 m_start = 0;
    Int32 m_end = 0;
    float m_factor = 1.0f;
};

} // namespace quenby
