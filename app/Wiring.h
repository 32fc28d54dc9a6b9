// The windows put in force as the views their models ask for: one function a
// subsystem, each in a file of its own, all called from the main window's
// load. A window test calls the one of its subsystem.
#pragma once

#include <vector>

namespace quenby {

class frmMain;
class LogoTarget;

// Every window in force behind the model that asks for it: the main window's
// load does this, and so does a window test before its first test.
void installWindows(frmMain& main);

// frmProcessLogo, which puts the logo on the report windows.
void installLogoViews(frmMain& main);
// The windows that carry the logo and have been made, in the order the logo
// goes on them: the KVX report, the ZBL report, the V graph, the ZBL
// print-out and the V graph's paper twin.
std::vector<LogoTarget*> madeLogoTargets();
void installKvxViews(frmMain& main);
void installZblViews(frmMain& main);
void installUploadViews(frmMain& main);

} // namespace quenby
