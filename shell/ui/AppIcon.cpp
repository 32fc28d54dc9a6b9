#include "shell/ui/AppIcon.h"

#include <QFont>
#include <QIconEngine>
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

// The icon drawn at the size asked for, when it is asked for: a window's icon
// costs nothing until the window reaches the screen.
class DrawnIconEngine final : public QIconEngine
{
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override
    {
        painter->drawPixmap(rect, pixmap(rect.size(), QIcon::Normal, QIcon::Off));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override
    {
        return iconPixmap(qMax(1, qMin(size.width(), size.height())));
    }
    QIconEngine* clone() const override { return new DrawnIconEngine; }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        // The sizes a window manager shows; larger ones are drawn on request.
        return {QSize(16, 16), QSize(24, 24), QSize(32, 32), QSize(48, 48), QSize(64, 64)};
    }
};

} // namespace

QIcon applicationIcon()
{
    return QIcon(new DrawnIconEngine);
}

QSize productLogoSize(int width)
{
    return {width, width * 2 / 3};
}

QPixmap productLogo(int width)
{
    QPixmap pm(productLogoSize(width));
    const int height = pm.height();
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
