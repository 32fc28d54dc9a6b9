// The busy dots, the centring of the busy window and the About layout,
// without a screen.
#include "shell/model/ProgressAbout.h"
#include "shell/model/AppState.h"
#include "shell/model/RuntimeError.h"
#include "tests/support/Failure.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>

using namespace quenby;
using namespace quenby::testing;

namespace {

// Keeps the shared busy flag as a test found it.
class ProcessFlag : public ::testing::Test
{
protected:
    void SetUp() override { m_saved = appState().ProcessInProgress; }
    void TearDown() override { appState().ProcessInProgress = m_saved; }

private:
    Bool16 m_saved = False16;
};

using BusyDots = ProcessFlag;

// A designed About window: every control at left 240, the picture 3600 x
// 2400, the three texts 4800 wide.
AboutControls designedAbout()
{
    AboutControls c;
    c.picLogo = {240, 240, 3600, 2400};
    c.lblOrvaneCompany = {240, 0, 4800, 285};
    c.lbAddress = {240, 0, 4800, 1200};
    c.lbSoftwareVersion = {240, 0, 4800, 285};
    return c;
}

} // namespace

// ---- Busy dots ----

TEST(DotRing, GoesRoundTheFullRing)
{
    EXPECT_EQ(nextDotText(" "), ".");
    EXPECT_EQ(nextDotText("."), "..");
    EXPECT_EQ(nextDotText(".."), "...");
    EXPECT_EQ(nextDotText("..."), "....");
    EXPECT_EQ(nextDotText("...."), " ");

    QString text = "...";
    for (int i = 0; i < 5; ++i)
        text = nextDotText(text);
    EXPECT_EQ(text, "..."); // five steps come back to the start
}

TEST(DotRing, ForeignTextStays)
{
    for (const char* foreign : {"", ".....", "Busy", "  ", " .", ". ", "\u2026"})
        EXPECT_EQ(nextDotText(QString::fromUtf8(foreign)), QString::fromUtf8(foreign)) << foreign;
}

TEST_F(BusyDots, StillWhileNoProcessRuns)
{
    appState().ProcessInProgress = False16;
    for (const char* text : {" ", ".", "..", "...", "....", "Busy"})
        EXPECT_EQ(tmrProgressStep(text), QString(text)) << text;
}

TEST_F(BusyDots, MoveWhileAProcessRuns)
{
    appState().ProcessInProgress = True16;
    EXPECT_EQ(tmrProgressStep("...."), " ");
    EXPECT_EQ(tmrProgressStep(" "), ".");
    EXPECT_EQ(tmrProgressStep("Busy"), "Busy");

    QString text = " ";
    QStringList seen;
    for (int i = 0; i < 6; ++i) {
        text = tmrProgressStep(text);
        seen << text;
    }
    EXPECT_EQ(seen, QStringList({".", "..", "...", "....", " ", "."}));
}

// ---- Centring on the main window ----

TEST(SetPositionForm, CentresOnTheMainWindow)
{
    // Main window at 1500, 1500 twips, 9600 x 6300; own window 4950 x 1800.
    const FormPosition p = centredFormPosition({1500, 1500, 9600, 6300}, {0, 0, 4950, 1800});
    EXPECT_EQ(p.left, 1500 + 4800 - 2475);
    EXPECT_EQ(p.top, 1500 + 3150 - 900);
}

TEST(SetPositionForm, OwnPlaceDoesNotCount)
{
    EXPECT_EQ(centredFormPosition({0, 0, 1000, 1000}, {7000, -300, 400, 200}),
              (FormPosition{300, 400}));
}

TEST(SetPositionForm, HalvesRoundToEven)
{
    // 4805 / 2 = 2402.5 gives 2402; 4815 / 2 = 2407.5 gives 2408.
    EXPECT_EQ(centredFormPosition({0, 0, 4805, 4815}, {0, 0, 0, 0}), (FormPosition{2402, 2408}));
    EXPECT_EQ(centredFormPosition({0, 0, 0, 0}, {0, 0, 4805, 4815}), (FormPosition{-2402, -2408}));
    // Each half is rounded on its own: 2402 + 2408 would differ from the
    // rounded half of the difference.
    EXPECT_EQ(centredFormPosition({0, 0, 4805, 0}, {0, 0, 4815, 0}).left, 2402 - 2408);
}

TEST(SetPositionForm, MainLeftAndTopAreRoundedToo)
{
    EXPECT_EQ(centredFormPosition({10.5, 11.5, 0, 0}, {0, 0, 0, 0}), (FormPosition{10, 12}));
}

TEST(SetPositionForm, NegativePlacesOfAScreenOnTheLeft)
{
    EXPECT_EQ(centredFormPosition({-20000, -3000, 9600, 6300}, {0, 0, 4950, 1800}),
              (FormPosition{-20000 + 4800 - 2475, -3000 + 3150 - 900}));
}

TEST(SetPositionForm, BeyondSixteenBitsOverflows)
{
    // A main left beyond 32767 twips: about 2185 pixels at 96 dpi.
    EXPECT_EQ(failureOf([] {
                  centredFormPosition({33000, 0, 9600, 6300}, {0, 0, 100, 100});
              }),
              err::Overflow);
    EXPECT_EQ(err::Overflow, 6);
    // The sum of left and half width overflows even though subtracting the own
    // half would bring it back in range.
    EXPECT_EQ(failureOf([] {
                  centredFormPosition({30000, 0, 9600, 0}, {0, 0, 9600, 0});
              }),
              err::Overflow);
    EXPECT_EQ(failureOf([] {
                  centredFormPosition({0, 30000, 0, 9600}, {0, 0, 0, 0});
              }),
              err::Overflow);
    // Below the range on the way down.
    EXPECT_EQ(failureOf([] {
                  centredFormPosition({-32000, 0, 0, 0}, {0, 0, 2000, 0});
              }),
              err::Overflow);
    // A half beyond the range on its own.
    EXPECT_EQ(failureOf([] {
                  centredFormPosition({0, 0, 70000, 0}, {0, 0, 0, 0});
              }),
              err::Overflow);
    // The largest place that fits.
    EXPECT_EQ(centredFormPosition({32767, 0, 0, 0}, {0, 0, 0, 0}).left, 32767);
}

TEST(Twips, PixelsAndBack)
{
    EXPECT_DOUBLE_EQ(pixelsToTwips(100, 96), 1500);
    EXPECT_DOUBLE_EQ(pixelsToTwips(100, 120), 1200);
    EXPECT_EQ(twipsToPixels(1500, 96), 100);
    EXPECT_EQ(twipsToPixels(862, 96), 57);   // 57.47
    EXPECT_EQ(twipsToPixels(5324, 96), 355); // 354.93
    EXPECT_EQ(twipsToPixels(-1500, 96), -100);
}

// ---- The largest of an array ----

TEST(LargestOf, PicksTheLargestElement)
{
    EXPECT_EQ(largestOf({Dynamic(3), Dynamic(17), Dynamic(5)}), 17);
    EXPECT_EQ(largestOf({Dynamic(-4), Dynamic(-9)}), -4);
    EXPECT_EQ(largestOf({Dynamic(42)}), 42);
    EXPECT_EQ(largestOf({Dynamic(7), Dynamic(7.4)}), 7);
}

TEST(LargestOf, RoundsHalvesToEven)
{
    EXPECT_EQ(largestOf({Dynamic(5023.5), Dynamic(100)}), 5024);
    EXPECT_EQ(largestOf({Dynamic(5024.5), Dynamic(100)}), 5024);
    EXPECT_EQ(largestOf({Dynamic(2.6), Dynamic(2.5)}), 3);
}

TEST(LargestOf, TextElementsAreNumbers)
{
    EXPECT_EQ(largestOf({Dynamic("12"), Dynamic(9)}), 12);
    EXPECT_EQ(failureOf([] { largestOf({Dynamic(1), Dynamic("wide")}); }), err::TypeMismatch);
}

TEST(LargestOf, FailuresOfTheArray)
{
    EXPECT_EQ(failureOf([] { largestOf({}); }), err::SubscriptOutOfRange);
    EXPECT_EQ(failureOf([] { largestOf({Dynamic(1), Dynamic(32767.5)}); }), err::Overflow);
    // A small element beyond the range is no failure when it is not the largest.
    EXPECT_EQ(largestOf({Dynamic(-40000), Dynamic(1)}), 1);
}

// ---- About layout ----

TEST(AboutLayout, StacksTheTextsUnderThePicture)
{
    const AboutLayout l = layoutAbout(designedAbout());
    const AboutControls& c = l.controls;
    EXPECT_DOUBLE_EQ(c.picLogo.top, 240);
    EXPECT_DOUBLE_EQ(c.lblOrvaneCompany.top, 240 + 2400 + 200);
    EXPECT_DOUBLE_EQ(c.lbAddress.top, 2840 + 285 + 200);
    EXPECT_DOUBLE_EQ(c.lbSoftwareVersion.top, 3325 + 1200 + 200);
    EXPECT_DOUBLE_EQ(l.height, 4725 + 285 + 200 + 567);
    // Lefts and sizes of the texts stay as designed.
    for (const TwipsRect& r : {c.lblOrvaneCompany, c.lbAddress, c.lbSoftwareVersion})
        EXPECT_DOUBLE_EQ(r.left, 240);
    EXPECT_DOUBLE_EQ(c.lbAddress.width, 4800);
    EXPECT_DOUBLE_EQ(c.lbAddress.height, 1200);
    EXPECT_DOUBLE_EQ(c.picLogo.width, 3600);
    EXPECT_DOUBLE_EQ(c.picLogo.height, 2400);
}

TEST(AboutLayout, TheDesignedTopsOfTheTextsDoNotCount)
{
    AboutControls moved = designedAbout();
    moved.lblOrvaneCompany.top = 9999;
    moved.lbAddress.top = -50;
    moved.lbSoftwareVersion.top = 12;
    const AboutLayout a = layoutAbout(designedAbout());
    const AboutLayout b = layoutAbout(moved);
    EXPECT_EQ(a.controls, b.controls);
    EXPECT_DOUBLE_EQ(a.height, b.height);
}

TEST(AboutLayout, WidthFollowsTheWidestText)
{
    // 240 + 4800 + 283.5 = 5323.5, rounded to the even 5324.
    AboutControls c = designedAbout();
    EXPECT_EQ(layoutAbout(c).width, 5324);

    c.lbAddress.width = 7000;
    EXPECT_EQ(layoutAbout(c).width, 7524); // 7523.5 to even
    c.lbAddress.width = 4800;

    c.lblOrvaneCompany.width = 6001;
    EXPECT_EQ(layoutAbout(c).width, 6524); // 6524.5 to even
    c.lblOrvaneCompany.width = 4800;

    c.lbSoftwareVersion.left = 600;
    c.lbSoftwareVersion.width = 5000;
    EXPECT_EQ(layoutAbout(c).width, 5884); // 5883.5 to even
}

TEST(AboutLayout, WidthFollowsAWidePicture)
{
    AboutControls c = designedAbout();
    c.picLogo.width = 6000;
    const AboutLayout l = layoutAbout(c);
    EXPECT_EQ(l.width, 2 * 240 + 6000);
    EXPECT_DOUBLE_EQ(l.controls.picLogo.left, 240); // its margin on both sides
}

TEST(AboutLayout, PictureIsCentred)
{
    for (const double textWidth : {100.0, 4800.0, 7000.0, 9001.0}) {
        AboutControls c = designedAbout();
        c.lbAddress.width = textWidth;
        const AboutLayout l = layoutAbout(c);
        const TwipsRect& pic = l.controls.picLogo;
        EXPECT_DOUBLE_EQ(pic.left + pic.width / 2, l.width / 2.0) << textWidth;
        EXPECT_DOUBLE_EQ(pic.left, (l.width - pic.width) / 2) << textWidth;
    }
}

TEST(AboutLayout, PictureCentredOnAHalfTwip)
{
    // An odd width left over puts the picture on a half twip, not rounded.
    AboutControls c = designedAbout();
    c.picLogo.width = 3601;
    const AboutLayout l = layoutAbout(c);
    EXPECT_EQ(l.width, 5324);
    EXPECT_DOUBLE_EQ(l.controls.picLogo.left, 861.5);
}

TEST(AboutLayout, TooWideAWindowOverflows)
{
    AboutControls c = designedAbout();
    c.lbAddress.width = 33000;
    EXPECT_EQ(failureOf([&] { layoutAbout(c); }), err::Overflow);
}
