// Text rules that every reader and report shares.
#pragma once

#include <QString>

namespace quenby {

// Drops blanks at both ends, as the platform's trim does: tabs stay, so that
// a tab inside a header, a row or a language key is text.
QString trimBlanks(const QString& text);

} // namespace quenby
