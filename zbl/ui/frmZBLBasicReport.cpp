#include "zbl/ui/frmZBLBasicReport.h"

#include "localisation/ui/WindowTexts.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>

namespace quenby {

namespace {

struct ColumnLook
{
    const char* cells; // the control array of the column
    const char* head;  // the text box that heads it
    const char* caption;
    int widthTwips;
};

// Tap, winding, resistance and compensated of channel A, the same of B; the
// total time column follows and has its own head.
constexpr std::array<ColumnLook, 8> ChannelColumns = {{
    {"txtTapA", "lbTexteTAPA", "Tap", 585},
    {"txtWindingA", "lbTexteWindingA", "Winding", 1025},
    {"lbResA", "lbTexteResistanceA", "Resistance", 975},
    {"txtConbinedResistanceA", "lbTexteCompensedResistanceA", "Compensated", 1455},
    {"txtTapB", "lbTexteTAPB", "Tap", 585},
    {"txtWindingB", "lbTexteWindingB", "Winding", 1025},
    {"lbResB", "lbTexteResistanceB", "Resistance", 975},
    {"txtConbinedResistanceB", "lbTexteCompensedResistanceB", "Compensated", 1455},
}};
constexpr auto TotalTimeCells = "txtTotalTime";
constexpr int TotalTimeWidthTwips = 765;

// Table geometry in twips.
constexpr int TableLeftTwips = 1000;
constexpr int RowHeightTwips = 315;
constexpr int ChannelHeadHeightTwips = 315;
constexpr int ColumnHeadHeightTwips = 420;
constexpr int PageWidthTwips = 11000;

constexpr int channelWidthTwips()
{
    int sum = 0;
    for (int i = 0; i < 4; ++i)
        sum += ChannelColumns[static_cast<std::size_t>(i)].widthTwips;
    return sum;
}

QAction* addEntry(QWidget* owner, const QString& name, const QString& text)
{
    auto* entry = new QAction(text, owner);
    entry->setObjectName(name);
    owner->addAction(entry);
    return entry;
}

QMenu* addMenu(QMenuBar* bar, QWidget* owner, const QString& name, const QString& text)
{
    auto* menu = new QMenu(text, owner);
    menu->setObjectName(name);
    bar->addMenu(menu);
    return menu;
}

} // namespace

frmZBLBasicReport& frmZBLBasicReport::instance()
{
    static frmZBLBasicReport* window = new frmZBLBasicReport; // lives until the process ends
    return *window;
}

frmZBLBasicReport::frmZBLBasicReport()
{
    setObjectName(QStringLiteral("frmZBLBasicReport"));
    setWindowTitle(QStringLiteral("ZBL Basic Report"));
    buildMenu();

    auto* central = new QWidget(this);
    auto* row = new QHBoxLayout(central);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    // The page is placed by hand on a clipping viewport, as the scroll bar moves
    // it by its top edge rather than through a scroll area.
    auto* viewport = new QWidget(central);
    viewport->setMinimumWidth(pixelsOfTwips(PageWidthTwips));
    row->addWidget(viewport, 1);
    auto* scroll = new QScrollBar(Qt::Vertical, central);
    scroll->setObjectName(QStringLiteral("VScroll1"));
    scroll->setRange(0, 0);
    row->addWidget(scroll);
    setCentralWidget(central);

    buildPage(viewport);
    resize(pixelsOfTwips(PageWidthTwips) + scroll->sizeHint().width(), 760);
}

void frmZBLBasicReport::buildMenu()
{
    QMenuBar* bar = menuBar();
    QMenu* print = addMenu(bar, this, QStringLiteral("mnuPrint"), QStringLiteral("Print"));
    addEntry(print, QStringLiteral("mnuBasicReport"), QStringLiteral("Basic Report"));
    QAction* basicVgraph =
        addEntry(print, QStringLiteral("mnuBasicVgraph"), QStringLiteral("V-Graph"));
    QAction* basicVgraphRs =
        addEntry(print, QStringLiteral("mnuBasicVgraphRS"), QStringLiteral("Basic  & V-Graph(Rs)"));

    QAction* exportEntry = addEntry(this, QStringLiteral("mnuExport"), QStringLiteral("Export"));
    QAction* editNotes = addEntry(this, QStringLiteral("mnuEdit"), QStringLiteral("Edits Notes"));
    QAction* editTaps = addEntry(this, QStringLiteral("mnuTaps"), QStringLiteral("Edit Taps"));
    for (QAction* entry : {exportEntry, editNotes, editTaps})
        bar->addAction(entry);

    QMenu* vgraph = addMenu(bar, this, QStringLiteral("mnuVGraph"), QStringLiteral("V-Graph"));
    addEntry(vgraph, QStringLiteral("mnuVGraphA"), QStringLiteral("Channel A"));
    addEntry(vgraph, QStringLiteral("mnuVGraphB"), QStringLiteral("Channel B"));
    QAction* vgraphRs =
        addEntry(vgraph, QStringLiteral("mnuVGraphRS"), QStringLiteral("V-Graph(Rs)"));

    QAction* save = addEntry(this, QStringLiteral("mnuSave"), QStringLiteral("Save"));
    QAction* ok = addEntry(this, QStringLiteral("mnuOk"), QStringLiteral("Ok"));
    bar->addAction(save);
    bar->addAction(ok);

    // These commands lead nowhere: they are kept, out of sight.
    for (QAction* unused : {exportEntry, editNotes, editTaps, vgraphRs, basicVgraph, basicVgraphRs})
        unused->setVisible(false);
}

void frmZBLBasicReport::buildPage(QWidget* viewport)
{
    QFrame* page = makeFrame(viewport, QStringLiteral("frResistance"));
    makePaper(*page);
    buildHead(page);
    makeLogo(page);
}

void frmZBLBasicReport::buildHead(QWidget* page)
{
    QWidget* head = makeTestHead(page, HeadKind::Report, pixelsOfTwips(PageWidthTwips),
                                 pixelsOfTwips(TableLeftTwips));
    buildTable(page, head->height() + 16);
}

void frmZBLBasicReport::buildTable(QWidget* page, int top)
{
    // Lefts are taken from running sums in twips, so that neighbouring cells
    // meet without a gap whatever the rounding to pixels.
    std::array<int, 10> left{};
    left[0] = TableLeftTwips;
    for (std::size_t c = 0; c < ChannelColumns.size(); ++c)
        left[c + 1] = left[c] + ChannelColumns[c].widthTwips;
    left[9] = left[8] + TotalTimeWidthTwips;
    const auto x = [&left](std::size_t c) { return pixelsOfTwips(left[c]); };
    const auto width = [&left](std::size_t c) {
        return pixelsOfTwips(left[c + 1]) - pixelsOfTwips(left[c]);
    };

    const auto headBox = [page](const QString& name, const QString& text) {
        QLineEdit* box = makeTableTextBox(page, name, text);
        QFont bold = box->font();
        bold.setBold(true);
        box->setFont(bold);
        return box;
    };

    const int channelHead = pixelsOfTwips(ChannelHeadHeightTwips);
    const int columnHead = pixelsOfTwips(ColumnHeadHeightTwips);
    const int channelWidth = pixelsOfTwips(TableLeftTwips + channelWidthTwips()) - x(0);
    headBox(QStringLiteral("lbTexteCHANA"), QStringLiteral("CHANNEL A"))
        ->setGeometry(x(0), top, channelWidth, channelHead);
    headBox(QStringLiteral("lbTexteCHANB"), QStringLiteral("CHANNEL B"))
        ->setGeometry(x(4), top, x(8) - x(4), channelHead);

    const int columnTop = top + channelHead;
    for (std::size_t c = 0; c < ChannelColumns.size(); ++c) {
        const ColumnLook& look = ChannelColumns[c];
        headBox(QString::fromLatin1(look.head), QString::fromLatin1(look.caption))
            ->setGeometry(x(c), columnTop, width(c), columnHead);
    }
    // The total time head is a label inside a border that spans both head rows.
    QLabel* border = makeTableLabel(page, QStringLiteral("lbTotalTimeBdr"));
    // Drawn in the grey of the text boxes' frames around it.
    QPalette grey = border->palette();
    grey.setColor(QPalette::WindowText, QColor(0x9a, 0x9a, 0x9a));
    border->setPalette(grey);
    border->setGeometry(x(8), top, width(8), channelHead + columnHead);
    QLabel* totalTime =
        makeLabel(page, QStringLiteral("lbTotalTime"), QStringLiteral("Total time"));
    totalTime->setAlignment(Qt::AlignCenter);
    totalTime->setWordWrap(true);
    QFont bold = border->font();
    bold.setBold(true);
    totalTime->setFont(bold);
    totalTime->setGeometry(border->geometry().adjusted(1, 1, -1, -1));

    const int rowTop = columnTop + columnHead;
    for (int r = 0; r < RowCount; ++r) {
        const int y = rowTop + pixelsOfTwips(r * RowHeightTwips);
        const int h = pixelsOfTwips((r + 1) * RowHeightTwips) - pixelsOfTwips(r * RowHeightTwips);
        for (std::size_t c = 0; c < static_cast<std::size_t>(ZblColumnCount); ++c) {
            const QString array = c < ChannelColumns.size()
                                      ? QString::fromLatin1(ChannelColumns[c].cells)
                                      : QString::fromLatin1(TotalTimeCells);
            QLineEdit* cell = makeTableTextBox(page, indexedName(array, r));
            cell->setGeometry(x(c), y, width(c), h);
            m_cells[c][static_cast<std::size_t>(r)] = cell;
        }
    }
    page->setGeometry(0, 0, pixelsOfTwips(PageWidthTwips),
                      rowTop + pixelsOfTwips(RowCount * RowHeightTwips) +
                          pixelsOfTwips(RowHeightTwips));
}

QLineEdit* frmZBLBasicReport::cell(ZblColumn column, int row) const
{
    return m_cells.at(static_cast<std::size_t>(column)).at(static_cast<std::size_t>(row));
}

void frmZBLBasicReport::FillTextsZblBasicReport()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsZblBasicReport"));
}

} // namespace quenby
