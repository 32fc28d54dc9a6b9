// Single-byte code pages of the system's text files.
//
// Test files and the English and French language files are Windows-1252; the
// Polish language files are Windows-1250. Decoding and encoding are done here
// by table so that bytes come back exactly on every system. A byte that a code
// page leaves undefined maps to the code point of the same number, and back.
// A character that a code page cannot hold is written as "?".
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace quenby {

enum class CodePage { Windows1252, Windows1250 };

QString decodeText(QByteArrayView bytes, CodePage page = CodePage::Windows1252);
QByteArray encodeText(QStringView text, CodePage page = CodePage::Windows1252);

} // namespace quenby
