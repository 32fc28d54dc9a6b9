#include "shell/model/Checked.h"
#include "shell/model/RuntimeError.h"
#include "tests/support/Failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

using namespace quenby;
using namespace quenby::testing;

TEST(Checked, ConversionRoundsHalvesToEven)
{
    EXPECT_EQ(toInt16(2.5), 2);
    EXPECT_EQ(toInt16(3.5), 4);
    EXPECT_EQ(toInt16(-2.5), -2);
    EXPECT_EQ(toInt16(32767.4), 32767);
    EXPECT_EQ(toInt16(-32768.0), -32768);
    EXPECT_EQ(toInt32(2147483647.0), 2147483647);
}

TEST(Checked, ConversionOutOfRangeOverflows)
{
    EXPECT_EQ(failureOf([] { toInt16(32767.5); }), err::Overflow);
    EXPECT_EQ(failureOf([] { toInt16(-32768.6); }), err::Overflow);
    EXPECT_EQ(failureOf([] { toInt16(NAN); }), err::Overflow);
    EXPECT_EQ(failureOf([] { toInt32(2147483648.0); }), err::Overflow);
}

TEST(Checked, SixteenBitArithmetic)
{
    EXPECT_EQ(add16(32766, 1), 32767);
    EXPECT_EQ(failureOf([] { add16(32767, 1); }), err::Overflow);
    EXPECT_EQ(failureOf([] { sub16(-32768, 1); }), err::Overflow);
    EXPECT_EQ(failureOf([] { mul16(256, 128); }), err::Overflow);
    EXPECT_EQ(mul16(128, 255), 32640);
}

TEST(Checked, ThirtyTwoBitArithmetic)
{
    EXPECT_EQ(add32(2147483646, 1), 2147483647);
    EXPECT_EQ(failureOf([] { add32(2147483647, 1); }), err::Overflow);
    EXPECT_EQ(failureOf([] { mul32(65536, 32768); }), err::Overflow);
    EXPECT_EQ(sub32(-2147483647, 1), -2147483647 - 1);
}

TEST(Checked, BooleansAreAllOnes)
{
    EXPECT_EQ(True16, -1);
    EXPECT_EQ(False16, 0);
    EXPECT_EQ(toBool16(true), -1);
    EXPECT_EQ(toBool16(false), 0);
}

TEST(Checked, DivisionByZero)
{
    EXPECT_DOUBLE_EQ(divide(1.0, 4.0), 0.25);
    EXPECT_EQ(failureOf([] { divide(3.0, 0.0); }), err::DivisionByZero);
    EXPECT_EQ(failureOf([] { divide(0.0, 0.0); }), err::Overflow);
}
