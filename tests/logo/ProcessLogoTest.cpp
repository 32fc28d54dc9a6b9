#include "logo/model/ProcessLogo.h"
#include "logo/model/AutoResizeLogo.h"
#include "shell/model/RuntimeError.h"
#include "tests/support/Failure.h"

#include <gtest/gtest.h>

#include <clocale>

using namespace quenby;
using namespace quenby::testing;

namespace {

void expectBox(const TwipsRect& box, double left, double top, double width, double height)
{
    EXPECT_DOUBLE_EQ(box.left, left);
    EXPECT_DOUBLE_EQ(box.top, top);
    EXPECT_DOUBLE_EQ(box.width, width);
    EXPECT_DOUBLE_EQ(box.height, height);
}

} // namespace

TEST(ProcessLogo, MarginIs500AtLoadAnd2500OnceMeasured)
{
    ProcessLogo logo;
    EXPECT_EQ(logo.Margin, 500);
    logo.ProcessImage(300, 200);
    EXPECT_EQ(logo.Margin, 2500);
    EXPECT_DOUBLE_EQ(logo.LogoWidth, 300);
    EXPECT_DOUBLE_EQ(logo.LogoHeight, 200);
}

TEST(ProcessLogo, RatioIsTheLargerSideOverTheSmaller)
{
    ProcessLogo logo;
    logo.ProcessImage(300, 1200);
    EXPECT_DOUBLE_EQ(logo.LogoRatio, 4);
    logo.ProcessImage(1200, 300);
    EXPECT_DOUBLE_EQ(logo.LogoRatio, 4);
}

TEST(ProcessLogo, SquarePictureFillsTheBox)
{
    ProcessLogo logo;
    logo.ProcessImage(500, 500);
    EXPECT_DOUBLE_EQ(logo.LogoRatio, 1);
    expectBox(logo.SetImageProcessed(1560, 240), 1560, 240, 1080, 1080);
    EXPECT_DOUBLE_EQ(logo.LogoShownWidth, 1080);
    EXPECT_DOUBLE_EQ(logo.LogoShownHeight, 1080);
}

TEST(ProcessLogo, TwoToOnePictureStandsCentredInTheBox)
{
    ProcessLogo logo;
    logo.ProcessImage(2000, 1000);
    EXPECT_DOUBLE_EQ(logo.LogoRatio, 2);
    expectBox(logo.SetImageProcessed(16440, 120), 16440 + 0, 120 + 270, 1080, 540);
    EXPECT_DOUBLE_EQ(logo.LogoBoxRatio, 2000.0 / 1080);
    EXPECT_DOUBLE_EQ(logo.Image1.top, 390);
}

TEST(ProcessLogo, TallPictureKeepsItsHeight)
{
    ProcessLogo logo;
    logo.ProcessImage(600, 1800);
    EXPECT_DOUBLE_EQ(logo.LogoRatio, 3);
    expectBox(logo.SetImageProcessed(1560, 240), 1560 + 540 - 180, 240, 360, 1080);
}

TEST(ProcessLogo, WidePictureKeepsItsWidth)
{
    ProcessLogo logo;
    logo.ProcessImage(3000, 1000);
    expectBox(logo.SetImageProcessed(1560, 240), 1560, 240 + 540 - 180, 1080, 360);
}

TEST(ProcessLogo, PictureWithoutSizeEndsTheProgram)
{
    ProcessLogo logo;
    EXPECT_EQ(failureOf([&] { logo.ProcessImage(0, 0); }), err::Overflow);
    EXPECT_EQ(failureOf([&] { logo.ProcessImage(100, 0); }), err::DivisionByZero);
    ProcessLogo unmeasured;
    EXPECT_EQ(failureOf([&] { unmeasured.SetImageProcessed(0, 0); }), err::Overflow);
}

TEST(ProcessLogo, LogoStandsCentredOverTheHeadLabel)
{
    expectBox(PlaceLogoOverHeadLabel(3000, 200, 4000, 1080, 540), 3000 + 2000 - 540, 200, 1080,
              540);
}

TEST(SetDestinationSize, LeadingNumberPlusTheBorder)
{
    const DestinationSize size = SetDestinationSize(u"1960", u" 1470 px");
    EXPECT_DOUBLE_EQ(size.Width, 1962);
    EXPECT_DOUBLE_EQ(size.Height, 1472);
    EXPECT_DOUBLE_EQ(SetDestinationSize(u"abc", u"").Width, 2.0);
    EXPECT_DOUBLE_EQ(SetDestinationSize(u"abc", u"").Height, 2.0);
}

TEST(SetDestinationSize, PointIsTheDecimalSeparatorWhateverTheLocale)
{
    // The suite runs under a French and a Polish locale too, where the
    // desktop writes "12,5": the texts still read with "." only.
    const char* locale = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(locale, nullptr);
    const DestinationSize size = SetDestinationSize(u"12.5", u"12,5");
    EXPECT_DOUBLE_EQ(size.Width, 14.5);
    EXPECT_DOUBLE_EQ(size.Height, 14.0);
}

TEST(AutoResizeLogoBox, WidePictureKeepsTheWidthAndItsProportions)
{
    EXPECT_EQ(AutoResizeLogoBox(4000, 3000, QSize(1960, 500)), QSize(1960, 1470));
    // r exactly 1.05 is wide: 1960 / 1.05 = 1866.67 -> 1867.
    EXPECT_EQ(AutoResizeLogoBox(1050, 1000, QSize(1960, 500)), QSize(1960, 1867));
}

TEST(AutoResizeLogoBox, NarrowPictureTakesItsWidthFromTheHeight)
{
    EXPECT_EQ(AutoResizeLogoBox(800, 800, QSize(1960, 500)), QSize(500, 500));
    EXPECT_EQ(AutoResizeLogoBox(1040, 1000, QSize(1960, 500)), QSize(520, 500));
    EXPECT_EQ(AutoResizeLogoBox(300, 600, QSize(1960, 400)), QSize(200, 400));
}

TEST(AutoResizeLogoBox, NarrowPictureIsNotMadeWiderThanItself)
{
    // 1000 * .5 = 500 is wider than the picture: the picture's own size.
    EXPECT_EQ(AutoResizeLogoBox(300, 600, QSize(1960, 1000)), QSize(300, 600));
}

TEST(AutoResizeLogoBox, PictureWithoutHeightEndsTheProgram)
{
    EXPECT_EQ(failureOf([] { AutoResizeLogoBox(300, 0, QSize(1960, 500)); }), err::DivisionByZero);
}
