#include "shell/model/AppState.h"

namespace quenby {

AppState& appState()
{
    static AppState state;
    return state;
}

} // namespace quenby
