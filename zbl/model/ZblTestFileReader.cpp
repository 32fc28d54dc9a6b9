#include "zbl/model/ZblTestFileReader.h"

#include "shell/model/TextRules.h"

#include "shell/model/AppState.h"
#include "shell/model/NumberText.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/YieldHook.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace quenby {

namespace {

const QString Off = QStringLiteral("OFF");
const QString NoCurrent = QStringLiteral("---");
const QString ZeroToken = QStringLiteral("0");
const QString Compensed = QStringLiteral("---"); // a compensated cell with no value

// Header values start at the fifteenth character, behind the 14-character
// labels.
constexpr qsizetype HeaderValueStart = 15;

std::size_t slot(int i)
{
    return static_cast<std::size_t>(i);
}

// Names the file in a failure that does not name one yet.
template <typename F> void withPath(const QString& path, F&& step)
{
    try {
        step();
    } catch (RuntimeError& e) {
        if (e.where().isEmpty())
            e.setWhere(path);
        throw;
    }
}

// The file name of an existing file, "" for anything else: the directory
// lookup of a path.
QString directoryLookup(const QString& path)
{
    if (path.isEmpty())
        return {};
    const QFileInfo info(path);
    return info.exists() && info.isFile() ? info.fileName() : QString();
}

// A resistance of one token ("OFF") or of two (number and unit). Only "OFF"
// is known as one token; "OVER" takes the next token as its unit and so
// shifts the rest of the row by one. Intended: that is how over-range rows
// have always read, and nothing reports them.
std::size_t cutResistance(const ZblRowTokens& tokens, std::size_t at, QString& resistance)
{
    if (tokens[at] == Off) {
        resistance = Off;
        return at + 1;
    }
    resistance = numberText(leadingNumber(tokens[at])) + u' ' + tokens[at + 1];
    return at + 2;
}

void parseRow(int i, const ZblRowTokens& t)
{
    ZblTestRecord& r = zblTestRecord();
    const std::size_t k = slot(i);

    // Token 0 is the row mark.
    r.TapA[k] = t[1];
    r.WindingA[k] = t[2];
    const std::size_t p = cutResistance(t, 3, r.ResistanceA[k]);
    r.TapB[k] = t[p];
    r.WindingB[k] = t[p + 1];
    const std::size_t q = cutResistance(t, p + 2, r.ResistanceB[k]);

    // A current is one token ("10A") or a number and its unit ("10 A" of a
    // saved file). A bare number with nothing glued on takes the next token
    // as its unit, so an uploaded " 1500" takes the interval along: intended,
    // as the rows have always been cut.
    const QString& c = t[q];
    const ValueWithUnit current = SplitValueAndUnit(c);
    std::size_t next = q + 1;
    if (c == NoCurrent || c == ZeroToken) {
        r.CurrentText[k] =
            current.unit.isEmpty() ? current.valueText : current.valueText + u' ' + current.unit;
    } else if (!current.unit.isEmpty()) {
        r.CurrentText[k] = current.valueText + u' ' + current.unit;
    } else {
        r.CurrentText[k] = current.valueText + u' ' + t[q + 1];
        next = q + 2;
    }
    r.IntervalSeconds[k] = leadingNumber(t[next]);
    r.TotalTime[k] = t[next + 1];
}

} // namespace

QString& ZblReportFill::cell(ZblReportColumn column, int i)
{
    if (i < 0 || i >= ZblRowsUsed)
        raiseRuntimeErrorOnValue(
            err::SubscriptOutOfRange,
            QStringLiteral("%1(%2)").arg(QLatin1String(zblReportColumnName(column))).arg(i));
    return m_cells[static_cast<std::size_t>(column)][slot(i)];
}

const QString& ZblReportFill::cell(ZblReportColumn column, int i) const
{
    return const_cast<ZblReportFill*>(this)->cell(column, i);
}

void ClearZBLChannelTables()
{
    ZblTestRecord& r = zblTestRecord();
    for (int i = 0; i < ZblRowsUsed; ++i) {
        r.tabChannelA[slot(i)] = 0.0;
        r.tabChannelB[slot(i)] = 0.0;
        letSystemBreathe();
    }
}

void ClearZBLCompensedColumns(ZblReportTarget& report)
{
    for (int i = 0; i < ZblRowsUsed; ++i) {
        report.cell(ZblReportColumn::ConbinedResistanceA, i) = Compensed;
        report.cell(ZblReportColumn::ConbinedResistanceB, i) = Compensed;
        letSystemBreathe();
    }
}

void ClearZBLRowLines()
{
    ZblTestRecord& r = zblTestRecord();
    for (int i = 0; i < ZblRowsUsed; ++i) {
        r.RowLine[slot(i)].clear();
        letSystemBreathe();
    }
}

QString GetNextLineOrEnd(Int16 fileNo)
{
    SequentialFiles& files = SequentialFiles::instance();
    if (files.eof(fileNo))
        return ZblEndOfFileMarker;
    return files.lineInput(fileNo);
}

void ReadZBLFile()
{
    ZblTestRecord& r = zblTestRecord();
    const AppState& app = appState();
    r.FilePath = app.ZblTestFilePath.toText();
    withPath(r.FilePath, [&r, &app] {
        SequentialFiles& files = SequentialFiles::instance();
        const Int16 fileNo = toInt16(app.ZblTestFileNo.toNumber());

        // Whatever stands ahead of the date line is dropped, so the hyphen
        // row and the title may be anything. Case counts.
        QString line = files.lineInput(fileNo);
        while (!line.contains(QLatin1String("Date")))
            line = files.lineInput(fileNo);

        // The nine lines after it are the header by position alone.
        r.HeaderLine[0] = line;
        for (std::size_t n = 1; n < r.HeaderLine.size(); ++n)
            r.HeaderLine[n] = files.lineInput(fileNo);
        ParseZBLHeaderLines();

        // The rule, the table head and the rule.
        for (int n = 0; n < 3; ++n)
            line = files.lineInput(fileNo);

        // Raw lines up to the end marker, which is stored too, and at most
        // 122 of them: whatever lies beyond is never seen here.
        Int16 count = 0;
        while (count < ZblRowsUsed && line != ZblEndOfFileMarker) {
            line = GetNextLineOrEnd(fileNo);
            r.RowLine[slot(count)] = line;
            count = add16(count, 1);
        }
    });

    // The key search reads the file anew, so compensation lines beyond the
    // 122nd line are found all the same.
    QString factorKey = ZblCompensationFactorKey;
    r.CompensationFactorText = FindValueOfKeyInFile(r.FilePath, factorKey);
    if (r.CompensationFactorText == ZblEndOfFileMarker)
        r.CompensationFactorText = ZblNoValue;
    QString tempKey = ZblCompensedTempKey;
    r.CompensedTempText = FindValueOfKeyInFile(r.FilePath, tempKey);
    if (r.CompensedTempText == ZblEndOfFileMarker)
        r.CompensedTempText = ZblNoValue;
}

void ParseZBLHeaderLines()
{
    ZblTestRecord& r = zblTestRecord();
    if (r.FilePath.isEmpty())
        return;
    withPath(r.FilePath, [&r] {
        r.FileName = directoryLookup(r.FilePath);

        // Labels are not looked at: line n gives value n. The length asked of
        // the text service is the line's length less one, which clips at the
        // line's end but is -1 for an empty line, an invalid argument.
        auto value = [](const QString& line) {
            const qsizetype length = line.size() - 1;
            if (length < 0)
                raiseRuntimeErrorOnValue(err::InvalidProcedureCall, line);
            return trimBlanks(line.mid(HeaderValueStart - 1, length));
        };
        r.DateTimeText = value(r.HeaderLine[0]);
        r.ModeText = value(r.HeaderLine[1]);
        r.SerialText = value(r.HeaderLine[2]);
        r.CompanyText = value(r.HeaderLine[3]);
        r.StationText = value(r.HeaderLine[4]);
        r.DesignationText = value(r.HeaderLine[5]);
        r.ManufacturerText = value(r.HeaderLine[6]);
        r.OperatorText = value(r.HeaderLine[7]);
        r.TemperatureText = value(r.HeaderLine[8]);
        r.NotesText = value(r.HeaderLine[9]);
    });
}

QString FindValueOfKeyInFile(const QString& path, QString& key)
{
    SequentialFiles& files = SequentialFiles::instance();
    const Int16 fileNo = files.freeFile();
    files.open(fileNo, path, SequentialFiles::Mode::Input);
    // The second number is closed on every way out; the test file's own
    // number stays open.
    struct CloseOnExit
    {
        SequentialFiles& files;
        Int16 fileNo;
        ~CloseOnExit() { files.close(fileNo); }
    } closer{files, fileNo};

    // The first line can never hold a key.
    files.lineInput(fileNo);
    key = trimBlanks(key);

    // The end is tested after each comparison, so a file of a single line
    // reads past its end here.
    QString line;
    bool found = false;
    do {
        line = trimBlanks(files.lineInput(fileNo));
        found = line.left(key.size()) == key;
    } while (!found && !files.eof(fileNo));
    if (!found)
        return ZblEndOfFileMarker;

    QString value = line.mid(key.size());
    if (value.startsWith(u','))
        value.remove(0, 1);
    return trimBlanks(value);
}

ZblRowTokens SplitZBLRowTokens(const QString& line)
{
    ZblRowTokens tokens;
    tokens.fill(ZeroToken);
    std::size_t count = 0;
    for (const QStringView piece : QStringView(line).split(u' ', Qt::SkipEmptyParts)) {
        if (count >= tokens.size())
            raiseRuntimeErrorOnValue(err::SubscriptOutOfRange, line);
        tokens[count++] = piece.toString();
    }
    return tokens;
}

ValueWithUnit SplitValueAndUnit(const QString& text)
{
    // The current's digits and unit letters. Intended as it has always been:
    // only a text with exactly one match is read, so a decimal current such
    // as "1.5" (two matches) gives nothing at all.
    static const QRegularExpression pattern(QStringLiteral("(\\d+)\\s*([a-zA-Z]*)"));
    ValueWithUnit result;
    QRegularExpressionMatchIterator it = pattern.globalMatch(text);
    if (!it.hasNext())
        return result;
    const QRegularExpressionMatch match = it.next();
    if (it.hasNext())
        return result;

    result.valueText = match.captured(1);
    bool ok = false;
    result.value = result.valueText.toDouble(&ok);
    try {
        if (!ok)
            raiseRuntimeError(err::Overflow);
        result.intValue = toInt16(result.value);
    } catch (RuntimeError& e) {
        e.setDetail(result.valueText);
        throw;
    }
    if (match.lastCapturedIndex() >= 2)
        result.unit = match.captured(2);
    return result;
}

void ParseZBLTableLines()
{
    const ZblTestRecord& r = zblTestRecord();
    withPath(r.FilePath, [&r] {
        // Every element is cut, whether it holds a row or not: the closing
        // rule, an empty line and the end marker give rows of "0" tokens.
        for (int i = 0; i < ZblRowsUsed; ++i) {
            parseRow(i, SplitZBLRowTokens(r.RowLine[slot(i)]));
            letSystemBreathe();
        }
    });
}

void FillZBLHeaderControls(ZblReportTarget& report)
{
    const ZblTestRecord& r = zblTestRecord();
    report.lbTexteCompensedTemp1().clear();
    report.lbTexteFileName1() = r.FileName;
    report.lbTexteDate1() = r.DateTimeText;
    report.txtXFRSerialNumber() = r.SerialText;
    report.txtCompany() = r.CompanyText;
    report.txtStation() = r.StationText;
    report.txtDesignator() = r.DesignationText;
    report.txtManufacturer() = r.ManufacturerText;
    report.txtOperator() = r.OperatorText;
    report.txtTemperature() = r.TemperatureText;
    report.txtNotes() = r.NotesText;
}

void FillZBLTapControls(ZblReportTarget& report)
{
    // The current and the interval are not shown; they only pass through the
    // record to a save.
    const ZblTestRecord& r = zblTestRecord();
    for (int i = 0; i < ZblRowsUsed; ++i) {
        const std::size_t k = slot(i);
        report.cell(ZblReportColumn::TapA, i) = r.TapA[k];
        report.cell(ZblReportColumn::WindingA, i) = r.WindingA[k];
        report.cell(ZblReportColumn::ResA, i) = r.ResistanceA[k];
        report.cell(ZblReportColumn::TapB, i) = r.TapB[k];
        report.cell(ZblReportColumn::WindingB, i) = r.WindingB[k];
        report.cell(ZblReportColumn::ResB, i) = r.ResistanceB[k];
        report.cell(ZblReportColumn::TotalTime, i) = r.TotalTime[k];
        letSystemBreathe();
    }
}

void SetZBLCompensationFromFile(const QString& instrument, ZblReportTarget& report)
{
    // The ZBL report is the only caller; no other instrument's path exists.
    if (instrument != QLatin1String("ZBL"))
        return;
    const ZblTestRecord& r = zblTestRecord();
    if (r.CompensedTempText == ZblNoValue)
        return;

    report.lbTexteCompensedTemp1() = r.CompensedTempText;
    const QString& measured = report.txtTemperature();
    const QString& reference = report.lbTexteCompensedTemp1();
    if (measured.isEmpty() || reference.isEmpty() || !(leadingNumber(measured) > 0) ||
        !(leadingNumber(reference) > 0))
        return;

    // The stored material is recognised by its English name only; any other
    // text leaves the dialog's TK as it was.
    report.cbCompensationText() = r.CompensationFactorText;
    if (r.CompensationFactorText == ZblCopperName)
        report.txtTK() = numberText(234.5);
    else if (r.CompensationFactorText == ZblAluminiumName)
        report.txtTK() = QStringLiteral("225");

    report.txtTS() = r.CompensedTempText;
    report.txtTM() = numberText(leadingNumber(report.txtTemperature()));
    report.txtTS() = numberText(leadingNumber(report.lbTexteCompensedTemp1()));
    report.txtTK() = numberText(leadingNumber(report.txtTK()));
    report.txtTS() = numberText(leadingNumber(report.txtTS()));
    report.txtTM() = numberText(leadingNumber(report.txtTM()));

    report.FillZBLBasicReportConpensedResistance();
}

} // namespace quenby
