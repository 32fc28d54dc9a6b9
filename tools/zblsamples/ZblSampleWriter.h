// Writes ZBL test files of both kinds, for the project's sample files and for
// tests that need a file with one thing changed.
//
// The uploaded kind goes through CFile as the upload writes it: the header
// lines, one row per reading through PrintLineToFileZBL (which puts "---" in
// empty fields, labels the four current ranges and joins blanks of taps and
// windings with "_"), and the closing rule. The saved kind is laid out as the
// report's save lays it out: print-zoned rows of the report's texts, an empty
// line and the two compensation lines. Both are Windows-1252 with CR LF.
#pragma once

#include "shell/model/Checked.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace quenby::samples {

// The rule around the table head and under the last row of an upload.
QString zblRule();

// One reading as the instrument's record gives it.
struct ZblUploadReading
{
    QString tapA;
    QString windingA1, windingA2; // terminal names, joined by "-"
    // The instrument's text: a number, a blank and a unit ending in "O" ("m"
    // and "µ" prefixes), to which the upload adds "hm"; or "OFF" or "OVER".
    QString resistanceA;
    QString tapB;
    QString windingB1, windingB2;
    QString resistanceB;
    double currentMilliamperes = 10000.0;
    double intervalSeconds = 5.0;
};

struct ZblUploadFile
{
    int mode = 0;                      // 0 Manual, 1 Timed, anything else Auto T/C
    int day = 1, month = 1, year = 24; // the instrument's two-digit year
    int hour = 0, minute = 0, second = 0;
    QString serial;
    QString company;
    QString station;
    QString designation;
    QString manufacturer;
    QString operatorName;
    QString temperature;
    QString notes;
    std::vector<ZblUploadReading> readings;
};

// "Jan." to "Dec.", with "May" alone without a point; "" for any other.
QString zblMonthName(int month);
// The value of the date line: "15 Nov.2024   09:07:33".
QString zblDateText(const ZblUploadFile& file);
// The row writer's texts for one reading.
QString zblResistanceText(const QString& instrumentText);

// Writes the file through CFile. Returns the error number of the open, 0 when
// the file was written.
Int16 writeUploadedZblFile(const QString& path, const ZblUploadFile& file);

// One row of a saved file: the report's cell texts, and the current,
// interval and total time as the record held them.
struct ZblSavedRow
{
    QString tapA, windingA, resistanceA;
    QString tapB, windingB, resistanceB;
    QString current;  // "10 A"
    QString interval; // "5"
    QString total;    // "00:00:00"
};

struct ZblSavedFile
{
    QString date; // the report's date text, written unchanged
    QString serial;
    QString company;
    QString station;
    QString designation;
    QString manufacturer;
    QString operatorName;
    QString temperature;
    QString notes;
    std::vector<ZblSavedRow> rows;
    // False for a save that stopped at a cell it could not write: the rows
    // so far, and no empty line nor compensation lines.
    bool compensationLines = true;
    QString compensationFactor; // the compensation box's text
    QString compensedTemp;      // the compensated temperature's caption
    // A hand-edited file: "KEY:,value" instead of the print-zoned pair.
    bool commaAfterKey = false;
};

// The lines of a saved file, without line ends.
QStringList zblSavedLines(const ZblSavedFile& file);
// Writes them, Windows-1252 with CR LF. Returns the error number, 0 on success.
Int16 writeSavedZblFile(const QString& path, const ZblSavedFile& file);

} // namespace quenby::samples
