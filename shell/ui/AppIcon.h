// The program's own pictures, drawn in code: the window icon of every window
// and the product logo of the About window. Both show the symbol of a
// two-winding transformer: two overlapping rings.
#pragma once

#include <QIcon>
#include <QPixmap>

namespace quenby {

QIcon applicationIcon();
// The product logo, `width` pixels wide, with the name under the symbol.
QPixmap productLogo(int width = 220);
// Its size, without drawing it.
QSize productLogoSize(int width = 220);

} // namespace quenby
