// The upload loop: one step a tick of the upload window's timer. It looks for
// the instrument, reads its serial number, and on the operator's word asks
// for the header and the data of each stored file in turn; a file that
// arrives whole becomes a test file. All pacing comes from counting ticks.
// It needs no window: drive it by calling the tick and read the texts in
// uploadGlobals().
#pragma once

#include "shell/model/Checked.h"

namespace quenby {

namespace upstate {
inline constexpr Int16 ScanPorts = 1;
inline constexpr Int16 TryPort = 2;
inline constexpr Int16 WaitPortReply = 3;
inline constexpr Int16 Idle = 4;
inline constexpr Int16 AskSerial = 5;
inline constexpr Int16 WaitSerial = 6;
inline constexpr Int16 AskFileCount = 7;
inline constexpr Int16 WaitFileCount = 8;
inline constexpr Int16 NextFile = 9;
inline constexpr Int16 AskHeader = 10;
inline constexpr Int16 WaitHeader = 11;
inline constexpr Int16 AskData = 12;
inline constexpr Int16 WaitData = 13;
inline constexpr Int16 SaveFile = 14;
inline constexpr Int16 EndUpload = 15;
inline constexpr Int16 StopByUser = 98;
inline constexpr Int16 SkipFile = 99;
inline constexpr Int16 CheckPortReply = 100;
} // namespace upstate

// One step of the loop.
void StateMachineProcess();
// True on call n + 2 of a wait; one counter serves all waits.
bool WaitTicks(Int16 n);
// The flush before an exchange: the store's count read, the received flag
// cleared, both store indexes to 0.
void FlushUpload();
// State 2, the start texts and a new folder stamp.
void InitUpload();
// State 2 and the port closed.
void CloseUpload();

} // namespace quenby
