#include "zbl/ui/frmZBLBasicReport.h"

#include "shell/ui/FormPrinter.h"
#include "shell/ui/PrintPages.h"
#include "zbl/model/ZblPrintReport.h"

#include "localisation/ui/WindowTexts.h"
#include "report/ui/FittedText.h"
#include "shell/model/RuntimeError.h"
#include "shell/ui/FormPrinter.h"
#include "shell/ui/PrintPages.h"
#include "zbl/model/VGraph.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblCompensation.h"
#include "zbl/model/ZblReportSave.h"
#include "zbl/ui/frmPrintVGraph.h"
#include "zbl/ui/frmPrintZBLBasicReport.h"
#include "zbl/ui/frmZBLVGraph.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QScrollBar>
#include <QSignalBlocker>

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

// What a language's texts may give way to: table boxes down to this font.
constexpr int SmallestBoxFontPixels = 8;
constexpr int BoxInsets = 6; // the frame and the box's insets, both sides
constexpr int TableGap = 16; // between the head and the table

constexpr int channelWidthTwips()
{
    int sum = 0;
    for (int i = 0; i < 4; ++i)
        sum += ChannelColumns[static_cast<std::size_t>(i)].widthTwips;
    return sum;
}

// The head boxes the operator edits, and the model's field behind each; the
// three labels of file, date and instrument only show what the test says.
struct HeadField
{
    const char* control;
    QString ZblBasicReportModel::*field;
};
constexpr std::array<HeadField, 8> EditedHead = {{
    {"txtXFRSerialNumber", &ZblBasicReportModel::txtXFRSerialNumber},
    {"txtCompany", &ZblBasicReportModel::txtCompany},
    {"txtStation", &ZblBasicReportModel::txtStation},
    {"txtDesignator", &ZblBasicReportModel::txtDesignator},
    {"txtManufacturer", &ZblBasicReportModel::txtManufacturer},
    {"txtOperator", &ZblBasicReportModel::txtOperator},
    {"txtNotes", &ZblBasicReportModel::txtNotes},
    {"txtTemperature", &ZblBasicReportModel::txtTemperature},
}};
constexpr std::array<HeadField, 4> ShownHead = {{
    {"lbTexteFileName(1)", &ZblBasicReportModel::lbTexteFileName1},
    {"lbTexteDate(1)", &ZblBasicReportModel::lbTexteDate1},
    {"lbTexteInstrumentSN(1)", &ZblBasicReportModel::lbTexteInstrumentSN1},
    {"lbTexteCompensedTemp(1)", &ZblBasicReportModel::lbTexteCompensedTemp1},
}};

// Shows `text` in `box` unless it is there already, so that the operator's
// cursor stays where it is while typing; a long text shows its start.
void putText(QLineEdit& box, const QString& text)
{
    if (box.text() == text)
        return;
    box.setText(text);
    box.setCursorPosition(0);
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

namespace {
frmZBLBasicReport* made = nullptr; // made on first touch, lives until the process ends
} // namespace

frmZBLBasicReport& frmZBLBasicReport::instance()
{
    if (!made)
        new frmZBLBasicReport;
    return *made;
}

frmZBLBasicReport* frmZBLBasicReport::existing()
{
    return made;
}

frmZBLBasicReport::frmZBLBasicReport()
{
    made = this; // the logo's load asks for the windows there are
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
    m_scroll = new QScrollBar(Qt::Vertical, central);
    m_scroll->setObjectName(QStringLiteral("VScroll1"));
    m_scroll->setRange(0, 0);
    m_scroll->setVisible(false); // until a test needs more than the window
    row->addWidget(m_scroll);
    setCentralWidget(central);
    m_viewport = viewport;

    resize(pixelsOfTwips(PageWidthTwips) + m_scroll->sizeHint().width(), 760);
    m_pageLogo.designRoom(logoRoom());
    connectEvents();
}

void frmZBLBasicReport::connectEvents()
{
    const auto command = [this](const char* name, auto logic) {
        QAction* entry = findChild<QAction*>(QString::fromLatin1(name));
        connect(entry, &QAction::triggered, this, [this, name, logic] {
            const CommandScope scope(QString::fromLatin1(name));
            logic();
            mirrorModel();
        });
    };
    command("mnuOk", [] { ZblReport_mnuOk_Click(); });
    command("mnuBasicReport", [this] { mnuBasicReport_Click(); });
    // The save puts the saved file's name in the head: the mirror after the
    // command shows it.
    command("mnuSave", [] { ZblReport_mnuSave_Click(); });
    command("mnuVGraphA", [this] {
        openVGraph(QStringLiteral("A"), controlText(*this, QStringLiteral("lbTexteCHANA")));
    });
    command("mnuVGraphB", [this] {
        openVGraph(QStringLiteral("B"), controlText(*this, QStringLiteral("lbTexteCHANB")));
    });

    connect(m_scroll, &QScrollBar::valueChanged, this, [this](int value) {
        ZblReport_VScroll1_Change(value);
        mirrorModel();
    });
}

void frmZBLBasicReport::connectPage()
{
    // What the operator types into the head and the cells is the report's
    // working copy: the V graph, the save and the print read it from there.
    for (const HeadField& head : EditedHead) {
        auto* box = findChild<QLineEdit*>(QString::fromLatin1(head.control));
        const auto field = head.field;
        connect(box, &QLineEdit::textEdited, this,
                [field](const QString& text) { zblBasicReport().*field = text; });
    }
    for (int c = 0; c < ZblColumnCount; ++c) {
        for (int r = 0; r < RowCount; ++r) {
            const auto column = static_cast<ZblReportColumn>(c);
            connect(cell(static_cast<ZblColumn>(c), r), &QLineEdit::textEdited, this,
                    [column, r](const QString& text) { zblBasicReport().cell(column, r) = text; });
        }
    }

    connect(m_compensation, &QComboBox::activated, this,
            [this](int index) { cbCompensation_Click(*m_compensation, index); });
    connect(m_compensation->lineEdit(), &QLineEdit::textEdited, this,
            [](const QString& text) { zblBasicReport().cbCompensationText = text; });
}

ZblColumnHeadTexts frmZBLBasicReport::columnHeadTexts() const
{
    const auto head = [this](const char* name) {
        return controlText(*this, QString::fromLatin1(name));
    };
    ZblColumnHeadTexts heads;
    heads.CHANA = head("lbTexteCHANA");
    heads.CHANB = head("lbTexteCHANB");
    for (std::size_t c = 0; c < ChannelColumns.size(); ++c)
        heads.column[c] = head(ChannelColumns[c].head);
    heads.TotalTime = head("lbTotalTime");
    return heads;
}

void frmZBLBasicReport::mnuBasicReport_Click()
{
    frmPrintZBLBasicReport& paper = frmPrintZBLBasicReport::instance();
    std::unique_ptr<PrintPages> pages;
    bool started = false;
    const auto printerDialog = [&pages]() -> std::optional<int> {
        const PrintAnswer answer = showPrinterDialog(PrintRequest{});
        if (answer.cancelled)
            return std::nullopt;
        pages = openPrintPages(answer);
        if (!pages)
            return std::nullopt;
        return answer.copies;
    };
    // The job starts with its first page, so that a test with no rows puts
    // nothing on paper; a printer that cannot start ends the print.
    const auto printPage = [&](const ZblPrintReportModel& sheet) {
        paper.mirror(sheet);
        if (!started) {
            if (!pages->begin())
                return false;
            started = true;
        } else if (!pages->newPage()) {
            return false;
        }
        printForm(paper, *pages);
        return true;
    };
    ZblReport_mnuBasicReport_Click(columnHeadTexts(), printerDialog, printPage);
    if (started)
        pages->end();
    paper.mirror(zblPrintReport());
}

void frmZBLBasicReport::fillReportTexts()
{
    FillTextsZblBasicReport();
    frmPrintZBLBasicReport::instance().FillTextsPrintZblBasicReport();
}

void frmZBLBasicReport::loadLogo(const QString& /*path*/, double left, double top)
{
    logoProcessing().loadAndFit(left, top);
}

void frmZBLBasicReport::loadModel()
{
    ZblReport_Form_Load();
}

void frmZBLBasicReport::closeEvent(QCloseEvent* event)
{
    ZblReport_Form_Unload();
    event->accept();
}

void frmZBLBasicReport::setShown(bool shown)
{
    // The page is polished by now: the head is measured in the fonts it shows.
    if (shown)
        fitPageTexts();
    zblBasicReport().shown = shown;
}

void frmZBLBasicReport::compensationPicked(int index, const QString& text)
{
    ZblBasicReportModel& model = zblBasicReport();
    model.cbCompensationIndex = index;
    model.cbCompensationText = text;
    ZblReport_cbCompensation_Click();
}

void frmZBLBasicReport::openVGraph(const QString& letter, const QString& channelHead)
{
    VGraph& graph = zblVGraph();
    graph.openChannelFromReport(letter, channelHead);
    // The texts of the graph and of its paper twin, from the language.
    frmZBLVGraph& window = frmZBLVGraph::instance();
    window.FillTextsZblVGraph();
    frmPrintVGraph::instance().FillTextsPrintVGraph();
    window.mirror(graph.window);
    window.showModalOver(this);
}

void frmZBLBasicReport::mirrorModel()
{
    const ZblBasicReportModel& model = zblBasicReport();
    // Until its load the window keeps its menu as designed, entries that lead
    // nowhere hidden; the model's flags count from the load on.
    const auto showEntry = [this](const char* name, bool visible) {
        if (!m_loaded)
            return;
        findChild<QAction*>(QString::fromLatin1(name))->setVisible(visible);
    };
    showEntry("mnuExport", model.mnuExportVisible);
    showEntry("mnuEdit", model.mnuEditVisible);
    showEntry("mnuTaps", model.mnuTapsVisible);
    showEntry("mnuVGraphRS", model.mnuVGraphRSVisible);
    showEntry("mnuBasicVgraph", model.mnuBasicVgraphVisible);
    showEntry("mnuBasicVgraphRS", model.mnuBasicVgraphRSVisible);

    {
        const QSignalBlocker quiet(m_scroll);
        m_scroll->setRange(0, model.VScroll1Max);
        m_scroll->setValue(model.VScroll1Value);
        m_scroll->setVisible(model.VScroll1Visible);
    }
    // A page not made yet shows the model once it is.
    if (!controlsMade())
        return;

    for (const HeadField& head : EditedHead)
        putText(*findChild<QLineEdit*>(QString::fromLatin1(head.control)), model.*head.field);
    for (const HeadField& head : ShownHead)
        findChild<QLabel*>(QString::fromLatin1(head.control))->setText(model.*head.field);
    for (int c = 0; c < ZblColumnCount; ++c) {
        const auto column = static_cast<ZblReportColumn>(c);
        for (int r = 0; r < RowCount; ++r) {
            QLineEdit* box = cell(static_cast<ZblColumn>(c), r);
            if (box->text() != model.cell(column, r)) {
                putText(*box, model.cell(column, r));
                fitCellText(*box);
            }
            box->setVisible(model.rowVisible(r));
        }
    }
    mirrorCompensation(*m_compensation, model.cbCompensationItems, model.cbCompensationIndex,
                       model.cbCompensationText);

    // The frame's top is in twips and goes negative as the page scrolls up.
    const int top = model.frResistanceTop;
    m_page->move(m_page->x(), top < 0 ? -pixelsOfTwips(-top) : pixelsOfTwips(top));
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
    m_page = page;
    makePaper(*page);
    buildHead(page);
    m_pageLogo.attach(makeLogo(page));
}

void frmZBLBasicReport::buildHead(QWidget* page)
{
    QWidget* head = makeTestHead(page, HeadKind::Report, pixelsOfTwips(PageWidthTwips),
                                 pixelsOfTwips(TableLeftTwips));
    m_head = head;
    m_tableTop = head->height() + TableGap;
    buildTable(page, m_tableTop);
    for (QWidget* part : page->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (part != head)
            m_tableParts.push_back(part);
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

void frmZBLBasicReport::buildControls()
{
    buildPage(m_viewport);
    m_compensation = findChild<QComboBox*>(QStringLiteral("cbCompensation"));
    connectPage();
    // The language's texts for the page, fitted, then what the model holds.
    putKeptTexts(*this);
    fitPageTexts();
    mirrorModel();
}

QComboBox* frmZBLBasicReport::cbCompensation() const
{
    const_cast<frmZBLBasicReport*>(this)->makeControls();
    return m_compensation;
}

QFrame* frmZBLBasicReport::frResistance() const
{
    const_cast<frmZBLBasicReport*>(this)->makeControls();
    return m_page;
}

QLineEdit* frmZBLBasicReport::cell(ZblColumn column, int row) const
{
    const_cast<frmZBLBasicReport*>(this)->makeControls();
    return m_cells.at(static_cast<std::size_t>(column)).at(static_cast<std::size_t>(row));
}

void frmZBLBasicReport::FillTextsZblBasicReport()
{
    if (!m_loaded)
        Form_Load();
    fillWindowTexts(*this, QStringLiteral("FillTextsZblBasicReport"));
    if (controlsMade())
        fitPageTexts();
}

void frmZBLBasicReport::fitCellText(QLineEdit& box)
{
    fitOneLine(box, box.width() - BoxInsets, SmallestBoxFontPixels);
}

void frmZBLBasicReport::fitPageTexts()
{
    fitTestHeadTitles(*m_head, pixelsOfTwips(PageWidthTwips), pixelsOfTwips(TableLeftTwips));

    // The heads of the table are text boxes of one line.
    for (const ColumnLook& look : ChannelColumns)
        fitCellText(*m_page->findChild<QLineEdit*>(QString::fromLatin1(look.head)));

    // Twice: the first pass settles the columns for the new captions, the
    // second the height their wrapped lines need in them.
    for (int pass = 0; pass < 2; ++pass) {
        m_head->layout()->activate();
        m_head->adjustSize();
    }
    const int top = m_head->height() + TableGap;
    const int shift = top - m_tableTop;
    if (shift == 0)
        return;
    for (QWidget* part : m_tableParts)
        part->move(part->x(), part->y() + shift);
    m_page->resize(m_page->width(), m_page->height() + shift);
    m_tableTop = top;
}

} // namespace quenby
