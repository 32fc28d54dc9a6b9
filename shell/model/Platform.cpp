#include "shell/model/Platform.h"

#include "shell/model/Services.h"
#include "shell/model/Session.h"

#include <QCoreApplication>
#include <QDir>

namespace quenby {

bool isWindowsPlatform()
{
#ifdef Q_OS_WIN
    return true;
#else
    return false;
#endif
}

QString pathSep()
{
    return isWindowsPlatform() ? QStringLiteral("\\") : QStringLiteral("/");
}

QString toPlatformPath(const QString& path)
{
    QString out = path;
    const QChar sep = pathSep().at(0);
    for (QChar& c : out)
        if (c == u'/' || c == u'\\')
            c = sep;
    return out;
}

QString AppPath()
{
    QString folder = Slot<Services>::installed() ? services().appPathOverride : QString();
    if (folder.isEmpty())
        folder = QCoreApplication::applicationDirPath();
    folder = toPlatformPath(folder);
    while (folder.size() > 1 && folder.endsWith(pathSep()))
        folder.chop(1);
    return folder;
}

void setAppPathOverride(const QString& folder)
{
    services().appPathOverride = folder;
}

} // namespace quenby

namespace quenby {

QString executableFileName(const QString& baseName)
{
    return isWindowsPlatform() ? baseName + QStringLiteral(".exe") : baseName;
}

} // namespace quenby
