#include "kvx/ui/frmKVXCondensedReport.h"

#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxCompensation.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxExcelExport.h"
#include "kvx/model/KvxReportView.h"
#include "report/ui/FittedText.h"
#include "report/ui/ReportWindow.h"
#include "shell/model/ProgressAbout.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/Services.h"
#include "shell/ui/FormPrinter.h"
#include "shell/ui/PrintPages.h"

#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPicture>
#include <QPixmap>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <cmath>
#include <memory>
#include <vector>

namespace quenby {

namespace {

// The page is laid out for a letter or A4 sheet at 96 pixels to the inch: a
// 720 pixel (7.5 inch) column between margins of 40 pixels.
constexpr int ContentWidth = 720;
constexpr int PageMargin = 40;
constexpr int PageTop = 16; // 240 twips, where the logo's top lies
constexpr int GraphHeight = 470;

// The logo's place, in pixels: 1560 by 240 twips at 15 twips to the pixel.
constexpr int LogoLeft = 104;
constexpr int LogoWidth = 160;
constexpr int LogoHeight = 64;
constexpr auto DesignedKneeType = "Knee point standard";

// VScroll1 counts steps of 30 twips (2 pixels at 96 dpi); an arrow click or a
// line of the wheel moves the page 8 steps, about one table row.
constexpr int ScrollStepsPerLine = 8;

constexpr int CellFontPixels = 11;
// A text box draws its text this far in from its left edge.
constexpr int TextBoxInset = 2;

struct ColumnLook
{
    const char* array;
    const char* head; // the head's text until the language fills it
    int width;        // pixels; the widths add up to ContentWidth
};

constexpr std::array<ColumnLook, KvxColumnCount> Columns = {{
    {"lbTestNumber", "Test", 30},
    {"lbTapTest", "Tap", 44},
    {"lbIEE30Test", "Vs IEEE 30", 52},
    {"lbIEE45Test", "Vs IEEE 45", 52},
    {"lbAINSIIC1050Test", "Vs IEC 10/50", 52},
    {"lbNPRATIOTest", "Nameplate ratio", 62},
    {"lbMSRATIOTest", "Measured ratio", 60},
    {"lbErrorTest", "Error %", 44},
    {"lbPhaseTest", "Phase", 44},
    {"lbPolarity", "Polarity", 48},
    {"lbWindingResTest", "Winding resistance", 66},
    {"lbWindingCompTest", "Compensated resistance", 80},
    {"lbInsulationResistanceTest", "Insulation", 86},
}};

constexpr int columnWidthSum()
{
    int sum = 0;
    for (const ColumnLook& c : Columns)
        sum += c.width;
    return sum;
}
static_assert(columnWidthSum() == ContentWidth);

// Rules of the table: dark around and under the heads, lighter between rows.
constexpr auto HeadRule = "#303030";
constexpr auto RowRule = "#9a9a9a";
constexpr auto HeadFill = "#e6eaf0";

QString indexedName(const QString& array, int index)
{
    return QStringLiteral("%1(%2)").arg(array).arg(index);
}

void makePaper(QWidget& page)
{
    QPalette paper = page.palette();
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base})
        paper.setColor(role, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text})
        paper.setColor(role, Qt::black);
    page.setPalette(paper);
    // Set, not inherited: the scroll area around the page paints grey.
    page.setBackgroundRole(QPalette::Window);
    page.setAutoFillBackground(true);
}

// A row cell whose text is wider than its column takes a smaller font, down
// to a size still readable on paper, rather than lose its ends. A head's
// words do the same, and a word too wide even then is broken with a hyphen.
constexpr int SmallestCellFontPixels = 8;
constexpr int HeadFontPixels = CellFontPixels - 1;
constexpr int CellPadding = 4; // both sides' padding and the rule

int roomOf(const QLabel& cell)
{
    return cell.maximumWidth() - CellPadding; // the column's fixed width
}

void fitCellText(QLabel& cell, const QString& text)
{
    cell.setFont(fittingFont(cell.font(), text.trimmed(), roomOf(cell), CellFontPixels,
                             SmallestCellFontPixels));
    cell.setText(text);
}

void fitHeadText(QLabel& head, const QString& text)
{
    const QFont font =
        fittingFont(head.font(), text, roomOf(head), HeadFontPixels, SmallestCellFontPixels, true);
    head.setFont(font);
    // The label wraps at blanks by itself; the breaks are put in only where a
    // word must be broken.
    const QFontMetrics metrics(font);
    head.setText(everyWordFits(text, metrics, roomOf(head))
                     ? text
                     : hyphenatedLines(text, metrics, roomOf(head)));
}

QLabel* makeLabel(QWidget* parent, const QString& name, const QString& text = {})
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

QLabel* makeCaption(QWidget* parent, const char* name, const char* text)
{
    QLabel* caption = makeLabel(parent, QString::fromLatin1(name), QString::fromLatin1(text));
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    return caption;
}

// An editable field of the head, drawn as a line to write on.
QLineEdit* makeTextBox(QWidget* parent, const QString& name, const QString& text = {})
{
    auto* box = new QLineEdit(text, parent);
    box->setObjectName(name);
    box->setStyleSheet(QStringLiteral("QLineEdit { border: none; border-bottom: 1px solid #b8b8b8;"
                                      " background: white; color: black; padding: 0; }"));
    return box;
}

QAction* addEntry(QWidget* owner, const char* name, const char* text)
{
    auto* entry = new QAction(QString::fromLatin1(text), owner);
    entry->setObjectName(QString::fromLatin1(name));
    owner->addAction(entry);
    return entry;
}

QMenu* addMenu(QMenuBar* bar, QWidget* owner, const char* name, const char* text)
{
    auto* menu = new QMenu(QString::fromLatin1(text), owner);
    menu->setObjectName(QString::fromLatin1(name));
    bar->addMenu(menu);
    return menu;
}

// The heads are ruled dark all round, the rows lighter between each other,
// and the table's sides dark from top to bottom.
QString cellStyle(bool head, bool firstColumn, bool lastColumn)
{
    QString style = QStringLiteral("QLabel { color: black; padding: 2px 1px;"
                                   " border-right: 1px solid %1; border-bottom: 1px solid %2;")
                        .arg(QLatin1String(lastColumn || head ? HeadRule : RowRule),
                             QLatin1String(head ? HeadRule : RowRule));
    if (firstColumn)
        style += QStringLiteral(" border-left: 1px solid %1;").arg(QLatin1String(HeadRule));
    if (head)
        style += QStringLiteral(" border-top: 1px solid %1; background: %2;")
                     .arg(QLatin1String(HeadRule), QLatin1String(HeadFill));
    else
        style += QStringLiteral(" background: white;");
    return style + QStringLiteral(" }");
}

// Runs a menu command under its name, so that a fatal failure names it.
void runCommand(const char* name, void (*command)())
{
    const CommandScope scope(QString::fromLatin1(name) + QStringLiteral("_Click"));
    command();
}

} // namespace

// The grey surround of the page. The page lies on the viewport at the top the
// report model gives it; VScroll1 counts in the model's steps of 30 twips, so
// its range is the page's overflow in twips over 30. Across, the page is
// centred, or scrolled in pixels when the window is narrower than the sheet.
class ReportPageArea final : public QAbstractScrollArea
{
public:
    explicit ReportPageArea(QWidget* parent) : QAbstractScrollArea(parent)
    {
        setFrameShape(QFrame::NoFrame);
        viewport()->setBackgroundRole(QPalette::Mid);
        viewport()->setAutoFillBackground(true);
        verticalScrollBar()->setObjectName(QStringLiteral("VScroll1"));
        verticalScrollBar()->setSingleStep(ScrollStepsPerLine);
        horizontalScrollBar()->setSingleStep(20);
    }

    void setPage(QWidget* page)
    {
        m_page = page;
        page->setParent(viewport());
        page->installEventFilter(this);
        updateRanges();
    }

    void setPageTop(int pixels)
    {
        m_top = pixels;
        place();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // The page grows and shrinks as rows are shown or hidden.
        if (watched == m_page && event->type() == QEvent::Resize) {
            updateRanges();
            place();
        }
        return QAbstractScrollArea::eventFilter(watched, event);
    }

    void resizeEvent(QResizeEvent* event) override
    {
        QAbstractScrollArea::resizeEvent(event);
        updateRanges();
        place();
    }

    // The vertical place comes from the model through the window's mirror;
    // only the horizontal one is the area's own.
    void scrollContentsBy(int, int) override { place(); }

private:
    void updateRanges()
    {
        if (!m_page)
            return;
        const QSize view = viewport()->size();
        const QSize page = m_page->size();
        const double dpi = logicalDpiY();
        const double overflow = pixelsToTwips(std::max(0, page.height() - view.height()), dpi);
        QScrollBar* down = verticalScrollBar();
        down->setRange(0, static_cast<int>(std::ceil(overflow / KvxReportScrollTwips)));
        down->setPageStep(std::max(
            1, static_cast<int>(pixelsToTwips(view.height(), dpi) / KvxReportScrollTwips)));
        QScrollBar* across = horizontalScrollBar();
        across->setRange(0, std::max(0, page.width() - view.width()));
        across->setPageStep(view.width());
    }

    void place()
    {
        if (!m_page)
            return;
        const int spare = viewport()->width() - m_page->width();
        const int left = spare > 0 ? spare / 2 : -horizontalScrollBar()->value();
        m_page->move(left, m_top);
    }

    QWidget* m_page = nullptr;
    int m_top = 0;
};

QString kvxColumnArray(KvxColumn column)
{
    return QString::fromLatin1(Columns.at(static_cast<std::size_t>(column)).array);
}

namespace {
frmKVXCondensedReport* made = nullptr; // made on first touch, lives until the process ends
} // namespace

frmKVXCondensedReport& frmKVXCondensedReport::instance()
{
    if (!made)
        new frmKVXCondensedReport;
    return *made;
}

frmKVXCondensedReport* frmKVXCondensedReport::existing()
{
    return made;
}

frmKVXCondensedReport::frmKVXCondensedReport()
{
    made = this; // the logo's load asks for the windows there are
    setObjectName(QStringLiteral("frmKVXCondensedReport"));
    setWindowTitle(QStringLiteral("KVX Condensed Report"));
    buildMenu();

    m_area = new ReportPageArea(this);
    setCentralWidget(m_area);
    resize(ContentWidth + 2 * PageMargin + VScroll1()->sizeHint().width() + 24, 780);
    // The logo lies over the left of the title line, placed by hand where the
    // logo code puts it, out of the page's layout.
    m_pageLogo.designRoom(QRect(LogoLeft, PageTop, LogoWidth, LogoHeight));

    adoptDesignTexts();
    connectEvents();
}

void frmKVXCondensedReport::buildControls()
{
    m_page = new QFrame;
    m_page->setObjectName(QStringLiteral("frKVXReport"));
    makePaper(*m_page);
    auto* lines = new QVBoxLayout(m_page);
    // The sheet takes the height its content needs, and grows or shrinks as
    // rows are shown or hidden.
    lines->setSizeConstraint(QLayout::SetFixedSize);
    lines->setContentsMargins(PageMargin, PageTop, PageMargin, PageMargin);
    lines->setSpacing(14);
    lines->addWidget(buildTitleLine(m_page));
    lines->addWidget(buildHead(m_page));
    lines->addWidget(buildTable(m_page));
    lines->addWidget(buildCompensationLine(m_page));
    lines->addWidget(buildGraph(m_page));

    m_logo = makeLabel(m_page, QStringLiteral("imgLogo"));
    m_logo->setGeometry(m_pageLogo.logoHeadLabel());
    m_logo->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_pageLogo.attach(m_logo);

    m_area->setPage(m_page);
    connectPage();
    // The language's texts for the page, then what the model holds.
    putKeptTexts(*this);
    mirrorModel();
}

QScrollBar* frmKVXCondensedReport::VScroll1() const
{
    return m_area->verticalScrollBar();
}

void frmKVXCondensedReport::buildMenu()
{
    QMenuBar* bar = menuBar();
    // The window has no save and no word-processor export: both stay disabled.
    QAction* save = addEntry(this, "mnSave", "Save");
    save->setEnabled(false);
    bar->addAction(save);
    bar->addAction(addEntry(this, "mnPrint", "Print"));

    QMenu* exportMenu = addMenu(bar, this, "mnExport", "Export");
    addEntry(exportMenu, "mnExcel", "Excel");
    addEntry(exportMenu, "mnWord", "Word")->setEnabled(false);

    QMenu* knee = addMenu(bar, this, "mnKneepoint", "Knee point");
    addEntry(knee, "mnKneeIEEE30", "IEEE 30");
    addEntry(knee, "mnKneeIEEE45", "IEEE 45");
    addEntry(knee, "mnKneeAINSIIEC1050", "AINSI/IEC10/50");

    bar->addAction(addEntry(this, "mnOk", "Ok"));
}

QWidget* frmKVXCondensedReport::buildTitleLine(QWidget* page)
{
    auto* line = new QWidget(page);
    line->setFixedWidth(ContentWidth);
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addSpacing(LogoLeft - PageMargin + LogoWidth);
    row->addStretch(1);

    auto* titles = new QVBoxLayout;
    titles->setSpacing(2);
    QLabel* device = makeLabel(line, QStringLiteral("lbDeviceTestReport"),
                               QStringLiteral("KVX Current Transformer Test"));
    QFont big = device->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    device->setFont(big);
    QLabel* kind = makeLabel(line, QStringLiteral("lbTexteTestReport"),
                             QStringLiteral("Condensed Test Report"));
    QFont bold = kind->font();
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    bold.setBold(true);
    kind->setFont(bold);
    // The knee standard in use, under the titles: the language's caption until
    // a test is filled in, the standard's name afterwards.
    QLabel* knee =
        makeLabel(line, QStringLiteral("lbKneeType"), QString::fromLatin1(DesignedKneeType));
    QFont standard = knee->font();
    standard.setBold(true);
    knee->setFont(standard);
    for (QLabel* title : {device, kind, knee}) {
        title->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        titles->addWidget(title);
    }
    titles->addStretch(1);
    row->addLayout(titles);
    line->setMinimumHeight(LogoHeight);
    return line;
}

QWidget* frmKVXCondensedReport::buildHead(QWidget* page)
{
    auto* head = new QFrame(page);
    head->setFixedWidth(ContentWidth);
    // A rule above and below sets the head apart from titles and table.
    head->setStyleSheet(QStringLiteral(".QFrame { border-top: 2px solid %1; border-bottom: 1px "
                                       "solid %1; }")
                            .arg(QLatin1String(HeadRule)));
    auto* grid = new QGridLayout(head);
    grid->setContentsMargins(0, 8, 0, 8);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(5);
    grid->setColumnMinimumWidth(0, 118);
    grid->setColumnMinimumWidth(2, 118);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setColumnMinimumWidth(1, 200);
    grid->setColumnMinimumWidth(3, 200);

    // Read from the test, never edited: the value is element 1 of the array
    // whose element 0 is the caption, which keeps the plain name the language
    // fills.
    const auto readValue = [head](const char* array) {
        QLabel* value = makeLabel(head, indexedName(QString::fromLatin1(array), 1));
        value->setIndent(TextBoxInset); // its text starts where a text box's does
        return value;
    };
    // A description field: a text box, and the label that stands in for it on
    // paper, hidden until a print puts it in the box's place.
    const auto field = [head, grid](int row, int pair, const char* box) {
        const QString name = QString::fromLatin1(box);
        QLineEdit* edit = makeTextBox(head, name);
        QLabel* twin = makeLabel(head, QStringLiteral("lbTxt") + name.mid(3));
        twin->hide();
        grid->addWidget(edit, row, 2 * pair + 1);
        grid->addWidget(twin, row, 2 * pair + 1);
    };
    const auto caption = [head, grid](int row, int pair, const char* name, const char* text) {
        grid->addWidget(makeCaption(head, name, text), row, 2 * pair);
    };

    // The order follows the spreadsheet of the export: what names the test and
    // the transformer on the left, where and by whom on the right.
    caption(0, 0, "lbTexteFileName", "File name:");
    grid->addWidget(readValue("lbTexteFileName"), 0, 1);
    caption(1, 0, "lbTexteCompany", "Company:");
    field(1, 0, "txtCompany");
    caption(2, 0, "lbTexteDesignator", "Designation:");
    field(2, 0, "txtDesignator");
    caption(3, 0, "lbTexteCTSerialNumber", "CT serial number:");
    field(3, 0, "txtCTSerialNumber");
    caption(4, 0, "lbTexteTemperature", "Temperature:");
    field(4, 0, "txtTemperature");
    caption(5, 0, "lbTexteRatio", "Ratio:");
    field(5, 0, "txtRatio");
    caption(6, 0, "lbTextePhase", "Phase:");
    field(6, 0, "txtPhase");
    caption(7, 0, "lbTexteClass", "Class:");
    field(7, 0, "txtClass");

    caption(0, 1, "lbTexteDate", "Date:");
    grid->addWidget(readValue("lbTexteDate"), 0, 3);
    caption(1, 1, "lbTexteStation", "Station:");
    field(1, 1, "txtStation");
    caption(2, 1, "lbTexteManufacturer", "Manufacturer:");
    field(2, 1, "txtManufacturer");
    caption(3, 1, "lbTexteOperator", "Operator:");
    field(3, 1, "txtOperator");
    caption(4, 1, "lbTexteInstrumentSN", "Instrument S/N:");
    grid->addWidget(readValue("lbTexteInstrumentSN"), 4, 3);
    caption(5, 1, "lbTexteVoltageRAting", "Voltage rating:");
    field(5, 1, "txtVoltageRating");
    caption(6, 1, "lbTextePosition", "Position:");
    field(6, 1, "txtPosition");
    // The burden is written by hand behind the words the box starts with.
    QLineEdit* burden = makeTextBox(head, QStringLiteral("txBurden"), QStringLiteral("BURDEN: "));
    grid->addWidget(burden, 7, 2, 1, 2);

    caption(8, 0, "lbTexteNotes", "Notes:");
    QLineEdit* notes = makeTextBox(head, QStringLiteral("txtNotes"));
    QLabel* notesTwin = makeLabel(head, QStringLiteral("lbTxtNotes"));
    notesTwin->setWordWrap(true);
    notesTwin->hide();
    grid->addWidget(notes, 8, 1, 1, 3);
    grid->addWidget(notesTwin, 8, 1, 1, 3);
    return head;
}

QWidget* frmKVXCondensedReport::buildTable(QWidget* page)
{
    auto* table = new QWidget(page);
    table->setFixedWidth(ContentWidth);
    auto* grid = new QGridLayout(table);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);

    for (int c = 0; c < KvxColumnCount; ++c) {
        const ColumnLook& look = Columns[static_cast<std::size_t>(c)];
        const QString array = QString::fromLatin1(look.array);
        for (int n = 0; n <= RowCount; ++n) {
            const bool head = n == 0;
            QLabel* cell = makeLabel(table, indexedName(array, n),
                                     head ? QString::fromLatin1(look.head) : QString());
            cell->setFixedWidth(look.width);
            cell->setAlignment(Qt::AlignCenter);
            cell->setWordWrap(head);
            cell->setStyleSheet(cellStyle(head, c == 0, c == KvxColumnCount - 1));
            QFont font = cell->font();
            font.setPixelSize(head ? HeadFontPixels : CellFontPixels);
            font.setBold(head);
            cell->setFont(font);
            if (head)
                cell->setMinimumHeight(34);
            else
                cell->setFixedHeight(20);
            grid->addWidget(cell, n, c);
            m_cells[static_cast<std::size_t>(c)][static_cast<std::size_t>(n)] = cell;
        }
    }
    return table;
}

QWidget* frmKVXCondensedReport::buildCompensationLine(QWidget* page)
{
    auto* line = new QWidget(page);
    line->setFixedWidth(ContentWidth);
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);

    row->addWidget(makeCaption(line, "lbTexteCompensedFactor", "Compensation:"));
    // The two fixed entries, index 0 aluminium and index 1 copper; the list
    // shows no choice, so that every pick, even of the same entry, is a click.
    m_compensation = new PageComboBox(line);
    m_compensation->setObjectName(QStringLiteral("cbCompensation"));
    m_compensation->setEditable(true);
    m_compensation->setInsertPolicy(QComboBox::NoInsert);
    m_compensation->addItem(QStringLiteral("Alluminium (TK=225)"));
    m_compensation->addItem(QStringLiteral("Copper (TK=234.5)"));
    m_compensation->setCurrentIndex(-1);
    m_compensation->setMinimumWidth(170);
    // Print twins of the combo box: paper shows its text as plain words, in
    // the box's place, the two twins over each other.
    auto* spot = new QGridLayout;
    spot->setContentsMargins(0, 0, 0, 0);
    spot->addWidget(m_compensation, 0, 0);
    for (const char* twinName : {"lbCompensation", "lbCbCompensation"}) {
        QLabel* twin = makeLabel(line, QString::fromLatin1(twinName));
        twin->setMinimumWidth(170);
        twin->setIndent(TextBoxInset);
        twin->hide();
        spot->addWidget(twin, 0, 0);
    }
    row->addLayout(spot);
    row->addSpacing(16);
    row->addWidget(makeCaption(line, "lbTexteCompensedTemp", "Compensated to:"));
    row->addWidget(makeLabel(line, QStringLiteral("lbTexteCompensedTemp(1)")));
    row->addStretch(1);
    return line;
}

QWidget* frmKVXCondensedReport::buildGraph(QWidget* page)
{
    auto* block = new QWidget(page);
    block->setFixedWidth(ContentWidth);
    auto* lines = new QVBoxLayout(block);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(4);

    // The cursor read-out: current and voltage of the cursor last moved.
    auto* readout = new QHBoxLayout;
    readout->setSpacing(10);
    readout->addWidget(makeCaption(block, "lbCurseur", "Cursor:"));
    readout->addWidget(makeLabel(block, QStringLiteral("lbCurrent")));
    readout->addWidget(makeLabel(block, QStringLiteral("lbVolts")));
    readout->addStretch(1);
    QLabel* unzoom = makeLabel(block, QStringLiteral("lbUnZoom"),
                               QStringLiteral("***Double-click on graph for full size graph."));
    QFont italic = unzoom->font();
    italic.setItalic(true);
    unzoom->setFont(italic);
    unzoom->hide(); // shown only while the graph is zoomed
    readout->addWidget(unzoom);
    auto* zoom = new QCheckBox(QStringLiteral("Zoom"), block);
    zoom->setObjectName(QStringLiteral("ckZoom"));
    readout->addWidget(zoom);
    lines->addLayout(readout);

    m_graph = new KvxKneeChart(block);
    m_graph->setFixedSize(ContentWidth, GraphHeight);
    // A style sheet replaces the inherited palette: the white is said again.
    m_graph->setStyleSheet(QStringLiteral("QChartView { border: 1px solid %1; background: "
                                          "white; }")
                               .arg(QLatin1String(HeadRule)));
    lines->addWidget(m_graph);
    return block;
}

KvxKneeChart& frmKVXCondensedReport::CWGraph1() const
{
    const_cast<frmKVXCondensedReport*>(this)->makeControls();
    return *m_graph;
}

QComboBox* frmKVXCondensedReport::cbCompensation() const
{
    const_cast<frmKVXCondensedReport*>(this)->makeControls();
    return m_compensation;
}

QFrame* frmKVXCondensedReport::frKVXReport() const
{
    const_cast<frmKVXCondensedReport*>(this)->makeControls();
    return m_page;
}

QLabel* frmKVXCondensedReport::imgLogo() const
{
    const_cast<frmKVXCondensedReport*>(this)->makeControls();
    return m_logo;
}

QLabel* frmKVXCondensedReport::cell(KvxColumn column, int n) const
{
    const_cast<frmKVXCondensedReport*>(this)->makeControls();
    return m_cells.at(static_cast<std::size_t>(column)).at(static_cast<std::size_t>(n));
}

void frmKVXCondensedReport::adoptDesignTexts()
{
    KvxCondensedReportModel& model = kvxCondensedReport();
    for (int c = 0; c < KvxColumnCount; ++c) {
        QString& head = model.cell(static_cast<KvxReportColumn>(c), 0);
        if (head.isEmpty())
            head = QString::fromLatin1(Columns[static_cast<std::size_t>(c)].head);
    }
    if (model.lbKneeType.isEmpty())
        model.lbKneeType = QString::fromLatin1(DesignedKneeType);
}

void frmKVXCondensedReport::connectEvents()
{
    const auto command = [this](const char* name, void (*logic)()) {
        QAction* entry = findChild<QAction*>(QString::fromLatin1(name));
        connect(entry, &QAction::triggered, this, [this, name, logic] {
            runCommand(name, logic);
            mirrorModel();
        });
    };
    command("mnKneeIEEE30", &mnKneeIEEE30_Click);
    command("mnKneeIEEE45", &mnKneeIEEE45_Click);
    command("mnKneeAINSIIEC1050", &mnKneeAINSIIEC1050_Click);
    command("mnOk", &mnOk_Click);
    connect(findChild<QAction*>(QStringLiteral("mnPrint")), &QAction::triggered, this, [this] {
        const CommandScope scope(QStringLiteral("mnPrint_Click"));
        mnPrint_Click();
    });
    // The export reads the file of this report again and fills the template.
    command("mnExcel", &KvxReport_mnExcel_Click);

    connect(VScroll1(), &QScrollBar::valueChanged, this, [this](int value) {
        KvxReport_VScroll1_Change(value);
        mirrorModel();
    });
}

void frmKVXCondensedReport::connectPage()
{
    // What the operator types into the head is the report's working copy.
    for (const KvxReportHeaderControl& control : kvxReportHeaderControls()) {
        const QString name = QString::fromLatin1(control.control);
        if (auto* box = findChild<QLineEdit*>(name)) {
            connect(box, &QLineEdit::textEdited, this, [name](const QString& text) {
                if (QString* field = kvxCondensedReport().headerField(name))
                    *field = text;
            });
        }
    }

    connect(m_compensation, &QComboBox::activated, this,
            [this](int index) { cbCompensation_Click(*m_compensation, index); });
    connect(m_compensation->lineEdit(), &QLineEdit::textEdited, this,
            [](const QString& text) { kvxCondensedReport().cbCompensationText = text; });

    auto* zoom = findChild<QCheckBox*>(QStringLiteral("ckZoom"));
    connect(zoom, &QCheckBox::clicked, this, [this](bool checked) {
        KvxReport_ckZoom_Click(checked);
        mirrorModel();
    });
    connect(m_graph, &KvxKneeChart::cursorDragged, this, [this](int n, double x, double y) {
        KvxReport_CWGraph1_CursorChange(n, x, y);
        mirrorModel();
    });
    connect(m_graph, &KvxKneeChart::zoomEnded, this,
            [this](double xMin, double xMax, double yMin, double yMax) {
                KvxReport_CWGraph1_ZoomEnd(xMin, xMax, yMin, yMax);
                mirrorModel();
            });
    connect(m_graph, &KvxKneeChart::doubleClicked, this, [this] {
        KvxReport_CWGraph1_DblClick();
        mirrorModel();
    });
}

void frmKVXCondensedReport::loadLogo(const QString& /*path*/, double left, double top)
{
    logoProcessing().loadAndFit(left, top);
}

void frmKVXCondensedReport::loadModel()
{
    KvxReport_Form_Load();
}

void frmKVXCondensedReport::closeEvent(QCloseEvent* event)
{
    KvxReport_Form_Unload();
    event->accept();
}

void frmKVXCondensedReport::setShown(bool shown)
{
    kvxCondensedReport().shown = shown;
}

void frmKVXCondensedReport::compensationPicked(int index, const QString& text)
{
    KvxCondensedReportModel& model = kvxCondensedReport();
    model.cbCompensationIndex = index;
    model.cbCompensationText = text;
    KvxReport_cbCompensation_Click();
}

namespace {

// The controls that are for the screen only, hidden on paper.
constexpr std::array<const char*, 5> ScreenOnly = {"cbCompensation", "lbCurrent", "lbVolts",
                                                   "lbCurseur", "ckZoom"};

// The text boxes of the head that paper shows as their label twins.
constexpr std::array<const char*, 13> TwinnedBoxes = {
    "txtCompany", "txtClass",       "txtCTSerialNumber", "txtDesignator", "txtManufacturer",
    "txtNotes",   "txtOperator",    "txtPhase",          "txtPosition",   "txtRatio",
    "txtStation", "txtTemperature", "txtVoltageRating"};

} // namespace

void frmKVXCondensedReport::mnPrint_Click()
{
    // A cancelled dialog, or a printer that cannot start, ends the command
    // before anything has changed, without a word.
    const PrintAnswer answer = showPrinterDialog(PrintRequest{});
    if (answer.cancelled)
        return;
    std::unique_ptr<PrintPages> pages = openPrintPages(answer);
    if (!pages || !pages->begin())
        return;
    printReportPages(*pages, answer.copies);
    pages->end();
}

void frmKVXCondensedReport::printReportPages(PrintPages& pages, int copies)
{
    makeControls();
    // The page is paper-white on the screen already, so its colours stay; the
    // scroll bar is the window's, not the page's, and never reaches paper.
    const auto label = [this](const char* name) {
        return findChild<QLabel*>(QString::fromLatin1(name));
    };
    const QString compensation = m_compensation->currentText();
    std::vector<QWidget*> hidden;
    for (const char* name : ScreenOnly)
        if (auto* control = findChild<QWidget*>(QString::fromLatin1(name));
            control && !control->isHidden()) {
            control->hide();
            hidden.push_back(control);
        }
    label("lbCompensation")->setText(compensation);
    label("lbCompensation")->show();
    std::vector<QLineEdit*> swapped;
    for (const char* name : TwinnedBoxes) {
        auto* box = findChild<QLineEdit*>(QString::fromLatin1(name));
        QLabel* twin =
            findChild<QLabel*>(QStringLiteral("lbTxt") + QString::fromLatin1(name).mid(3));
        if (!box || !twin)
            continue;
        twin->setText(box->text());
        twin->show();
        box->hide();
        swapped.push_back(box);
    }
    label("lbCbCompensation")->setText(compensation);
    label("lbCbCompensation")->show();
    // The page settles in its print form before the first copy, so that all
    // copies are alike: its inner lines lay themselves out on a first render,
    // which goes nowhere.
    m_page->adjustSize();
    {
        QPicture nowhere;
        QPainter painter(&nowhere);
        paintForm(*m_page, painter, QRectF(QPointF(0, 0), QSizeF(m_page->size())));
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    m_page->adjustSize();

    // Each copy is a page of its own, the graph as it stands on the screen.
    for (int copy = 1; copy <= copies; ++copy) {
        if (copy > 1)
            pages.newPage();
        printForm(*m_page, pages);
    }

    // Back as it was, in the reverse order.
    label("lbCbCompensation")->hide();
    for (QLineEdit* box : swapped) {
        findChild<QLabel*>(QStringLiteral("lbTxt") + box->objectName().mid(3))->hide();
        box->show();
    }
    for (QWidget* control : hidden)
        control->show();
    label("lbCompensation")->hide();
    m_page->adjustSize();
}

void frmKVXCondensedReport::mirrorModel()
{
    // Until its load the window keeps its design; the model's cells count
    // from the load on.
    if (!m_loaded)
        return;
    const KvxCondensedReportModel& model = kvxCondensedReport();
    findChild<QAction*>(QStringLiteral("mnSave"))->setEnabled(model.mnSaveEnabled);
    findChild<QAction*>(QStringLiteral("mnWord"))->setEnabled(model.mnWordEnabled);
    findChild<QMenu*>(QStringLiteral("mnExport"))->menuAction()->setVisible(model.mnExportVisible);
    {
        const QSignalBlocker quiet(VScroll1());
        VScroll1()->setValue(model.VScroll1);
    }
    m_area->setPageTop(twipsToPixels(model.frKVXReportTop, m_area->logicalDpiY()));
    // A page not made yet shows the model once it is.
    if (!controlsMade())
        return;

    for (int c = 0; c < KvxColumnCount; ++c) {
        const auto column = static_cast<KvxColumn>(c);
        const auto modelColumn = static_cast<KvxReportColumn>(c);
        for (int n = 0; n <= RowCount; ++n) {
            QLabel* label = cell(column, n);
            const QString& text = model.cell(modelColumn, n);
            if (n == 0) {
                fitHeadText(*label, text);
                // A last reference number of -1 hides the heads too.
                label->setVisible(model.rowVisible(0));
                continue;
            }
            if (label->text() != text)
                fitCellText(*label, text);
            label->setVisible(model.rowVisible(n));
        }
    }

    for (const KvxReportHeaderControl& control : kvxReportHeaderControls()) {
        const QString name = QString::fromLatin1(control.control);
        const QString& text = model.*control.cell;
        if (auto* box = findChild<QLineEdit*>(name)) {
            if (box->text() != text) {
                box->setText(text);
                box->setCursorPosition(0); // a long text shows its start
            }
        } else if (auto* label = findChild<QLabel*>(name)) {
            label->setText(text);
        }
    }

    mirrorCompensation(*m_compensation, model.cbCompensationItems, model.cbCompensationIndex,
                       model.cbCompensationText);
    findChild<QLabel*>(QStringLiteral("lbTexteCompensedTemp(1)"))
        ->setText(model.lbTexteCompensedTemp1);

    findChild<QLabel*>(QStringLiteral("lbVolts"))->setText(model.lbVolts);
    findChild<QLabel*>(QStringLiteral("lbCurrent"))->setText(model.lbCurrent);
    findChild<QCheckBox*>(QStringLiteral("ckZoom"))->setChecked(model.ckZoom);
    findChild<QLabel*>(QStringLiteral("lbUnZoom"))->setVisible(model.lbUnZoomVisible);

    m_graph->mirror(kvxReportGraph(), model.plotLegend);
}

void frmKVXCondensedReport::FillTextsKvxCondensedReport()
{
    if (!m_loaded)
        Form_Load();
    fillWindowTexts(*this, QStringLiteral("FillTextsKvxCondensedReport"));
    // The fill wrote the heads and the knee caption into their labels; the
    // model holds them from now on.
    KvxCondensedReportModel& model = kvxCondensedReport();
    for (int c = 0; c < KvxColumnCount; ++c) {
        const QString head =
            indexedName(QString::fromLatin1(Columns[static_cast<std::size_t>(c)].array), 0);
        model.cell(static_cast<KvxReportColumn>(c), 0) = controlText(*this, head);
    }
    model.lbKneeType = controlText(*this, QStringLiteral("lbKneeType"));
    mirrorModel();
}

void frmKVXCondensedReport::applyWindowText(const WindowTextEntry& entry, const QString& text)
{
    KvxCondensedReportModel& model = kvxCondensedReport();
    switch (entry.target) {
    case TextTarget::ListItem0:
    case TextTarget::ListItem1: {
        const int index = entry.target == TextTarget::ListItem0 ? 0 : 1;
        while (model.cbCompensationItems.size() <= index)
            model.cbCompensationItems.append(QString());
        model.cbCompensationItems[index] = text;
        break;
    }
    case TextTarget::AxisXCaption:
        kvxReportGraph().setAxisCaption(KneeGraph::AxisX, text);
        break;
    case TextTarget::AxisYCaption:
        kvxReportGraph().setAxisCaption(KneeGraph::AxisY, text);
        break;
    default:
        break;
    }
}

} // namespace quenby
