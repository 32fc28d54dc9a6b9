// Number and text rules shared by the whole system.
//
// Files, labels and reports depend on these exact forms, so every place that
// turns text into a number or a number into text goes through here:
//  - leadingNumber: the longest prefix of a text that reads as a decimal number
//    ("." as the point, blanks skipped anywhere, an exponent allowed), 0 if none.
//  - numberText: the shortest plain decimal form of a double, at most 15
//    significant digits, no exponent, no zero ahead of the point (".5",
//    "1250", "-3.25", "-.5", "0").
//  - signedNumberText: the same with a leading blank for the sign of a
//    number that is not negative (" 1500", " .5", "-.5").
//  - singleText: the default text of a single-precision value, 7 significant
//    digits, exponent form once the whole part needs more ("1.234568E+08").
//  - roundHalfEven: rounding to a number of decimals, halves to the even digit.
//  - formatNumber: the digit patterns "0", "00", "0000", "0.00", "0.000",
//    "##0.0#", " 00", "0 ", "   00:", "00:"; halves round away from zero, as the
//    platform's formatter does.
//  - strictNumber: the strict conversion of a text; no number is Type mismatch.
#pragma once

#include <QString>
#include <QStringView>

namespace quenby {

double leadingNumber(QStringView text);
QString numberText(double value);
QString signedNumberText(double value);
QString singleText(float value);
double roundHalfEven(double value, int decimals);
QString formatNumber(double value, QStringView pattern);
double strictNumber(QStringView text);

// Print zones: items of a printed line start at columns 0, 14, 28... Each item
// after the first starts at the next multiple of 14 strictly beyond the end of
// the line so far, so an item of 14 characters or more pushes the rest on.
inline constexpr int PrintZoneWidth = 14;

class ZonedLine
{
public:
    void add(const QString& item);
    const QString& text() const { return m_text; }

private:
    QString m_text;
    bool m_empty = true;
};

} // namespace quenby
