// The main window's two open dialogs seen as data: what their boxes hold and
// the open operation that asks the file dialog service.
//
// CommonDialog1's file name is shared memory: the language loader writes the
// language file's path into it and reads it back, the test-file commands leave
// the chosen file's name in it, and the KVX export reopens whatever it holds.
// cdOpenLogo serves the logo selection alone.
#pragma once

#include <QString>

namespace quenby {

// The error a dialog raises when it is cancelled while CancelError is set.
inline constexpr int CommonDialogCancelError = 32755;

struct CommonDialogState
{
    QString FileName; // the file name box: a pattern before, the chosen file after
    QString Filter;
    QString DialogTitle;
    QString InitDir;
    bool CancelError = false; // a cancel raises CommonDialogCancelError

    // Shows the open dialog with the file name box, title and start folder.
    // On OK the chosen file's full name replaces FileName and the answer is
    // true. On cancel FileName keeps what it held, which is how callers see
    // that nothing was chosen; the answer is false, or the cancel error is
    // raised when CancelError is set. No file dialog service counts as cancel.
    bool ShowOpen();
};

// `CommonDialog1` of `frmMain`: the test files and the language file.
CommonDialogState& CommonDialog1();
// `cdOpenLogo` of `frmMain`: the logo image only.
CommonDialogState& cdOpenLogo();

} // namespace quenby
