#include "kvx/model/XlsxWorkbook.h"

#include "shell/model/RuntimeError.h"

#include <QBuffer>
#include <QFile>
#include <QSaveFile>
#include <quazip.h>
#include <quazipfile.h>
#include <quazipfileinfo.h>
#include <quazipnewinfo.h>

#include <pugixml.hpp>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace quenby {

namespace {

constexpr int MaxColumn = 16384; // XFD, the widest sheet a workbook may have
constexpr int MaxRow = 1048576;

const char* const CalcChainPart = "xl/calcChain.xml";

// The element name without its namespace prefix.
std::string_view localName(const pugi::xml_node& node)
{
    const std::string_view name = node.name();
    const auto colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

pugi::xml_node childNamed(const pugi::xml_node& parent, std::string_view name)
{
    for (pugi::xml_node n = parent.first_child(); n; n = n.next_sibling())
        if (n.type() == pugi::node_element && localName(n) == name)
            return n;
    return {};
}

// The name a new element takes: the local name behind the prefix its parent
// was written with, so that a prefixed sheet stays in one namespace.
std::string nameLike(const pugi::xml_node& parent, const char* local)
{
    const std::string_view name = parent.name();
    const auto colon = name.find(':');
    if (colon == std::string_view::npos)
        return local;
    return std::string(name.substr(0, colon + 1)) + local;
}

class ByteWriter final : public pugi::xml_writer
{
public:
    void write(const void* data, size_t size) override
    {
        bytes.append(static_cast<const char*>(data), static_cast<qsizetype>(size));
    }
    QByteArray bytes;
};

QByteArray xmlBytes(const pugi::xml_document& doc)
{
    ByteWriter writer;
    // The declaration was kept from the part as read.
    doc.save(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return writer.bytes;
}

constexpr unsigned XmlParse = pugi::parse_default | pugi::parse_declaration | pugi::parse_ws_pcdata;

bool parseXml(pugi::xml_document& doc, const QByteArray& data)
{
    return static_cast<bool>(doc.load_buffer(data.constData(), static_cast<size_t>(data.size()),
                                             XmlParse, pugi::encoding_utf8));
}

// Whether "_xHHHH_" starts at `i`: the workbook's escape of one character.
bool isEscapeAt(const QString& text, qsizetype i)
{
    if (i + 6 >= text.size() || text.at(i) != u'_' || text.at(i + 1) != u'x' ||
        text.at(i + 6) != u'_')
        return false;
    for (qsizetype k = i + 2; k < i + 6; ++k)
        if (!isxdigit(static_cast<unsigned char>(text.at(k).toLatin1())))
            return false;
    return true;
}

// A text as a cell may hold it: characters that XML cannot carry are written
// in the workbook's own "_xHHHH_" form, and so is the "_" of a text that
// would otherwise read back as such an escape.
std::string cellText(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t u = text.at(i).unicode();
        const bool control = (u < 0x20 && u != u'\t' && u != u'\n') || u == 0xFFFE || u == 0xFFFF;
        if (control || isEscapeAt(text, i))
            out += QStringLiteral("_x") + QString::number(u, 16).rightJustified(4, u'0').toUpper() +
                   u'_';
        else
            out += QChar(u);
    }
    return out.toStdString();
}

std::string numberText(double value)
{
    char buffer[64];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general);
    return std::string(buffer, result.ptr);
}

int attributeInt(const pugi::xml_node& node, const char* name)
{
    const std::string_view text = node.attribute(name).value();
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc{} && result.ptr == text.data() + text.size() ? value : 0;
}

QString qText(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

// Where a relationship target points, from the folder of the part that holds
// the relationships: "worksheets/sheet1.xml" from "xl/" is
// "xl/worksheets/sheet1.xml"; an absolute target starts at the zip's root.
QString resolveTarget(const QString& folder, const QString& target)
{
    if (target.startsWith(u'/'))
        return target.mid(1);
    QStringList parts = folder.split(u'/', Qt::SkipEmptyParts);
    for (const QString& piece : target.split(u'/', Qt::SkipEmptyParts)) {
        if (piece == u"..") {
            if (!parts.isEmpty())
                parts.removeLast();
        } else if (piece != u".") {
            parts.append(piece);
        }
    }
    return parts.join(u'/');
}

[[noreturn]] void notAWorkbook(const QString& path)
{
    raiseRuntimeError(WorkbookOperationFailed, path);
}

} // namespace

QString xlsxColumnName(int column)
{
    QString name;
    while (column > 0) {
        const int digit = (column - 1) % 26;
        name.prepend(QChar(u'A' + digit));
        column = (column - 1) / 26;
    }
    return name;
}

QString xlsxCellName(int row, int column)
{
    return xlsxColumnName(column) + QString::number(row);
}

bool parseXlsxCellName(QStringView name, int& row, int& column)
{
    qsizetype i = 0;
    int c = 0;
    while (i < name.size() && name.at(i) >= u'A' && name.at(i) <= u'Z') {
        c = c * 26 + (name.at(i).unicode() - u'A' + 1);
        if (c > MaxColumn)
            return false;
        ++i;
    }
    if (i == 0 || i == name.size())
        return false;
    int r = 0;
    for (; i < name.size(); ++i) {
        const char16_t u = name.at(i).unicode();
        if (u < u'0' || u > u'9')
            return false;
        r = r * 10 + (u - u'0');
        if (r > MaxRow)
            return false;
    }
    if (r == 0)
        return false;
    row = r;
    column = c;
    return true;
}

bool readXlsxParts(const QString& path, std::vector<XlsxPart>& parts)
{
    parts.clear();
    QuaZip zip(path);
    if (!zip.open(QuaZip::mdUnzip))
        return false;
    for (bool more = zip.goToFirstFile(); more; more = zip.goToNextFile()) {
        QuaZipFileInfo64 info;
        if (!zip.getCurrentFileInfo(&info))
            return false;
        QuaZipFile file(&zip);
        if (!file.open(QIODevice::ReadOnly))
            return false;
        XlsxPart part{info.name, file.readAll(), info.dateTime};
        file.close();
        if (file.getZipError() != UNZ_OK)
            return false;
        parts.push_back(std::move(part));
    }
    zip.close();
    return zip.getZipError() == UNZ_OK && !parts.empty();
}

void writeXlsxParts(const QString& path, const std::vector<XlsxPart>& parts)
{
    // The zip is made in memory and then put in place whole, so that a failed
    // save leaves no half file behind.
    QByteArray bytes;
    {
        QBuffer buffer(&bytes);
        QuaZip zip(&buffer);
        zip.setUtf8Enabled(true);
        if (!zip.open(QuaZip::mdCreate))
            raiseRuntimeError(err::PathFileAccessError, path);
        for (const XlsxPart& part : parts) {
            QuaZipNewInfo info(part.name);
            if (part.stamp.isValid())
                info.dateTime = part.stamp;
            info.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                                QFile::ReadOther);
            QuaZipFile file(&zip);
            if (!file.open(QIODevice::WriteOnly, info) || file.write(part.data) != part.data.size())
                raiseRuntimeError(err::PathFileAccessError, path);
            file.close();
            if (file.getZipError() != ZIP_OK)
                raiseRuntimeError(err::PathFileAccessError, path);
        }
        zip.close();
        if (zip.getZipError() != ZIP_OK)
            raiseRuntimeError(err::PathFileAccessError, path);
    }
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit())
        raiseRuntimeError(err::PathFileAccessError, path);
}

// The first worksheet, parsed, and the shared texts it may point into.
struct XlsxWorkbook::Sheet
{
    pugi::xml_document doc;
    pugi::xml_node sheetData;
    std::vector<QString> sharedTexts;

    pugi::xml_node findRow(int r) const
    {
        for (pugi::xml_node n = sheetData.first_child(); n; n = n.next_sibling())
            if (n.type() == pugi::node_element && localName(n) == "row" &&
                attributeInt(n, "r") == r)
                return n;
        return {};
    }

    pugi::xml_node rowFor(int r)
    {
        pugi::xml_node before;
        for (pugi::xml_node n = sheetData.first_child(); n; n = n.next_sibling()) {
            if (n.type() != pugi::node_element || localName(n) != "row")
                continue;
            const int at = attributeInt(n, "r");
            if (at == r)
                return n;
            if (at > r) {
                before = n;
                break;
            }
        }
        pugi::xml_node row =
            before ? sheetData.insert_child_before(nameLike(sheetData, "row").c_str(), before)
                   : sheetData.append_child(nameLike(sheetData, "row").c_str());
        row.append_attribute("r").set_value(r);
        return row;
    }

    // The cells of a row by column; a cell without a name follows the one
    // before it.
    template <class F> static void eachCell(const pugi::xml_node& row, F&& f)
    {
        int column = 0;
        for (pugi::xml_node n = row.first_child(); n; n = n.next_sibling()) {
            if (n.type() != pugi::node_element || localName(n) != "c")
                continue;
            int r = 0;
            int c = 0;
            if (parseXlsxCellName(qText(n.attribute("r").value()), r, c))
                column = c;
            else
                ++column;
            if (!f(n, column))
                return;
        }
    }

    pugi::xml_node findCell(int r, int column) const
    {
        pugi::xml_node found;
        if (pugi::xml_node row = findRow(r)) {
            eachCell(row, [&](pugi::xml_node n, int c) {
                if (c == column)
                    found = n;
                return c < column;
            });
        }
        return found;
    }

    // The cell, made in its sorted place if missing, emptied of its value but
    // keeping its style.
    pugi::xml_node emptiedCell(int r, int column)
    {
        pugi::xml_node row = rowFor(r);
        // The row's span hint no longer holds once a cell is added.
        row.remove_attribute("spans");
        pugi::xml_node cell;
        pugi::xml_node before;
        // A row is mostly filled from left to right: a cell beyond the last
        // one goes at the end without a walk along the row.
        const pugi::xml_node last = row.last_child();
        int lastRow = 0;
        int lastColumn = 0;
        const bool appendAtEnd =
            last && localName(last) == "c" &&
            parseXlsxCellName(qText(last.attribute("r").value()), lastRow, lastColumn) &&
            lastColumn < column;
        if (!appendAtEnd) {
            eachCell(row, [&](pugi::xml_node n, int c) {
                if (c == column)
                    cell = n;
                else if (c > column)
                    before = n;
                return c < column;
            });
        }
        if (!cell) {
            const std::string name = nameLike(row, "c");
            cell = before ? row.insert_child_before(name.c_str(), before)
                          : row.append_child(name.c_str());
            cell.append_attribute("r").set_value(xlsxCellName(r, column).toStdString().c_str());
        }
        cell.attribute("r").set_value(xlsxCellName(r, column).toStdString().c_str());
        while (cell.first_child())
            cell.remove_child(cell.first_child());
        cell.remove_attribute("t");
        return cell;
    }

    static void addChildText(pugi::xml_node parent, const char* local, const std::string& text)
    {
        pugi::xml_node child = parent.append_child(nameLike(parent, local).c_str());
        child.append_child(pugi::node_pcdata).set_value(text.c_str());
    }

    QString textOf(const pugi::xml_node& cell) const
    {
        const std::string_view type = cell.attribute("t").value();
        if (type == "inlineStr") {
            QString text;
            const pugi::xml_node is = childNamed(cell, "is");
            for (pugi::xml_node n = is.first_child(); n; n = n.next_sibling()) {
                if (localName(n) == "t")
                    text += qText(n.text().get());
                else if (localName(n) == "r")
                    text += qText(childNamed(n, "t").text().get());
            }
            return text;
        }
        const QString value = qText(childNamed(cell, "v").text().get());
        if (type == "s") {
            bool ok = false;
            const qsizetype index = value.toLongLong(&ok);
            return ok && index >= 0 && index < static_cast<qsizetype>(sharedTexts.size())
                       ? sharedTexts[static_cast<std::size_t>(index)]
                       : QString();
        }
        return value;
    }
};

XlsxWorkbook::XlsxWorkbook(const QString& path) : m_sheet(std::make_unique<Sheet>())
{
    if (!readXlsxParts(path, m_parts))
        notAWorkbook(path);
    const auto partData = [this](const QString& name) -> const QByteArray* {
        for (const XlsxPart& p : m_parts)
            if (p.name == name)
                return &p.data;
        return nullptr;
    };

    // The package's relationships name the workbook part.
    QString workbookPart = QStringLiteral("xl/workbook.xml");
    if (const QByteArray* rels = partData(QStringLiteral("_rels/.rels"))) {
        pugi::xml_document doc;
        if (parseXml(doc, *rels)) {
            const pugi::xml_node root = doc.document_element();
            for (pugi::xml_node r = root.first_child(); r; r = r.next_sibling())
                if (std::string_view(r.attribute("Type").value()).ends_with("/officeDocument"))
                    workbookPart = resolveTarget(QString(), qText(r.attribute("Target").value()));
        }
    }
    const QByteArray* workbook = partData(workbookPart);
    pugi::xml_document workbookDoc;
    if (!workbook || !parseXml(workbookDoc, *workbook))
        notAWorkbook(path);

    // The first sheet of the list, whatever its name, and its relationship.
    const pugi::xml_node sheets = childNamed(workbookDoc.document_element(), "sheets");
    const pugi::xml_node first = childNamed(sheets, "sheet");
    std::string relId;
    for (pugi::xml_attribute a = first.first_attribute(); a; a = a.next_attribute())
        if (std::string_view(a.name()).ends_with(":id"))
            relId = a.value();
    const qsizetype slash = workbookPart.lastIndexOf(u'/');
    const QString folder = slash >= 0 ? workbookPart.left(slash + 1) : QString();
    const QString relsPart =
        folder + QStringLiteral("_rels/") + workbookPart.mid(slash + 1) + QStringLiteral(".rels");
    const QByteArray* workbookRels = partData(relsPart);
    pugi::xml_document relsDoc;
    if (relId.empty() || !workbookRels || !parseXml(relsDoc, *workbookRels))
        notAWorkbook(path);
    for (pugi::xml_node r = relsDoc.document_element().first_child(); r; r = r.next_sibling())
        if (relId == r.attribute("Id").value())
            m_sheetPart = resolveTarget(folder, qText(r.attribute("Target").value()));

    const QByteArray* sheet = partData(m_sheetPart);
    if (m_sheetPart.isEmpty() || !sheet || !parseXml(m_sheet->doc, *sheet))
        notAWorkbook(path);
    const pugi::xml_node worksheet = m_sheet->doc.document_element();
    m_sheet->sheetData = childNamed(worksheet, "sheetData");
    if (!m_sheet->sheetData)
        notAWorkbook(path);

    // Shared texts, to read back cells that point into them.
    for (const XlsxPart& p : m_parts) {
        if (!p.name.endsWith(QStringLiteral("sharedStrings.xml")))
            continue;
        pugi::xml_document doc;
        if (!parseXml(doc, p.data))
            continue;
        for (pugi::xml_node si = doc.document_element().first_child(); si; si = si.next_sibling()) {
            if (localName(si) != "si")
                continue;
            QString text;
            for (pugi::xml_node n = si.first_child(); n; n = n.next_sibling()) {
                if (localName(n) == "t")
                    text += qText(n.text().get());
                else if (localName(n) == "r")
                    text += qText(childNamed(n, "t").text().get());
            }
            m_sheet->sharedTexts.push_back(text);
        }
    }
}

XlsxWorkbook::~XlsxWorkbook() = default;

void XlsxWorkbook::setText(int row, int column, const QString& text)
{
    pugi::xml_node cell = m_sheet->emptiedCell(row, column);
    cell.append_attribute("t").set_value("inlineStr");
    pugi::xml_node is = cell.append_child(nameLike(cell, "is").c_str());
    pugi::xml_node t = is.append_child(nameLike(cell, "t").c_str());
    const std::string value = cellText(text);
    if (!value.empty() && (std::isspace(static_cast<unsigned char>(value.front())) ||
                           std::isspace(static_cast<unsigned char>(value.back()))))
        t.append_attribute("xml:space").set_value("preserve");
    t.append_child(pugi::node_pcdata).set_value(value.c_str());
}

void XlsxWorkbook::setNumber(int row, int column, double value)
{
    if (!std::isfinite(value)) {
        setError(row, column, QStringLiteral("#NUM!"));
        return;
    }
    pugi::xml_node cell = m_sheet->emptiedCell(row, column);
    Sheet::addChildText(cell, "v", numberText(value));
}

void XlsxWorkbook::setError(int row, int column, const QString& code)
{
    pugi::xml_node cell = m_sheet->emptiedCell(row, column);
    cell.append_attribute("t").set_value("e");
    Sheet::addChildText(cell, "v", code.toStdString());
}

void XlsxWorkbook::setNumberRange(int row, int firstColumn, int lastColumn,
                                  std::span<const double> values)
{
    for (int column = firstColumn; column <= lastColumn; ++column) {
        const auto index = static_cast<std::size_t>(column - firstColumn);
        if (index < values.size())
            setNumber(row, column, values[index]);
        else
            setError(row, column, QStringLiteral("#N/A"));
    }
}

QString XlsxWorkbook::cellValue(int row, int column) const
{
    const pugi::xml_node cell = m_sheet->findCell(row, column);
    return cell ? m_sheet->textOf(cell) : QString();
}

namespace {
QByteArray nodeXml(const pugi::xml_node& node)
{
    if (!node)
        return {};
    ByteWriter writer;
    node.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
    return writer.bytes;
}
} // namespace

QByteArray XlsxWorkbook::rowXml(int row) const
{
    return nodeXml(m_sheet->findRow(row));
}

QByteArray XlsxWorkbook::cellXml(int row, int column) const
{
    return nodeXml(m_sheet->findCell(row, column));
}

void XlsxWorkbook::saveAs(const QString& path) const
{
    // Formula cells lose their cached results, so that they are worked out
    // again on opening.
    pugi::xml_document sheet;
    sheet.reset(m_sheet->doc);
    const pugi::xml_node data = childNamed(sheet.document_element(), "sheetData");
    int top = std::numeric_limits<int>::max();
    int left = std::numeric_limits<int>::max();
    int bottom = 0;
    int right = 0;
    for (pugi::xml_node row = data.first_child(); row; row = row.next_sibling()) {
        if (row.type() != pugi::node_element || localName(row) != "row")
            continue;
        const int r = attributeInt(row, "r");
        Sheet::eachCell(row, [&](pugi::xml_node cell, int c) {
            if (childNamed(cell, "f"))
                cell.remove_child(childNamed(cell, "v"));
            top = std::min(top, r);
            bottom = std::max(bottom, r);
            left = std::min(left, c);
            right = std::max(right, c);
            return true;
        });
    }
    if (bottom > 0) {
        pugi::xml_node dimension = childNamed(sheet.document_element(), "dimension");
        if (dimension) {
            const QString ref = top == bottom && left == right
                                    ? xlsxCellName(top, left)
                                    : xlsxCellName(top, left) + u':' + xlsxCellName(bottom, right);
            dimension.attribute("ref").set_value(ref.toStdString().c_str());
        }
    }

    const bool hasCalcChain = std::any_of(m_parts.begin(), m_parts.end(), [](const XlsxPart& p) {
        return p.name == QLatin1String(CalcChainPart);
    });
    std::vector<XlsxPart> parts;
    parts.reserve(m_parts.size());
    for (const XlsxPart& p : m_parts) {
        if (p.name == QLatin1String(CalcChainPart))
            continue;
        XlsxPart out = p;
        if (p.name == m_sheetPart) {
            out.data = xmlBytes(sheet);
        } else if (hasCalcChain && (p.name == u"[Content_Types].xml" ||
                                    p.name.endsWith(QStringLiteral("workbook.xml.rels")))) {
            // The calculation chain's entry in the content types and its
            // relationship go with it.
            pugi::xml_document doc;
            if (parseXml(doc, p.data)) {
                pugi::xml_node root = doc.document_element();
                for (pugi::xml_node n = root.first_child(); n;) {
                    const pugi::xml_node next = n.next_sibling();
                    const std::string_view partName = n.attribute("PartName").value();
                    const std::string_view target = n.attribute("Target").value();
                    if (partName.ends_with("/calcChain.xml") || target.ends_with("calcChain.xml"))
                        root.remove_child(n);
                    n = next;
                }
                out.data = xmlBytes(doc);
            }
        }
        parts.push_back(std::move(out));
    }
    writeXlsxParts(path, parts);
}

} // namespace quenby
