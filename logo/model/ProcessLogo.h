// What frmProcessLogo measures of the logo and where it places it.
//
// The window is never shown in normal use: it is a container of operations.
// Its members are kept here under their names; sizes are in window units
// (twips) unless a routine says pixels.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/ProgressAbout.h"

#include <QStringView>

namespace quenby {

// The logo is fitted into a square box of this side on each report.
inline constexpr double LogoBoxSide = 1080;

struct ProcessLogo
{
    Int16 Margin = 500;        //!< margin of its own preview: 500 at load, 2500 once measured
    double LogoHeight = 0;     //!< height of the source picture, in its own units
    double LogoWidth = 0;      //!< width of the source picture
    double LogoRatio = 0;      //!< the larger side over the smaller, at least 1
    double LogoBoxRatio = 0;   //!< the larger side over LogoBoxSide
    double LogoShownWidth = 0; //!< the size of the logo in a report
    double LogoShownHeight = 0;
    TwipsRect Image1; //!< the logo centred in its square box

    // Measures the source picture. A picture with a zero side ends the
    // program with the platform's division failure.
    void ProcessImage(double width, double height);

    // Fits the measured logo in the square box whose top left corner is
    // (left, top): the longer side becomes LogoBoxSide and Image1 stands
    // centred in the box. Returns Image1.
    TwipsRect SetImageProcessed(double left, double top);
};

// The place of the logo on a report window: centred over the window's head
// label, at the height of the label's top, with the shown size.
TwipsRect PlaceLogoOverHeadLabel(double labelLeft, double labelTop, double labelWidth,
                                 double shownWidth, double shownHeight);

// The size of dstPicture from the texts of txtWidth and txtHeight: the
// leading number of each plus 2.0, the border of the box ("abc" gives 2.0).
struct DestinationSize
{
    double Width = 0;
    double Height = 0;
};
DestinationSize SetDestinationSize(QStringView txtWidth, QStringView txtHeight);

} // namespace quenby
