#include "shell/model/Platform.h"

#include <QCoreApplication>
#include <QDir>

namespace quenby {

namespace {
QString& appPathOverride()
{
    static QString folder;
    return folder;
}
} // namespace

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
    QString folder = appPathOverride();
    if (folder.isEmpty())
        folder = QCoreApplication::applicationDirPath();
    folder = toPlatformPath(folder);
    while (folder.size() > 1 && folder.endsWith(pathSep()))
        folder.chop(1);
    return folder;
}

void setAppPathOverride(const QString& folder)
{
    appPathOverride() = folder;
}

} // namespace quenby

namespace quenby {

QString executableFileName(const QString& baseName)
{
    return isWindowsPlatform() ? baseName + QStringLiteral(".exe") : baseName;
}

} // namespace quenby
