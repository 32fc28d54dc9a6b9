// quenby-kvx-templates <language folder> <output folder>: writes the workbook
// templates of the KVX spreadsheet export, TMP2.xlsx (English) and
// TMP2-en.xlsx, TMP2-fr.xlsx, TMP2-polish.xlsx, into <output folder>. The
// files committed under templates/ were made with it from lang/.
//
// Each template has one worksheet laid out as the export fills it: the
// labels of the header cells and the column heads of the table in the
// template's language (taken from the language files, so that they read as
// the report window does), bordered cells for the ten rows, a column of
// curve names beside the curve rows P4:IV23, a chart of the ten excitation
// curves (current across, volts up, both logarithmic) that reads those rows,
// and a print setup of one landscape page. The entries carry a fixed time, so
// the same input gives the same bytes.
#include "kvx/model/KvxExcelExport.h"
#include "kvx/model/KvxTestRecord.h"
#include "kvx/model/XlsxWorkbook.h"
#include "localisation/model/LanguageLookup.h"
#include "shell/model/RuntimeError.h"
#include "tools/ToolSessions.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <array>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <vector>

using namespace quenby;

namespace {

// The texts of one template that no language file holds.
struct TemplateLanguage
{
    const char* suffix;   // "" for the plain TMP2.xlsx
    const char* langFile; // the language file of the labels
    const char* sheetName;
    const char* chartTitle;
    const char* curveHead; // above the curve names
};

const std::array<TemplateLanguage, 4> Languages = {{
    {"", "en.lng", "KVX Report", "Excitation curves", "Curve data"},
    {"en", "en.lng", "KVX Report", "Excitation curves", "Curve data"},
    {"fr", "fr.lng", "Rapport KVX", "Courbes d'excitation", "Données des courbes"},
    {"polish", "polish.lng", "Raport KVX", "Krzywe magnesowania", "Dane krzywych"},
}};

// A label and the cell it stands in, by its language key.
struct Label
{
    int row;
    int column;
    const char* key;
};

// Beside the header cells of the export: the value of a label at (r, c)
// goes to (r, c + 1); the notes' label stands left of the notes.
const std::array<Label, 20> Labels = {{
    {1, 3, "frmKVXCondensedReport.lbDeviceTestReport.Caption"},
    {2, 3, "frmKVXCondensedReport.lbTexteTestReport.Caption"},
    {3, 3, "frmKVXCondensedReport.lbTexteFileName.Caption"},
    {4, 3, "frmKVXCondensedReport.lbTexteCompany.Caption"},
    {5, 3, "frmKVXCondensedReport.lbTexteDesignator.Caption"},
    {6, 3, "frmKVXCondensedReport.lbTexteCTSerialNumber.Caption"},
    {7, 3, "frmKVXCondensedReport.lbTexteTemperature.Caption"},
    {8, 3, "frmKVXCondensedReport.lbTexteRatio.Caption"},
    {9, 3, "frmKVXCondensedReport.lbTextePhase.Caption"},
    {10, 3, "frmKVXCondensedReport.lbTexteClass.Caption"},
    {12, 2, "frmKVXCondensedReport.lbTexteNotes.Caption"},
    {3, 10, "frmKVXCondensedReport.lbTexteDate.Caption"},
    {4, 10, "frmKVXCondensedReport.lbTexteStation.Caption"},
    {5, 10, "frmKVXCondensedReport.lbTexteManufacturer.Caption"},
    {6, 10, "frmKVXCondensedReport.lbTexteOperator.Caption"},
    {7, 10, "frmKVXCondensedReport.lbTexteInstrumentSN.Caption"},
    {8, 10, "frmKVXCondensedReport.lbTexteVoltageRAting.Caption"},
    {9, 10, "frmKVXCondensedReport.lbTextePosition.Caption"},
    {10, 10, "frmKVXCondensedReport.lbKneeType.Caption"},
    {11, 10, "frmKVXCondensedReport.lbTexteCompensedFactor.Caption"},
}};

// The column heads of row 14, columns 3 to 13, as the report's table has them.
const std::array<const char*, 11> ColumnHeads = {
    "frmKVXCondensedReport.txtTap.Text",
    "frmKVXCondensedReport.txtIEEE30.Text",
    "frmKVXCondensedReport.txtIEEE45.Text",
    "frmKVXCondensedReport.txtAINSI1050.Text",
    "frmKVXCondensedReport.txtNPRATIO.Text",
    "frmKVXCondensedReport.txtMESRATIO.Text",
    "frmKVXCondensedReport.txtPERREUR",
    "frmKVXCondensedReport.txtPSHIFT",
    "frmKVXCondensedReport.txtWindingRes.Text",
    "frmKVXCondensedReport.txtCompRes.Text",
    "frmKVXCondensedReport.txtInsulationRes.Text",
};
const char* const AxisXKey = "frmKVXCondensedReport.CWGraph1.AxesX";
const char* const AxisYKey = "frmKVXCondensedReport.CWGraph1.AxesY";

// The colours of the ten curves, one a tap slot.
const std::array<const char*, KvxSlotCount> CurveColours = {
    "1F77B4", "D62728", "2CA02C", "FF7F0E", "9467BD",
    "8C564B", "E377C2", "7F7F7F", "BCBD22", "17BECF",
};

// Cell styles, by their index in styles.xml.
enum Style {
    Plain = 0,
    LabelStyle = 1,
    TitleStyle = 2,
    ValueStyle = 3,
    HeadStyle = 4,
    TableStyle = 5,
    CurveNameStyle = 6,
    NotesStyle = 7,
};

constexpr int HeadRow = KvxExcelCells::InsulationHeadRow;
constexpr int FirstTableRow = KvxExcelCells::RowBase + 1;
constexpr int LastTableRow = KvxExcelCells::RowBase + 10;
constexpr int FirstColumn = KvxExcelCells::FirstColumn;
constexpr int LastColumn = KvxExcelCells::InsulationHeadColumn;
constexpr int CurveNameColumn = KvxExcelCells::CurveFirstColumn - 1; // O
// The chart's place on the sheet: the columns and rows of its corners,
// counted from 0, below the table.
constexpr int ChartLeft = 2;
constexpr int ChartTop = 26;
constexpr int ChartRight = 13;
constexpr int ChartBottom = 52;

const QString MainNs = QStringLiteral("http://schemas.openxmlformats.org/spreadsheetml/2006/main");
const QString RelNs =
    QStringLiteral("http://schemas.openxmlformats.org/officeDocument/2006/relationships");
const QString Declaration =
    QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n");

QString esc(const QString& text)
{
    return text.toHtmlEscaped();
}

// A formula's reference to the sheet: quoted, with quotes doubled.
QString sheetRef(const QString& sheet)
{
    return u'\'' + QString(sheet).replace(u'\'', QStringLiteral("''")) + u'\'';
}

QString absoluteRange(int row, int firstColumn, int lastColumn)
{
    return QStringLiteral("$%1$%2:$%3$%2")
        .arg(xlsxColumnName(firstColumn))
        .arg(row)
        .arg(xlsxColumnName(lastColumn));
}

class SheetRows
{
public:
    void text(int row, int column, const QString& value, Style style)
    {
        cell(row, column, style,
             QStringLiteral(" t=\"inlineStr\"><is><t>%1</t></is></c>").arg(esc(value)));
    }
    void empty(int row, int column, Style style) { cell(row, column, style, QStringLiteral("/>")); }
    void height(int row, int points) { m_heights[row] = points; }

    QString xml() const
    {
        QString out;
        for (auto r = m_rows.cbegin(); r != m_rows.cend(); ++r) {
            out += QStringLiteral("<row r=\"%1\"").arg(r->first);
            if (m_heights.contains(r->first))
                out += QStringLiteral(" ht=\"%1\" customHeight=\"1\"").arg(m_heights.at(r->first));
            out += u'>';
            for (const auto& c : r->second)
                out += c.second;
            out += QStringLiteral("</row>");
        }
        return out;
    }

private:
    void cell(int row, int column, Style style, const QString& rest)
    {
        QString xml = QStringLiteral("<c r=\"%1\"").arg(xlsxCellName(row, column));
        if (style != Plain)
            xml += QStringLiteral(" s=\"%1\"").arg(static_cast<int>(style));
        m_rows[row][column] = xml + rest;
    }

    std::map<int, std::map<int, QString>> m_rows;
    std::map<int, int> m_heights;
};

// The label of `key` in `file`; a key the file lacks ends the tool.
QString labelOf(const char* key, const QString& file)
{
    const QString text = FindKeyInLanguageFile(QString::fromLatin1(key), file);
    if (text.isEmpty())
        throw std::runtime_error(std::string("no text for ") + key + " in " + file.toStdString());
    return text;
}

QString worksheetXml(const TemplateLanguage& language, const QString& langFile)
{
    SheetRows rows;
    for (const Label& label : Labels) {
        const Style style = label.row == 1 ? TitleStyle : LabelStyle;
        rows.text(label.row, label.column, labelOf(label.key, langFile), style);
        // The value cells the export fills, underlined.
        if (label.row >= 3 && label.row <= 11)
            rows.empty(label.row, label.column + 1, ValueStyle);
    }
    rows.height(1, 21);
    for (int column = FirstColumn; column <= LastColumn; ++column)
        rows.empty(12, column, NotesStyle);
    rows.height(12, 30);

    int column = FirstColumn;
    for (const char* key : ColumnHeads)
        rows.text(HeadRow, column++, labelOf(key, langFile), HeadStyle);
    rows.height(HeadRow, 30);
    rows.height(KvxExcelCells::RowBase, 4);
    for (int row = FirstTableRow; row <= LastTableRow; ++row)
        for (int c = FirstColumn; c <= LastColumn; ++c)
            rows.empty(row, c, TableStyle);

    rows.text(3, CurveNameColumn, QString::fromUtf8(language.curveHead), LabelStyle);
    for (int k = 1; k <= KvxSlotCount; ++k) {
        rows.text(2 * k + 2, CurveNameColumn, kvxSlotPair(k) + QStringLiteral(" mA"),
                  CurveNameStyle);
        rows.text(2 * k + 3, CurveNameColumn, kvxSlotPair(k) + QStringLiteral(" V"),
                  CurveNameStyle);
    }

    return Declaration +
           QStringLiteral("<worksheet xmlns=\"%1\" xmlns:r=\"%2\">").arg(MainNs, RelNs) +
           QStringLiteral("<sheetPr><pageSetUpPr fitToPage=\"1\"/></sheetPr>"
                          "<dimension ref=\"B1:O23\"/>"
                          "<sheetViews><sheetView showGridLines=\"0\" workbookViewId=\"0\"/>"
                          "</sheetViews>"
                          "<sheetFormatPr defaultRowHeight=\"15\"/>"
                          "<cols>"
                          "<col min=\"1\" max=\"1\" width=\"2\" customWidth=\"1\"/>"
                          "<col min=\"2\" max=\"2\" width=\"9\" customWidth=\"1\"/>"
                          "<col min=\"3\" max=\"3\" width=\"20\" customWidth=\"1\"/>"
                          "<col min=\"4\" max=\"9\" width=\"13\" customWidth=\"1\"/>"
                          "<col min=\"10\" max=\"10\" width=\"26\" customWidth=\"1\"/>"
                          "<col min=\"11\" max=\"11\" width=\"22\" customWidth=\"1\"/>"
                          "<col min=\"12\" max=\"13\" width=\"15\" customWidth=\"1\"/>"
                          "<col min=\"14\" max=\"14\" width=\"4\" customWidth=\"1\"/>"
                          "<col min=\"15\" max=\"15\" width=\"14\" customWidth=\"1\"/>"
                          "</cols><sheetData>") +
           rows.xml() +
           QStringLiteral("</sheetData>"
                          "<mergeCells count=\"1\"><mergeCell ref=\"C12:M12\"/></mergeCells>"
                          "<printOptions horizontalCentered=\"1\"/>"
                          "<pageMargins left=\"0.4\" right=\"0.4\" top=\"0.5\" bottom=\"0.5\" "
                          "header=\"0.3\" footer=\"0.3\"/>"
                          "<pageSetup paperSize=\"1\" orientation=\"landscape\" fitToWidth=\"1\" "
                          "fitToHeight=\"1\"/>"
                          "<drawing r:id=\"rId1\"/></worksheet>");
}

QString richText(const QString& text, int size)
{
    return QStringLiteral("<c:tx><c:rich><a:bodyPr/><a:p><a:pPr><a:defRPr sz=\"%2\" b=\"1\"/>"
                          "</a:pPr><a:r><a:rPr sz=\"%2\" b=\"1\"/><a:t>%1</a:t></a:r></a:p>"
                          "</c:rich></c:tx>")
        .arg(esc(text))
        .arg(size);
}

QString logAxis(int id, int crossId, const char* position, const QString& title)
{
    return QStringLiteral("<c:valAx><c:axId val=\"%1\"/><c:scaling><c:logBase val=\"10\"/>"
                          "<c:orientation val=\"minMax\"/></c:scaling><c:delete val=\"0\"/>"
                          "<c:axPos val=\"%3\"/><c:majorGridlines/><c:title>%4"
                          "<c:overlay val=\"0\"/></c:title>"
                          "<c:numFmt formatCode=\"General\" sourceLinked=\"0\"/>"
                          "<c:majorTickMark val=\"out\"/><c:minorTickMark val=\"none\"/>"
                          "<c:tickLblPos val=\"low\"/><c:crossAx val=\"%2\"/>"
                          "<c:crosses val=\"autoZero\"/><c:crossBetween val=\"midCat\"/>"
                          "</c:valAx>")
        .arg(id)
        .arg(crossId)
        .arg(QLatin1String(position), richText(title, 1000));
}

QString chartXml(const TemplateLanguage& language, const QString& langFile)
{
    const QString sheet = sheetRef(QString::fromUtf8(language.sheetName));
    QString series;
    for (int k = 1; k <= KvxSlotCount; ++k) {
        const QString x = sheet + u'!' +
                          absoluteRange(2 * k + 2, KvxExcelCells::CurveFirstColumn,
                                        KvxExcelCells::CurveLastColumn);
        const QString y = sheet + u'!' +
                          absoluteRange(2 * k + 3, KvxExcelCells::CurveFirstColumn,
                                        KvxExcelCells::CurveLastColumn);
        series +=
            QStringLiteral(
                "<c:ser><c:idx val=\"%1\"/><c:order val=\"%1\"/><c:tx><c:v>%2</c:v></c:tx>"
                "<c:spPr><a:ln w=\"19050\"><a:solidFill><a:srgbClr val=\"%3\"/>"
                "</a:solidFill></a:ln></c:spPr><c:marker><c:symbol val=\"none\"/>"
                "</c:marker><c:xVal><c:numRef><c:f>%4</c:f></c:numRef></c:xVal>"
                "<c:yVal><c:numRef><c:f>%5</c:f></c:numRef></c:yVal>"
                "<c:smooth val=\"0\"/></c:ser>")
                .arg(k - 1)
                .arg(kvxSlotPair(k), QLatin1String(CurveColours[static_cast<std::size_t>(k - 1)]),
                     esc(x), esc(y));
    }
    constexpr int XAxis = 500010;
    constexpr int YAxis = 500020;
    return Declaration +
           QStringLiteral(
               "<c:chartSpace xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" "
               "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" xmlns:r=\"%1\">"
               "<c:roundedCorners val=\"0\"/><c:chart><c:title>")
               .arg(RelNs) +
           richText(QString::fromUtf8(language.chartTitle), 1200) +
           QStringLiteral("<c:overlay val=\"0\"/></c:title><c:autoTitleDeleted val=\"0\"/>"
                          "<c:plotArea><c:layout/><c:scatterChart>"
                          "<c:scatterStyle val=\"lineMarker\"/><c:varyColors val=\"0\"/>") +
           series +
           QStringLiteral("<c:axId val=\"%1\"/><c:axId val=\"%2\"/></c:scatterChart>")
               .arg(XAxis)
               .arg(YAxis) +
           logAxis(XAxis, YAxis, "b", labelOf(AxisXKey, langFile)) +
           logAxis(YAxis, XAxis, "l", labelOf(AxisYKey, langFile)) +
           QStringLiteral("</c:plotArea><c:legend><c:legendPos val=\"r\"/>"
                          "<c:overlay val=\"0\"/></c:legend><c:plotVisOnly val=\"1\"/>"
                          "<c:dispBlanksAs val=\"gap\"/></c:chart></c:chartSpace>");
}

QString drawingXml(const TemplateLanguage& language)
{
    return Declaration +
           QStringLiteral(
               "<xdr:wsDr "
               "xmlns:xdr=\"http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing\" "
               "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\">"
               "<xdr:twoCellAnchor>"
               "<xdr:from><xdr:col>%1</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>%2</xdr:row>"
               "<xdr:rowOff>0</xdr:rowOff></xdr:from>"
               "<xdr:to><xdr:col>%3</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>%4</xdr:row>"
               "<xdr:rowOff>0</xdr:rowOff></xdr:to>"
               "<xdr:graphicFrame macro=\"\"><xdr:nvGraphicFramePr>"
               "<xdr:cNvPr id=\"2\" name=\"%5\"/><xdr:cNvGraphicFramePr/></xdr:nvGraphicFramePr>"
               "<xdr:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"0\" cy=\"0\"/></xdr:xfrm>"
               "<a:graphic><a:graphicData "
               "uri=\"http://schemas.openxmlformats.org/drawingml/2006/chart\">"
               "<c:chart xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" "
               "xmlns:r=\"%6\" r:id=\"rId1\"/></a:graphicData></a:graphic></xdr:graphicFrame>"
               "<xdr:clientData/></xdr:twoCellAnchor></xdr:wsDr>")
               .arg(ChartLeft)
               .arg(ChartTop)
               .arg(ChartRight)
               .arg(ChartBottom)
               .arg(esc(QString::fromUtf8(language.chartTitle)), RelNs);
}

const QString StylesXml =
    Declaration +
    QStringLiteral(
        "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
        "<fonts count=\"4\">"
        "<font><sz val=\"10\"/><name val=\"Arial\"/><family val=\"2\"/></font>"
        "<font><b/><sz val=\"10\"/><name val=\"Arial\"/><family val=\"2\"/></font>"
        "<font><b/><sz val=\"14\"/><name val=\"Arial\"/><family val=\"2\"/></font>"
        "<font><sz val=\"8\"/><color rgb=\"FF595959\"/><name val=\"Arial\"/>"
        "<family val=\"2\"/></font></fonts>"
        "<fills count=\"3\"><fill><patternFill patternType=\"none\"/></fill>"
        "<fill><patternFill patternType=\"gray125\"/></fill>"
        "<fill><patternFill patternType=\"solid\"><fgColor rgb=\"FFDDE4EE\"/>"
        "<bgColor indexed=\"64\"/></patternFill></fill></fills>"
        "<borders count=\"3\"><border><left/><right/><top/><bottom/><diagonal/></border>"
        "<border><left style=\"thin\"><color auto=\"1\"/></left>"
        "<right style=\"thin\"><color auto=\"1\"/></right>"
        "<top style=\"thin\"><color auto=\"1\"/></top>"
        "<bottom style=\"thin\"><color auto=\"1\"/></bottom><diagonal/></border>"
        "<border><left/><right/><top/><bottom style=\"thin\"><color auto=\"1\"/>"
        "</bottom><diagonal/></border></borders>"
        "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" "
        "borderId=\"0\"/></cellStyleXfs>"
        "<cellXfs count=\"8\">"
        "<xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>"
        "<xf numFmtId=\"0\" fontId=\"1\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
        "applyFont=\"1\"/>"
        "<xf numFmtId=\"0\" fontId=\"2\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
        "applyFont=\"1\"/>"
        "<xf numFmtId=\"49\" fontId=\"0\" fillId=\"0\" borderId=\"2\" xfId=\"0\" "
        "applyNumberFormat=\"1\" applyBorder=\"1\" applyAlignment=\"1\">"
        "<alignment horizontal=\"left\"/></xf>"
        "<xf numFmtId=\"0\" fontId=\"1\" fillId=\"2\" borderId=\"1\" xfId=\"0\" "
        "applyFont=\"1\" applyFill=\"1\" applyBorder=\"1\" applyAlignment=\"1\">"
        "<alignment horizontal=\"center\" vertical=\"center\" wrapText=\"1\"/></xf>"
        "<xf numFmtId=\"49\" fontId=\"0\" fillId=\"0\" borderId=\"1\" xfId=\"0\" "
        "applyNumberFormat=\"1\" applyBorder=\"1\" applyAlignment=\"1\">"
        "<alignment horizontal=\"center\"/></xf>"
        "<xf numFmtId=\"0\" fontId=\"3\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
        "applyFont=\"1\"/>"
        "<xf numFmtId=\"49\" fontId=\"0\" fillId=\"0\" borderId=\"2\" xfId=\"0\" "
        "applyNumberFormat=\"1\" applyBorder=\"1\" applyAlignment=\"1\">"
        "<alignment vertical=\"top\" wrapText=\"1\"/></xf>"
        "</cellXfs>"
        "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/>"
        "</cellStyles></styleSheet>");

QString workbookXml(const TemplateLanguage& language)
{
    const QString sheet = QString::fromUtf8(language.sheetName);
    return Declaration +
           QStringLiteral("<workbook xmlns=\"%1\" xmlns:r=\"%2\"><bookViews><workbookView/>"
                          "</bookViews><sheets><sheet name=\"%3\" sheetId=\"1\" r:id=\"rId1\"/>"
                          "</sheets><definedNames><definedName name=\"_xlnm.Print_Area\" "
                          "localSheetId=\"0\">%4!$B$1:$M$%5</definedName></definedNames>"
                          "<calcPr calcId=\"0\"/></workbook>")
               .arg(MainNs, RelNs, esc(sheet), esc(sheetRef(sheet)))
               .arg(ChartBottom);
}

QString relationships(const QString& items)
{
    return Declaration +
           QStringLiteral(
               "<Relationships "
               "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">") +
           items + QStringLiteral("</Relationships>");
}

QString relationship(const char* id, const char* type, const char* target)
{
    return QStringLiteral("<Relationship Id=\"%1\" Type=\"%2/%3\" Target=\"%4\"/>")
        .arg(QLatin1String(id), RelNs, QLatin1String(type), QLatin1String(target));
}

const QString ContentTypes =
    Declaration +
    QStringLiteral(
        "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
        "<Default Extension=\"rels\" "
        "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
        "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
        "<Override PartName=\"/xl/workbook.xml\" "
        "ContentType=\"application/"
        "vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>"
        "<Override PartName=\"/xl/worksheets/sheet1.xml\" "
        "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/"
        ">"
        "<Override PartName=\"/xl/styles.xml\" "
        "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml\"/>"
        "<Override PartName=\"/xl/drawings/drawing1.xml\" "
        "ContentType=\"application/vnd.openxmlformats-officedocument.drawing+xml\"/>"
        "<Override PartName=\"/xl/charts/chart1.xml\" "
        "ContentType=\"application/vnd.openxmlformats-officedocument.drawingml.chart+xml\"/>"
        "</Types>");

void writeTemplate(const TemplateLanguage& language, const QDir& langDir, const QDir& outDir)
{
    const QString langFile = langDir.filePath(QString::fromLatin1(language.langFile));
    if (!QFileInfo::exists(langFile))
        throw std::runtime_error("no language file " + langFile.toStdString());
    // A fixed time: the same input makes the same bytes.
    const QDateTime stamp(QDate(2024, 1, 1), QTime(0, 0));
    const auto part = [&stamp](const char* name, const QString& xml) {
        return XlsxPart{QString::fromLatin1(name), xml.toUtf8(), stamp};
    };
    const std::vector<XlsxPart> parts = {
        part("[Content_Types].xml", ContentTypes),
        part("_rels/.rels",
             relationships(relationship("rId1", "officeDocument", "xl/workbook.xml"))),
        part("xl/workbook.xml", workbookXml(language)),
        part("xl/_rels/workbook.xml.rels",
             relationships(relationship("rId1", "worksheet", "worksheets/sheet1.xml") +
                           relationship("rId2", "styles", "styles.xml"))),
        part("xl/styles.xml", StylesXml),
        part("xl/worksheets/sheet1.xml", worksheetXml(language, langFile)),
        part("xl/worksheets/_rels/sheet1.xml.rels",
             relationships(relationship("rId1", "drawing", "../drawings/drawing1.xml"))),
        part("xl/drawings/drawing1.xml", drawingXml(language)),
        part("xl/drawings/_rels/drawing1.xml.rels",
             relationships(relationship("rId1", "chart", "../charts/chart1.xml"))),
        part("xl/charts/chart1.xml", chartXml(language, langFile)),
    };
    QString name = QString::fromLatin1(KvxExcelTemplateStem);
    if (*language.suffix)
        name += u'-' + QString::fromLatin1(language.suffix);
    writeXlsxParts(outDir.filePath(name + QLatin1String(KvxExcelTemplateEnding)), parts);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    tools::ToolSessions sessions;
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 3) {
        std::fputs("usage: quenby-kvx-templates <language folder> <output folder>\n", stderr);
        return 2;
    }
    const QDir langDir(args[1]);
    QDir outDir(args[2]);
    if (!outDir.mkpath(QStringLiteral("."))) {
        std::fputs("cannot make the output folder\n", stderr);
        return 1;
    }
    try {
        for (const TemplateLanguage& language : Languages)
            writeTemplate(language, langDir, outDir);
    } catch (const std::exception& e) {
        std::fputs(e.what(), stderr);
        std::fputs("\n", stderr);
        return 1;
    }
    return 0;
}
