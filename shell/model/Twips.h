// Window and page geometry is kept in twips, 1440 to the inch, as the
// instruments' reports were laid out; the screen counts pixels. One
// conversion each way, for every window of the program.
#pragma once

namespace quenby {

inline constexpr double TwipsPerInch = 1440;
// The logical resolution the report pages are drawn at: 15 twips a pixel.
inline constexpr double ReportPageDpi = 96;

// Pixels to twips at a screen's logical dots per inch.
inline double pixelsToTwips(double pixels, double dpi)
{
    return pixels * TwipsPerInch / dpi;
}

// Twips to whole pixels, rounded to the nearest, halves away from zero.
int twipsToPixels(double twips, double dpi);

// Twips of a report page to its pixels.
inline int pixelsOfTwips(double twips)
{
    return twipsToPixels(twips, ReportPageDpi);
}

} // namespace quenby
