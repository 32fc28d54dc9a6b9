#include "logo/model/AutoResizeLogo.h"

#include "shell/model/Checked.h"

#include <algorithm>

namespace quenby {

namespace {
int side(double value)
{
    return std::max<Int32>(1, toInt32(value));
}
} // namespace

QSize AutoResizeLogoBox(int pictureWidth, int pictureHeight, QSize box)
{
    const double r = divide(pictureWidth, pictureHeight);
    if (r < 1.05) {
        const double width = box.height() * r;
        if (width > pictureWidth)
            return {std::max(1, pictureWidth), std::max(1, pictureHeight)};
        return {side(width), std::max(1, box.height())};
    }
    return {std::max(1, box.width()), side(box.width() / r)};
}

} // namespace quenby
