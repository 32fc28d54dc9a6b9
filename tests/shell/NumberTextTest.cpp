#include "shell/model/NumberText.h"
#include "shell/model/QuotedText.h"
#include "shell/model/RuntimeError.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <string>

using namespace quenby;

TEST(LeadingNumber, ReadsTheLongestNumberPrefix)
{
    EXPECT_DOUBLE_EQ(leadingNumber(u"12sec"), 12.0);
    EXPECT_DOUBLE_EQ(leadingNumber(u"---"), 0.0);
    EXPECT_DOUBLE_EQ(leadingNumber(u""), 0.0);
    EXPECT_DOUBLE_EQ(leadingNumber(u"  3.25 V"), 3.25);
    EXPECT_DOUBLE_EQ(leadingNumber(u"-.5x"), -0.5);
    EXPECT_DOUBLE_EQ(leadingNumber(u"1.2.3"), 1.2);
    EXPECT_DOUBLE_EQ(leadingNumber(u"1,5 ohm"), 1.0);
    EXPECT_DOUBLE_EQ(leadingNumber(u"20C"), 20.0);
}

TEST(LeadingNumber, SkipsBlanksEverywhere)
{
    EXPECT_DOUBLE_EQ(leadingNumber(u"1 2"), 12.0);
    EXPECT_DOUBLE_EQ(leadingNumber(u"- 5"), -5.0);
    EXPECT_DOUBLE_EQ(leadingNumber(u"\t7\t.5"), 7.5);
}

TEST(LeadingNumber, ReadsAnExponent)
{
    EXPECT_DOUBLE_EQ(leadingNumber(u"1.234568E+08ohm "), 123456800.0);
    EXPECT_DOUBLE_EQ(leadingNumber(u"2e3"), 2000.0);
    // "e" not followed by digits is not part of the number.
    EXPECT_DOUBLE_EQ(leadingNumber(u"5e"), 5.0);
    EXPECT_DOUBLE_EQ(leadingNumber(u"5mA"), 5.0);
}

TEST(LeadingNumber, AnOverlargeNumberOverflows)
{
    try {
        leadingNumber(u"1e999");
        FAIL() << "no failure";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::Overflow);
    }
}

TEST(NumberText, IsThePlainShortForm)
{
    EXPECT_EQ(numberText(0.0), "0");
    EXPECT_EQ(numberText(1250.0), "1250");
    EXPECT_EQ(numberText(-0.0), "0");
    // No zero ahead of the point, on either side of zero.
    EXPECT_EQ(numberText(0.5), ".5");
    EXPECT_EQ(numberText(-0.5), "-.5");
    EXPECT_EQ(numberText(-3.25), "-3.25");
    EXPECT_EQ(numberText(234.5), "234.5");
    EXPECT_EQ(numberText(0.0001), ".0001");
    EXPECT_EQ(numberText(-0.0001), "-.0001");
    EXPECT_EQ(numberText(1e20), "100000000000000000000");
    // Fifteen significant digits hide the binary noise of a product.
    EXPECT_EQ(numberText(1.234 * 1000), "1234");
    EXPECT_EQ(numberText(0.1 + 0.2), ".3");
}

TEST(SignedNumberText, LeavesABlankForThePlusSign)
{
    EXPECT_EQ(signedNumberText(1500.0), " 1500");
    EXPECT_EQ(signedNumberText(3.0), " 3");
    EXPECT_EQ(signedNumberText(0.0), " 0");
    EXPECT_EQ(signedNumberText(-2.0), "-2");
    // No zero ahead of the point.
    EXPECT_EQ(signedNumberText(0.5), " .5");
    EXPECT_EQ(signedNumberText(-0.5), "-.5");
}

TEST(SingleText, HasSevenSignificantDigits)
{
    EXPECT_EQ(singleText(123456789.0f), "1.234568E+08");
    EXPECT_EQ(singleText(1234567.0f), "1234567");
    EXPECT_EQ(singleText(12345678.0f), "1.234568E+07");
    EXPECT_EQ(singleText(100000000.0f), "1E+08");
    EXPECT_EQ(singleText(0.1f), "0.1");
    EXPECT_EQ(singleText(2500000.0f), "2500000");
    EXPECT_EQ(singleText(-123456789.0f), "-1.234568E+08");
}

TEST(RoundHalfEven, SendsHalvesToTheEvenDigit)
{
    EXPECT_DOUBLE_EQ(roundHalfEven(2.5, 0), 2.0);
    EXPECT_DOUBLE_EQ(roundHalfEven(3.5, 0), 4.0);
    EXPECT_DOUBLE_EQ(roundHalfEven(-2.5, 0), -2.0);
    EXPECT_DOUBLE_EQ(roundHalfEven(0.125, 2), 0.12);
    EXPECT_DOUBLE_EQ(roundHalfEven(0.135, 2), 0.14);
    EXPECT_DOUBLE_EQ(roundHalfEven(12.34567, 2), 12.35);
    EXPECT_DOUBLE_EQ(roundHalfEven(0.5, 3), 0.5);
    EXPECT_DOUBLE_EQ(roundHalfEven(9.995, 2), 10.0);
    EXPECT_DOUBLE_EQ(roundHalfEven(0.4, 0), 0.0);
    EXPECT_DOUBLE_EQ(roundHalfEven(0.6, 0), 1.0);
}

TEST(FormatNumber, DigitPatterns)
{
    EXPECT_EQ(formatNumber(5, u"0"), "5");
    EXPECT_EQ(formatNumber(5, u"00"), "05");
    EXPECT_EQ(formatNumber(2024, u"0000"), "2024");
    EXPECT_EQ(formatNumber(24, u"0000"), "0024");
    EXPECT_EQ(formatNumber(1.5, u"0.00"), "1.50");
    EXPECT_EQ(formatNumber(1.2344, u"0.000"), "1.234");
    EXPECT_EQ(formatNumber(0.25, u"0.000"), "0.250");
    EXPECT_EQ(formatNumber(123456, u"0"), "123456");
}

TEST(FormatNumber, OptionalDigits)
{
    EXPECT_EQ(formatNumber(3.14159, u"##0.0#"), "3.14");
    EXPECT_EQ(formatNumber(3.1, u"##0.0#"), "3.1");
    EXPECT_EQ(formatNumber(3, u"##0.0#"), "3.0");
    EXPECT_EQ(formatNumber(0.04, u"##0.0#"), "0.04");
    EXPECT_EQ(formatNumber(1234.5, u"##0.0#"), "1234.5");
}

TEST(FormatNumber, LiteralsAroundTheDigits)
{
    EXPECT_EQ(formatNumber(7, u" 00"), " 07");
    EXPECT_EQ(formatNumber(5, u"0 "), "5 ");
    EXPECT_EQ(formatNumber(9, u"   00:"), "   09:");
    EXPECT_EQ(formatNumber(30, u"00:"), "30:");
}

TEST(FormatNumber, HalvesRoundAwayFromZero)
{
    EXPECT_EQ(formatNumber(2.5, u"0"), "3");
    EXPECT_EQ(formatNumber(0.5, u"0"), "1");
    EXPECT_EQ(formatNumber(1.0005, u"0.000"), "1.001");
    EXPECT_EQ(formatNumber(-2.5, u"0"), "-3");
    EXPECT_EQ(formatNumber(99.96, u"0.0"), "100.0");
    EXPECT_EQ(formatNumber(-0.0001, u"0.00"), "0.00");
}

TEST(StrictNumber, AcceptsOnlyAWholeNumberText)
{
    EXPECT_DOUBLE_EQ(strictNumber(u" 01 "), 1.0);
    EXPECT_DOUBLE_EQ(strictNumber(u"-2.5"), -2.5);
    EXPECT_DOUBLE_EQ(strictNumber(u"1E3"), 1000.0);
    for (const char16_t* bad : {u"", u"  ", u"X1", u"1x", u"---", u"1e", u"."}) {
        try {
            strictNumber(bad);
            FAIL() << "accepted " << QString::fromUtf16(bad).toStdString();
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.number(), err::TypeMismatch);
        }
    }
}

TEST(ZonedLine, ItemsStartEveryFourteenColumns)
{
    ZonedLine line;
    line.add("-");
    line.add("1");
    line.add("X1-X2");
    EXPECT_EQ(line.text(), QString("-") + QString(13, ' ') + "1" + QString(13, ' ') + "X1-X2");
}

TEST(ZonedLine, ALongItemPushesTheNextZone)
{
    ZonedLine line;
    line.add(QString(14, 'a')); // ends exactly on a zone border
    line.add("b");
    line.add(QString(20, 'c'));
    line.add("d");
    EXPECT_EQ(line.text().indexOf('b'), 28);
    EXPECT_EQ(line.text().indexOf('c'), 42);
    EXPECT_EQ(line.text().indexOf('d'), 70); // c runs to 62, past the zone at 56
}

TEST(QuotedText, EscapesWhatWouldBeAmbiguous)
{
    EXPECT_EQ(quoted(""), "\"\"");
    EXPECT_EQ(quoted("a\"b\\c"), "\"a\\\"b\\\\c\"");
    EXPECT_EQ(quoted("x\r\n\ty"), "\"x\\r\\n\\ty\"");
    EXPECT_EQ(quoted(QString(QChar(1))), "\"\\x01\"");
    EXPECT_EQ(quoted(QString::fromUtf8("12 µOhm ")), QString::fromUtf8("\"12 µOhm \""));
}

namespace {

// Puts the process under `name` for the length of a test, as a French or
// Polish desktop does at the program's start, and back afterwards.
class ProcessLocale
{
public:
    explicit ProcessLocale(const char* name) : m_before(std::setlocale(LC_ALL, nullptr))
    {
        m_set = std::setlocale(LC_ALL, name) != nullptr;
    }
    ~ProcessLocale() { std::setlocale(LC_ALL, m_before.c_str()); }
    bool set() const { return m_set; }

private:
    std::string m_before;
    bool m_set = false;
};

// What the C library makes of 1.5 under the process locale.
std::string printfOfOneAndAHalf()
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.1f", 1.5);
    return buf;
}

} // namespace

class NumbersUnderADesktopLocale : public ::testing::TestWithParam<const char*>
{
};

TEST_P(NumbersUnderADesktopLocale, ReadAndWriteWithAPoint)
{
    const ProcessLocale locale(GetParam());
    if (!locale.set())
        GTEST_SKIP() << GetParam() << " is not generated on this machine";
    // The locale is in force: the C library now writes a comma.
    ASSERT_EQ(printfOfOneAndAHalf(), "1,5");

    EXPECT_EQ(numberText(1.5), "1.5");
    EXPECT_EQ(numberText(-1234.25), "-1234.25");
    EXPECT_EQ(numberText(436.49), "436.49");
    EXPECT_EQ(signedNumberText(0.25), " .25");
    EXPECT_EQ(singleText(1.5e10f), "1.5E+10");
    EXPECT_EQ(singleText(3.25f), "3.25");
    EXPECT_EQ(formatNumber(1234.5, u"0.00"), "1234.50");
    EXPECT_EQ(roundHalfEven(2.345, 2), 2.34);
    EXPECT_EQ(roundHalfEven(-0.125, 2), -0.12);

    EXPECT_EQ(leadingNumber(u"436.49 mOhm"), 436.49);
    EXPECT_EQ(leadingNumber(u"1,5"), 1.0); // a comma ends the number
    EXPECT_EQ(leadingNumber(u"2.5E3"), 2500.0);
    EXPECT_EQ(leadingNumber(u"-1.25D-2"), -0.0125);
    EXPECT_EQ(strictNumber(u" 1.5 "), 1.5);
    EXPECT_EQ(strictNumber(u"+7.25e1"), 72.5);
    EXPECT_THROW(strictNumber(u"1,5"), RuntimeError);
}

INSTANTIATE_TEST_SUITE_P(FrenchAndPolish, NumbersUnderADesktopLocale,
                         ::testing::Values("fr_FR.UTF-8", "pl_PL.UTF-8"));

TEST(NumberReading, OverflowAndUnderflowAsTheLibraryHadThem)
{
    EXPECT_THROW(leadingNumber(u"1e309"), RuntimeError);
    EXPECT_THROW(leadingNumber(u"-123456.7e305"), RuntimeError);
    EXPECT_THROW(strictNumber(u"9e400"), RuntimeError);
    EXPECT_EQ(leadingNumber(u"1e-400"), 0.0);
    EXPECT_EQ(leadingNumber(u"0.0001e-330"), 0.0);
    EXPECT_EQ(strictNumber(u"-1e-400"), 0.0);
    EXPECT_EQ(leadingNumber(u"4.9e-324"), 4.9e-324); // the smallest denormal still reads
    EXPECT_EQ(leadingNumber(u"1.7976931348623157e308"), 1.7976931348623157e308);
}
