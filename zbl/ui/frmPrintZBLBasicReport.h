// The print-out of the ZBL basic report: a page that is never shown, sized to
// the paper, filled one page at a time from the report window and printed as
// a picture. The head of the test, frHeaderPrint, stands on the first page
// only; the table frame frDataPrint carries 33 rows a page; frmPageNumber
// holds the page number.
#pragma once

#include "zbl/ui/ZblPageParts.h"

#include <QWidget>

#include <array>

class QLabel;

namespace quenby {

class frmPrintZBLBasicReport final : public QWidget
{
    Q_OBJECT

public:
    // Rows of the table on one sheet.
    static constexpr int RowsPerPage = 33;

    // The one instance, made on first touch; it stays hidden.
    static frmPrintZBLBasicReport& instance();

    void FillTextsPrintZblBasicReport();

    // The print cell of `column` in row `row` (0 to 32) of the page.
    QLabel* cell(ZblColumn column, int row) const;

private:
    frmPrintZBLBasicReport();
    void buildHeader(QWidget* frame);
    void buildTable(QWidget* frame);

    std::array<std::array<QLabel*, RowsPerPage>, ZblColumnCount> m_cells{};
};

} // namespace quenby
