#include "shell/model/NumberText.h"

#include "shell/model/RuntimeError.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string>
#include <system_error>

namespace quenby {

namespace {

// Every number of the system is written and read here, with to_chars and
// from_chars, which never look at the process locale: the application takes
// the desktop's locale at start, and a French or Polish desktop would
// otherwise have numbers written and read as "1,5".

// The value of a plain decimal text: an optional sign, digits with at most
// one point, and an optional exponent "e" with an optional sign. Overflow
// gives an infinity of the text's sign, underflow a zero.
double parseDecimal(const std::string& s)
{
    const char* first = s.data();
    const char* const last = s.data() + s.size();
    bool negative = false;
    if (first != last && (*first == '+' || *first == '-')) {
        negative = *first == '-';
        ++first;
    }
    double v = 0.0;
    const auto [end, ec] = std::from_chars(first, last, v, std::chars_format::general);
    (void)end;
    if (ec == std::errc::result_out_of_range) {
        // Too large or too small for a double: which one the decimal
        // exponent of the first significant digit tells.
        long exponent = 0;
        long firstDigit = 0;
        bool seenPoint = false;
        bool seenDigit = false;
        long position = 0;
        const char* p = first;
        for (; p != last && (std::isdigit(static_cast<unsigned char>(*p)) || *p == '.'); ++p) {
            if (*p == '.') {
                seenPoint = true;
                continue;
            }
            if (!seenDigit && *p != '0') {
                seenDigit = true;
                firstDigit = seenPoint ? -(position + 1) : 0;
            }
            if (!seenPoint && seenDigit)
                ++firstDigit;
            if (seenPoint)
                ++position;
        }
        if (p != last && (*p == 'e' || *p == 'E')) {
            ++p;
            bool expNegative = false;
            if (p != last && (*p == '+' || *p == '-'))
                expNegative = *p++ == '-';
            for (; p != last && std::isdigit(static_cast<unsigned char>(*p)); ++p)
                if (exponent < 100000)
                    exponent = exponent * 10 + (*p - '0');
            if (expNegative)
                exponent = -exponent;
        }
        v = firstDigit + exponent > 0 ? HUGE_VAL : 0.0;
    }
    return negative ? -v : v;
}

// The decimal digits of |value| to `significant` digits, trailing zeros cut,
// and the power of ten of the first digit: 1250 gives ("125", 3).
struct Digits
{
    std::string digits;
    int exponent = 0;
};

Digits decimalDigits(double value, int significant)
{
    Digits d;
    if (value == 0.0) {
        d.digits.assign(1, '0');
        return d;
    }
    char buf[64];
    const auto written = std::to_chars(buf, buf + sizeof buf, std::fabs(value),
                                       std::chars_format::scientific, significant - 1);
    const std::string s(buf, written.ptr);
    const auto e = s.find('e');
    for (std::size_t i = 0; i < e; ++i)
        if (s[i] != '.')
            d.digits.push_back(s[i]);
    // The exponent reads "+03" or "-12".
    const bool expNegative = s[e + 1] == '-';
    for (std::size_t i = e + 2; i < s.size(); ++i)
        d.exponent = d.exponent * 10 + (s[i] - '0');
    if (expNegative)
        d.exponent = -d.exponent;
    while (d.digits.size() > 1 && d.digits.back() == '0')
        d.digits.pop_back();
    return d;
}

// Whole and fraction digits of a plain decimal form built from Digits.
struct Plain
{
    std::string whole; // "" when the value is below 1
    std::string fraction;
};

Plain toPlain(const Digits& d)
{
    Plain p;
    if (d.digits == "0")
        return p;
    if (d.exponent >= 0) {
        const auto wholeLen = static_cast<std::size_t>(d.exponent) + 1;
        if (d.digits.size() <= wholeLen) {
            p.whole = d.digits + std::string(wholeLen - d.digits.size(), '0');
        } else {
            p.whole = d.digits.substr(0, wholeLen);
            p.fraction = d.digits.substr(wholeLen);
        }
    } else {
        p.fraction = std::string(static_cast<std::size_t>(-d.exponent - 1), '0') + d.digits;
    }
    return p;
}

// Adds one unit in the last place of a digit string; returns false when the
// carry runs out of the front.
bool incrementDigits(std::string& digits)
{
    for (auto i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return true;
        }
        digits[i] = '0';
    }
    return false;
}

// Rounds the plain form of |value| (15 significant digits) to `decimals`
// places: halves to even, or away from zero.
Plain roundPlain(double value, int decimals, bool halfEven)
{
    Plain p = toPlain(decimalDigits(value, 15));
    const auto keep = static_cast<std::size_t>(decimals < 0 ? 0 : decimals);
    if (p.fraction.size() <= keep)
        return p;
    const std::string dropped = p.fraction.substr(keep);
    p.fraction.resize(keep);
    bool up = false;
    if (dropped[0] > '5') {
        up = true;
    } else if (dropped[0] == '5') {
        const bool exactHalf = dropped.find_first_not_of('0', 1) == std::string::npos;
        if (!exactHalf || !halfEven) {
            up = true;
        } else {
            const char last = !p.fraction.empty() ? p.fraction.back()
                              : !p.whole.empty()  ? p.whole.back()
                                                  : '0';
            up = ((last - '0') % 2) == 1;
        }
    }
    if (up) {
        const auto fractionLen = p.fraction.size();
        std::string all = p.whole + p.fraction;
        if (all.empty())
            all.assign(1, '0');
        if (!incrementDigits(all))
            all.insert(all.begin(), '1');
        p.whole = all.substr(0, all.size() - fractionLen);
        p.fraction = all.substr(all.size() - fractionLen);
    }
    // A carry into an empty whole part leaves "0" digits ahead: strip them.
    const auto nz = p.whole.find_first_not_of('0');
    p.whole = nz == std::string::npos ? std::string() : p.whole.substr(nz);
    return p;
}

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

QString fromPlain(const Plain& p, bool negative, bool zeroAheadOfPoint)
{
    std::string fraction = p.fraction;
    while (!fraction.empty() && fraction.back() == '0')
        fraction.pop_back();
    std::string out;
    if (p.whole.empty() && fraction.empty())
        return QStringLiteral("0");
    if (negative)
        out.push_back('-');
    if (!p.whole.empty())
        out += p.whole;
    else if (zeroAheadOfPoint)
        out.push_back('0');
    if (!fraction.empty())
        out.append(1, '.').append(fraction);
    return QString::fromStdString(out);
}

QString nonFinite(double value)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    return value < 0 ? QStringLiteral("-Inf") : QStringLiteral("Inf");
}

} // namespace

double leadingNumber(QStringView text)
{
    // Blanks are skipped wherever they stand, so "1 2" reads 12.
    std::string clean;
    clean.reserve(static_cast<std::size_t>(text.size()));
    for (QChar c : text)
        if (!isBlank(c))
            clean.push_back(c.unicode() < 128 ? static_cast<char>(c.unicode()) : '\x7f');

    std::size_t i = 0;
    std::string num;
    if (i < clean.size() && (clean[i] == '+' || clean[i] == '-'))
        num.push_back(clean[i++]);
    std::size_t mantissa = 0;
    while (i < clean.size() && std::isdigit(static_cast<unsigned char>(clean[i]))) {
        num.push_back(clean[i++]);
        ++mantissa;
    }
    if (i < clean.size() && clean[i] == '.') {
        num.push_back(clean[i++]);
        while (i < clean.size() && std::isdigit(static_cast<unsigned char>(clean[i]))) {
            num.push_back(clean[i++]);
            ++mantissa;
        }
    }
    if (mantissa == 0)
        return 0.0;
    if (i < clean.size() &&
        (clean[i] == 'e' || clean[i] == 'E' || clean[i] == 'd' || clean[i] == 'D')) {
        std::size_t j = i + 1;
        std::string exp = "e";
        if (j < clean.size() && (clean[j] == '+' || clean[j] == '-'))
            exp.push_back(clean[j++]);
        bool any = false;
        while (j < clean.size() && std::isdigit(static_cast<unsigned char>(clean[j]))) {
            exp.push_back(clean[j++]);
            any = true;
        }
        if (any)
            num += exp;
    }
    const double v = parseDecimal(num);
    if (std::isinf(v))
        raiseRuntimeErrorOnValue(err::Overflow, text.toString());
    return v;
}

QString numberText(double value)
{
    if (!std::isfinite(value))
        return nonFinite(value);
    // The shortest plain form has no zero ahead of the point: 0.5 reads ".5",
    // -0.5 "-.5", and zero "0".
    return fromPlain(toPlain(decimalDigits(value, 15)), value < 0, false);
}

QString signedNumberText(double value)
{
    if (!std::isfinite(value))
        return nonFinite(value);
    const QString body = fromPlain(toPlain(decimalDigits(value, 15)), value < 0, false);
    return value < 0 ? body : QStringLiteral(" ") + body;
}

QString singleText(float value)
{
    if (!std::isfinite(value))
        return nonFinite(value);
    const Digits d = decimalDigits(static_cast<double>(value), 7);
    if (d.digits != "0" && d.exponent >= 7) {
        std::string out = value < 0 ? "-" : "";
        out.push_back(d.digits[0]);
        if (d.digits.size() > 1)
            out.append(1, '.').append(d.digits, 1, std::string::npos);
        // Two digits at least: "E+07", "E+38".
        out += "E+";
        if (d.exponent < 10)
            out.push_back('0');
        char exponent[12];
        const auto written = std::to_chars(std::begin(exponent), std::end(exponent), d.exponent);
        out.append(exponent, written.ptr);
        return QString::fromStdString(out);
    }
    return fromPlain(toPlain(d), value < 0, true);
}

double roundHalfEven(double value, int decimals)
{
    if (!std::isfinite(value))
        return value;
    const Plain p = roundPlain(value, decimals, true);
    std::string s = (value < 0 ? "-" : "") + (p.whole.empty() ? std::string("0") : p.whole);
    if (!p.fraction.empty())
        s.append(1, '.').append(p.fraction);
    return parseDecimal(s);
}

QString formatNumber(double value, QStringView pattern)
{
    if (!std::isfinite(value))
        return nonFinite(value);
    auto isPlaceholder = [](QChar c) { return c == u'0' || c == u'#' || c == u'.'; };
    qsizetype first = -1, last = -1;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        if (isPlaceholder(pattern[i])) {
            if (first < 0)
                first = i;
            last = i;
        }
    }
    if (first < 0)
        return pattern.toString();
    const QStringView prefix = pattern.left(first);
    const QStringView suffix = pattern.mid(last + 1);
    const QStringView body = pattern.mid(first, last - first + 1);
    const qsizetype point = body.indexOf(u'.');
    const QStringView wholePattern = point < 0 ? body : body.left(point);
    const QStringView fractionPattern = point < 0 ? QStringView() : body.mid(point + 1);
    const auto wholeMin = static_cast<std::size_t>(wholePattern.count(u'0'));
    const auto fractionMin = static_cast<std::size_t>(fractionPattern.count(u'0'));
    const auto fractionMax = static_cast<int>(fractionPattern.size());

    Plain p = roundPlain(value, fractionMax, false);
    std::string fraction = p.fraction;
    fraction.resize(static_cast<std::size_t>(fractionMax), '0');
    while (fraction.size() > fractionMin && fraction.back() == '0')
        fraction.pop_back();
    std::string whole = p.whole;
    if (whole.size() < wholeMin)
        whole.insert(0, wholeMin - whole.size(), '0');
    const bool isZero = p.whole.empty() && p.fraction.find_first_not_of('0') == std::string::npos;

    QString out;
    if (value < 0 && !isZero)
        out += u'-';
    out += prefix;
    out += QString::fromStdString(whole);
    if (point >= 0)
        out += u'.' + QString::fromStdString(fraction);
    out += suffix;
    return out;
}

double strictNumber(QStringView text)
{
    const QStringView t = text.trimmed();
    std::string s;
    for (QChar c : t) {
        if (c.unicode() >= 128)
            raiseRuntimeErrorOnValue(err::TypeMismatch, text.toString());
        s.push_back(static_cast<char>(c.unicode()));
    }
    if (s.empty())
        raiseRuntimeErrorOnValue(err::TypeMismatch, text.toString());
    std::size_t i = 0;
    if (s[i] == '+' || s[i] == '-')
        ++i;
    std::size_t digits = 0;
    while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])))
        ++i, ++digits;
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])))
            ++i, ++digits;
    }
    if (digits == 0)
        raiseRuntimeErrorOnValue(err::TypeMismatch, text.toString());
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-'))
            ++j;
        std::size_t expDigits = 0;
        while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j])))
            ++j, ++expDigits;
        if (expDigits == 0)
            raiseRuntimeErrorOnValue(err::TypeMismatch, text.toString());
        i = j;
    }
    if (i != s.size())
        raiseRuntimeErrorOnValue(err::TypeMismatch, text.toString());
    const double v = parseDecimal(s);
    if (std::isinf(v))
        raiseRuntimeErrorOnValue(err::Overflow, text.toString());
    return v;
}

void ZonedLine::add(const QString& item)
{
    if (!m_empty) {
        const auto next = (m_text.size() / PrintZoneWidth + 1) * PrintZoneWidth;
        m_text += QString(next - m_text.size(), u' ');
    }
    m_text += item;
    m_empty = false;
}

} // namespace quenby
