// Pieces that the ZBL report pages share: the twip unit in which their
// geometry is given, white paper, the head of the test, and labels, text boxes
// and table cells made under their control names.
#pragma once

#include "report/ui/ReportLogo.h"

#include "shell/model/Twips.h"
#include <QString>

class QChartView;
class QFrame;
class QGridLayout;
class QLabel;
class QLineEdit;
class QLineSeries;
class QValueAxis;
class QWidget;

namespace quenby {

// Where the logo goes on every ZBL page, in twips.
inline constexpr int LogoLeftTwips = 1560;
inline constexpr int LogoTopTwips = 240;

// The columns of a ZBL table, left to right, on the report and on paper.
enum class ZblColumn {
    TapA,
    WindingA,
    ResA,
    CompensatedA,
    TapB,
    WindingB,
    ResB,
    CompensatedB,
    TotalTime,
};
inline constexpr int ZblColumnCount = 9;

// "txtTapA(3)": the name of element `index` of a control array.
QString indexedName(const QString& array, int index);

// A page: white, with black ink, whatever the desktop's colours.
void makePaper(QWidget& page);

QLabel* makeLabel(QWidget* parent, const QString& name, const QString& text);
QLineEdit* makeTextBox(QWidget* parent, const QString& name, const QString& text = {});
QFrame* makeFrame(QWidget* parent, const QString& name);

// A bordered cell of a report table, with its text centred: used for the
// column heads and the rows, whose places the table layout sets.
QLabel* makeTableLabel(QWidget* parent, const QString& name, const QString& text = {});
QLineEdit* makeTableTextBox(QWidget* parent, const QString& name, const QString& text = {});

// The channel whose curve a V graph page shows, over the graph.
QLabel* makeChannelLabel(QWidget* parent);

// The logo's place: empty until a logo is loaded onto it.
QLabel* makeLogo(QWidget* parent);
// Where makeLogo puts the logo's box on its page.
QRect logoRoom();

// The two title lines of a page, the instrument and the kind of report, in a
// block to be put beside the logo.
QWidget* makeTitleBlock(QWidget* parent);

// One line of the head: caption in column 2 * pair, its value beside it.
void addHeadField(QGridLayout& grid, int row, int pair, QLabel* caption, QWidget* value);

// The head of the test as the report and the V graph pages show it: titles,
// then file, date and instrument (caption and value as elements 0 and 1 of one
// label array, the caption keeping the plain name the language fills), and the
// text boxes of the test's description.
enum class HeadKind {
    Report,     // editable text boxes, and the temperature compensation
    Graph,      // the description as read-only text boxes
    GraphPaper, // likewise, drawn without frames for the printer
};
// Builds the head at the top of `page`, `pageWidth` pixels wide, with its
// left and right margins of `margin` pixels; returns it laid out.
QWidget* makeTestHead(QWidget* page, HeadKind kind, int pageWidth, int margin);

// The two title lines of the test head on `page` (made by makeTestHead),
// after a language
// has put its texts in: a title wider than the room right of the logo takes
// a smaller font.
void fitTestHeadTitles(QWidget& page, int pageWidth, int margin);

// The V graph: one X-Y plot of the resistance against the position of the row,
// on a linear pair of axes.
struct VGraphChart
{
    QChartView* view = nullptr; // named "CWGraph1"
    QValueAxis* axisX = nullptr;
    QValueAxis* axisY = nullptr;
    QLineSeries* plot = nullptr;
};
VGraphChart makeVGraphChart(QWidget* parent);

} // namespace quenby
