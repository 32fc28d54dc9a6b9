#include "tests/fuzz/FuzzSupport.h"

#include "shell/model/AppState.h"
#include "shell/model/Platform.h"

#include <QFile>

#include <cstdlib>

namespace quenby::fuzz {

QByteArray inputBytes(const std::uint8_t* data, std::size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data),
                                   static_cast<qsizetype>(size));
}

Scratch::Scratch()
{
    // Without its folder the target tests nothing: stop at once.
    if (!m_dir.isValid())
        std::abort();
    setAppPathOverride(m_dir.path());
}

Scratch::~Scratch()
{
    setAppPathOverride(QString());
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
