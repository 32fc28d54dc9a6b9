#include "shell/model/FileSystem.h"

#include "shell/model/AppState.h"
#include "shell/model/Services.h"

#include <QFileInfo>

namespace quenby {

Bool16 FileExistsApi(const QString& path)
{
    if (path.isEmpty())
        return False16;
    // A probe of the directory entry only: nothing is opened, so nothing can
    // stay open or be locked against the program that is looked for.
    const QFileInfo info(path);
    return toBool16(info.exists() && info.isFile());
}

QString BrowseForFolder(OwnerWindow owner, const QString& startFolder, const QString& title,
                        Bool16 includeFiles, Bool16 newStyle)
{
    // The folder service parents the dialog on the active window itself, so
    // the owner goes no further than here.
    static_cast<void>(owner);

    int flags = browse::FileSystemFoldersOnly + browse::DontGoBelowDomain;
    if (includeFiles != False16)
        flags += browse::IncludeFiles;
    if (newStyle != False16)
        flags += browse::NewStyle;

    // The dialog's initialisation callback reads the folder to select from
    // the shared state, as a C string: hence the NUL kept at its end.
    if (!startFolder.isEmpty())
        appState().BrowseInitialFolder = startFolder + QChar(u'\0');

    FolderDialogService* folders = services().folders;
    if (folders == nullptr)
        return {};
    QString chosen = folders->browseForFolder(title, startFolder, flags);
    // The path comes back in a fixed buffer: it ends at its first NUL.
    const qsizetype nul = chosen.indexOf(QChar(u'\0'));
    if (nul >= 0)
        chosen.truncate(nul);
    return chosen;
}

} // namespace quenby
