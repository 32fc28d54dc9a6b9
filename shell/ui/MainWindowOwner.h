// The main window as the windows below it see it: the owner of the small
// windows and the window the busy window centres on. The main window installs
// itself when it is made (Installed<MainWindowOwner>), so that no window of a
// subsystem has to know the program's top.
#pragma once

#include "shell/model/Session.h"

class QWidget;

namespace quenby {

class MainWindowOwner
{
public:
    virtual ~MainWindowOwner() = default;
    virtual QWidget& mainWidget() = 0;
};

inline QWidget& mainWindow()
{
    return Slot<MainWindowOwner>::current().mainWidget();
}

} // namespace quenby
