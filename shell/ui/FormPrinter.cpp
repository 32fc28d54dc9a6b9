#include "shell/ui/FormPrinter.h"

#include "shell/ui/PrintPages.h"

#include <QChartView>
#include <QLayout>
#include <QPainter>
#include <QPicture>
#include <QRegion>
#include <QWidget>

#include <algorithm>
#include <vector>

namespace quenby {

namespace {

// The charts of the form that show when the form shows.
std::vector<QChartView*> shownCharts(QWidget& form)
{
    std::vector<QChartView*> charts;
    for (QChartView* chart : form.findChildren<QChartView*>()) {
        if (chart->isVisibleTo(&form))
            charts.push_back(chart);
    }
    return charts;
}

} // namespace

void paintForm(QWidget& form, QPainter& painter, const QRectF& area)
{
    form.ensurePolished();
    if (QLayout* layout = form.layout())
        layout->activate();
    if (form.width() <= 0 || form.height() <= 0 || area.isEmpty())
        return;

    // A widget rendered straight onto a printer goes through a bitmap of the
    // whole page. Recorded into a picture it keeps its drawing commands,
    // which the printer then gets as they are: texts, lines and images.
    // Charts are left out of the recording and drawn by their own views,
    // which draw their scenes as paths.
    const std::vector<QChartView*> charts = shownCharts(form);
    QRegion region(form.rect());
    for (QChartView* chart : charts)
        region -= QRect(chart->mapTo(&form, QPoint(0, 0)), chart->size());
    QPicture picture;
    {
        QPainter recorder(&picture);
        form.render(&recorder, QPoint(0, 0), region,
                    QWidget::DrawWindowBackground | QWidget::DrawChildren);
    }

    const double scale = std::min(area.width() / form.width(), area.height() / form.height());
    painter.save();
    painter.translate(area.topLeft());
    painter.scale(scale, scale);
    // A picture plays itself at the size it was recorded in inches, grown by
    // the ratio of the device's resolution to its own; the form's scale is
    // already in the painter.
    if (const QPaintDevice* device = painter.device()) {
        painter.save();
        painter.scale(double(picture.logicalDpiX()) / device->logicalDpiX(),
                      double(picture.logicalDpiY()) / device->logicalDpiY());
        painter.drawPicture(0, 0, picture);
        painter.restore();
    }
    // The render above has laid out the views: their viewports stand where
    // the screen would show them.
    for (QChartView* chart : charts) {
        QWidget* viewport = chart->viewport();
        const QRectF target(viewport->mapTo(&form, QPoint(0, 0)), viewport->size());
        chart->render(&painter, target, viewport->rect(), Qt::IgnoreAspectRatio);
    }
    painter.restore();
}

void printForm(QWidget& form, PrintPages& pages)
{
    paintForm(form, pages.painter(), pages.printableRect());
}

} // namespace quenby
