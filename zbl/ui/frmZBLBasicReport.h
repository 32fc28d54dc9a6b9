// The ZBL basic report window: the head of one ZBL test and its table of up
// to 122 rows, with tap, winding, resistance and compensated resistance of
// channels A and B side by side and the total time of each row. The whole
// page, head and table, lies on the frame frResistance, which VScroll1 moves.
// Once a test is filled in, the cells are the working copy that the V graph,
// the save and the print read; so every cell exists at all times, and rows
// not in use are only hidden.
#pragma once

#include "zbl/ui/ZblPageParts.h"

#include <QMainWindow>

#include <array>

class QLineEdit;

namespace quenby {

class frmZBLBasicReport final : public QMainWindow
{
    Q_OBJECT

public:
    // Rows of the table: the most a ZBL test holds.
    static constexpr int RowCount = 122;

    // The one instance, made on first touch; closing only hides it.
    static frmZBLBasicReport& instance();

    void FillTextsZblBasicReport();

    // The text box of `column` in row `row` (0 to 121).
    QLineEdit* cell(ZblColumn column, int row) const;

private:
    frmZBLBasicReport();
    void buildMenu();
    void buildPage(QWidget* viewport);
    void buildHead(QWidget* page);
    void buildTable(QWidget* page, int top);

    std::array<std::array<QLineEdit*, RowCount>, ZblColumnCount> m_cells{};
};

} // namespace quenby
