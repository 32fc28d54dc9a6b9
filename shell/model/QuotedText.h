// A text in double quotes with its control characters escaped, so that a
// dump of a record shows blanks, line ends and quotes unambiguously:
// "a\"b\r\n" for a"b followed by CR LF.
#pragma once

#include <QString>

namespace quenby {

QString quoted(const QString& text);

} // namespace quenby
