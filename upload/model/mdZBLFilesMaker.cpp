#include "upload/model/mdZBLFilesMaker.h"

#include "upload/model/mdKVXFilesMaker.h"

#include "shell/model/CFile.h"
#include "shell/model/Dynamic.h"
#include "shell/model/NumberText.h"
#include "upload/model/UploadFolder.h"
#include "upload/model/UploadGlobals.h"

#include <QStringList>

#include <array>

namespace quenby {

namespace {

// The head the ZBL reader knows (ZblTestRecord.h, out of this subsystem's
// reach); the maker's test holds the two equal.
const QString TableHead = QStringLiteral(
    "             Tap         Winding          Resistance   Tap         Winding         "
    "Resistance   Current        Interval        Total    ");

QString modeText(Int16 mode)
{
    if (mode == 0)
        return QStringLiteral("Manual");
    if (mode == 1)
        return QStringLiteral("Timed");
    return QStringLiteral("Auto T/C");
}

// The instrument's capital omega arrives as "O"; "hm" completes the unit.
// The two words it shows instead of a reading stay as they are.
QString resistanceText(const QString& wide)
{
    if (wide == QLatin1String("OVER") || wide == QLatin1String("OFF"))
        return wide;
    return wide + QStringLiteral("hm");
}

} // namespace

QString ZblBlankFileNameCharacters(const QString& name)
{
    QString out = name;
    for (const QChar c : QStringLiteral("*/\\<>:?\"|"))
        out.replace(c, u' ');
    return out;
}

void WriteZblTestFile(const ZblHeaderRecord& header, const std::vector<ZblDeviceRecord>& readings)
{
    const UploadGlobals& g = uploadGlobals();
    const QString folder = UploadFolder(QStringLiteral("ZBL"));

    // Intended: a longer name of serial, mode letter and test number is
    // worked out first and then replaced before use, so neither the serial nor
    // the mode reaches the file name.
    QString fileName = header.Serial +
                       (header.mode == 2   ? QStringLiteral("_C")
                        : header.mode == 1 ? QStringLiteral("_T")
                                           : QStringLiteral("_M")) +
                       formatNumber(header.testNumber, u"_0");
    fileName = QString::number(g.CurrentFile) + u'-' +
               ZblCleanFileName(QString::number(header.testNumber)) + QStringLiteral(".zbl");
    QString path = folder + ZblBlankFileNameCharacters(fileName);

    MakeUploadFolder(folder);
    CFile file;
    if (file.OpenFile(path, True16) != 0)
        return; // no message and no count: the caller goes on

    const QString rule136(136, u'-');
    QStringList lines{
        QString(header.mode == 0 ? 76 : 88, u'-'),
        QStringLiteral("ZBL Report    "),
        QStringLiteral("Date/Time:    ") + formatNumber(header.day, u"0 ") +
            ZblMonthName(header.month) + formatNumber(add16(header.year, 2000), u"0000") +
            formatNumber(header.hour, u"   00:") + formatNumber(header.minute, u"00:") +
            formatNumber(header.second, u"00"),
        QStringLiteral("Mode:         ") + modeText(header.mode),
        QStringLiteral("Serial:       ") + header.Serial,
        QStringLiteral("Company:      ") + header.Company,
        QStringLiteral("Station:      ") + header.Station,
        QStringLiteral("Designation:  ") + header.Designation,
        QStringLiteral("Manufacturer: ") + header.Manufacturer,
        QStringLiteral("Operator:     ") + header.Operator,
        QStringLiteral("Temperature:  ") + header.Temperature,
        QStringLiteral("Notes:        ") + header.Notes,
        rule136,
        TableHead,
        rule136,
    };
    for (QString& line : lines)
        file.PrintLineToFile(line);

    // Intended: the Total column's three parts come from values that nothing
    // sets, so it always reads "00:00:00"; the record's time bytes never
    // reach the file.
    const int totalHours = 0, totalMinutes = 0, totalSeconds = 0;
    const QString total = formatNumber(totalHours, u"00") + u':' +
                          formatNumber(totalMinutes, u"00") + u':' +
                          formatNumber(totalSeconds, u"00");

    for (const ZblDeviceRecord& record : readings) {
        QString tapA = record.tapA;
        QString windingA = record.windingA1 + u'-' + record.windingA2;
        QString resistanceA = resistanceText(record.resistanceA);
        QString tapB = record.tapB;
        QString windingB = record.windingB1 + u'-' + record.windingB2;
        QString resistanceB = resistanceText(record.resistanceB);
        // Milliamperes with a blank for the sign; the row writer turns the
        // four ranges it knows into their labels.
        QString current = signedNumberText(record.current);
        Dynamic interval(signedNumberText(record.interval) + QStringLiteral("sec"));
        QString totalText = total;
        file.PrintLineToFileZBL(tapA, windingA, resistanceA, tapB, windingB, resistanceB, current,
                                interval, totalText);
    }

    QString closing = rule136;
    file.PrintLineToFile(closing);
    file.CloseFile();
}

QString ZblMonthName(int month)
{
    // Unlike the KVX names none ends in a blank, and May has no point.
    static const std::array<QString, 12> names{
        QStringLiteral("Jan."), QStringLiteral("Feb."), QStringLiteral("Mar."),
        QStringLiteral("Apr."), QStringLiteral("May"),  QStringLiteral("Jun."),
        QStringLiteral("Jul."), QStringLiteral("Aug."), QStringLiteral("Sep."),
        QStringLiteral("Oct."), QStringLiteral("Nov."), QStringLiteral("Dec.")};
    if (month < 1 || month > 12)
        return {};
    return names[static_cast<std::size_t>(month - 1)];
}

QString ZblCleanFileName(const QString& text)
{
    // The ZBL maker's own copy holds the same set of characters.
    return CleanFileName(text);
}

} // namespace quenby
