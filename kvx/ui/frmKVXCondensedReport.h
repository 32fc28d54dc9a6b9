// The KVX condensed report window: one KVX test on one tall page, which is at
// once the screen view and the sheet that is printed. From top to bottom: the
// logo and titles, the head of the test (file, date and instrument as read,
// the description as editable text boxes), the table of up to ten tap rows,
// the temperature compensation line, and the excitation graph CWGraph1 with
// its cursor read-out and zoom box. The page is the frame frKVXReport inside
// a scroll area whose bar is VScroll1.
//
// Once a test is filled in, the controls are the working copy that the
// print-out and the spreadsheet export read, so every cell of the table exists
// at all times and rows not in use are only hidden. The insulation column is
// written by the file reader into the report model and mirrored here.
#pragma once

#include "kvx/ui/KvxKneeChart.h"
#include "localisation/ui/WindowTexts.h"

#include <QMainWindow>

#include <array>

class QComboBox;
class QFrame;
class QLabel;

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

class frmKVXCondensedReport final : public QMainWindow, public WindowTextReceiver
{
    Q_OBJECT

public:
    // Report rows, 1 to 10: one for each tap pair a test can hold.
    static constexpr int RowCount = 10;

    // The one instance, made on first touch; closing only hides it.
    static frmKVXCondensedReport& instance();

    // Puts the language texts on the window. The insulation head is the
    // report model's cell, so it goes into the model as well, and the window
    // then mirrors the model.
    void FillTextsKvxCondensedReport();

    // Copies the cells the report model holds into their labels.
    void mirrorModel();

    // The label of `column` in row `n`, 0 being the column head.
    QLabel* cell(KvxColumn column, int n) const;
    QComboBox* cbCompensation() const { return m_compensation; }
    const KvxKneeChart& CWGraph1() const { return m_graph; }
    QFrame* frKVXReport() const { return m_page; }

    // The list items of cbCompensation and the axis captions of CWGraph1.
    void applyWindowText(const WindowTextEntry& entry, const QString& text) override;

private:
    frmKVXCondensedReport();
    void buildMenu();
    QWidget* buildTitleLine(QWidget* page);
    QWidget* buildHead(QWidget* page);
    QWidget* buildTable(QWidget* page);
    QWidget* buildCompensationLine(QWidget* page);
    QWidget* buildGraph(QWidget* page);

    QFrame* m_page = nullptr;
    QComboBox* m_compensation = nullptr;
    KvxKneeChart m_graph;
    std::array<std::array<QLabel*, RowCount + 1>, KvxColumnCount> m_cells{};
};

} // namespace quenby
