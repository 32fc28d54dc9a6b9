#include "kvx/model/KvxTestFileReader.h"

#include "shell/model/TextRules.h"

#include "kvx/model/KvxCondensedReportModel.h"
#include "localisation/model/LanguageLookup.h"
#include "shell/model/AppState.h"
#include "shell/model/NumberText.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/YieldHook.h"

#include <cmath>

namespace quenby {

namespace {

const QString Hyphens4 = QStringLiteral("----");
const QString RefTest = QStringLiteral("Ref Test");

// Characters `start` (from 1) onward, at most `length` of them; nothing when
// the start lies beyond the text or the length is below 1.
QString midText(const QString& text, qsizetype start, qsizetype length)
{
    // A negative length is the platform's invalid-argument failure: a table
    // row shorter than 138 characters asks for one in its last column.
    if (length < 0)
        raiseRuntimeErrorOnValue(err::InvalidProcedureCall, text);
    if (length == 0 || start > text.size())
        return {};
    return text.mid(start - 1, length);
}

QString midText(const QString& text, qsizetype start)
{
    if (start > text.size())
        return {};
    return text.mid(start - 1);
}

Int16 readLine(SequentialFiles& files, Int16 fileNo, QString& line, Int16 lineNo)
{
    line = files.lineInput(fileNo);
    return add16(lineNo, 1);
}

// Steps to the next line whose last two characters are "--", unless the
// current line already ends in four hyphens; leaves only those two characters
// as the current line. The line count bounds the search.
Int16 skipToHyphens(SequentialFiles& files, Int16 fileNo, QString& line, Int16 lineNo,
                    double lineCount)
{
    if (!line.endsWith(Hyphens4))
        lineNo = readLine(files, fileNo, line, lineNo);
    line = line.right(2);
    while (line != QLatin1String("--") && !(lineCount < lineNo)) {
        lineNo = readLine(files, fileNo, line, lineNo);
        line = line.right(2);
    }
    return lineNo;
}

// Block names and the table row they pick, 1 to 10. The instrument writes a
// blank where the upload writer writes a leading zero.
int rowOfBlock(const QString& blockName)
{
    static const std::array<std::array<QString, 2>, KvxSlotCount> names = [] {
        std::array<std::array<QString, 2>, KvxSlotCount> n;
        for (int row = 1; row <= KvxSlotCount; ++row)
            n[static_cast<std::size_t>(row - 1)] = {
                QStringLiteral("Ref Test #%1").arg(row, 2, 10, QLatin1Char('0')),
                QStringLiteral("Ref Test # %1").arg(row)};
        return n;
    }();
    for (std::size_t i = 0; i < names.size(); ++i)
        if (blockName == names[i][0] || blockName == names[i][1])
            return static_cast<int>(i) + 1;
    return 0;
}

// Piece `wanted` (from 0) of the non-empty pieces of `text` split at single
// blanks, or "" if there are fewer; more than `maxPieces` pieces is Subscript
// out of range, as for splitKvxPieces.
QString kvxPiece(const QString& text, int wanted, int maxPieces)
{
    QStringView found;
    int count = 0;
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n) {
        while (i < n && text[i] == u' ')
            ++i;
        if (i == n)
            break;
        const qsizetype start = i;
        while (i < n && text[i] != u' ')
            ++i;
        if (count >= maxPieces)
            raiseRuntimeErrorOnValue(err::SubscriptOutOfRange, text);
        if (count == wanted)
            found = QStringView(text).mid(start, i - start);
        ++count;
    }
    return found.toString();
}

void readKvxTestFileFrom(Int16 fileNo)
{
    SequentialFiles& files = SequentialFiles::instance();
    KvxTestRecord& record = kvxTestRecord();

    for (QString& row : record.tableRows)
        row.clear();
    files.seek(fileNo, 1);
    // The counter is a text; it is compared with the line number by value.
    const double lineCount = strictNumber(countKvxLines(fileNo));

    // Find the header's anchor.
    files.seek(fileNo, 1);
    Int16 lineNo = 0;
    QString line = files.lineInput(fileNo);
    while (!line.contains(QLatin1String("Serial")))
        lineNo = readLine(files, fileNo, line, lineNo);

    if (lineCount > lineNo) {
        // The 15 lines after the anchor are the header, whatever they hold.
        record.rawSerial = line;
        record.rawCompany = files.lineInput(fileNo);
        record.rawStation = files.lineInput(fileNo);
        record.rawDesignation = files.lineInput(fileNo);
        record.rawManufacturer = files.lineInput(fileNo);
        record.rawOperator = files.lineInput(fileNo);
        record.rawTemperature = files.lineInput(fileNo);
        record.rawRatio = files.lineInput(fileNo);
        record.rawVoltageRating = files.lineInput(fileNo);
        record.rawClass = files.lineInput(fileNo);
        record.rawPosition = files.lineInput(fileNo);
        record.rawPhase = files.lineInput(fileNo);
        record.rawInstrumentSerial = files.lineInput(fileNo);
        record.rawDate = files.lineInput(fileNo);
        record.rawTime = files.lineInput(fileNo);
        record.rawNotes = files.lineInput(fileNo);
        lineNo = add16(lineNo, 16);

        // Notes run on up to an empty line or a line of hyphens; the further
        // lines are appended with nothing between.
        line = record.rawNotes;
        while (!line.endsWith(Hyphens4) && !(lineCount < lineNo) && !line.isEmpty()) {
            line = files.lineInput(fileNo);
            if (!line.endsWith(Hyphens4) && !line.isEmpty())
                record.rawNotes += line;
            lineNo = add16(lineNo, 1);
        }
    }

    ParseKvxHeaderFields();

    // To the hyphens above the column heads, then to those below them.
    lineNo = skipToHyphens(files, fileNo, line, lineNo, lineCount);
    lineNo = readLine(files, fileNo, line, lineNo);
    lineNo = skipToHyphens(files, fileNo, line, lineNo, lineCount);

    // Table rows up to the first empty line; only ten are kept.
    Int16 slot = 1;
    while (!line.isEmpty() && !(lineCount < lineNo)) {
        line = files.lineInput(fileNo);
        if (!line.isEmpty()) {
            const double reference = strictNumber(trimBlanks(midText(line, 1, 4)));
            record.lastReference = Dynamic(std::trunc(reference));
            if (slot <= KvxSlotCount)
                record.tableRows[static_cast<std::size_t>(slot - 1)] = line;
            slot = add16(slot, 1);
        }
        lineNo = add16(lineNo, 1);
    }

    ParseKvxTapRows();

    // Curve blocks, read field by field. The token array is not cleared
    // between lines: the empty line that closes a block arrives with the last
    // point's tokens still in it, so that point is stored twice (intended,
    // and harmless).
    QString tail;
    KvxPointTokens tokens;
    while (FindLineBeginning(fileNo, line, RefTest, tail)) {
        const QString blockName = QStringLiteral("Ref Test #") + tail;
        files.input(fileNo); // hyphens
        files.input(fileNo); // column heads
        line = files.input(fileNo);
        while (!line.isEmpty() && !files.eof(fileNo)) {
            line = files.input(fileNo);
            const QStringList pieces = splitKvxPieces(line, static_cast<int>(tokens.size()));
            for (qsizetype i = 0; i < pieces.size(); ++i)
                tokens[static_cast<std::size_t>(i)] = pieces[i];
            StoreKvxCurveLine(blockName, tokens);
            letSystemBreathe();
        }
    }

    RepairAllKvxCurves();
}

} // namespace

QStringList splitKvxPieces(const QString& text, int maxPieces)
{
    QStringList pieces;
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n) {
        while (i < n && text[i] == u' ')
            ++i;
        if (i == n)
            break;
        const qsizetype start = i;
        while (i < n && text[i] != u' ')
            ++i;
        if (pieces.size() >= maxPieces)
            raiseRuntimeErrorOnValue(err::SubscriptOutOfRange, text);
        pieces.append(text.mid(start, i - start));
    }
    return pieces;
}

QString countKvxLines(Int16 fileNo)
{
    // Intended as the program has always counted: every line ahead of the
    // first line ending in "----" sets the count back to 1, and from that
    // line on each line adds 1. With a single line ahead of the hyphens the
    // count is the number of lines; with the hyphens on line 1 it is one less
    // than the same file with a stamp line in front; with no hyphens it is 1.
    SequentialFiles& files = SequentialFiles::instance();
    double lineCount = 0; // kept as a number while counting, given as text
    bool hyphensSeen = false;
    while (!files.eof(fileNo)) {
        const QString line = files.lineInput(fileNo);
        if (!hyphensSeen && !line.endsWith(Hyphens4)) {
            lineCount = 1;
        } else {
            hyphensSeen = true;
            lineCount += 1;
        }
    }
    return numberText(lineCount);
}

void ReadKvxTestFile()
{
    const AppState& app = appState();
    const QString path = app.KvxTestFilePath.toText();
    try {
        readKvxTestFileFrom(toInt16(app.KvxTestFileNo.toNumber()));
    } catch (RuntimeError& e) {
        if (e.where().isEmpty())
            e.setWhere(path);
        throw;
    }
}

void ParseKvxHeaderFields()
{
    const QString path = appState().KvxTestFilePath.toText();
    if (path.isEmpty())
        return;
    KvxTestRecord& r = kvxTestRecord();
    const qsizetype sep = std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/'));
    r.fileName = path.mid(sep + 1);

    // The starts fall a little ahead of the values for the long labels; the
    // trim takes the rest.
    r.company = trimBlanks(midText(r.rawCompany, 9));
    r.designation = trimBlanks(midText(r.rawDesignation, 15));
    r.ctSerial = trimBlanks(midText(r.rawSerial, 15));
    r.temperature = trimBlanks(midText(r.rawTemperature, 15));
    r.ratio = trimBlanks(midText(r.rawRatio, 10));
    r.phase = trimBlanks(midText(r.rawPhase, 10));
    r.testClass = trimBlanks(midText(r.rawClass, 10));
    r.notes = trimBlanks(midText(r.rawNotes, 10));
    r.dateTime = ReduceDateTimeGap(trimBlanks(midText(r.rawDate, 10) + midText(r.rawTime, 10)));
    r.station = trimBlanks(midText(r.rawStation, 9));
    r.manufacturer = trimBlanks(midText(r.rawManufacturer, 14));
    r.operatorName = trimBlanks(midText(r.rawOperator, 10));
    r.instrumentSerial = Dynamic(trimBlanks(midText(r.rawInstrumentSerial, 15)));
    r.voltageRating = trimBlanks(midText(r.rawVoltageRating, 18));
    r.position = trimBlanks(midText(r.rawPosition, 15));
}

QString ReduceDateTimeGap(const QString& text)
{
    // The time value keeps 8 blanks of padding in front of it; that gap, and
    // only a gap of exactly that width, narrows to 3.
    QString out;
    out.reserve(text.size());
    qsizetype i = 0;
    while (i < text.size()) {
        if (text[i] != u' ') {
            out += text[i++];
            continue;
        }
        qsizetype run = 0;
        while (i + run < text.size() && text[i + run] == u' ')
            ++run;
        out += QString(run == 8 ? 3 : run, u' ');
        i += run;
    }
    return out;
}

void ParseKvxTapRows()
{
    KvxTestRecord& r = kvxTestRecord();
    for (KvxTapResult& tap : r.taps)
        tap.tapName.clear();
    for (const QString& row : r.tableRows)
        DispatchKvxTapRow(row);
}

void DispatchKvxTapRow(const QString& row)
{
    const int slot = kvxSlotOfPair(trimBlanks(midText(row, 5, 9)));
    if (slot != 0)
        FillKvxTapFields(row, slot);
}

std::array<Int16, 14> InitTapRowColumns()
{
    // Reader windows, counted from 1; they differ a little from the columns
    // a writer pads to.
    return {2, 8, 18, 30, 38, 50, 61, 72, 82, 93, 104, 115, 128, 138};
}

KvxSplitRow SplitKvxTapRow(const QString& row)
{
    const std::array<Int16, 14> starts = InitTapRowColumns();
    KvxSplitRow split;

    std::array<bool, 14> present{};
    int presentCount = 0;
    for (std::size_t i = 0; i < starts.size(); ++i) {
        // The last window runs from 138 for the row's length less 138
        // characters, which leaves out the row's last character.
        const QString column = i + 1 < starts.size()
                                   ? midText(row, starts[i], starts[i + 1] - starts[i])
                                   : midText(row, starts[i], row.size() - starts[i]);
        present[i] = !trimBlanks(column).isEmpty();
        if (present[i])
            ++presentCount;
    }

    const QStringList tokens = splitKvxPieces(row, static_cast<int>(split.size()));
    // The row's only check: a field with a blank inside, or a missing one,
    // makes the counts differ and the whole row reads empty.
    if (tokens.size() != presentCount)
        return split;

    qsizetype next = 0;
    for (std::size_t i = 0; i < starts.size(); ++i) {
        if (!present[i])
            continue;
        split[i] = trimBlanks(tokens[next++]);
        if (split[i] == QLatin1String("---") || split[i] == QLatin1String("NA"))
            split[i].clear();
    }
    return split;
}

void FillKvxTapFields(const QString& row, int slot)
{
    if (slot < 1 || slot > KvxSlotCount)
        raiseRuntimeError(err::SubscriptOutOfRange);
    const KvxSplitRow split = SplitKvxTapRow(row);
    KvxTapResult& tap = kvxTestRecord().taps[static_cast<std::size_t>(slot - 1)];
    tap.tapName = split[1];
    tap.nominalRatio = split[2];
    tap.calculatedRatio = split[3];
    tap.measuredRatio = split[4];
    tap.errorPercent = split[5];
    tap.phaseAngle = split[6];
    tap.polarity = split[7];
    tap.vsIeee45 = split[8];
    tap.vsIeee30 = split[9];
    tap.vsIec1050 = split[10];
    tap.windingResistance = split[11];
    // Intended: the unit is glued on with a trailing blank, and index 14 is
    // always empty (">1G" reads ">1Gohm ").
    if (!split[12].isEmpty() && split[12] != QLatin1String("---"))
        tap.insulation = split[12] + split[14] + QStringLiteral("ohm ");
    else
        tap.insulation.clear();

    // Slot 1 alone carries the insulation test voltage into the column head,
    // which is rewritten from the language text first so it never doubles.
    if (slot == 1) {
        QString head =
            GetLanguageText(QStringLiteral("frmKVXCondensedReport.txtInsulationRes.Text")) +
            QStringLiteral("  ");
        if (split[13] == QLatin1String("500") || split[13] == QLatin1String("1000"))
            head += QStringLiteral("  ") + split[13] + QStringLiteral(" Vdc");
        kvxCondensedReport().lbInsulationResistanceTest(0) = head;
    }
}

bool FindLineBeginning(Int16 fileNo, QString& line, const QString& text, QString& tail)
{
    SequentialFiles& files = SequentialFiles::instance();
    line = line.left(text.size());
    while (line != text && !files.eof(fileNo)) {
        line = files.input(fileNo);
        tail = line.right(2);
        line = line.left(text.size());
        letSystemBreathe();
    }
    return line == text;
}

void StoreKvxCurveLine(const QString& blockName, const KvxPointTokens& tokens)
{
    const int row = rowOfBlock(blockName);
    if (row == 0)
        return;
    KvxTestRecord& r = kvxTestRecord();
    // The block matches a row by its place in the table, and the row's tap
    // pair picks the curve.
    const QString pair = kvxPiece(r.tableRows[static_cast<std::size_t>(row - 1)], 1, 21);
    const int slot = kvxSlotOfPair(pair);
    if (slot == 0)
        return;
    // A row the reader dropped left its slot without a name: its block picks
    // no tap.
    if (r.taps[static_cast<std::size_t>(slot - 1)].tapName != pair)
        return;
    StoreKvxCurvePoint(tokens, r.curves[static_cast<std::size_t>(slot - 1)]);
}

void StoreKvxCurvePoint(const KvxPointTokens& tokens, KvxTapCurve& curve)
{
    // An index converts as the platform's 32-bit index does, then must lie in
    // the array.
    const Int32 index = toInt32(leadingNumber(tokens[0]));
    if (index < 0 || index >= KvxCurvePoints)
        raiseRuntimeErrorOnValue(err::SubscriptOutOfRange, tokens[0]);
    const auto i = static_cast<std::size_t>(index);
    curve.volts[i] = leadingNumber(tokens[1]);
    curve.current[i] = leadingNumber(tokens[2]);
    // Amperes become milliamperes; a value marked "m" is already in them.
    if (!tokens[2].isEmpty() && !tokens[2].endsWith(u'm'))
        curve.current[i] *= 1000;
    if (index > curve.pointCount)
        curve.pointCount = static_cast<Int16>(index);
}

} // namespace quenby
