#include "shell/model/SettingsStore.h"

#include "shell/model/Platform.h"
#include "shell/model/Services.h"

#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

#include <memory>

namespace quenby {

namespace {
std::unique_ptr<QSettings> openSettings(const QString& location, bool registry)
{
    return std::make_unique<QSettings>(location,
                                       registry ? QSettings::NativeFormat : QSettings::IniFormat);
}

} // namespace

QtSettingsStore::QtSettingsStore(QString iniFolder) : m_iniFolder(std::move(iniFolder)) {}

QString QtSettingsStore::location(const QString& application) const
{
    if (m_iniFolder.isEmpty() && isWindowsPlatform())
        return QStringLiteral("HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\") +
               application;
    const QString folder =
        m_iniFolder.isEmpty()
            ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
            : m_iniFolder;
    return folder + QStringLiteral("/") + application + QStringLiteral(".ini");
}

QString QtSettingsStore::GetSetting(const QString& application, const QString& section,
                                    const QString& key, const QString& fallback)
{
    const bool registry = m_iniFolder.isEmpty() && isWindowsPlatform();
    auto s = openSettings(location(application), registry);
    s->beginGroup(section);
    if (!s->contains(key))
        return fallback;
    const QVariant v = s->value(key);
    // A hand-edited INI value with commas comes back as a list: join it again.
    if (v.metaType().id() == QMetaType::QStringList)
        return v.toStringList().join(QStringLiteral(","));
    return v.toString();
}

void QtSettingsStore::SaveSetting(const QString& application, const QString& section,
                                  const QString& key, const QString& value)
{
    const bool registry = m_iniFolder.isEmpty() && isWindowsPlatform();
    auto s = openSettings(location(application), registry);
    s->beginGroup(section);
    s->setValue(key, value);
    s->endGroup();
    s->sync();
}

SettingsStore& settingsStore()
{
    Services& s = services();
    return s.settings ? *s.settings : s.userSettings;
}

void setSettingsStore(SettingsStore* store)
{
    services().settings = store;
}

} // namespace quenby
