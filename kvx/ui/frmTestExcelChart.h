// frmTestExcelChart: the window that holds the plotting logic of the report
// graph. No command shows it; its own graph CWGraph1, the buttons cmdPlotData
// and cmdPlotData2 and the position labels lblXPos and lblYPos are kept as a
// development aid and are reached from tests only. The window mirrors the
// chart container frmTestExcelChart() and its labels model; the class takes
// another name than the window's, which the container's accessor holds.
#pragma once

#include "kvx/model/TestExcelChartView.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace quenby {

class KvxKneeChart;

class TestExcelChartWindow final : public QWidget
{
    Q_OBJECT

public:
    explicit TestExcelChartWindow(QWidget* parent = nullptr);

    KvxKneeChart& CWGraph1() const { return *m_graph; }
    QLabel* lblXPos() const { return m_x; }
    QLabel* lblYPos() const { return m_y; }
    QPushButton* cmdPlotData() const { return m_plot; }
    QPushButton* cmdPlotData2() const { return m_plot2; }
    const TestExcelChartLabels& labels() const { return m_labels; }

    // The graph and both labels from the models.
    void mirrorModel();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    TestExcelChartLabels m_labels;
    KvxKneeChart* m_graph = nullptr;
    QLabel* m_x = nullptr;
    QLabel* m_y = nullptr;
    QPushButton* m_plot = nullptr;
    QPushButton* m_plot2 = nullptr;
};

} // namespace quenby
