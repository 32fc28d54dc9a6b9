#include "shell/model/ProgressAbout.h"

#include "shell/model/AppState.h"
#include "shell/model/RuntimeError.h"

#include <array>
#include <cmath>

namespace quenby {

namespace {
const std::array<QString, 5>& dotRing()
{
    static const std::array<QString, 5> ring = {
        QStringLiteral(" "),   QStringLiteral("."),    QStringLiteral(".."),
        QStringLiteral("..."), QStringLiteral("...."),
    };
    return ring;
}
} // namespace

QString nextDotText(const QString& current)
{
    const auto& ring = dotRing();
    for (std::size_t i = 0; i < ring.size(); ++i) {
        if (ring[i] == current)
            return ring[(i + 1) % ring.size()];
    }
    return current;
}

QString tmrProgressStep(const QString& lbPointText)
{
    // The timer never stops, so this flag alone keeps the dots still between
    // jobs, whether the window is shown or not.
    if (appState().ProcessInProgress == False16)
        return lbPointText;
    return nextDotText(lbPointText);
}

int twipsToPixels(double twips, double dpi)
{
    return static_cast<int>(std::lround(twips * dpi / TwipsPerInch));
}

FormPosition centredFormPosition(const TwipsRect& main, const TwipsRect& own)
{
    const Int16 mainLeft = toInt16(main.left);
    const Int16 mainTop = toInt16(main.top);
    const Int16 mainHalfWidth = toInt16(main.width / 2);
    const Int16 mainHalfHeight = toInt16(main.height / 2);
    const Int16 ownHalfWidth = toInt16(own.width / 2);
    const Int16 ownHalfHeight = toInt16(own.height / 2);
    // Left to right, as written: the first sum may overflow even where the
    // final position would fit.
    FormPosition p;
    p.left = sub16(add16(mainLeft, mainHalfWidth), ownHalfWidth);
    p.top = sub16(add16(mainTop, mainHalfHeight), ownHalfHeight);
    return p;
}

Int16 largestOf(const std::vector<Dynamic>& values)
{
    if (values.empty())
        raiseRuntimeError(err::SubscriptOutOfRange);
    double largest = values.front().toNumber();
    for (const Dynamic& v : values) {
        const double n = v.toNumber();
        if (n > largest)
            largest = n;
    }
    return toInt16(largest);
}

AboutLayout layoutAbout(const AboutControls& designed)
{
    AboutLayout out;
    AboutControls& c = out.controls;
    c = designed;
    c.lblOrvaneCompany.top = c.picLogo.bottom() + AboutGap;
    c.lbAddress.top = c.lblOrvaneCompany.bottom() + AboutGap;
    c.lbSoftwareVersion.top = c.lbAddress.bottom() + AboutGap;
    out.height = c.lbSoftwareVersion.bottom() + AboutGap + AboutMargin;

    // The picture keeps its left margin on both sides; a text keeps half the
    // margin on its right.
    out.width = largestOf({
        Dynamic(2 * c.picLogo.left + c.picLogo.width),
        Dynamic(c.lblOrvaneCompany.right() + AboutMargin / 2),
        Dynamic(c.lbAddress.right() + AboutMargin / 2),
        Dynamic(c.lbSoftwareVersion.right() + AboutMargin / 2),
    });
    c.picLogo.left = (out.width - c.picLogo.width) / 2;
    return out;
}

} // namespace quenby
