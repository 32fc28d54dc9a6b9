// The KVX condensed report window: one KVX test on one tall page, which is at
// once the screen view and the sheet that is printed. From top to bottom: the
// logo and titles, the head of the test (file, date and instrument as read,
// the description as editable text boxes), the table of up to ten tap rows,
// the temperature compensation line, and the excitation graph CWGraph1 with
// its cursor read-out and zoom box. The page is the frame frKVXReport inside
// a scroll area whose bar is VScroll1.
//
// Everything the window shows is held by the report model
// (kvxCondensedReport()) and its graph (kvxReportGraph()), and the window
// mirrors both. Once a test is filled in the cells are the working copy that
// the print-out and the spreadsheet export read, so every cell of the table
// exists at all times and rows not in use are only hidden; what the operator
// types into the head goes back into the model. Commands and graph events run
// the report's logic (KvxReportView.h) and mirror the model again.
#pragma once

#include "report/ui/ReportLogo.h"

#include "kvx/model/KvxReportWindow.h"
#include "kvx/ui/KvxKneeChart.h"
#include "localisation/ui/WindowTexts.h"
#include "shell/ui/MainWindowOwner.h"

#include "report/ui/ReportWindow.h"

#include <QMainWindow>

#include <array>

class QComboBox;
class QEventLoop;
class QFrame;
class QLabel;
class QScrollBar;

namespace quenby {

// The columns of the table, left to right; each is a label array whose
// element 0 is the column head and element n is report row n.
enum class KvxColumn {
    TestNumber,    // lbTestNumber
    Tap,           // lbTapTest
    Ieee30,        // lbIEE30Test
    Ieee45,        // lbIEE45Test
    Iec1050,       // lbAINSIIC1050Test
    NominalRatio,  // lbNPRATIOTest
    MeasuredRatio, // lbMSRATIOTest
    Error,         // lbErrorTest
    Phase,         // lbPhaseTest
    Polarity,      // lbPolarity
    WindingRes,    // lbWindingResTest
    WindingComp,   // lbWindingCompTest
    Insulation,    // lbInsulationResistanceTest
};
inline constexpr int KvxColumnCount = 13;

// The control array of a column: "lbTapTest".
QString kvxColumnArray(KvxColumn column);

class ReportPageArea;
class PrintPages;

class frmKVXCondensedReport final : public ReportWindow,
                                    public WindowTextReceiver,
                                    public KeptControlTexts,
                                    public KvxReportWindow
{
    Q_OBJECT

public:
    // Report rows, 1 to 10: one for each tap pair a test can hold.
    static constexpr int RowCount = 10;

    // The one instance, made on first touch; closing only hides it.
    static frmKVXCondensedReport& instance();

    // Puts the language texts on the window. The column heads, the knee
    // caption, the compensation list and the axis captions are cells of the
    // report model, so they go into the model, and the window then mirrors it.
    void FillTextsKvxCondensedReport();

    // Copies the whole report model and its graph into the controls: cells,
    // row visibility, header fields, compensation line, graph labels, menu
    // states, the page's place and the chart. Does nothing before the load.
    void mirrorModel() override;

    // mnPrint: the printer dialog, then the window in its print form (screen
    // controls hidden, text boxes shown as their label twins), one page for
    // each copy, and the window as it was.
    void mnPrint_Click();
    // The pages of mnPrint after its dialog, onto a job that has begun: the
    // window in its print form, one page for each copy (the first on the
    // page in hand), and the window back as it was. The caller ends the job.
    void printReportPages(PrintPages& pages, int copies);

    // The label of `column` in row `n`, 0 being the column head. This and
    // the other controls of the page make the page if need be.
    QLabel* cell(KvxColumn column, int n) const;
    QComboBox* cbCompensation() const;
    KvxKneeChart& CWGraph1() const;
    QFrame* frKVXReport() const;
    QScrollBar* VScroll1() const;
    QLabel* imgLogo() const;
    // The logo's box and the head label it centres on.
    LogoTarget& logoTarget() { return m_pageLogo; }
    // The window if it has been made, else none.
    static frmKVXCondensedReport* existing();

    // The list items of cbCompensation and the axis captions of CWGraph1.
    void applyWindowText(const WindowTextEntry& entry, const QString& text) override;

    // What the report's model asks of the window.
    void fillReportTexts() override { FillTextsKvxCondensedReport(); }
    void mirrorReport() override { mirrorModel(); }
    void showReport() override { show(); }
    void hideReport() override { hide(); }
    void bringUpReport() override { bringUp(&mainWindow()); }
    void loadLogo(const QString& path, double left, double top) override;

protected:
    // The page (head, table, chart) is what the window costs to make, and
    // the main window's first paint needs none of it: it is made when first
    // asked for, when the window is shown or printed, or when the program is
    // idle after start-up (makeControls). Until then the window keeps the
    // language's texts for it, and the page then shows them and what the
    // model holds.
    void buildControls() override;
    void closeEvent(QCloseEvent* event) override;
    // The window's load runs once, on the first fill of its texts or the
    // first bring-up, whichever comes first, as the language needs to be
    // there.
    void loadModel() override;
    void setShown(bool shown) override;
    void compensationPicked(int index, const QString& text) override;

private:
    frmKVXCondensedReport();
    void buildMenu();
    QWidget* buildTitleLine(QWidget* page);
    QWidget* buildHead(QWidget* page);
    QWidget* buildTable(QWidget* page);
    QWidget* buildCompensationLine(QWidget* page);
    QWidget* buildGraph(QWidget* page);
    void connectEvents();
    // The events of the page's controls, once it is made.
    void connectPage();
    // The design captions of the heads and the knee label, as the model's
    // first cells.
    void adoptDesignTexts();

    QFrame* m_page = nullptr;
    ReportPageArea* m_area = nullptr;
    QComboBox* m_compensation = nullptr;
    QLabel* m_logo = nullptr;
    DesignedLogo m_pageLogo;
    KvxKneeChart* m_graph = nullptr;
    std::array<std::array<QLabel*, RowCount + 1>, KvxColumnCount> m_cells{};
};

} // namespace quenby
