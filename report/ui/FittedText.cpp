#include "report/ui/FittedText.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace quenby {

namespace {

// The pixel size a control was made with, kept on it at its first fitting.
int designedPixels(QWidget& control)
{
    static constexpr const char* Key = "designedPixelSize";
    const QVariant kept = control.property(Key);
    if (kept.isValid())
        return kept.toInt();
    const int pixels = QFontInfo(control.font()).pixelSize();
    control.setProperty(Key, pixels);
    return pixels;
}

template <typename Control> void fitControl(Control& control, int room, int smallest)
{
    const int largest = designedPixels(control);
    control.setFont(fittingFont(control.font(), control.text().trimmed(), room, largest,
                                std::min(smallest, largest)));
}

QStringList piecesOf(const QString& text, bool byWord)
{
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    return byWord ? text.split(blanks, Qt::SkipEmptyParts) : text.split(u'\n');
}

int widestOf(const QStringList& pieces, const QFontMetrics& metrics)
{
    int widest = 0;
    for (const QString& piece : pieces)
        widest = std::max(widest, metrics.horizontalAdvance(piece.trimmed()));
    return widest;
}

} // namespace

int fittingPixelSize(QFont font, const QString& text, int room, int largest, int smallest,
                     bool byWord)
{
    const QStringList pieces = piecesOf(text, byWord);
    for (int pixels = largest; pixels > smallest; --pixels) {
        font.setPixelSize(pixels);
        if (widestOf(pieces, QFontMetrics(font)) <= room)
            return pixels;
    }
    return smallest;
}

QFont fittingFont(QFont font, const QString& text, int room, int largest, int smallest, bool byWord)
{
    font.setPixelSize(fittingPixelSize(font, text, room, largest, smallest, byWord));
    return font;
}

bool everyWordFits(const QString& text, const QFontMetrics& metrics, int room)
{
    return widestOf(piecesOf(text, true), metrics) <= room;
}

QString hyphenatedLines(const QString& text, const QFontMetrics& metrics, int room)
{
    QStringList lines;
    QString line;
    const auto putWord = [&](const QString& word) {
        const QString joined = line.isEmpty() ? word : line + u' ' + word;
        if (metrics.horizontalAdvance(joined) <= room) {
            line = joined;
            return;
        }
        if (!line.isEmpty())
            lines << line;
        line = word;
    };
    for (QString word : piecesOf(text, true)) {
        // A word that no line can hold gives up its head, hyphen and all, a
        // line at a time; at least one letter goes each time.
        while (metrics.horizontalAdvance(word) > room && word.size() > 1) {
            qsizetype take = word.size() - 1;
            while (take > 1 && metrics.horizontalAdvance(word.left(take) + u'-') > room)
                --take;
            // No line of one or two letters under a broken word: the break
            // moves back, as long as a few letters stay ahead of it.
            constexpr qsizetype ShortestTail = 3;
            while (word.size() - take < ShortestTail && take > ShortestTail)
                --take;
            putWord(word.left(take) + u'-');
            lines << line;
            line.clear();
            word = word.mid(take);
        }
        putWord(word);
    }
    if (!line.isEmpty())
        lines << line;
    return lines.join(u'\n');
}

void fitOneLine(QLabel& label, int room, int smallest)
{
    fitControl(label, room, smallest);
}

void fitOneLine(QLineEdit& box, int room, int smallest)
{
    fitControl(box, room, smallest);
}

} // namespace quenby
