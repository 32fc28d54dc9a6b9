#include "upload/model/ModText.h"

#include "shell/model/NumberText.h"
#include "upload/model/UploadSession.h"

#include <cmath>

namespace quenby {

namespace {

// The line under construction, one for the whole module, kept in the upload
// session.
QString& textLine()
{
    return uploadSession().textLine;
}

// Steps 2 to 5 of MyStr on the trimmed text of the rounded value.
QString shapeNumberText(QString s, bool belowOne, int width, int decimals)
{
    // The position of the point counts from 1, 0 when there is none.
    const auto p = s.indexOf(u'.') + 1;
    if (decimals >= 1) {
        if (p == 0) {
            s += u'.' + QString(decimals, u'0');
        } else {
            const auto f = s.size() - p;
            if (f < decimals)
                s += QString(decimals - f, u'0');
            else if (f > decimals)
                s.truncate(p + decimals);
        }
    } else if (p != 0) {
        s.truncate(p - 1);
    }
    if (s.size() < width) {
        // Intended: the zero goes in front of the whole text, sign included,
        // so that -0.5 reads "0-.50"; and only when the text is short of the
        // width.
        if (belowOne)
            s.prepend(u'0');
        if (s.size() < width)
            s.prepend(QString(width - s.size(), u' '));
    }
    return s;
}

// Step 1: the rounded value as text, no leading zero ahead of the point,
// blanks trimmed (".5", "-.5", "12.35").
QString roundedText(double value, int decimals)
{
    return signedNumberText(roundHalfEven(value, decimals)).trimmed();
}

QString centredText(const QString& text, Int32 width)
{
    const auto n = static_cast<Int32>(text.size());
    if (width <= n)
        return text;
    // The blanks to spare are halved and the half rounded, halves to even:
    // 5 blanks give 2 on the left and 3 on the right, 3 blanks give 2 and 1.
    const Int32 left = toInt32((width - n) / 2.0);
    const Int32 right = width - n - left;
    return QString(left, u' ') + text + QString(right, u' ');
}

} // namespace

QString MyStr(double value, int width, int decimals)
{
    return shapeNumberText(roundedText(value, decimals), std::fabs(value) < 1.0, width, decimals);
}

QString MyStr(float value, int width, int decimals)
{
    // A single is taken by the decimal text it shows (7 significant digits),
    // not by its binary value widened to a double: 0.05f is 0.0500000007...
    // in binary, yet shows "0.05", and rounds as the half that it shows. The
    // rounding then works on that decimal value.
    if (!std::isfinite(value))
        return MyStr(static_cast<double>(value), width, decimals);
    const double shown = strictNumber(singleText(value));
    return shapeNumberText(roundedText(shown, decimals), std::fabs(shown) < 1.0, width, decimals);
}

void ClearTextLine()
{
    textLine().clear();
}

Int32 TextAtColumn(const QString& text, Int32 column, Int32& position)
{
    QString& line = textLine();
    // One blank a step; a position at or past the column adds none, so an
    // over-long field shifts the rest of the row.
    while (position < column) {
        line += u' ';
        position = add32(position, 1);
    }
    line += text;
    position = add32(position, static_cast<Int32>(text.size()));
    return position;
}

Int32 TextAtColumn1_0(float value, Int32 column, Int32& position)
{
    return TextAtColumn(MyStr(value, 1, 0), column, position);
}

Int32 TextAtColumn5_3(float value, Int32 column, Int32& position)
{
    return TextAtColumn(MyStr(value, 5, 3), column, position);
}

Int32 TextAtColumn3_1(float value, Int32 column, Int32& position)
{
    return TextAtColumn(MyStr(value, 3, 1), column, position);
}

Int32 TextAtColumn3_1b(float value, Int32 column, Int32& position)
{
    return TextAtColumn(MyStr(value, 3, 1), column, position);
}

Int32 TextAtColumn4_2(float value, Int32 column, Int32& position)
{
    return TextAtColumn(MyStr(value, 4, 2), column, position);
}

Int32 TextAtColumn7_5(float value, Int32 column, Int32& position)
{
    return TextAtColumn(MyStr(value, 7, 5), column, position);
}

void TextLineCentered(const QString& text, Int32 width)
{
    textLine() += centredText(text, width);
}

QString TextLineResult()
{
    return textLine();
}

} // namespace quenby
