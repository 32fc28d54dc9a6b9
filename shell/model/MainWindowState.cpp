#include "shell/model/MainWindowState.h"

namespace quenby {

MainWindowState& mainWindowState()
{
    static MainWindowState state;
    return state;
}

} // namespace quenby
