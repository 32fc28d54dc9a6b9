// The per-user settings store: application, section and key, each value a
// text. The whole system keeps five keys there (data folders and language),
// under the application names "Quenby" and "Quenbey".
//
// On Windows the store is the registry tree in which the earlier desktop
// program kept these settings,
// HKEY_CURRENT_USER\Software\VB and VBA Program Settings\<application>\<section>,
// so that an existing store reads as it is. Elsewhere each application name
// has one INI file, <application>.ini, in the user's configuration folder.
#pragma once

#include <QString>

namespace quenby {

inline constexpr auto SettingsAppData = "Quenby";
inline constexpr auto SettingsAppLanguage = "Quenbey"; // misspelt on purpose: stores use it

class SettingsStore
{
public:
    virtual ~SettingsStore() = default;
    virtual QString GetSetting(const QString& application, const QString& section,
                               const QString& key, const QString& fallback = {}) = 0;
    virtual void SaveSetting(const QString& application, const QString& section, const QString& key,
                             const QString& value) = 0;
};

class QtSettingsStore final : public SettingsStore
{
public:
    // iniFolder: where the INI files live on systems without the registry;
    // "" means the user's configuration folder. Ignored on Windows unless set,
    // in which case INI files are used there too (tests).
    explicit QtSettingsStore(QString iniFolder = {});

    QString GetSetting(const QString& application, const QString& section, const QString& key,
                       const QString& fallback = {}) override;
    void SaveSetting(const QString& application, const QString& section, const QString& key,
                     const QString& value) override;

    // Where the settings of an application live: a registry path or an INI file.
    QString location(const QString& application) const;

private:
    QString m_iniFolder;
};

// The store in use; the program's own by default.
SettingsStore& settingsStore();
void setSettingsStore(SettingsStore* store); // nullptr restores the default

} // namespace quenby
