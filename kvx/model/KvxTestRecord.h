// The record of the open KVX test: what the file reader fills and what all
// KVX report code (curves and knee marks, the condensed report, compensation,
// print-out and spreadsheet export) reads.
//
// One record exists for the whole run, so one test is open at a time and
// opening another overwrites it in place. Header and table values are kept as
// the file's text; only the excitation curves are numbers. Taps sit in ten
// fixed slots, X1-X2 to X4-X5, whatever order the file lists them in.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/Dynamic.h"

#include <QString>

#include <array>

namespace quenby {

inline constexpr int KvxSlotCount = 10;
inline constexpr int KvxCurvePoints = 120; // indices 0 to 119

// Slot k (1 to 10) holds the tap pair kvxSlotPair(k); the short code names the
// pair in graph plots and knee texts.
QString kvxSlotPair(int slot);
QString kvxSlotShortCode(int slot);
// The slot (1 to 10) of a tap pair text such as "X2-X4", or 0 for any other.
int kvxSlotOfPair(const QString& pair);

// One row of the result table. `tapName` is empty when the file has no row for
// the slot's pair, and that is what every consumer tests for presence. The
// `is...` texts are knee currents set by the knee logic, not by the reader.
struct KvxTapResult
{
    QString tapName;
    QString nominalRatio;
    QString calculatedRatio;
    QString measuredRatio;
    QString errorPercent;
    QString phaseAngle;
    QString polarity;
    QString vsIeee45;
    QString isIeee45;
    QString vsIeee30;
    QString isIeee30;
    QString vsIec1050;
    QString isIec1050;
    QString windingResistance;
    QString insulation;
};

// The excitation curve of one slot, index = point number.
struct KvxTapCurve
{
    std::array<double, KvxCurvePoints> volts{};   // volts
    std::array<double, KvxCurvePoints> current{}; // milliamperes
    Int16 pointCount = 0; // the highest point number seen; kept, read by nobody
};

struct KvxKneeMarker
{
    double voltage = 0.0;
    double current = 0.0;
};

struct KvxTestRecord
{
    // Header lines from "Serial" to "Notes", whole, as read.
    QString rawSerial;
    QString rawCompany;
    QString rawStation;
    QString rawDesignation;
    QString rawManufacturer;
    QString rawOperator;
    QString rawTemperature;
    QString rawRatio;
    QString rawVoltageRating;
    QString rawClass;
    QString rawPosition;
    QString rawPhase;
    QString rawInstrumentSerial;
    QString rawDate;
    QString rawTime;
    QString rawNotes;

    // Header values cut from the raw lines by ParseKvxHeaderFields.
    QString fileName;
    QString company;
    QString designation;
    QString ctSerial;
    QString temperature;
    QString ratio;
    QString phase;
    QString testClass;
    QString notes;
    QString dateTime;
    QString station;
    QString manufacturer;
    QString operatorName;
    Dynamic instrumentSerial; // text in practice
    QString voltageRating;
    QString position;
    QString kneeTypeText; // copy of KneeStandard, set by the knee choice

    // The table rows as read, in file order; index 0 is row 1.
    std::array<QString, KvxSlotCount> tableRows;
    // Whole part of the reference number of the last row read; the
    // compensation counts report rows up to it.
    Dynamic lastReference;

    std::array<KvxTapResult, KvxSlotCount> taps;   // index 0 is slot 1
    std::array<KvxTapCurve, KvxSlotCount> curves;  // likewise
    std::array<KvxKneeMarker, KvxSlotCount> knees; // likewise
};

// The one record of the open KVX test.
KvxTestRecord& kvxTestRecord();

// Empties the record's strings, with the gaps the program has always had,
// which later code relies on (see the definition).
void ClearKvxRecord();
// Zeroes all twenty curve arrays.
void FlushKvxCurves();
// Makes an array fit for a logarithmic axis: no element 0 or below.
void RepairKvxCurve(std::array<double, KvxCurvePoints>& values);
// The ten current arrays, then the ten voltage arrays, in slot order.
void RepairAllKvxCurves();

} // namespace quenby
