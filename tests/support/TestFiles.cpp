#include "tests/support/TestFiles.h"

#include "shell/model/CodePage.h"

#include <QFile>
#include <QStringList>

#include <stdexcept>

namespace quenby::testing {

QByteArray readBytes(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + path.toStdString());
    return f.readAll();
}

void writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write " + path.toStdString());
}

QByteArray crlfLines(const QStringList& lines)
{
    QByteArray out;
    for (const QString& line : lines) {
        out += encodeText(line);
        out += "\r\n";
    }
    return out;
}

QString testDataPath(const QString& name)
{
    return QStringLiteral(QUENBY_TEST_DATA_DIR "/") + name;
}

QString samplePath(const QString& name)
{
    return QStringLiteral(QUENBY_SAMPLES_DIR "/") + name;
}

QString langSourcePath(const QString& name)
{
    return QStringLiteral(QUENBY_LANG_DIR "/") + name;
}

} // namespace quenby::testing
