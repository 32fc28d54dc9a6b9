// The screen-free part of the busy window and the About window.
//
// frmProcessProgress moves a row of dots on each tick of its timer while a
// long job runs, and is centred on the main window before it is shown;
// frmAbout lays itself out from the sizes of its controls when it loads.
// These rules are kept here as plain functions so that they run without a
// screen. Positions and sizes are in twips (1/1440 inch), the coordinate unit
// of the windows, in which the rounding and the 16-bit overflow of the
// centring are defined.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/Dynamic.h"
#include "shell/model/Twips.h"

#include <QString>

#include <vector>

namespace quenby {

// ---- Busy dots ----

// The text after `current` in the ring " ", ".", "..", "...", "....", " ".
// A text outside the ring is returned unchanged.
QString nextDotText(const QString& current);

// One tick of tmrProgress on the text of lbPoint: the next text of the ring
// while appState().ProcessInProgress is true, the same text otherwise.
QString tmrProgressStep(const QString& lbPointText);

// ---- Window geometry, in twips ----

struct TwipsRect
{
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    double right() const { return left + width; }
    double bottom() const { return top + height; }
    bool operator==(const TwipsRect&) const = default;
};

struct FormPosition
{
    Int16 left = 0;
    Int16 top = 0;
    bool operator==(const FormPosition&) const = default;
};

// The arithmetic of SetPositionForm: where a window of the size of `own`
// goes to be centred on `main` (only the size of `own` counts). Main left and
// top and the four halves are held as 16-bit integers, each half rounded to
// the nearest (halves to even); a value or a sum beyond the 16-bit range
// raises Overflow.
FormPosition centredFormPosition(const TwipsRect& main, const TwipsRect& own);

// ---- About window ----

// The largest element of `values` as a 16-bit integer, rounded halves to
// even. A text element goes through the strict conversion (Type mismatch if
// it is no number); a largest value beyond the 16-bit range raises Overflow,
// and an empty array raises Subscript out of range, as reading its first
// element would.
Int16 largestOf(const std::vector<Dynamic>& values);

struct AboutControls
{
    TwipsRect picLogo;
    TwipsRect lblOrvaneCompany;
    TwipsRect lbAddress;
    TwipsRect lbSoftwareVersion;
    bool operator==(const AboutControls&) const = default;
};

struct AboutLayout
{
    AboutControls controls;
    Int16 width = 0;   // the window's width
    double height = 0; // the window's height
};

// Gap between the stacked controls, and the margin added below the last one
// and beside the widest text.
inline constexpr double AboutGap = 200;
inline constexpr double AboutMargin = 567;

// The load step's layout: the three texts stacked under the picture at their
// own left, the window as wide as its widest control needs, and the picture
// centred in that width.
AboutLayout layoutAbout(const AboutControls& designed);

} // namespace quenby
