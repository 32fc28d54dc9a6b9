// What every fuzz target shares: a scratch folder made for one input and
// removed after it, with the program's own folder pointed at it and a
// settings store of its own, and the run of one road that lets the system's
// run-time failure end it. Any other exception, a crash or a sanitizer report
// is a finding.
#pragma once

#include "shell/model/RuntimeError.h"
#include "shell/model/SettingsStore.h"
#include "tools/ToolSessions.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <map>

namespace quenby::fuzz {

// The input as bytes, without a copy.
QByteArray inputBytes(const std::uint8_t* data, std::size_t size);

// Settings held in memory, so that no input reads or writes the user's.
class MemorySettings final : public SettingsStore
{
public:
    QString GetSetting(const QString& application, const QString& section, const QString& key,
                       const QString& fallback = {}) override;
    void SaveSetting(const QString& application, const QString& section, const QString& key,
                     const QString& value) override;

private:
    std::map<QString, QString> m_values; // by application, section and key
};

// A fresh folder for one input. While it lives, AppPath() is this folder and
// the settings store is an empty one in memory. The current folder, which the
// folder tests of the file makers move, is put back at its end.
class Scratch
{
public:
    Scratch();
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    QString path() const { return m_dir.path(); }
    QString filePath(const QString& name) const { return m_dir.filePath(name); }
    // Writes `bytes` as the file `name` in the folder and gives its path.
    QString write(const QString& name, const QByteArray& bytes) const;
    // Copies the shipped language file `name` ("en.lng") into the folder and
    // makes it the language of the run.
    void useShippedLanguage(const QString& name) const;

private:
    QString m_currentFolder;
    QTemporaryDir m_dir;
    MemorySettings m_settings;
};

// Runs `road`; a RuntimeError ends it as the program would end.
template <class Road> void runRoad(Road&& road)
{
    try {
        road();
    } catch (const RuntimeError&) {
    }
}

// One input as the test file `name` of a fresh run: fresh sessions with quiet
// windows, a scratch folder holding the shipped English texts and the file;
// then `road` with the file's path.
template <class Road>
void runOnTestFile(const std::uint8_t* data, std::size_t size, const QString& name, Road&& road)
{
    tools::ToolSessions sessions;
    const Scratch scratch;
    scratch.useShippedLanguage(QStringLiteral("en.lng"));
    const QString path = scratch.write(name, inputBytes(data, size));
    runRoad([&road, &path] { road(path); });
}

} // namespace quenby::fuzz
