// The lines of a written test file, for the file makers' tests: every line
// must end in CR LF, which the helper checks as it splits.
#pragma once

#include "tests/support/TestFiles.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <gtest/gtest.h>

namespace quenby::testing {

inline QStringList crlfLinesOf(const QString& path)
{
    const QByteArray bytes = readBytes(path);
    EXPECT_TRUE(bytes.endsWith("\r\n"));
    QStringList lines;
    // Every line ends in CR LF: split at LF, and the piece behind the last
    // one is empty.
    QList<QByteArray> pieces = bytes.split('\n');
    EXPECT_TRUE(pieces.last().isEmpty());
    pieces.removeLast();
    for (const QByteArray& line : pieces) {
        EXPECT_TRUE(line.endsWith('\r'));
        lines << QString::fromLatin1(line.chopped(1));
    }
    return lines;
}

} // namespace quenby::testing
