// The main window seen as data: the members and control states of `frmMain`
// that the roads of both reports read and write and the window mirrors.
#pragma once

#include "shell/model/Checked.h"

#include <QString>

#include <array>

namespace quenby {

// Members and control states of `frmMain` that the window mirrors.
struct MainWindowState
{
    QString KvxConverterPath;
    QString ZblConverterPath;
    Bool16 KneeChoiceDone = False16;
    std::array<bool, 3> chkKneeTypeVisible{true, true, true};
    std::array<bool, 3> chkKneeTypeChecked{false, false, false};
    bool mnLangueEnabled = true;
    QString statusText; // panel 1 of the status bar
};

MainWindowState& mainWindowState();

} // namespace quenby
