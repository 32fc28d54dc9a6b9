#include "shell/model/AppState.h"

namespace quenby {

AppState& appState()
{
    static AppState state;
    return state;
}

} // namespace quenby

#include "shell/model/CommonDialog.h"

namespace quenby {

CommonDialogState& CommonDialog1()
{
    static CommonDialogState dialog;
    return dialog;
}

} // namespace quenby
