// Text that keeps to its box on a report page: a cell's font gives way a
// pixel at a time, down to a size still readable on paper, and a head whose
// words are wider than their column even then has them broken with a hyphen.
#pragma once

#include <QFont>
#include <QString>

class QFontMetrics;
class QLabel;
class QLineEdit;

namespace quenby {

// The largest pixel size from `largest` down to `smallest` at which every
// line of `text` is at most `room` pixels wide in `font`, or, when `byWord`,
// every word of it; `smallest` when none is.
int fittingPixelSize(QFont font, const QString& text, int room, int largest, int smallest,
                     bool byWord);

// `font` at the pixel size that fittingPixelSize gives.
QFont fittingFont(QFont font, const QString& text, int room, int largest, int smallest,
                  bool byWord = false);

// Whether every word of `text` is at most `room` pixels wide.
bool everyWordFits(const QString& text, const QFontMetrics& metrics, int room);

// `text` with a line break before each word that would not fit on the line
// so far in `room` pixels, and a word wider than the room broken with a
// hyphen after as many letters as fit.
QString hyphenatedLines(const QString& text, const QFontMetrics& metrics, int room);

// A one-line label or text box of the page: its font as first made when
// its text fits `room` pixels, else a pixel smaller at a time, down to
// `smallest` pixels.
void fitOneLine(QLabel& label, int room, int smallest);
void fitOneLine(QLineEdit& box, int room, int smallest);

} // namespace quenby
