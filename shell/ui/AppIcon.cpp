#include "shell/ui/AppIcon.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

namespace quenby {

namespace {

const QColor Ink(0x1f, 0x4e, 0x79);
const QColor Accent(0xe0, 0x8a, 0x1e);

void drawRings(QPainter& p, const QRectF& box)
{
    const qreal d = box.height() * 0.62;
    const qreal pen = qMax<qreal>(1.0, box.height() * 0.09);
    const qreal cy = box.center().y() - d / 2;
    const qreal overlap = d * 0.38;
    const qreal left = box.center().x() - (2 * d - overlap) / 2;
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(Ink, pen));
    p.drawEllipse(QRectF(left, cy, d, d));
    p.setPen(QPen(Accent, pen));
    p.drawEllipse(QRectF(left + d - overlap, cy, d, d));
}

QPixmap iconPixmap(int size)
{
    QPixmap pm(size, size);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xf4, 0xf6, 0xf8));
    p.drawRoundedRect(QRectF(0.5, 0.5, size - 1, size - 1), size * 0.18, size * 0.18);
    drawRings(p, QRectF(0, 0, size, size));
    return pm;
}

} // namespace

QIcon applicationIcon()
{
    static const QIcon icon = [] {
        QIcon i;
        for (int size : {16, 24, 32, 48, 64, 128, 256})
            i.addPixmap(iconPixmap(size));
        return i;
    }();
    return icon;
}

QPixmap productLogo(int width)
{
    const int height = width * 2 / 3;
    QPixmap pm(width, height);
    pm.fill(Qt::white);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    drawRings(p, QRectF(0, 0, width, height * 0.72));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(qMax(8, height / 6));
    font.setBold(true);
    p.setFont(font);
    p.setPen(Ink);
    p.drawText(QRectF(0, height * 0.70, width, height * 0.28), Qt::AlignCenter,
               QStringLiteral("QUENBY"));
    return pm;
}

} // namespace quenby
