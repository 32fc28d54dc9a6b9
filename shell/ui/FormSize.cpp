#include "shell/ui/FormSize.h"

#include "shell/model/Twips.h"

#include <QWidget>

namespace quenby {

void SetFormClientSize(QWidget& window, float widthInches, float heightInches)
{
    const QRect client = window.contentsRect();
    const int frameWidth = window.width() - client.width();
    const int frameHeight = window.height() - client.height();
    window.resize(
        twipsToPixels(double(widthInches) * TwipsPerInch, window.logicalDpiX()) + frameWidth,
        twipsToPixels(double(heightInches) * TwipsPerInch, window.logicalDpiY()) + frameHeight);
}

} // namespace quenby
