// The ZBL basic report window: the head of one ZBL test and its table of up
// to 122 rows, with tap, winding, resistance and compensated resistance of
// channels A and B side by side and the total time of each row. The whole
// page, head and table, lies on the frame frResistance, which VScroll1 moves.
// Once a test is filled in, the cells are the working copy that the V graph,
// the save and the print read; so every cell exists at all times, and rows
// not in use are only hidden.
//
// Everything the window shows is held by zblBasicReport(), and the window
// mirrors it; what the operator types into the head and the cells goes back
// into the model. Commands run the report's logic (ZblBasicReportView.h) and
// mirror the model again.
#pragma once

#include "shell/ui/MainWindowOwner.h"
#include "zbl/model/ZblPrintReport.h"
#include "zbl/model/ZblReportWindow.h"
#include "zbl/ui/ZblPageParts.h"

#include "localisation/ui/WindowTexts.h"
#include "report/ui/ReportWindow.h"

#include <QMainWindow>

#include <array>
#include <vector>

class QComboBox;
class QEventLoop;
class QFrame;
class QLineEdit;
class QScrollBar;

namespace quenby {

class frmZBLBasicReport final : public ReportWindow, public ZblReportWindow, public KeptControlTexts
{
    Q_OBJECT

public:
    // Rows of the table: the most a ZBL test holds.
    static constexpr int RowCount = 122;

    // The one instance, made on first touch; closing only hides it.
    static frmZBLBasicReport& instance();

    // Puts the language texts on the window; loads it first.
    void FillTextsZblBasicReport();

    // The text box of `column` in row `row` (0 to 121). This and the other
    // controls of the page make the page if need be.
    QLineEdit* cell(ZblColumn column, int row) const;
    QComboBox* cbCompensation() const;
    QScrollBar* VScroll1() const { return m_scroll; }
    QFrame* frResistance() const;

    // Copies the whole report model into the controls: head, cells, row
    // visibility, compensation line, menu entries, scroll bar and the page's
    // place.
    void mirrorModel() override;

    // What the report's model asks of the window.
    void fillReportTexts() override;
    void mirrorReport() override { mirrorModel(); }
    void bringUpReport() override { bringUp(&mainWindow()); }
    void hideReport() override { hide(); }
    void loadLogo(const QString& path, double left, double top) override;

    // The logo's box and the head label it centres on.
    LogoTarget& logoTarget() { return m_pageLogo; }
    // The window if it has been made, else none.
    static frmZBLBasicReport* existing();

    // mnuBasicReport: the report on paper, through the printer dialog.
    void mnuBasicReport_Click();
    // The texts of the table's heads as the report shows them.
    ZblColumnHeadTexts columnHeadTexts() const;

protected:
    // The page (head, table heads and the 1,098 boxes of the rows) is what
    // the window costs to make, and the main window's first paint needs none
    // of it: it is made when first asked for, when the window is shown, or
    // when the program is idle after start-up (makeControls). Until then the
    // window keeps the language's texts for it, and the page then shows them
    // and what the model holds.
    void buildControls() override;
    void closeEvent(QCloseEvent* event) override;
    // The window's load runs once, on the first fill of its texts or the
    // first bring-up, whichever comes first, as the language needs to be
    // there.
    void loadModel() override;
    void setShown(bool shown) override;
    void compensationPicked(int index, const QString& text) override;

private:
    frmZBLBasicReport();
    void connectEvents();
    // The events of the page's controls, once it is made.
    void connectPage();
    // mnuVGraphA and mnuVGraphB: the graph of one channel over the report.
    void openVGraph(const QString& letter, const QString& channelHead);
    void buildMenu();
    void buildPage(QWidget* viewport);
    void buildHead(QWidget* page);
    void buildTable(QWidget* page, int top);
    // The texts of a language may need more room than the designed ones: the
    // title and the boxes of the table take a smaller font where they must,
    // the captions of the head a second line, and the table moves down
    // under the head.
    void fitPageTexts();
    void fitCellText(QLineEdit& box);

    std::array<std::array<QLineEdit*, RowCount>, ZblColumnCount> m_cells{};
    QFrame* m_page = nullptr;
    QWidget* m_head = nullptr;
    std::vector<QWidget*> m_tableParts; // everything of the page under the head
    int m_tableTop = 0;
    QWidget* m_viewport = nullptr;
    QScrollBar* m_scroll = nullptr;
    QComboBox* m_compensation = nullptr;
    DesignedLogo m_pageLogo;
};

} // namespace quenby
