#include "zbl/ui/ZblPageParts.h"

#include "report/ui/FittedText.h"

#include "report/ui/ReportWindow.h"
#include "zbl/model/VGraph.h"

#include <QChartView>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLineSeries>
#include <QVBoxLayout>
#include <QValueAxis>

#include <algorithm>

namespace quenby {

namespace {
// The table is dense: 315 twips leave a report row 21 pixels, and the
// resistance column is 65 pixels wide for a text like "1.523 mOhm".
constexpr int TableFontPixels = 11;
// The room the title line keeps for the logo at its left, and the smallest
// font a long title may take.
constexpr int TitleLogoRoom = 200;
constexpr int SmallestTitleFontPixels = 13;

QFont tableFont(QFont font, int pixels)
{
    font.setPixelSize(pixels);
    font.setStretch(QFont::Condensed);
    return font;
}
} // namespace

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
    page.setAutoFillBackground(true);
}

QLabel* makeLabel(QWidget* parent, const QString& name, const QString& text)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

QLineEdit* makeTextBox(QWidget* parent, const QString& name, const QString& text)
{
    auto* box = new QLineEdit(text, parent);
    box->setObjectName(name);
    return box;
}

QFrame* makeFrame(QWidget* parent, const QString& name)
{
    auto* frame = new QFrame(parent);
    frame->setObjectName(name);
    return frame;
}

QLabel* makeTableLabel(QWidget* parent, const QString& name, const QString& text)
{
    QLabel* label = makeLabel(parent, name, text);
    label->setFrameShape(QFrame::Box);
    label->setLineWidth(1);
    label->setAlignment(Qt::AlignCenter);
    label->setFont(tableFont(label->font(), TableFontPixels - 1));
    return label;
}

QLineEdit* makeTableTextBox(QWidget* parent, const QString& name, const QString& text)
{
    QLineEdit* box = makeTextBox(parent, name, text);
    box->setAlignment(Qt::AlignCenter);
    box->setTextMargins(0, 0, 0, 0);
    box->setFont(tableFont(box->font(), TableFontPixels));
    return box;
}

QLabel* makeChannelLabel(QWidget* parent)
{
    QLabel* channel = makeLabel(parent, QStringLiteral("lbCHAN"), {});
    QFont bold = channel->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.25);
    channel->setFont(bold);
    channel->setAlignment(Qt::AlignCenter);
    return channel;
}

QRect logoRoom()
{
    return {pixelsOfTwips(LogoLeftTwips), pixelsOfTwips(LogoTopTwips), 160, 64};
}

QLabel* makeLogo(QWidget* parent)
{
    QLabel* logo = makeLabel(parent, QStringLiteral("imgLogo"), {});
    logo->setGeometry(logoRoom());
    logo->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return logo;
}

QWidget* makeTitleBlock(QWidget* parent)
{
    auto* block = new QWidget(parent);
    auto* lines = new QVBoxLayout(block);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(2);

    QLabel* device = makeLabel(block, QStringLiteral("lbDeviceTestReport"), QStringLiteral("ZBL"));
    QFont big = device->font();
    big.setPointSizeF(big.pointSizeF() * 1.8);
    big.setBold(true);
    device->setFont(big);

    QLabel* kind = makeLabel(block, QStringLiteral("lbTexteTestReport"),
                             QStringLiteral("Winding Resistance Test Report"));
    QFont bold = kind->font();
    bold.setPointSizeF(bold.pointSizeF() * 1.25);
    bold.setBold(true);
    kind->setFont(bold);

    for (QLabel* title : {device, kind}) {
        title->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        lines->addWidget(title);
    }
    return block;
}

void addHeadField(QGridLayout& grid, int row, int pair, QLabel* caption, QWidget* value)
{
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    grid.addWidget(caption, row, 2 * pair);
    if (value)
        grid.addWidget(value, row, 2 * pair + 1);
}

QWidget* makeTestHead(QWidget* page, HeadKind kind, int pageWidth, int margin)
{
    auto* head = new QWidget(page);
    auto* lines = new QVBoxLayout(head);
    lines->setContentsMargins(margin, pixelsOfTwips(LogoTopTwips), margin, 0);
    lines->setSpacing(10);

    // The logo lies over the left of the title line; it is placed by hand.
    auto* titleLine = new QHBoxLayout;
    titleLine->addSpacing(TitleLogoRoom);
    titleLine->addStretch(1);
    titleLine->addWidget(makeTitleBlock(head));
    lines->addLayout(titleLine);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(kind == HeadKind::Report ? 4 : 2);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setColumnMinimumWidth(2, 120);
    // Long captions of a language must not squeeze the values out of sight.
    grid->setColumnMinimumWidth(1, 150);
    grid->setColumnMinimumWidth(3, 150);
    // A caption longer than its column breaks onto a second line rather than
    // being cut off.
    const auto caption = [head](const char* name, const char* text) {
        QLabel* label = makeLabel(head, QString::fromLatin1(name), QString::fromLatin1(text));
        label->setWordWrap(true);
        return label;
    };
    // File, date and instrument come from the test and are never edited.
    const auto value = [head](const char* name) {
        return makeLabel(head, indexedName(QString::fromLatin1(name), 1), {});
    };
    const auto box = [head, kind](const char* name) {
        QLineEdit* edit = makeTextBox(head, QString::fromLatin1(name));
        // The graph pages only repeat what the report says.
        edit->setReadOnly(kind != HeadKind::Report);
        edit->setFrame(kind != HeadKind::GraphPaper);
        return edit;
    };

    addHeadField(*grid, 0, 0, caption("lbTexteFileName", "File name:"), value("lbTexteFileName"));
    addHeadField(*grid, 1, 0, caption("lbTexteDate", "Date:"), value("lbTexteDate"));
    addHeadField(*grid, 2, 0, caption("lbTexteInstrumentSN", "Instrument S/N:"),
                 value("lbTexteInstrumentSN"));
    addHeadField(*grid, 3, 0, caption("lbTexteTemperature", "Temperature:"), box("txtTemperature"));
    int row = 4;
    if (kind == HeadKind::Report) {
        addHeadField(*grid, 4, 0, caption("lbTexteCompensedTemp", "Compensated to:"),
                     value("lbTexteCompensedTemp"));
        auto* compensation = new PageComboBox(head);
        compensation->setObjectName(QStringLiteral("cbCompensation"));
        compensation->setEditable(true);
        addHeadField(*grid, 5, 0, caption("lbTexteCompensedFactor", "Compensation:"), compensation);
        row = 6;
    }

    addHeadField(*grid, 0, 1, caption("lbTexteXFRSerialNumber", "XFR serial number:"),
                 box("txtXFRSerialNumber"));
    addHeadField(*grid, 1, 1, caption("lbTexteCompany", "Company:"), box("txtCompany"));
    addHeadField(*grid, 2, 1, caption("lbTexteStation", "Station:"), box("txtStation"));
    addHeadField(*grid, 3, 1, caption("lbTexteDesignator", "Designation:"), box("txtDesignator"));
    addHeadField(*grid, 4, 1, caption("lbTexteManufacturer", "Manufacturer:"),
                 box("txtManufacturer"));
    addHeadField(*grid, 5, 1, caption("lbTexteOperator", "Operator:"), box("txtOperator"));
    row = std::max(row, 6);

    addHeadField(*grid, row, 0, caption("lbTexteNotes", "Notes:"), nullptr);
    grid->addWidget(box("txtNotes"), row, 1, 1, 3);
    lines->addLayout(grid);

    head->setFixedWidth(pageWidth);
    head->adjustSize();
    return head;
}

VGraphChart makeVGraphChart(QWidget* parent)
{
    VGraphChart graph;
    graph.view = new QChartView(parent);
    graph.view->setObjectName(QStringLiteral("CWGraph1"));
    graph.view->setRenderHint(QPainter::Antialiasing);
    QChart* chart = graph.view->chart();
    chart->legend()->hide();
    chart->setBackgroundRoundness(0);

    graph.plot = new QLineSeries(chart);
    graph.plot->setPointsVisible(true);
    chart->addSeries(graph.plot);

    graph.axisX = new QValueAxis(chart);
    graph.axisX->setLabelFormat(QStringLiteral("%.0f"));
    graph.axisX->setTickCount(VGraphXTickCount);
    graph.axisY = new QValueAxis(chart);
    // The labels take as many decimals as their range needs when the graph
    // is drawn.
    graph.axisY->setTickCount(VGraphYTickCount);
    chart->addAxis(graph.axisX, Qt::AlignBottom);
    chart->addAxis(graph.axisY, Qt::AlignLeft);
    graph.plot->attachAxis(graph.axisX);
    graph.plot->attachAxis(graph.axisY);
    return graph;
}

void fitTestHeadTitles(QWidget& page, int pageWidth, int margin)
{
    const int room = pageWidth - 2 * margin - TitleLogoRoom;
    for (const char* name : {"lbDeviceTestReport", "lbTexteTestReport"})
        fitOneLine(*page.findChild<QLabel*>(QString::fromLatin1(name)), room,
                   SmallestTitleFontPixels);
}

} // namespace quenby
