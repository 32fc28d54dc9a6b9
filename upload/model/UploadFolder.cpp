#include "upload/model/UploadFolder.h"

#include "shell/model/CFile.h"
#include "shell/model/DataFolders.h"
#include "shell/model/Platform.h"
#include "shell/model/SettingsStore.h"
#include "upload/model/UploadGlobals.h"

#include <QDir>

namespace quenby {

QString UploadFolder(const QString& instrument)
{
    const QString root = settingsStore().GetSetting(
        QLatin1String(SettingsAppData), QLatin1String(SectionUserFileTransfert), instrument);
    const QString sep = pathSep();
    return dataFilesFolder(root, instrument) + sep + uploadGlobals().UploadFolderStamp + sep;
}

void MakeUploadFolder(const QString& folder)
{
    const QStringList inFolder = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden |
                                                        QDir::System | QDir::NoDotAndDotDot);
    if (!inFolder.isEmpty())
        return;
    QString path = folder;
    CFile().MakeDirectory(path);
}

} // namespace quenby
