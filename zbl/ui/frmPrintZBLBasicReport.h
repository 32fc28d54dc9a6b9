// The print-out of the ZBL basic report: a page that is never shown, sized to
// the paper, filled one page at a time from the report window and printed as
// a picture. The head of the test, frHeaderPrint, stands on the first page
// only; the table frame frDataPrint carries 33 rows a page; frmPageNumber
// holds the page number.
#pragma once

#include "zbl/model/ZblPrintReport.h"
#include "zbl/ui/ZblPageParts.h"

#include <QWidget>

#include <array>

class QLabel;

namespace quenby {

class frmPrintZBLBasicReport final : public QWidget
{
    Q_OBJECT

public:
    // The logo's box and the head label it centres on.
    LogoTarget& logoTarget() { return m_pageLogo; }
    // The window if it has been made, else none.
    static frmPrintZBLBasicReport* existing();
    // Rows of the table on one sheet.
    static constexpr int RowsPerPage = 33;

    // The one instance, made on first touch; it stays hidden.
    static frmPrintZBLBasicReport& instance();

    void FillTextsPrintZblBasicReport();

    // The print cell of `column` in row `row` (0 to 32) of the page.
    QLabel* cell(ZblColumn column, int row) const;

    // Takes the print-out's state onto the controls.
    void mirror(const ZblPrintReportModel& model);

private:
    frmPrintZBLBasicReport();
    void buildHeader(QWidget* frame);
    void buildTable(QWidget* frame);

    std::array<std::array<QLabel*, RowsPerPage>, ZblColumnCount> m_cells{};
    QWidget* m_header = nullptr;
    QWidget* m_data = nullptr;
    QWidget* m_pageNumber = nullptr;
    QLabel* m_page = nullptr;
    std::array<QLabel*, 2> m_channelHeads{};
    std::array<QLabel*, ZblColumnCount - 1> m_columnHeads{};
    QLabel* m_totalTimeBorder = nullptr;
    QLabel* m_totalTime = nullptr;
    DesignedLogo m_pageLogo;
};

} // namespace quenby
