#include "kvx/ui/KvxKneeChart.h"

#include <QChart>
#include <QChartView>
#include <QLegend>
#include <QLegendMarker>
#include <QLineSeries>
#include <QLogValueAxis>
#include <QPen>
#include <QScatterSeries>

namespace quenby {

namespace {

// Ten colours that stay apart from each other on white paper and in a
// grey-scale print-out, in plot order.
constexpr std::array<QRgb, KvxKneeChart::PlotCount> PlotColours = {
    0x1f4e9c, 0xc62828, 0x2e7d32, 0xef6c00, 0x6a1b9a,
    0x00838f, 0x8d6e63, 0xad1457, 0x827717, 0x37474f,
};

QLogValueAxis* makeLogAxis(const QString& caption)
{
    auto* axis = new QLogValueAxis;
    axis->setBase(10.0);
    axis->setRange(KvxKneeChart::AxisMin, KvxKneeChart::AxisMax);
    axis->setLabelFormat(QStringLiteral("%g"));
    axis->setMinorTickCount(8); // 2 to 9 within each decade
    axis->setTitleText(caption);
    axis->setGridLineColor(QColor(0xb0, 0xb0, 0xb0));
    axis->setMinorGridLineColor(QColor(0xe4, 0xe4, 0xe4));
    axis->setLinePenColor(Qt::black);
    axis->setLabelsColor(Qt::black);
    axis->setTitleBrush(Qt::black);
    return axis;
}

} // namespace

QString kvxPlotName(int n)
{
    return QStringLiteral("Plot-%1").arg(n);
}

QString kvxCursorName(int n)
{
    return QStringLiteral("Cursor-%1").arg(n);
}

KvxKneeChart makeKvxKneeChart(QWidget* parent)
{
    KvxKneeChart graph;
    graph.view = new QChartView(parent);
    graph.view->setObjectName(QStringLiteral("CWGraph1"));
    graph.view->setRenderHint(QPainter::Antialiasing);
    graph.view->setFrameShape(QFrame::NoFrame);

    QChart* chart = graph.view->chart();
    chart->setBackgroundRoundness(0);
    chart->setBackgroundBrush(Qt::white);
    chart->setMargins(QMargins(4, 4, 4, 4));

    graph.axisX = makeLogAxis(QStringLiteral("Current (mA)"));
    graph.axisY = makeLogAxis(QStringLiteral("Voltage (Volts)"));
    chart->addAxis(graph.axisX, Qt::AlignBottom);
    chart->addAxis(graph.axisY, Qt::AlignLeft);

    for (int i = 0; i < KvxKneeChart::PlotCount; ++i) {
        const QColor colour = QColor::fromRgb(PlotColours[static_cast<std::size_t>(i)]);

        auto* plot = new QLineSeries(chart);
        plot->setName(kvxPlotName(i + 1));
        plot->setObjectName(plot->name());
        QPen pen(colour);
        pen.setWidthF(1.5);
        plot->setPen(pen);
        chart->addSeries(plot);
        plot->attachAxis(graph.axisX);
        plot->attachAxis(graph.axisY);
        graph.plots[static_cast<std::size_t>(i)] = plot;

        // A cursor shares its colour with the plot of the same number, which
        // is its tap's plot when no earlier tap is missing.
        auto* cursor = new QScatterSeries(chart);
        cursor->setName(kvxCursorName(i + 1));
        cursor->setObjectName(cursor->name());
        cursor->setMarkerShape(QScatterSeries::MarkerShapeRectangle);
        cursor->setMarkerSize(9.0);
        cursor->setColor(colour);
        cursor->setBorderColor(Qt::black);
        chart->addSeries(cursor);
        cursor->attachAxis(graph.axisX);
        cursor->attachAxis(graph.axisY);
        cursor->setVisible(false);
        graph.cursors[static_cast<std::size_t>(i)] = cursor;
    }

    // The legend names the curves; the cursors are marks on them and keep out.
    // The legend shows a marker again whenever its series is shown, so the
    // cursor's markers are hidden anew after each change of its visibility.
    QLegend* legend = chart->legend();
    legend->setAlignment(Qt::AlignBottom);
    legend->setLabelColor(Qt::black);
    for (QScatterSeries* cursor : graph.cursors) {
        const auto hideMarkers = [legend, cursor] {
            for (QLegendMarker* marker : legend->markers(cursor))
                marker->setVisible(false);
        };
        hideMarkers();
        QObject::connect(cursor, &QAbstractSeries::visibleChanged, legend, hideMarkers);
    }
    legend->show();
    return graph;
}

} // namespace quenby
