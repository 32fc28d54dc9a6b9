// The batch menu and the disk repair tool. Two converter programs may lie
// beside this one; the menu offers each one that exists and starts it with
// its path alone as command line, in the program's folder and with an
// environment whose PATH keeps only the system's own folders. Nothing waits
// for a converter and nothing is read back. The disk repair tool runs the
// system's disk check on a folder the operator picks.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/FileSystem.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace quenby {

// Whether a PATH folder stays in a converter's environment: the word
// "windows", in any case, begins within its first four characters.
bool keepsPathFolder(const QString& folder);

// The environment block of a converter, from this process's entries in their
// order (the first empty entry ends them): each entry followed by a NUL, then
// a final NUL. A PATH entry, its name in any case, keeps only the folders
// keepsPathFolder() keeps and is written "PATH=" with them joined by ";";
// with no folder left there is no PATH entry at all.
QString environmentBlock(const QStringList& entries);

// Starts the program `path` with the block of this process's environment and
// the program's folder as working folder. The system's non-zero success
// value, or 0 when the process could not be started; the operator is told
// nothing either way.
Int32 RunProgram(const QString& path);

// The system's text for an error code, without its line end; when the system
// has none, a text that names both codes.
QString SystemErrorText(Int32 code);

// The two batch menu commands: the converter is looked for once more and, if
// it is still there, started.
void mnBatchConvertKvxPDF_Click();
void mnBatchConvertZblCsv_Click();

// The disk repair command: `warningText` gives the question's language text;
// the operator picks a folder and, unless the answer is no, the disk check
// of that folder starts through the shell. A check that cannot be started is
// the platform's file-not-found failure.
void mnRepair_Click(OwnerWindow owner, const std::function<QString()>& warningText);

} // namespace quenby
