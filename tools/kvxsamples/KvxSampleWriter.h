// Writes KVX test files in the instrument's own layout, for the project's
// sample files and for tests that need a file with one thing changed.
//
// A sample is described by its header texts, its table rows (the texts of the
// 14 fields, as the instrument would print them) and an excitation curve for
// each row that has one. The writer lays the rows out by the writer columns,
// centres the curve columns, and emits Windows-1252 text with CR LF line ends.
// The helpers that turn a measured value into a field's text follow the
// instrument's rules, so samples can be made from numbers.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

namespace quenby::samples {

// Writer columns of the 14 table fields: characters ahead of each field.
inline constexpr std::array<int, 14> KvxWriterColumns{1,  7,  17, 29,  39,  51,  61,
                                                      72, 81, 92, 104, 115, 129, 139};

struct KvxSamplePoint
{
    double volts = 0.0;
    double amperes = 0.0;
};

struct KvxSampleRow
{
    // Field texts in column order; an empty text writes nothing at all, as
    // the polarity of a row whose phase reads "Error".
    std::array<QString, 14> fields;
    // The curve block, if the row has one; "Ref Test #" + blockNumber heads it.
    std::optional<std::vector<KvxSamplePoint>> curve;
    QString blockNumber; // " 1", "01", "10"...
};

struct KvxSampleFile
{
    bool stampLine = true; // "[3,31,0,0]" on line 1
    QString mcuVersion = QStringLiteral("3.31");
    QString acqVersion = QStringLiteral("2.07");
    QString kbdVersion = QStringLiteral("1.12");
    QString dataVersion = QStringLiteral("4.02");
    QString serial;
    QString company;
    QString station;
    QString designation;
    QString manufacturer;
    QString operatorName;
    QString temperature;
    QString ratio;
    QString voltageRating;
    QString testClass;
    QString position;
    QString phase;
    QString instrumentSerial;
    int day = 1, month = 1, year = 2024;
    int hour = 0, minute = 0, second = 0;
    // The first text goes on the "Notes:" line, any others on lines of their
    // own below it.
    QStringList notes;
    std::vector<KvxSampleRow> rows;
};

// The lines of the file, without line ends.
QStringList kvxSampleLines(const KvxSampleFile& file);
// The file's bytes: Windows-1252, each line closed by CR LF.
QByteArray kvxSampleBytes(const KvxSampleFile& file);

// The instrument's number text: rounded to `decimals` (halves to even),
// written without a zero ahead of the point, decimals forced, then a "0" in
// front if still short of `width` and the magnitude is below 1, then blanks.
QString kvxNumberText(double value, int width, int decimals);
// `text` centred in `width`: the left side gets the whole part of half the
// spare blanks, the right side the rest.
QString kvxCentred(const QString& text, int width);
// A table row from its field texts, padded to the writer columns.
QString kvxTableRow(const std::array<QString, 14>& fields);
// "Jan. " to "Jun. " with a trailing blank, "Jul." to "Dec." without.
QString kvxMonthText(int month);
// A point's current text: amperes with 3 decimals from 1 A up, else
// milliamperes with 3 decimals and "m".
QString kvxCurrentText(double amperes);
// One point line of a curve block, point numbers counting from 1.
QString kvxPointLine(int number, const KvxSamplePoint& point);

// Field texts from measured values, by the instrument's rules.
QString kvxVsText(double volts);            // "---" at 1 V or below
QString kvxWindingText(double ohms);        // "---", "Error", ">20", 5 decimals
QString kvxInsulationText(float ohms);      // "---", "Error", ">1G", "<2M", plain
QString kvxMeasuredRatioText(double ratio); // "---" at 0.9 or below
QString kvxErrorText(double percent);       // ">1000" above 1000, 1 decimal

} // namespace quenby::samples
