#include "shell/model/CommonDialog.h"

#include "shell/model/ShellSession.h"

#include "shell/model/RuntimeError.h"
#include "shell/model/Services.h"

namespace quenby {

bool CommonDialogState::ShowOpen()
{
    QString chosen;
    if (FileDialogService* files = services().files)
        chosen = files->getOpenFileName({FileName, DialogTitle, InitDir});
    if (chosen.isEmpty()) {
        if (CancelError)
            raiseRuntimeError(CommonDialogCancelError, DialogTitle);
        return false;
    }
    FileName = chosen;
    return true;
}

CommonDialogState& CommonDialog1()
{
    return shellSession().CommonDialog1;
}

CommonDialogState& cdOpenLogo()
{
    return shellSession().cdOpenLogo;
}

} // namespace quenby
