#include "shell/model/MainWindowState.h"

#include "shell/model/ShellSession.h"

namespace quenby {

MainWindowState& mainWindowState()
{
    return shellSession().mainWindow;
}

} // namespace quenby
