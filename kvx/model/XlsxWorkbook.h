// A spreadsheet workbook file (.xlsx: a zip of XML parts) opened to fill the
// cells of its first worksheet, without any spreadsheet program.
//
// Only the first worksheet's XML is parsed and changed; every other part of
// the file (styles, charts, drawings, print setup, the other sheets) is
// written back byte for byte. Cells are added in sorted order (rows by
// number, cells by column) and keep their style. Texts are written inline,
// numbers in their shortest exact decimal form, independent of the locale.
// The one part dropped on save is the calculation chain, so that a program
// that opens the file works out its formulas afresh.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringView>

#include <memory>
#include <span>
#include <vector>

namespace quenby {

// The platform's failure of a workbook operation that cannot be carried out
// (a template that is no workbook, a save with no workbook open).
inline constexpr int WorkbookOperationFailed = 1004;

// The column letters of column `column`, counted from 1: 1 "A", 26 "Z",
// 27 "AA", 256 "IV".
QString xlsxColumnName(int column);
// "D3" for row 3, column 4.
QString xlsxCellName(int row, int column);
// Row and column of a cell name such as "IV23"; false for anything else.
bool parseXlsxCellName(QStringView name, int& row, int& column);

// One part of the zip, by its name inside the file.
struct XlsxPart
{
    QString name;
    QByteArray data;
    QDateTime stamp; // the entry's modification time
};

// Writes `parts` as a zip file in this order. A file that cannot be written
// raises the run-time failure Path/File access error with the path.
void writeXlsxParts(const QString& path, const std::vector<XlsxPart>& parts);
// Reads every part of a zip file in its order; false when it is no zip.
bool readXlsxParts(const QString& path, std::vector<XlsxPart>& parts);

class XlsxWorkbook
{
public:
    // Opens the workbook file at `path` and finds its first worksheet. A file
    // that is no workbook raises WorkbookOperationFailed with the path.
    explicit XlsxWorkbook(const QString& path);
    ~XlsxWorkbook();
    XlsxWorkbook(const XlsxWorkbook&) = delete;
    XlsxWorkbook& operator=(const XlsxWorkbook&) = delete;

    // The part name of the first worksheet ("xl/worksheets/sheet1.xml").
    const QString& firstSheetPart() const { return m_sheetPart; }

    // A text cell; an empty text is a text too.
    void setText(int row, int column, const QString& text);
    void setNumber(int row, int column, double value);
    // An error value such as "#N/A".
    void setError(int row, int column, const QString& code);
    // `values` across row `row` from `firstColumn` on, as a spreadsheet
    // program fills a range from a shorter array: the cells up to
    // `lastColumn` that the array does not reach take "#N/A".
    void setNumberRange(int row, int firstColumn, int lastColumn, std::span<const double> values);

    // What a cell holds, read back: its text, or its number or error value
    // as stored; "" for an empty or missing cell.
    QString cellValue(int row, int column) const;
    // The XML of row `row` of the first worksheet as it would be written,
    // "" when the sheet has no such row.
    QByteArray rowXml(int row) const;
    // The XML of one cell likewise, "" when there is no such cell.
    QByteArray cellXml(int row, int column) const;

    // Writes the workbook to `path`, over any file of that name. A path that
    // cannot be written raises the run-time failure with the path.
    void saveAs(const QString& path) const;

private:
    struct Sheet;
    std::vector<XlsxPart> m_parts;
    QString m_sheetPart;
    std::unique_ptr<Sheet> m_sheet;
};

} // namespace quenby
