#include "tools/kvxsamples/KvxSampleWriter.h"

#include "shell/model/CodePage.h"
#include "shell/model/NumberText.h"

#include <cmath>

namespace quenby::samples {

namespace {

const QString TableHead1 = QStringLiteral(
    " Ref.   Taps       N.P.     Calculated   Measured   Error     Phase     Polarity      Vs  "
    "       Vs         Vs      Wdg. Res.   Insulation   Insulation");
const QString TableHead2 = QStringLiteral(
    " Test              Ratio     Ratio        Ratio       %       Angle      Status    IEEE 45 "
    "  IEEE 30   IEC 10-50    (Ohms)       (Ohms)       (Volts) ");

QString label(const char* text)
{
    // Every header label stands in a field of 17 characters.
    return QString::fromLatin1(text).leftJustified(17, u' ');
}

QString twoDigits(int value)
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

} // namespace

QString kvxNumberText(double value, int width, int decimals)
{
    QString s = signedNumberText(roundHalfEven(value, decimals)).trimmed();
    const qsizetype p = s.indexOf(u'.') + 1; // from 1; 0 when there is no point
    if (decimals >= 1) {
        if (p == 0) {
            s += u'.' + QString(decimals, u'0');
        } else {
            const qsizetype f = s.size() - p;
            if (f < decimals)
                s += QString(decimals - f, u'0');
            else if (f > decimals)
                s = s.left(p + decimals);
        }
    } else if (p != 0) {
        s = s.left(p - 1);
    }
    if (s.size() < width) {
        if (std::fabs(value) < 1)
            s.prepend(u'0');
        s = s.rightJustified(width, u' ');
    }
    return s;
}

QString kvxCentred(const QString& text, int width)
{
    if (text.size() >= width)
        return text;
    const qsizetype spare = width - text.size();
    const qsizetype left = spare / 2;
    return QString(left, u' ') + text + QString(spare - left, u' ');
}

QString kvxTableRow(const std::array<QString, 14>& fields)
{
    QString row;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].isEmpty())
            continue;
        // A field that ran past the next column pushes this one on, with no
        // blank between.
        while (row.size() < KvxWriterColumns[i])
            row += u' ';
        row += fields[i];
    }
    return row;
}

QString kvxMonthText(int month)
{
    static const char* const names[] = {"Jan. ", "Feb. ", "Mar. ", "Apr. ", "May. ", "Jun. ",
                                        "Jul.",  "Aug.",  "Sep.",  "Oct.",  "Nov.",  "Dec."};
    if (month < 1 || month > 12)
        return {};
    return QString::fromLatin1(names[month - 1]);
}

QString kvxCurrentText(double amperes)
{
    const double milli = amperes * 1000;
    if (milli >= 1000)
        return kvxNumberText(milli / 1000, 5, 3);
    return kvxNumberText(milli, 5, 3) + u'm';
}

QString kvxPointLine(int number, const KvxSamplePoint& point)
{
    return kvxCentred(QStringLiteral(" ") + twoDigits(number), 6) +
           kvxCentred(kvxNumberText(point.volts, 4, 2), 12) +
           kvxCentred(kvxCurrentText(point.amperes), 13);
}

QString kvxVsText(double volts)
{
    return volts > 1.0 ? kvxNumberText(volts, 4, 2) : QStringLiteral("---");
}

QString kvxWindingText(double ohms)
{
    if (ohms == 0.0)
        return QStringLiteral("---");
    if (ohms < 0)
        return QStringLiteral("Error");
    if (ohms < 20)
        return kvxNumberText(ohms, 7, 5);
    return QStringLiteral(">20");
}

QString kvxInsulationText(float ohms)
{
    if (ohms == 0.0f)
        return QStringLiteral("---");
    if (ohms < 0)
        return QStringLiteral("Error");
    if (ohms > 1000000000.0f)
        return QStringLiteral(">1G");
    if (ohms < 2000000.0f)
        return QStringLiteral("<2M");
    return singleText(ohms);
}

QString kvxMeasuredRatioText(double ratio)
{
    return static_cast<float>(ratio) > 0.9f ? kvxNumberText(ratio, 5, 3) : QStringLiteral("---");
}

QString kvxErrorText(double percent)
{
    return percent > 1000 ? QStringLiteral(">1000") : kvxNumberText(percent, 3, 1);
}

QStringList kvxSampleLines(const KvxSampleFile& f)
{
    QStringList lines;
    if (f.stampLine)
        lines << QStringLiteral("[3,31,0,0]");
    lines << QString(125, u'-') << QStringLiteral("KVX LT Transformer Test Results")
          << QString(125, u'-');
    lines << label("MCU  version:") + f.mcuVersion << label("Acq  version:") + f.acqVersion
          << label("Kbd  version:") + f.kbdVersion << label("Data version:") + f.dataVersion;
    lines << QStringLiteral(" ");
    lines << label("Serial:") + f.serial << label("Company:") + f.company
          << label("Station:") + f.station << label("Designation:") + f.designation
          << label("Manufacturer:") + f.manufacturer << label("Operator:") + f.operatorName
          << label("Temperature:") + f.temperature << label("Ratio:") + f.ratio
          << label("Voltage Rating:") + f.voltageRating << label("Class:") + f.testClass
          << label("Position:") + f.position << label("Phase:") + f.phase
          << label("KVX S/N:") + f.instrumentSerial;
    lines << label("Date:") + QString::number(f.day) + u' ' + kvxMonthText(f.month) +
                 QStringLiteral("%1").arg(f.year, 4, 10, QLatin1Char('0'));
    lines << label("Time:") + twoDigits(f.hour) + u':' + twoDigits(f.minute) + u':' +
                 twoDigits(f.second);
    lines << label("Notes:") + f.notes.value(0);
    for (qsizetype i = 1; i < f.notes.size(); ++i)
        lines << f.notes[i];
    lines << QString();

    lines << QString(149, u'-') << TableHead1 << TableHead2 << QString(148, u'-');
    for (const KvxSampleRow& row : f.rows)
        lines << kvxTableRow(row.fields);
    lines << QString();

    for (const KvxSampleRow& row : f.rows) {
        if (!row.curve)
            continue;
        lines << QString() << QString() << QStringLiteral("Ref Test #") + row.blockNumber;
        lines << QString(32, u'-');
        lines << QStringLiteral(" No.  ") + QStringLiteral("  Vx (volts)") +
                     QStringLiteral("  Current (A)");
        lines << QString(32, u'-');
        int number = 1;
        for (const KvxSamplePoint& point : *row.curve)
            lines << kvxPointLine(number++, point);
        lines << QString();
    }
    return lines;
}

QByteArray kvxSampleBytes(const KvxSampleFile& file)
{
    QByteArray bytes;
    for (const QString& line : kvxSampleLines(file)) {
        bytes += encodeText(line, CodePage::Windows1252);
        bytes += "\r\n";
    }
    return bytes;
}

} // namespace quenby::samples
