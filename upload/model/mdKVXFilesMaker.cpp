#include "upload/model/mdKVXFilesMaker.h"

#include "shell/model/CFile.h"
#include "shell/model/NumberText.h"
#include "shell/model/RuntimeError.h"
#include "upload/model/ModText.h"
#include "upload/model/UploadFolder.h"
#include "upload/model/UploadGlobals.h"

#include <QStringList>

namespace quenby {

namespace {

const QString Dashes = QStringLiteral("---");

const QString TableHead1 = QStringLiteral(
    " Ref.   Taps       N.P.     Calculated   Measured   Error     Phase     Polarity      Vs  "
    "       Vs         Vs      Wdg. Res.   Insulation   Insulation");
const QString TableHead2 = QStringLiteral(
    " Test              Ratio     Ratio        Ratio       %       Angle      Status    IEEE 45 "
    "  IEEE 30   IEC 10-50    (Ohms)       (Ohms)       (Volts) ");

// Writer columns of a table row: the number of characters ahead of a field.
namespace column {
constexpr Int32 RefTest = 1;
constexpr Int32 Taps = 7;
constexpr Int32 NameplateRatio = 17;
constexpr Int32 CalculatedRatio = 29;
constexpr Int32 MeasuredRatio = 39;
constexpr Int32 ErrorPercent = 51;
constexpr Int32 PhaseAngle = 61;
constexpr Int32 Polarity = 72;
constexpr Int32 VsIeee45 = 81;
constexpr Int32 VsIeee30 = 92;
constexpr Int32 VsIec1050 = 104;
constexpr Int32 WindingResistance = 115;
constexpr Int32 InsulationOhms = 129;
constexpr Int32 InsulationVolts = 139;
} // namespace column

bool isSet(Bool16 flag)
{
    return flag != False16;
}

// A knee voltage: shown when above 1 V and the excitation results are valid.
void kneeVoltageAt(float volts, bool excitationValid, Int32 at, Int32& position)
{
    if (volts > 1.0f && excitationValid)
        TextAtColumn4_2(volts, at, position);
    else
        TextAtColumn(Dashes, at, position);
}

// One row of the result table for test `test` (from 0). All comparisons are
// made on the single the instrument sent.
QString kvxTableRow(Int16 test, const KvxDeviceRecord& r)
{
    ClearTextLine();
    Int32 position = 0;
    TextAtColumn(formatNumber(test + 1, u"00"), column::RefTest, position);
    TextAtColumn(r.tap, column::Taps, position);
    TextAtColumn(numberText(r.ratioFirst) + u':' + numberText(r.ratioSecond),
                 column::NameplateRatio, position);
    TextAtColumn1_0(r.calculatedRatio, column::CalculatedRatio, position);

    const bool ratioShown = r.measuredRatio > 0.9f && isSet(r.ratioValid);
    if (ratioShown) {
        TextAtColumn5_3(r.measuredRatio, column::MeasuredRatio, position);
        if (r.ratioError > 1000.0f)
            TextAtColumn(QStringLiteral(">1000"), column::ErrorPercent, position);
        else
            TextAtColumn3_1(r.ratioError, column::ErrorPercent, position);
    } else {
        TextAtColumn(Dashes, column::MeasuredRatio, position);
        TextAtColumn(Dashes, column::ErrorPercent, position);
    }

    const bool excitationValid = isSet(r.excitationValid);
    if (r.phase < 1000.0f && excitationValid) {
        if (r.phase == 90.0f) {
            // Intended: a phase of exactly 90 is the instrument's error mark,
            // and the polarity field gets no text at all; the blanks ahead of
            // the next field cover its place.
            TextAtColumn(QStringLiteral("Error"), column::PhaseAngle, position);
        } else {
            TextAtColumn3_1b(r.phase, column::PhaseAngle, position);
            TextAtColumn(isSet(r.polarityPositive) ? QStringLiteral("POS") : QStringLiteral("NEG"),
                         column::Polarity, position);
        }
    } else {
        TextAtColumn(Dashes, column::PhaseAngle, position);
        TextAtColumn(Dashes, column::Polarity, position);
    }

    kneeVoltageAt(r.kneeIeee45, excitationValid, column::VsIeee45, position);
    kneeVoltageAt(r.kneeIeee30, excitationValid, column::VsIeee30, position);
    kneeVoltageAt(r.kneeIec1050, excitationValid, column::VsIec1050, position);

    const float winding = r.windingResistance;
    if (winding == 0.0f || !isSet(r.windingValid))
        TextAtColumn(Dashes, column::WindingResistance, position);
    else if (winding < 0.0f)
        TextAtColumn(QStringLiteral("Error"), column::WindingResistance, position);
    else if (winding < 20.0f)
        TextAtColumn7_5(winding, column::WindingResistance, position);
    else
        TextAtColumn(QStringLiteral(">20"), column::WindingResistance, position);

    // A stored 0.0 decodes to 2^-127, which is not 0 and reads "<2M".
    const float insulation = r.insulation;
    if (insulation == 0.0f || !isSet(r.insulationValid))
        TextAtColumn(Dashes, column::InsulationOhms, position);
    else if (insulation < 0.0f)
        TextAtColumn(QStringLiteral("Error"), column::InsulationOhms, position);
    else if (insulation > 1000000000.0f)
        TextAtColumn(QStringLiteral(">1G"), column::InsulationOhms, position);
    else if (insulation < 2000000.0f)
        TextAtColumn(QStringLiteral("<2M"), column::InsulationOhms, position);
    else
        TextAtColumn(singleText(insulation), column::InsulationOhms, position);

    // The instrument does not send the insulation test voltage.
    TextAtColumn(Dashes, column::InsulationVolts, position);
    return TextLineResult();
}

// The excitation table of test `test` (from 0), line by line.
QStringList kvxExcitationLines(Int16 test, const KvxDeviceRecord& r)
{
    QStringList lines{QString(), QString(),
                      QStringLiteral("Ref Test #") + formatNumber(test + 1, u"00"),
                      QString(32, u'-')};
    ClearTextLine();
    TextLineCentered(QStringLiteral("No."), 6);
    TextLineCentered(QStringLiteral("  Vx (volts)"), 12);
    TextLineCentered(QStringLiteral("  Current (A)"), 13);
    lines << TextLineResult() << QString(32, u'-');

    // Only 100 points travel in a slot; a count up to the record's room of
    // 201 writes the rest as 0, a count beyond it is a bounds error.
    for (int j = 1; j <= r.numberOfPoints; ++j) {
        const auto index = static_cast<std::size_t>(j - 1);
        if (index >= r.voltages.size())
            raiseRuntimeErrorOnValue(err::SubscriptOutOfRange, QString::number(j));
        ClearTextLine();
        TextLineCentered(formatNumber(j, u" 00"), 6);
        TextLineCentered(MyStr(r.voltages[index], 4, 2), 12);
        KvxCurrentText(r.currents[index] * 1000.0f, 13); // appends its own piece
        lines << TextLineResult();
    }
    return lines;
}

QString headerDate(const KvxHeaderRecord& h)
{
    return formatNumber(h.day, u"0 ") + KvxMonthName(h.month) +
           formatNumber(add16(h.year, 2000), u"0000");
}

QString headerTime(const KvxHeaderRecord& h)
{
    return formatNumber(h.hour, u"00:") + formatNumber(h.minute, u"00:") +
           formatNumber(h.second, u"00");
}

} // namespace

void WriteKvxTestFile(const KvxHeaderRecord& header, const std::vector<KvxDeviceRecord>& tests)
{
    const UploadGlobals& g = uploadGlobals();
    const QString folder = UploadFolder(QStringLiteral("KVX"));
    // No check for a name in use: the stamp gives each opening of the upload
    // window its own folder and CurrentFile differs within it, so a retry
    // writes over its own file. A '"' in the serial is not cleaned.
    QString path = folder + QString::number(g.CurrentFile) + u'-' + CleanFileName(header.Serial) +
                   QStringLiteral(".txt");

    MakeUploadFolder(folder);
    CFile file;
    if (file.OpenFile(path, True16) != 0)
        return; // no message and no count: the caller goes on

    const QString rule125(125, u'-');
    QStringList lines{
        QStringLiteral("[3,31,0,0]"),
        rule125,
        QStringLiteral("KVX LT Transformer Test Results"),
        rule125,
        // The instrument gives no versions over the link: a blank stands for each.
        QStringLiteral("MCU  version:     "),
        QStringLiteral("Acq  version:     "),
        QStringLiteral("Kbd  version:     "),
        QStringLiteral("Data version:     "),
        QStringLiteral(" "),
        QStringLiteral("Serial:          ") + header.Serial,
        QStringLiteral("Company:         ") + header.Company,
        QStringLiteral("Station:         ") + header.Station,
        QStringLiteral("Designation:     ") + header.Designation,
        QStringLiteral("Manufacturer:    ") + header.Manufacturer,
        QStringLiteral("Operator:        ") + header.Operator,
        QStringLiteral("Temperature:     ") + header.Temperature,
        QStringLiteral("Ratio:           ") + header.Ratio,
        QStringLiteral("Voltage Rating:  ") + header.VoltageRating,
        QStringLiteral("Class:           ") + header.Class,
        QStringLiteral("Position:        ") + header.Position,
        QStringLiteral("Phase:           ") + header.Phase,
        QStringLiteral("KVX S/N:         ") + g.DeviceSerial,
        QStringLiteral("Date:            ") + headerDate(header),
        QStringLiteral("Time:            ") + headerTime(header),
        QStringLiteral("Notes:           ") + header.Notes,
        QString(),
    };
    for (QString& line : lines)
        file.PrintLineToFile(line);

    QStringList head{QString(149, u'-'), TableHead1, TableHead2, QString(148, u'-')};
    for (QString& line : head)
        file.PrintLineToFile(line);

    // Tests are numbered by their place in the frame, from 0.
    const auto count = static_cast<Int16>(tests.size());
    for (Int16 test = 0; test < count; ++test) {
        QString row = kvxTableRow(test, tests[static_cast<std::size_t>(test)]);
        file.PrintLineToFile(row);
    }

    for (Int16 test = 0; test < count; ++test) {
        const KvxDeviceRecord& r = tests[static_cast<std::size_t>(test)];
        if (!isSet(r.excitationValid))
            continue;
        for (QString& line : kvxExcitationLines(test, r))
            file.PrintLineToFile(line);
    }

    file.CloseFile();
}

QString CleanFileName(const QString& text)
{
    QString out = text;
    for (const QChar c : QStringLiteral("<>*?|/\\:$&%"))
        out.replace(c, u'_');
    return out;
}

QString KvxCurrentText(double milliamperes, int width)
{
    // The current is the instrument's single, and stays one: a thousand
    // milliamperes or more are shown in amperes without a unit letter, less
    // in milliamperes with an "m" behind, under the column's "A".
    const auto value = static_cast<float>(milliamperes);
    const QString text =
        value >= 1000.0f ? MyStr(value / 1000.0f, 5, 3) : MyStr(value, 5, 3) + u'm';
    const qsizetype before = TextLineResult().size();
    TextLineCentered(text, width);
    return TextLineResult().mid(before);
}

QString KvxMonthName(int month)
{
    // Intended: the first six end in a blank and the last six don't, so the
    // year follows July directly ("Jul.2014").
    static const std::array<QString, 12> names{
        QStringLiteral("Jan. "), QStringLiteral("Feb. "), QStringLiteral("Mar. "),
        QStringLiteral("Apr. "), QStringLiteral("May. "), QStringLiteral("Jun. "),
        QStringLiteral("Jul."),  QStringLiteral("Aug."),  QStringLiteral("Sep."),
        QStringLiteral("Oct."),  QStringLiteral("Nov."),  QStringLiteral("Dec.")};
    if (month < 1 || month > 12)
        return {};
    return names[static_cast<std::size_t>(month - 1)];
}

} // namespace quenby
