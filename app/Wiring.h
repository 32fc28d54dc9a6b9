// The windows put in force as the views their models ask for: one function a
// subsystem, each in a file of its own, all called from the main window's
// load. A window test calls the one of its subsystem.
#pragma once

namespace quenby {

class frmMain;

// Every window in force behind the model that asks for it: the main window's
// load does this, and so does a window test before its first test.
void installWindows(frmMain& main);

void installKvxViews(frmMain& main);
void installZblViews(frmMain& main);
void installUploadViews(frmMain& main);

} // namespace quenby
