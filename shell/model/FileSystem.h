// File and folder helpers used across the system: the file probe that tells
// whether a converter program, an OEM language file or a spreadsheet template
// is there, and the folder picker behind the data folder settings.
//
// The picker itself is a platform service (services().folders); this module
// builds its request and keeps the start folder in the shared state.
#pragma once

#include "shell/model/Checked.h"

#include <QString>

namespace quenby {

// True16 when `path` names an existing file. A folder is not a file. The
// probe keeps no handle open.
Bool16 FileExistsApi(const QString& path);

// The window that owns the picker, as the model sees it: an opaque handle that
// only the screen side can read. nullptr means no owner.
using OwnerWindow = const void*;

// Asks the operator for a folder. `includeFiles` lists files as well as
// folders; `newStyle` asks for the resizable dialog. A non-empty
// `startFolder` is stored, NUL-terminated, in appState().BrowseInitialFolder
// and selected when the dialog opens. Returns the chosen folder, or "" when
// the operator cancels or no folder service is in place.
QString BrowseForFolder(OwnerWindow owner, const QString& startFolder, const QString& title,
                        Bool16 includeFiles, Bool16 newStyle);

} // namespace quenby
