#include "zbl/ui/frmPrintZBLBasicReport.h"

#include "localisation/ui/WindowTexts.h"
#include "report/ui/FittedText.h"
#include "shell/ui/FormSize.h"
#include "zbl/model/ZblSession.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace quenby {

namespace {

// The heads of the channel columns, in the order of ZblReportColumn: the
// head the print copies from the report, and the head the language fills.
struct PrintHead
{
    const char* shown;
    const char* filled;
    const char* caption;
};

constexpr std::array<PrintHead, ZblReportColumnCount - 1> ColumnHeads = {{
    {"lbTAPA", "lbTexteTAPA", "Tap"},
    {"lbWindingA", "lbTexteWindingA", "Winding"},
    {"lbResA", "lbTexteResistanceA", "Resistance"},
    {"lbCompensedResistanceA", "lbTexteCompensedResistanceA", "Compensated"},
    {"lbTAPB", "lbTexteTAPB", "Tap"},
    {"lbWindingB", "lbTexteWindingB", "Winding"},
    {"lbResB", "lbTexteResistanceB", "Resistance"},
    {"lbCompensedResistanceB", "lbTexteCompensedResistanceB", "Compensated"},
}};

// The print cell arrays, in the order of ZblReportColumn.
constexpr std::array<const char*, ZblReportColumnCount> CellArrays = {
    "lbResultTapA",     "lbResultWindingA", "lbResultResA",     "lbResultCompResA", "lbResultTapB",
    "lbResultWindingB", "lbResultResB",     "lbResultCompResB", "lbtotTime"};

constexpr int TableLeftTwips = 570;
// The frame and the insets of a head, both sides, and its smallest font.
constexpr int HeadInsets = 6;
constexpr int SmallestHeadFontPixels = 6;

// A box of the table frame: each reaches one pixel into its right and lower
// neighbours, so that neighbours share one line instead of drawing two.
QRect tableBox(const ZblTwipRect& r)
{
    const int left = pixelsOfTwips(r.left);
    const int top = pixelsOfTwips(r.top);
    return {left, top, pixelsOfTwips(r.left + r.width) - left + 1,
            pixelsOfTwips(r.top + r.height) - top + 1};
}

} // namespace

namespace {
frmPrintZBLBasicReport* made = nullptr; // made on first touch, lives until the process ends
} // namespace

frmPrintZBLBasicReport& frmPrintZBLBasicReport::instance()
{
    if (!made)
        new frmPrintZBLBasicReport;
    return *made;
}

frmPrintZBLBasicReport* frmPrintZBLBasicReport::existing()
{
    return made;
}

frmPrintZBLBasicReport::frmPrintZBLBasicReport()
{
    made = this; // the logo's load asks for the windows there are
    setObjectName(QStringLiteral("frmPrintZBLBasicReport"));
    setWindowTitle(QStringLiteral("ZBL Basic Report"));
    makePaper(*this);
    SetFormClientSize(*this, ZblPrintWidthInches, ZblPrintHeightInches);
    const int sheetHeight = height();

    m_header = makeFrame(this, QStringLiteral("frHeaderPrint"));
    m_header->setGeometry(0, pixelsOfTwips(ZblPrintHeaderTop), width(),
                          pixelsOfTwips(ZblPrintDataTopFirst - ZblPrintHeaderTop));
    buildHeader(m_header);

    m_data = makeFrame(this, QStringLiteral("frDataPrint"));
    m_data->setGeometry(0, pixelsOfTwips(ZblPrintDataTopFirst), width(),
                        pixelsOfTwips(ZblPrintPageNumberTop - ZblPrintDataTopFirst));
    buildTable(m_data);

    m_pageNumber = makeFrame(this, QStringLiteral("frmPageNumber"));
    m_pageNumber->setGeometry(0, pixelsOfTwips(ZblPrintPageNumberTop), width(),
                              sheetHeight - pixelsOfTwips(ZblPrintPageNumberTop));
    auto* pageLine = new QHBoxLayout(m_pageNumber);
    pageLine->setContentsMargins(0, 0, pixelsOfTwips(TableLeftTwips), 0);
    m_page = makeLabel(m_pageNumber, QStringLiteral("lbPage"), QStringLiteral("Page 1 / 1"));
    QFont small = m_page->font();
    small.setPixelSize(10);
    m_page->setFont(small);
    pageLine->addStretch(1);
    pageLine->addWidget(m_page);

    // The load: the logo when its file is there.
    loadLogoIfAny(LogoLeftTwips, LogoTopTwips);
    mirror(zblPrintReport());
}

void frmPrintZBLBasicReport::buildHeader(QWidget* frame)
{
    auto* lines = new QVBoxLayout(frame);
    const int margin = pixelsOfTwips(TableLeftTwips);
    lines->setContentsMargins(margin, pixelsOfTwips(LogoTopTwips - ZblPrintHeaderTop), margin, 0);
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

    m_pageLogo.design(makeLogo(frame))->raise();
}

void frmPrintZBLBasicReport::buildTable(QWidget* frame)
{
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
    const auto headPair = [&head](const char* shown, const char* filled, const char* text) {
        QLabel* paper = head(QString::fromLatin1(shown), QString::fromLatin1(text));
        head(QString::fromLatin1(filled), QString::fromLatin1(text))->hide();
        return paper;
    };
    m_channelHeads[0] = headPair("lbCHANA", "lbTexteCHANA", "CHANNEL A");
    m_channelHeads[1] = headPair("lbCHANB", "lbTexteCHANB", "CHANNEL B");
    for (std::size_t c = 0; c < ColumnHeads.size(); ++c)
        m_columnHeads[c] =
            headPair(ColumnHeads[c].shown, ColumnHeads[c].filled, ColumnHeads[c].caption);
    m_totalTimeBorder = makeTableLabel(frame, QStringLiteral("lbTotalTimeBdr"));
    m_totalTime = head(QStringLiteral("lbTotalTime"), QStringLiteral("Total time"));
    m_totalTime->setFrameShape(QFrame::NoFrame);
    m_totalTime->setWordWrap(true);

    for (int r = 0; r < RowsPerPage; ++r)
        for (std::size_t c = 0; c < CellArrays.size(); ++c) {
            QLabel* box = makeTableLabel(frame, indexedName(QString::fromLatin1(CellArrays[c]), r));
            // The rows are designed hidden: each page shows its own.
            box->hide();
            m_cells[c][static_cast<std::size_t>(r)] = box;
        }
}

void frmPrintZBLBasicReport::mirror(const ZblPrintReportModel& m)
{
    const auto text = [this](const char* name, const QString& value) {
        findChild<QLabel*>(QString::fromLatin1(name))->setText(value);
    };
    text("lbFileName", m.lbFileName);
    text("lbDate", m.lbDate);
    text("LBCompany", m.LBCompany);
    text("LBDesignator", m.LBDesignator);
    text("LBXFRSerialNumber", m.LBXFRSerialNumber);
    text("LBTemperature", m.LBTemperature);
    text("lbStation", m.lbStation);
    text("lbManufacturer", m.lbManufacturer);
    text("lbOperator", m.lbOperator);
    text("lbCompensatedTemp", m.lbCompensatedTemp);
    text("lbCompensendFactor", m.lbCompensendFactor);
    text("lbNotes", m.lbNotes);

    const auto frame = [](QWidget& box, const ZblPrintFrame& f) {
        box.move(box.x(), pixelsOfTwips(f.top));
        box.setVisible(f.visible);
    };
    frame(*m_header, m.frHeaderPrint);
    frame(*m_data, m.frDataPrint);
    frame(*m_pageNumber, m.frmPageNumber);
    m_page->setText(m.lbPage);

    // Heads first: the language's texts stand there until a print copies the
    // report's.
    const auto headText = [](QLabel* label, const QString& value) {
        if (!value.isEmpty())
            label->setText(value);
    };
    m_channelHeads[0]->setGeometry(tableBox(m.lbTexteCHANA));
    m_channelHeads[1]->setGeometry(tableBox(m.lbTexteCHANB));
    headText(m_channelHeads[0], m.heads.CHANA);
    headText(m_channelHeads[1], m.heads.CHANB);
    for (std::size_t c = 0; c < m_columnHeads.size(); ++c) {
        m_columnHeads[c]->setGeometry(tableBox(m.columnHead[c]));
        headText(m_columnHeads[c], m.heads.column[c]);
    }
    for (std::size_t c = 0; c < ColumnHeads.size(); ++c)
        findChild<QLabel*>(QString::fromLatin1(ColumnHeads[c].filled))
            ->setGeometry(tableBox(m.columnHead[c]));
    m_totalTimeBorder->setGeometry(tableBox(m.lbTotalTimeBdr));
    m_totalTime->setGeometry(tableBox(m.lbTotalTime).adjusted(1, 1, -2, -2));
    headText(m_totalTime, m.heads.TotalTime);
    // A language's heads may be wider than their columns: their font gives
    // way, down to a size still readable on paper.
    for (QLabel* label : m_channelHeads)
        fitOneLine(*label, label->width() - HeadInsets, SmallestHeadFontPixels);
    for (QLabel* label : m_columnHeads)
        fitOneLine(*label, label->width() - HeadInsets, SmallestHeadFontPixels);

    for (int r = 0; r < RowsPerPage; ++r)
        for (std::size_t c = 0; c < CellArrays.size(); ++c) {
            const auto column = static_cast<ZblReportColumn>(c);
            QLabel* box = m_cells[c][static_cast<std::size_t>(r)];
            box->setGeometry(tableBox(m.cellRect(column, r)));
            box->setText(m.cell(column, r));
            box->setVisible(m.rowVisible(r));
        }
}

QLabel* frmPrintZBLBasicReport::cell(ZblColumn column, int row) const
{
    return m_cells.at(static_cast<std::size_t>(column)).at(static_cast<std::size_t>(row));
}

void frmPrintZBLBasicReport::FillTextsPrintZblBasicReport()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsPrintZblBasicReport"));
    fitTestHeadTitles(*this, width(), pixelsOfTwips(TableLeftTwips));
}

} // namespace quenby
