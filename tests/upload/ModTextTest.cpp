// The number text of the test files (MyStr) and the line builder of the KVX
// test file maker. Expected texts are worked out from the rules by hand: round
// half to even, no zero ahead of the point, force the decimals, then a "0" and
// blanks on the left up to the width.
#include "upload/model/ModText.h"

#include "shell/model/Session.h"
#include "tests/support/Failure.h"
#include "upload/model/UploadSession.h"

#include <QString>
#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

using namespace quenby;

namespace {

// The text line lives in the upload session: each test has a fresh one.
class ModTextTest : public ::testing::Test
{
protected:
    OwnedSession<UploadSession> session;
};

TEST(MyStrTest, HalfGoesToTheEvenNeighbour)
{
    EXPECT_EQ(MyStr(2.5, 1, 0), "2");
    EXPECT_EQ(MyStr(3.5, 1, 0), "4");
    EXPECT_EQ(MyStr(-2.5, 1, 0), "-2");
    EXPECT_EQ(MyStr(1234.5, 1, 0), "1234");
    EXPECT_EQ(MyStr(2.5f, 1, 0), "2");
    // 1.25 -> 1.2 and 1.35 -> 1.4: the kept digit decides.
    EXPECT_EQ(MyStr(1.25, 3, 1), "1.2");
    EXPECT_EQ(MyStr(1.35, 3, 1), "1.4");
}

TEST(MyStrTest, ZeroFillsTheWidthOfAFraction)
{
    // ".5" forced to ".500", then one short of 5: the "0" fills it exactly.
    EXPECT_EQ(MyStr(0.5, 5, 3), "0.500");
    EXPECT_EQ(MyStr(0.5f, 5, 3), "0.500");
    // ".25" with width 3 is not short: no zero.
    EXPECT_EQ(MyStr(0.25, 3, 2), ".25");
    // ".25" with width 6: "0.25", then two blanks.
    EXPECT_EQ(MyStr(0.25, 6, 2), "  0.25");
}

TEST(MyStrTest, TextLongerThanItsWidthStaysWhole)
{
    EXPECT_EQ(MyStr(12.34567, 4, 2), "12.35");
    EXPECT_EQ(MyStr(12.34567f, 4, 2), "12.35");
    EXPECT_EQ(MyStr(123.456, 5, 3), "123.456");
}

TEST(MyStrTest, ZeroGoesAheadOfTheSign)
{
    // "-.5" -> "-.50" -> "0-.50" -> " 0-.50": kept as the files have it.
    EXPECT_EQ(MyStr(-0.5, 6, 2), " 0-.50");
    EXPECT_EQ(MyStr(-0.5f, 6, 2), " 0-.50");
    // A negative value of 1 or more gets blanks only.
    EXPECT_EQ(MyStr(-12.5, 7, 2), " -12.50");
}

TEST(MyStrTest, WholeNumbersGetAPointAndZeros)
{
    EXPECT_EQ(MyStr(2.0, 5, 3), "2.000");
    EXPECT_EQ(MyStr(40.0f, 5, 3), "40.000");
    EXPECT_EQ(MyStr(7.0f, 4, 2), "7.00");
    EXPECT_EQ(MyStr(40.0f, 1, 0), "40");
}

TEST(MyStrTest, ZeroReadsAsAWholeZero)
{
    // Zero has the text "0", which gets its point and decimals; short of the
    // width, the "0" for a value below 1 comes in front as well.
    EXPECT_EQ(MyStr(0.0, 5, 3), "0.000");
    EXPECT_EQ(MyStr(0.0, 4, 2), "0.00");
    EXPECT_EQ(MyStr(0.0, 6, 3), "00.000");
    EXPECT_EQ(MyStr(0.0, 1, 0), "0");
    // Rounded away to zero.
    EXPECT_EQ(MyStr(0.004, 4, 2), "0.00");
}

TEST(MyStrTest, TheZeroFollowsTheGivenValueNotTheRoundedOne)
{
    // 0.9996 rounds to 1, whose text "1.000" is one short of 6: the given
    // value is below 1, so the zero goes in front all the same.
    EXPECT_EQ(MyStr(0.9996, 6, 3), "01.000");
    EXPECT_EQ(MyStr(0.9996, 5, 3), "1.000");
}

TEST(MyStrTest, BlanksFillUpToTheWidth)
{
    EXPECT_EQ(MyStr(1.5, 6, 1), "   1.5");
    EXPECT_EQ(MyStr(12.0f, 7, 2), "  12.00");
}

TEST(MyStrTest, ASingleIsTakenByTheTextItShows)
{
    // 0.05f is 0.0500000007... in binary but shows "0.05", an exact half,
    // which goes to the even 0.0: "0" -> "0.0" -> "00.0". Widened to a double
    // it would round up to ".1" and read " 0.1".
    EXPECT_EQ(MyStr(0.05f, 4, 1), "00.0");
    EXPECT_EQ(MyStr(static_cast<double>(0.05f), 4, 1), " 0.1");
    // 0.125f is exact: the half goes to 0.12.
    EXPECT_EQ(MyStr(0.125f, 4, 2), "0.12");
    // 2.675f shows "2.675" and rounds half to even, to 2.68.
    EXPECT_EQ(MyStr(2.675f, 4, 2), "2.68");
    // A single of 8 digits shows 7 of them: 123456789 is stored as
    // 123456792 and shows 1.234568E+08.
    EXPECT_EQ(MyStr(123456789.0f, 1, 0), "123456800");
}

TEST(MyStrTest, TheSmallestDecodedValueShowsAsZero)
{
    // A stored 0.0 decodes to 2^-127, which is not 0 but shows as 0.
    const float tiny = std::ldexp(1.0f, -127);
    ASSERT_NE(tiny, 0.0f);
    EXPECT_EQ(MyStr(tiny, 7, 5), "0.00000");
    EXPECT_EQ(MyStr(tiny, 4, 2), "0.00");
}

TEST_F(ModTextTest, ClearAndResult)
{
    Int32 position = 0;
    TextAtColumn(QStringLiteral("abc"), 0, position);
    EXPECT_EQ(TextLineResult(), "abc");
    ClearTextLine();
    EXPECT_EQ(TextLineResult(), "");
}

TEST_F(ModTextTest, TextAtColumnPadsUpToTheColumn)
{
    Int32 position = 0;
    EXPECT_EQ(TextAtColumn(QStringLiteral("01"), 1, position), 3);
    EXPECT_EQ(position, 3);
    EXPECT_EQ(TextAtColumn(QStringLiteral("X1-X2"), 7, position), 12);
    EXPECT_EQ(position, 12);
    EXPECT_EQ(TextLineResult(), " 01    X1-X2");
}

TEST_F(ModTextTest, AnOverLongFieldShiftsTheRest)
{
    Int32 position = 0;
    TextAtColumn(QStringLiteral("abcdefgh"), 2, position); // runs to 10
    EXPECT_EQ(position, 10);
    // Column 6 lies behind: no blank, the text follows directly.
    EXPECT_EQ(TextAtColumn(QStringLiteral("XY"), 6, position), 12);
    // At the column exactly: no blank either.
    EXPECT_EQ(TextAtColumn(QStringLiteral("Z"), 12, position), 13);
    EXPECT_EQ(TextLineResult(), "  abcdefghXYZ");
}

TEST_F(ModTextTest, EmptyTextStillPads)
{
    Int32 position = 2;
    EXPECT_EQ(TextAtColumn(QString(), 5, position), 5);
    EXPECT_EQ(TextLineResult(), "   ");
}

TEST_F(ModTextTest, NumberVariantsUseTheirWidthAndDecimals)
{
    Int32 position = 0;
    TextAtColumn1_0(2.5f, 0, position);     // "2"
    TextAtColumn5_3(0.5f, 2, position);     // "0.500"
    TextAtColumn3_1(0.25f, 8, position);    // ".2" -> "0.2"
    TextAtColumn3_1b(-1.25f, 12, position); // "-1.2"
    TextAtColumn4_2(1.5f, 17, position);    // "1.50"
    TextAtColumn7_5(0.1004f, 22, position); // ".1004" -> ".10040" -> "0.10040"
    EXPECT_EQ(TextLineResult(), "2 0.500 0.2 -1.2 1.50 0.10040");
    EXPECT_EQ(position, 29);
}

TEST_F(ModTextTest, CentredHalvesGoToTheEvenSide)
{
    // 3 blanks to spare: 1.5 -> 2 on the left, 1 on the right.
    TextLineCentered(QStringLiteral("No."), 6);
    EXPECT_EQ(TextLineResult(), "  No. ");
    ClearTextLine();
    // 5 to spare: 2.5 -> 2 on the left, 3 on the right.
    TextLineCentered(QStringLiteral("500.000m"), 13);
    EXPECT_EQ(TextLineResult(), "  500.000m   ");
    ClearTextLine();
    // 7 to spare: 3.5 -> 4 on the left, 3 on the right.
    TextLineCentered(QStringLiteral("12.35"), 12);
    EXPECT_EQ(TextLineResult(), "    12.35   ");
    ClearTextLine();
    // An even number to spare splits evenly.
    TextLineCentered(QStringLiteral("1.00"), 12);
    EXPECT_EQ(TextLineResult(), "    1.00    ");
}

TEST_F(ModTextTest, CentredTextAsLongAsTheWidthGoesAlone)
{
    TextLineCentered(QStringLiteral("abcd"), 4);
    TextLineCentered(QStringLiteral("abcdef"), 3);
    TextLineCentered(QStringLiteral("x"), 0);
    EXPECT_EQ(TextLineResult(), "abcdabcdefx");
}

TEST_F(ModTextTest, CentredPiecesFollowOneAnother)
{
    // The heading of an excitation table: "No." in 6, then two pieces as long
    // as their widths.
    TextLineCentered(QStringLiteral("No."), 6);
    TextLineCentered(QStringLiteral("  Vx (volts)"), 12);
    TextLineCentered(QStringLiteral("  Current (A)"), 13);
    EXPECT_EQ(TextLineResult(), "  No.   Vx (volts)  Current (A)");
}

} // namespace
