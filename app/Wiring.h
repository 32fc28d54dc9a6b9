// The windows put in force as the views their models ask for: one function a
// subsystem, each in a file of its own, all called from the main window's
// load. A window test calls the one of its subsystem.
#pragma once

namespace quenby {

class frmMain;

void installKvxViews(frmMain& main);
void installZblViews(frmMain& main);

} // namespace quenby
