#include "tools/zblsamples/ZblSampleWriter.h"

#include "shell/model/CFile.h"
#include "shell/model/Dynamic.h"
#include "shell/model/NumberText.h"

#include "zbl/model/ZblTestRecord.h"

namespace quenby::samples {

namespace {
const QString TableHead = QString::fromLatin1(ZblTableHead);
} // namespace

QString zblRule()
{
    return QString(136, u'-');
}

QString zblMonthName(int month)
{
    static const char* const names[] = {"Jan.", "Feb.", "Mar.", "Apr.", "May",  "Jun.",
                                        "Jul.", "Aug.", "Sep.", "Oct.", "Nov.", "Dec."};
    if (month < 1 || month > 12)
        return {};
    return QString::fromLatin1(names[month - 1]);
}

QString zblDateText(const ZblUploadFile& f)
{
    // The day takes a blank behind it, the year follows the month directly,
    // and three blanks lead the time.
    return formatNumber(f.day, u"0 ") + zblMonthName(f.month) +
           formatNumber(f.year + 2000, u"0000") + formatNumber(f.hour, u"   00:") +
           formatNumber(f.minute, u"00:") + formatNumber(f.second, u"00");
}

QString zblResistanceText(const QString& instrumentText)
{
    // The instrument's omega arrives as "O"; the upload completes the unit.
    if (instrumentText == QLatin1String("OVER") || instrumentText == QLatin1String("OFF"))
        return instrumentText;
    return instrumentText + QStringLiteral("hm");
}

Int16 writeUploadedZblFile(const QString& path, const ZblUploadFile& f)
{
    CFile out;
    QString name = path;
    const Int16 error = out.OpenFile(name, True16);
    if (error != 0)
        return error;

    auto line = [&out](const QString& text) {
        QString t = text;
        out.PrintLineToFile(t);
    };
    line(QString(f.mode == 0 ? 76 : 88, u'-'));
    line(QStringLiteral("ZBL Report    "));
    line(QStringLiteral("Date/Time:    ") + zblDateText(f));
    line(QStringLiteral("Mode:         ") + (f.mode == 0   ? QStringLiteral("Manual")
                                             : f.mode == 1 ? QStringLiteral("Timed")
                                                           : QStringLiteral("Auto T/C")));
    line(QStringLiteral("Serial:       ") + f.serial);
    line(QStringLiteral("Company:      ") + f.company);
    line(QStringLiteral("Station:      ") + f.station);
    line(QStringLiteral("Designation:  ") + f.designation);
    line(QStringLiteral("Manufacturer: ") + f.manufacturer);
    line(QStringLiteral("Operator:     ") + f.operatorName);
    line(QStringLiteral("Temperature:  ") + f.temperature);
    line(QStringLiteral("Notes:        ") + f.notes);
    line(zblRule());
    line(TableHead);
    line(zblRule());

    for (const ZblUploadReading& r : f.readings) {
        QString tapA = r.tapA;
        QString windingA = r.windingA1 + u'-' + r.windingA2;
        QString resistanceA = zblResistanceText(r.resistanceA);
        QString tapB = r.tapB;
        QString windingB = r.windingB1 + u'-' + r.windingB2;
        QString resistanceB = zblResistanceText(r.resistanceB);
        // Milliamperes and seconds with the blank that a number not negative
        // keeps for its sign.
        QString current = signedNumberText(r.currentMilliamperes);
        Dynamic interval(signedNumberText(r.intervalSeconds) + QStringLiteral("sec"));
        QString total = QStringLiteral("00:00:00");
        out.PrintLineToFileZBL(tapA, windingA, resistanceA, tapB, windingB, resistanceB, current,
                               interval, total);
    }
    line(zblRule());
    out.CloseFile();
    return 0;
}

QStringList zblSavedLines(const ZblSavedFile& f)
{
    QStringList lines;
    lines << QString(88, u'-') << QStringLiteral("ZBL Report")
          << QStringLiteral("Date/Time:    ") + f.date << QStringLiteral("Mode:         ")
          << QStringLiteral("Serial:       ") + f.serial
          << QStringLiteral("Company:      ") + f.company
          << QStringLiteral("Station:      ") + f.station
          << QStringLiteral("Designation:  ") + f.designation
          << QStringLiteral("Manufacturer: ") + f.manufacturer
          << QStringLiteral("Operator:     ") + f.operatorName
          << QStringLiteral("Temperature:  ") + f.temperature
          << QStringLiteral("Notes:        ") + f.notes << zblRule() << TableHead << zblRule();
    for (const ZblSavedRow& r : f.rows) {
        ZonedLine row;
        row.add(QStringLiteral("-"));
        for (const QString& item : {r.tapA, r.windingA, r.resistanceA, r.tapB, r.windingB,
                                    r.resistanceB, r.current, r.interval, r.total})
            row.add(item);
        lines << row.text();
    }
    if (!f.compensationLines)
        return lines;

    lines << QString();
    auto pair = [&f](const QString& key, const QString& value) {
        if (f.commaAfterKey)
            return key + u',' + value;
        ZonedLine zoned;
        zoned.add(key);
        zoned.add(value);
        return zoned.text();
    };
    lines << pair(QStringLiteral("TEMP COMPENSATION FACTOR:"), f.compensationFactor)
          << pair(QStringLiteral("TEMP COMPENSED:"), f.compensedTemp);
    return lines;
}

Int16 writeSavedZblFile(const QString& path, const ZblSavedFile& f)
{
    CFile out;
    QString name = path;
    const Int16 error = out.OpenFile(name, True16);
    if (error != 0)
        return error;
    for (QString line : zblSavedLines(f)) {
        const Int16 e = out.PrintLineToFile(line);
        if (e != 0) {
            out.CloseFile();
            return e;
        }
    }
    out.CloseFile();
    return 0;
}

} // namespace quenby::samples
