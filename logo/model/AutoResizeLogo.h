// The size rule of frmResizeLogo: the box the picture is stretched into
// before it is saved as the logo bitmap, chosen so that the bitmap keeps the
// picture's proportions.
#pragma once

#include <QSize>

namespace quenby {

// The picture is W x H pixels, the box as the window left it. With r = W / H:
//  - below 1.05, a picture not clearly wider than high, the width follows
//    from the box's height, at most the picture's own width (the height then
//    follows from that width);
//  - otherwise the box keeps its width and the height follows from it.
// Sides are rounded halves to even and are at least one pixel. A picture
// without height ends the program with the platform's division failure.
QSize AutoResizeLogoBox(int pictureWidth, int pictureHeight, QSize box);

} // namespace quenby
