#include "kvx/ui/frmTestExcelChart.h"

#include "kvx/ui/KvxKneeChart.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

namespace quenby {

TestExcelChartWindow::TestExcelChartWindow(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmTestExcelChart"));
    setWindowTitle(QStringLiteral("Test chart"));
    m_graph = new KvxKneeChart(this);
    m_graph->setObjectName(QStringLiteral("CWGraph1"));
    m_x = new QLabel(this);
    m_x->setObjectName(QStringLiteral("lblXPos"));
    m_y = new QLabel(this);
    m_y->setObjectName(QStringLiteral("lblYPos"));
    m_plot = new QPushButton(QStringLiteral("Plot"), this);
    m_plot->setObjectName(QStringLiteral("cmdPlotData"));
    m_plot2 = new QPushButton(QStringLiteral("Plot 2"), this);
    m_plot2->setObjectName(QStringLiteral("cmdPlotData2"));

    auto* layout = new QGridLayout(this);
    layout->addWidget(m_graph, 0, 0, 1, 4);
    layout->addWidget(m_x, 1, 0);
    layout->addWidget(m_y, 1, 1);
    layout->addWidget(m_plot, 1, 2);
    layout->addWidget(m_plot2, 1, 3);
    resize(640, 480);

    connect(m_plot, &QPushButton::clicked, this, [this] {
        frmTestExcelChart().cmdPlotData_Click();
        mirrorModel();
    });
    connect(m_plot2, &QPushButton::clicked, this, [this] {
        TestExcelChart_cmdPlotData2_Click(frmTestExcelChart(), kvxReportGraph());
        mirrorModel();
    });
    connect(m_graph, &KvxKneeChart::cursorDragged, this, [this](int, double x, double y) {
        TestExcelChart_CWGraph1_CursorChange(m_labels, x, y);
        mirrorModel();
    });
    // The graph tells no mouse moves of its own: they are watched here.
    m_graph->viewport()->setMouseTracking(true);
    m_graph->viewport()->installEventFilter(this);
    mirrorModel();
}

bool TestExcelChartWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_graph->viewport() && event->type() == QEvent::MouseMove) {
        const QPointF value =
            m_graph->valueAt(static_cast<QMouseEvent*>(event)->position().toPoint());
        TestExcelChart_CWGraph1_MouseMove(m_labels, value.x(), value.y());
        mirrorModel();
    }
    return QWidget::eventFilter(watched, event);
}

void TestExcelChartWindow::mirrorModel()
{
    m_graph->mirror(frmTestExcelChart().CWGraph1, {});
    m_x->setText(m_labels.lblXPos);
    m_y->setText(m_labels.lblYPos);
}

} // namespace quenby
