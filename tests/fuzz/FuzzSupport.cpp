#include "tests/fuzz/FuzzSupport.h"

#include "shell/model/AppState.h"
#include "shell/model/Platform.h"

#include <QDir>
#include <QFile>

#include <cstdlib>

namespace quenby::fuzz {

QByteArray inputBytes(const std::uint8_t* data, std::size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data),
                                   static_cast<qsizetype>(size));
}

namespace {
QString settingName(const QString& application, const QString& section, const QString& key)
{
    return application + u'\\' + section + u'\\' + key;
}
} // namespace

QString MemorySettings::GetSetting(const QString& application, const QString& section,
                                   const QString& key, const QString& fallback)
{
    const auto it = m_values.find(settingName(application, section, key));
    return it == m_values.end() ? fallback : it->second;
}

void MemorySettings::SaveSetting(const QString& application, const QString& section,
                                 const QString& key, const QString& value)
{
    m_values[settingName(application, section, key)] = value;
}

Scratch::Scratch() : m_currentFolder(QDir::currentPath())
{
    // Without its folder the target tests nothing: stop at once.
    if (!m_dir.isValid())
        std::abort();
    setAppPathOverride(m_dir.path());
    setSettingsStore(&m_settings);
}

Scratch::~Scratch()
{
    setSettingsStore(nullptr);
    setAppPathOverride(QString());
    QDir::setCurrent(m_currentFolder);
}

QString Scratch::write(const QString& name, const QByteArray& bytes) const
{
    const QString path = filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::abort();
    return path;
}

void Scratch::useShippedLanguage(const QString& name) const
{
    const QString path = filePath(name);
    if (!QFile::copy(QStringLiteral(QUENBY_LANG_DIR "/") + name, path))
        std::abort();
    appState().LangFilePath = path;
}

} // namespace quenby::fuzz
