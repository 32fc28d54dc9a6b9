#include "logo/model/ProcessLogo.h"

#include "shell/model/NumberText.h"

#include <algorithm>

namespace quenby {

void ProcessLogo::ProcessImage(double width, double height)
{
    Margin = 2500;
    LogoHeight = height;
    LogoWidth = width;
    LogoRatio =
        LogoHeight > LogoWidth ? divide(LogoHeight, LogoWidth) : divide(LogoWidth, LogoHeight);
}

TwipsRect ProcessLogo::SetImageProcessed(double left, double top)
{
    LogoBoxRatio = std::max(LogoHeight, LogoWidth) / LogoBoxSide;
    LogoShownWidth = divide(LogoWidth, LogoBoxRatio);
    LogoShownHeight = divide(LogoHeight, LogoBoxRatio);
    const double half = LogoBoxSide / 2;
    Image1 = {left + half - LogoShownWidth / 2, top + half - LogoShownHeight / 2, LogoShownWidth,
              LogoShownHeight};
    return Image1;
}

TwipsRect PlaceLogoOverHeadLabel(double labelLeft, double labelTop, double labelWidth,
                                 double shownWidth, double shownHeight)
{
    return {labelLeft + labelWidth / 2 - shownWidth / 2, labelTop, shownWidth, shownHeight};
}

DestinationSize SetDestinationSize(QStringView txtWidth, QStringView txtHeight)
{
    return {leadingNumber(txtWidth) + 2.0, leadingNumber(txtHeight) + 2.0};
}

} // namespace quenby
