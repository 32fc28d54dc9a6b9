#include "shell/model/AppState.h"

#include "shell/model/ShellSession.h"

namespace quenby {

AppState& appState()
{
    return shellSession().app;
}

} // namespace quenby
