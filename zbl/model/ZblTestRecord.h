// The record of the open ZBL test: what the file reader fills and what the
// basic report, the V graph and the save read.
//
// One record exists for the whole run; opening another test overwrites it in
// place. Every row array has 123 elements, 0 to 122, of which the reader and
// the report use 0 to 121: a test shows at most 122 lines of its table, and
// element 122 is never written. Texts are kept as the file gives them; the
// interval is the only number of a row.
#pragma once

#include "shell/model/Checked.h"

#include <QString>

#include <array>

namespace quenby {

inline constexpr int ZblRowSlots = 123;   // elements of every row array
inline constexpr int ZblRowsUsed = 122;   // elements 0 to 121 are read and shown
inline constexpr int ZblHeaderLines = 10; // the date line to the notes line
// The line that heads the table of a ZBL test file, between its two rules, as
// the instrument writes it and the save writes it again.
inline constexpr char ZblTableHead[] =
    "             Tap         Winding          Resistance   Tap         Winding         "
    "Resistance   Current        Interval        Total    ";

using ZblRowTexts = std::array<QString, ZblRowSlots>;
using ZblRowNumbers = std::array<double, ZblRowSlots>;

struct ZblTestRecord
{
    QString FilePath; // full path; the save compares its target against it
    QString FileName; // the directory lookup of FilePath, shown in the report head

    // The ten raw header lines, from the date line to the notes line.
    std::array<QString, ZblHeaderLines> HeaderLine;
    QString DateTimeText;
    QString ModeText; // kept but never shown; a saved file has none
    QString SerialText;
    QString CompanyText;
    QString StationText;
    QString DesignationText;
    QString ManufacturerText;
    QString OperatorText;
    QString TemperatureText;
    QString NotesText;

    // The raw lines behind the table head: the rows, and the closing rule,
    // empty line, compensation lines and end marker that follow them.
    ZblRowTexts RowLine;
    ZblRowTexts TapA;
    ZblRowTexts WindingA;
    ZblRowTexts ResistanceA; // number and unit joined by one blank, or "OFF"
    ZblRowTexts TapB;
    ZblRowTexts WindingB;
    ZblRowTexts ResistanceB;
    ZblRowTexts CurrentText; // number and unit joined by one blank
    ZblRowNumbers IntervalSeconds{};
    ZblRowTexts TotalTime;

    // Values behind the two compensation keys of a saved file, or "NAV" when
    // the file has no such key.
    QString CompensationFactorText;
    QString CompensedTempText;

    // Resistances in ohms for the V graph.
    ZblRowNumbers tabChannelA{};
    ZblRowNumbers tabChannelB{};
};

// The one record of the open ZBL test.
ZblTestRecord& zblTestRecord();

// What SplitValueAndUnit makes of a text such as "100mA": the digits, the
// same as a double and as a 16-bit integer, and the unit letters.
struct ValueWithUnit
{
    QString valueText;
    double value = 0.0;
    Int16 intValue = 0;
    QString unit;

    bool operator==(const ValueWithUnit&) const = default;
};

} // namespace quenby
