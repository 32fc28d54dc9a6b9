// The main window's open dialog seen as data. Its file name is shared memory:
// the language loader writes the language file's path into it and reads it
// back, and the test-file commands leave the chosen file's name in it.
#pragma once

#include <QString>

namespace quenby {

struct CommonDialogState
{
    QString FileName;
    QString Filter;
    QString DialogTitle;
    QString InitDir;
};

// `CommonDialog1` of `frmMain`.
CommonDialogState& CommonDialog1();

} // namespace quenby
