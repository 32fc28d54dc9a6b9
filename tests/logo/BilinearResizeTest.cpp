#include "logo/model/BilinearResize.h"
#include "logo/model/ColourChannels.h"

#include <gtest/gtest.h>

#include <QImage>

#include <initializer_list>

using namespace quenby;

namespace {

// A picture from its rows of QRgb values.
QImage picture(std::initializer_list<std::initializer_list<QRgb>> rows)
{
    const int h = static_cast<int>(rows.size());
    const int w = static_cast<int>(rows.begin()->size());
    QImage image(w, h, QImage::Format_RGB32);
    int y = 0;
    for (const auto& row : rows) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y++));
        int x = 0;
        for (QRgb c : row)
            line[x++] = c;
    }
    return image;
}

QRgb at(const QImage& image, int x, int y)
{
    return image.pixel(x, y) & 0xffffffu;
}

QRgb rgb(int r, int g, int b)
{
    return qRgb(r, g, b) & 0xffffffu;
}

// Row 0 of `image`, pixel by pixel.
void expectRow(const QImage& image, std::initializer_list<QRgb> pixels)
{
    ASSERT_EQ(image.width(), static_cast<int>(pixels.size()));
    int x = 0;
    for (QRgb p : pixels) {
        EXPECT_EQ(at(image, x, 0), p) << "x " << x;
        ++x;
    }
}

// Source (r, g, b):  (10,200,1) (50,100,2)
//                    (90,  0,3) (130,50,4)
QImage twoByTwo()
{
    return picture({{rgb(10, 200, 1), rgb(50, 100, 2)}, {rgb(90, 0, 3), rgb(130, 50, 4)}});
}

} // namespace

TEST(ColourChannels, ChannelsOfTheSystemForm)
{
    EXPECT_EQ(GetRed(0x00332211), 0x11);
    EXPECT_EQ(GetGreen(0x00332211), 0x22);
    EXPECT_EQ(GetBlue(0x00332211), 0x33);
    // Bits above the blue byte do not reach it.
    EXPECT_EQ(GetRed(0x7F123456), 0x56);
    EXPECT_EQ(GetGreen(0x7F123456), 0x34);
    EXPECT_EQ(GetBlue(0x7F123456), 0x12);
}

TEST(ColourChannels, IntegerDivisionTruncatesTowardZero)
{
    // -1 / 256 is 0, not -1: green and blue of -1 are 0.
    EXPECT_EQ(GetRed(-1), 255);
    EXPECT_EQ(GetGreen(-1), 0);
    EXPECT_EQ(GetBlue(-1), 0);
    // -65536 / 65536 is -1, whose low byte is 255.
    EXPECT_EQ(GetRed(-65536), 0);
    EXPECT_EQ(GetGreen(-65536), 0);
    EXPECT_EQ(GetBlue(-65536), 255);
}

TEST(ColourChannels, QtColourToSystemFormAndBack)
{
    EXPECT_EQ(systemColour(qRgb(0x11, 0x22, 0x33)), 0x00332211);
    EXPECT_EQ(fromSystemColour(0x00332211), qRgb(0x11, 0x22, 0x33));
}

TEST(ResizeImageBilinear, TwoByTwoDoubledHalvesRoundToEven)
{
    // The two-by-two source above. Steps (2-1)/2 = 0.5 each way. Target 0: s 0, i 0, f 0. Target 1:
    // s 0.5 rounds half to even to i 0, f 0.5.
    const QImage dst = ResizeImageBilinear(twoByTwo(), 2, 2);
    ASSERT_EQ(dst.size(), QSize(2, 2));
    EXPECT_EQ(dst.format(), QImage::Format_RGB32);
    EXPECT_EQ(at(dst, 0, 0), rgb(10, 200, 1));
    // (1,0): fx .5, fy 0: r .5*10+.5*50 = 30, g 150, b 1.5 -> 2 (half to even).
    EXPECT_EQ(at(dst, 1, 0), rgb(30, 150, 2));
    // (0,1): fx 0, fy .5: r .5*10+.5*90 = 50, g 100, b 2.
    EXPECT_EQ(at(dst, 0, 1), rgb(50, 100, 2));
    // (1,1): r top 30, bottom 110 -> 70; g top 150, bottom 25 -> 87.5 -> 88;
    //        b top 1.5, bottom 3.5 -> 2.5 -> 2.
    EXPECT_EQ(at(dst, 1, 1), rgb(70, 88, 2));
}

TEST(ResizeImageBilinear, RightBorderIsBlackAndANegativeFractionOvershoots)
{
    // One row (r, g, b): (100,0,255) (240,8,0). Step x (2-1)/4 = 0.25; step
    // y (2-1)/1 = 1, only row 0 (sy 0, fy 0).
    //  x 0: s 0     -> i 0, f 0
    //  x 1: s .25   -> i 0, f .25
    //  x 2: s .5    -> i 0, f .5 (half to even)
    //  x 3: s .75   -> i 1, f -.25, and i+1 = 2 = SW reads the black border.
    const QImage src = picture({{rgb(100, 0, 255), rgb(240, 8, 0)}, //
                                {rgb(1, 1, 1), rgb(1, 1, 1)}});
    // x 1: r .75*100+.25*240 = 135; g 2; b 191.25 -> 191.
    // x 2: r 170; g 4; b 127.5 -> 128 (half to even).
    // x 3: r 1.25*240 - .25*0 = 300 -> 255; g 1.25*8 = 10; b 0.
    const QImage dst = ResizeImageBilinear(src, 4, 1);
    ASSERT_EQ(dst.height(), 1);
    expectRow(dst, {rgb(100, 0, 255), rgb(135, 2, 191), rgb(170, 4, 128), rgb(255, 10, 0)});
}

TEST(ResizeImageBilinear, NegativeFractionUndershootClampsToZero)
{
    // Red row 0 20 0 255, step (4-1)/4 = .75:
    //  x 1: s .75  -> i 1, f -.25: 1.25*20 - .25*0 = 25
    //  x 2: s 1.5  -> i 2 (half to even), f -.5: 1.5*0 - .5*255 = -127.5 -> 0
    //  x 3: s 2.25 -> i 2, f .25: .75*0 + .25*255 = 63.75 -> 64
    const QImage src = picture({{rgb(0, 0, 0), rgb(20, 0, 0), rgb(0, 0, 0), rgb(255, 0, 0)}});
    expectRow(ResizeImageBilinear(src, 4, 1),
              {rgb(0, 0, 0), rgb(25, 0, 0), rgb(0, 0, 0), rgb(64, 0, 0)});
}

TEST(ResizeImageBilinear, ThreeByThreeReadsTheBlackBorderBothWays)
{
    // Red:  10 20 30      green 200 everywhere, blue 0.
    //       40 50 60
    //       70 80 90
    // Steps (3-1)/4 = .5: targets 0..3 map to (i, f) = (0,0) (0,.5) (1,0)
    // (2,-.5); at 3, i+1 = 3 is the black border column or row.
    const QRgb g = 200 << 8;
    const QImage src = picture({{10u << 16 | g, 20u << 16 | g, 30u << 16 | g},
                                {40u << 16 | g, 50u << 16 | g, 60u << 16 | g},
                                {70u << 16 | g, 80u << 16 | g, 90u << 16 | g}});
    const QImage dst = ResizeImageBilinear(src, 4, 4);
    ASSERT_EQ(dst.size(), QSize(4, 4));
    // (1,1): top .5*10+.5*20 = 15, bottom .5*40+.5*50 = 45, value 30.
    EXPECT_EQ(at(dst, 1, 1), rgb(30, 200, 0));
    // (2,2): the source pixel (1,1).
    EXPECT_EQ(at(dst, 2, 2), rgb(50, 200, 0));
    // (3,0): 1.5*30 - .5*0 = 45; green 1.5*200 = 300 -> 255.
    EXPECT_EQ(at(dst, 3, 0), rgb(45, 255, 0));
    // (0,3): top 70, bottom is the border row 0: 1.5*70 = 105; green 255.
    EXPECT_EQ(at(dst, 0, 3), rgb(105, 255, 0));
    // (3,1): top 1.5*30 = 45, bottom 1.5*60 = 90, fy .5: 67.5 -> 68.
    EXPECT_EQ(at(dst, 3, 1), rgb(68, 255, 0));
    // (1,3): top .5*70+.5*80 = 75, bottom 0, fy -.5: 112.5 -> 112.
    EXPECT_EQ(at(dst, 1, 3), rgb(112, 255, 0));
    // (3,3): top 1.5*90 = 135, bottom 0, value 1.5*135 = 202.5 -> 202;
    //        green 1.5*1.5*200 = 450 -> 255.
    EXPECT_EQ(at(dst, 3, 3), rgb(202, 255, 0));
    // (2,1): fx 0, fy .5 at column 1: .5*20+.5*50 = 35.
    EXPECT_EQ(at(dst, 2, 1), rgb(35, 200, 0));
}

TEST(ResizeImageBilinear, StepDividesByTheTargetSizeInSinglePrecision)
{
    // Red row 0 90 180 to 3 wide: step 2/3 in single precision is
    // 0.666666686...; x 1: s .6666667 -> i 1, f -.3333333:
    // 1.3333333*90 - .3333333*180 = 60; x 2: s 1.3333334 -> i 1, f .3333334:
    // .6666666*90 + .3333334*180 = 120. A divisor of DW - 1 would give 90, 180.
    const QImage src = picture({{rgb(0, 0, 0), rgb(90, 0, 0), rgb(180, 0, 0)},
                                {rgb(9, 9, 9), rgb(9, 9, 9), rgb(9, 9, 9)},
                                {rgb(9, 9, 9), rgb(9, 9, 9), rgb(9, 9, 9)}});
    const QImage dst = ResizeImageBilinear(src, 3, 1);
    ASSERT_EQ(dst.height(), 1);
    expectRow(dst, {rgb(0, 0, 0), rgb(60, 0, 0), rgb(120, 0, 0)});
}

TEST(ResizeImageBilinear, OtherFormatsAreReadAsOpaqueRgb)
{
    const QImage src = twoByTwo().convertToFormat(QImage::Format_RGB888);
    const QImage dst = ResizeImageBilinear(src, 2, 2);
    EXPECT_EQ(at(dst, 1, 1), rgb(70, 88, 2));
    EXPECT_EQ(dst, ResizeImageBilinear(twoByTwo(), 2, 2));
}

TEST(ResizeImageBilinear, NoTargetGivesANullImage)
{
    const QImage src = picture({{rgb(1, 2, 3)}});
    EXPECT_TRUE(ResizeImageBilinear(src, 0, 5).isNull());
    EXPECT_TRUE(ResizeImageBilinear(src, 5, -1).isNull());
    EXPECT_TRUE(ResizeImageBilinear(QImage(), 5, 5).isNull());
    // A one-pixel source: step 0, f 0, the border never weighs.
    const QImage one = ResizeImageBilinear(src, 3, 2);
    EXPECT_EQ(at(one, 2, 1), rgb(1, 2, 3));
}
