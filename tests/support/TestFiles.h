// File helpers for tests: byte-exact reads and writes, and the paths of the
// test data, the samples and the language files of the source tree.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace quenby::testing {

QByteArray readBytes(const QString& path);
void writeBytes(const QString& path, const QByteArray& bytes);
// Lines joined with CR LF, each line closed by CR LF, encoded in Windows-1252.
QByteArray crlfLines(const QStringList& lines);

QString testDataPath(const QString& name);
QString samplePath(const QString& name);
QString langSourcePath(const QString& name);

} // namespace quenby::testing
