#include "zbl/ui/frmPrintZBLBasicReport.h"

#include "localisation/ui/WindowTexts.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace quenby {

namespace {

struct PrintColumn
{
    const char* cells;    // the label array of the column
    const char* head;     // the head that the print copies from the report
    const char* textHead; // the head that the language fills
    const char* caption;
    int widthTwips;
};

constexpr std::array<PrintColumn, 8> ChannelColumns = {{
    {"lbResultTapA", "lbTAPA", "lbTexteTAPA", "Tap", 590},
    {"lbResultWindingA", "lbWindingA", "lbTexteWindingA", "Winding", 1030},
    {"lbResultResA", "lbResA", "lbTexteResistanceA", "Resistance", 970},
    {"lbResultCompResA", "lbCompensedResistanceA", "lbTexteCompensedResistanceA", "Compensated",
     1460},
    {"lbResultTapB", "lbTAPB", "lbTexteTAPB", "Tap", 590},
    {"lbResultWindingB", "lbWindingB", "lbTexteWindingB", "Winding", 1030},
    {"lbResultResB", "lbResB", "lbTexteResistanceB", "Resistance", 970},
    {"lbResultCompResB", "lbCompensedResistanceB", "lbTexteCompensedResistanceB", "Compensated",
     1460},
}};
constexpr auto TotalTimeCells = "lbtotTime";
constexpr int TotalTimeWidthTwips = 770;

// The sheet and its frames in twips, as the first page places them: the
// client area is 8.5 by 8.8 inches.
constexpr int PageWidthTwips = 12240;
constexpr int PageHeightTwips = 12672;
constexpr int HeaderTopTwips = 150;
constexpr int DataTopTwips = 4250;
constexpr int PageNumberTopTwips = 12500;
constexpr int TableLeftTwips = 570;
constexpr int RowHeightTwips = 225;
constexpr int ChannelHeadHeightTwips = 225;
constexpr int ColumnHeadHeightTwips = 300;

} // namespace

frmPrintZBLBasicReport& frmPrintZBLBasicReport::instance()
{
    static frmPrintZBLBasicReport* window =
        new frmPrintZBLBasicReport; // lives until the process ends
    return *window;
}

frmPrintZBLBasicReport::frmPrintZBLBasicReport()
{
    setObjectName(QStringLiteral("frmPrintZBLBasicReport"));
    setWindowTitle(QStringLiteral("ZBL Basic Report"));
    makePaper(*this);
    setFixedSize(pixelsOfTwips(PageWidthTwips), pixelsOfTwips(PageHeightTwips));

    QFrame* header = makeFrame(this, QStringLiteral("frHeaderPrint"));
    header->setGeometry(0, pixelsOfTwips(HeaderTopTwips), width(),
                        pixelsOfTwips(DataTopTwips - HeaderTopTwips));
    buildHeader(header);

    QFrame* data = makeFrame(this, QStringLiteral("frDataPrint"));
    data->setGeometry(0, pixelsOfTwips(DataTopTwips), width(),
                      pixelsOfTwips(PageNumberTopTwips - DataTopTwips));
    buildTable(data);

    QFrame* pageNumber = makeFrame(this, QStringLiteral("frmPageNumber"));
    pageNumber->setGeometry(0, pixelsOfTwips(PageNumberTopTwips), width(),
                            pixelsOfTwips(PageHeightTwips - PageNumberTopTwips));
    auto* pageLine = new QHBoxLayout(pageNumber);
    pageLine->setContentsMargins(0, 0, pixelsOfTwips(TableLeftTwips), 0);
    QLabel* page = makeLabel(pageNumber, QStringLiteral("lbPage"), QStringLiteral("Page 1 / 1"));
    QFont small = page->font();
    small.setPixelSize(10);
    page->setFont(small);
    pageLine->addStretch(1);
    pageLine->addWidget(page);
}

void frmPrintZBLBasicReport::buildHeader(QWidget* frame)
{
    auto* lines = new QVBoxLayout(frame);
    const int margin = pixelsOfTwips(TableLeftTwips);
    lines->setContentsMargins(margin, pixelsOfTwips(LogoTopTwips - HeaderTopTwips), margin, 0);
    lines->setSpacing(8);

    auto* titleLine = new QHBoxLayout;
    titleLine->addSpacing(200);
    titleLine->addStretch(1);
    titleLine->addWidget(makeTitleBlock(frame));
    lines->addLayout(titleLine);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setColumnMinimumWidth(2, 120);
    grid->setColumnMinimumWidth(1, 150);
    grid->setColumnMinimumWidth(3, 150);
    const auto label = [frame](const char* name, const char* text = "") {
        return makeLabel(frame, QString::fromLatin1(name), QString::fromLatin1(text));
    };
    // The print takes no instrument serial from the report: its caption
    // stands alone.
    addHeadField(*grid, 0, 0, label("lbTexteFileName", "File name:"), label("lbFileName"));
    addHeadField(*grid, 1, 0, label("lbTexteDate", "Date:"), label("lbDate"));
    addHeadField(*grid, 2, 0, label("lbTexteInstrumentSN", "Instrument S/N:"), nullptr);
    addHeadField(*grid, 3, 0, label("lbTexteTemperature", "Temperature:"), label("LBTemperature"));
    addHeadField(*grid, 4, 0, label("lbTexteCompensedTemp", "Compensated to:"),
                 label("lbCompensatedTemp"));
    addHeadField(*grid, 5, 0, label("lbTexteCompensedFactor", "Compensation:"),
                 label("lbCompensendFactor"));
    addHeadField(*grid, 0, 1, label("lbTexteXFRSerialNumber", "XFR serial number:"),
                 label("LBXFRSerialNumber"));
    addHeadField(*grid, 1, 1, label("lbTexteCompany", "Company:"), label("LBCompany"));
    addHeadField(*grid, 2, 1, label("lbTexteStation", "Station:"), label("lbStation"));
    addHeadField(*grid, 3, 1, label("lbTexteDesignator", "Designation:"), label("LBDesignator"));
    addHeadField(*grid, 4, 1, label("lbTexteManufacturer", "Manufacturer:"),
                 label("lbManufacturer"));
    addHeadField(*grid, 5, 1, label("lbTexteOperator", "Operator:"), label("lbOperator"));
    addHeadField(*grid, 6, 0, label("lbTexteNotes", "Notes:"), nullptr);
    QLabel* notes = label("lbNotes");
    notes->setWordWrap(true);
    notes->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    grid->addWidget(notes, 6, 1, 1, 3);
    lines->addLayout(grid);
    lines->addStretch(1);

    makeLogo(frame)->raise();
}

void frmPrintZBLBasicReport::buildTable(QWidget* frame)
{
    // Lefts from running sums in twips, so that neighbouring cells meet.
    std::array<int, 10> left{};
    left[0] = TableLeftTwips;
    for (std::size_t c = 0; c < ChannelColumns.size(); ++c)
        left[c + 1] = left[c] + ChannelColumns[c].widthTwips;
    left[9] = left[8] + TotalTimeWidthTwips;
    const auto x = [&left](std::size_t c) { return pixelsOfTwips(left[c]); };
    const auto width = [&left](std::size_t c) {
        return pixelsOfTwips(left[c + 1]) - pixelsOfTwips(left[c]);
    };

    // Each box reaches one pixel into its right and lower neighbours, so that
    // neighbours share one line instead of drawing two.
    const auto place = [](QWidget* box, const QRect& r) {
        box->setGeometry(r.adjusted(0, 0, 1, 1));
    };
    const auto head = [frame](const QString& name, const QString& text) {
        QLabel* label = makeTableLabel(frame, name, text);
        QFont bold = label->font();
        bold.setBold(true);
        label->setFont(bold);
        return label;
    };
    // The language fills the heads named as on the report, and the print
    // copies the report's heads into lbCHANA and its neighbours: only the
    // latter are on paper.
    const auto headPair = [&head, &place](const char* shown, const char* filled, const char* text,
                                          const QRect& where) {
        place(head(QString::fromLatin1(shown), QString::fromLatin1(text)), where);
        QLabel* hidden = head(QString::fromLatin1(filled), QString::fromLatin1(text));
        place(hidden, where);
        hidden->hide();
    };

    const int top = 0;
    const int channelHead = pixelsOfTwips(ChannelHeadHeightTwips);
    const int columnHead = pixelsOfTwips(ColumnHeadHeightTwips);
    headPair("lbCHANA", "lbTexteCHANA", "CHANNEL A", QRect(x(0), top, x(4) - x(0), channelHead));
    headPair("lbCHANB", "lbTexteCHANB", "CHANNEL B", QRect(x(4), top, x(8) - x(4), channelHead));
    const int columnTop = top + channelHead;
    for (std::size_t c = 0; c < ChannelColumns.size(); ++c) {
        const PrintColumn& look = ChannelColumns[c];
        headPair(look.head, look.textHead, look.caption,
                 QRect(x(c), columnTop, width(c), columnHead));
    }
    QLabel* border = makeTableLabel(frame, QStringLiteral("lbTotalTimeBdr"));
    place(border, QRect(x(8), top, width(8), channelHead + columnHead));
    QLabel* totalTime = head(QStringLiteral("lbTotalTime"), QStringLiteral("Total time"));
    totalTime->setFrameShape(QFrame::NoFrame);
    totalTime->setWordWrap(true);
    totalTime->setGeometry(border->geometry().adjusted(1, 1, -1, -1));

    const int rowTop = columnTop + columnHead;
    for (int r = 0; r < RowsPerPage; ++r) {
        const int y = rowTop + pixelsOfTwips(r * RowHeightTwips);
        const int h = pixelsOfTwips((r + 1) * RowHeightTwips) - pixelsOfTwips(r * RowHeightTwips);
        for (std::size_t c = 0; c < static_cast<std::size_t>(ZblColumnCount); ++c) {
            const QString array = c < ChannelColumns.size()
                                      ? QString::fromLatin1(ChannelColumns[c].cells)
                                      : QString::fromLatin1(TotalTimeCells);
            QLabel* cell = makeTableLabel(frame, indexedName(array, r));
            place(cell, QRect(x(c), y, width(c), h));
            m_cells[c][static_cast<std::size_t>(r)] = cell;
        }
    }
}

QLabel* frmPrintZBLBasicReport::cell(ZblColumn column, int row) const
{
    return m_cells.at(static_cast<std::size_t>(column)).at(static_cast<std::size_t>(row));
}

void frmPrintZBLBasicReport::FillTextsPrintZblBasicReport()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsPrintZblBasicReport"));
}

} // namespace quenby
