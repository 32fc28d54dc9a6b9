// The upload loop: one step a tick of the upload window's timer. It looks for
// the instrument, reads its serial number, and on the operator's word asks
// for the header and the data of each stored file in turn; a file that
// arrives whole becomes a test file. All pacing comes from counting ticks.
// It needs no window: drive it by calling the tick and read the texts in
// uploadGlobals(). What a step keeps from one tick to the next lives in the
// upload session.
#pragma once

#include "shell/model/Checked.h"
#include "upload/model/UploadGlobals.h" // UpState, the states by number

namespace quenby {

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
