// The decoded form of the instrument's header and data frames: the working
// store of an upload, filled by the protocol's parsers and turned into test
// files by the file makers. Fields that no reader uses are kept, so that a
// frame decodes whole.
#pragma once

#include "shell/model/Checked.h"

#include <QString>

#include <array>

namespace quenby {

// Header of a stored KVX file (reply 0x6B of a KVX).
struct KvxHeaderRecord
{
    Int16 fileNumber = 0;    // byte 8
    Int32 value9 = 0;        // bytes 9, 10: no reader uses it
    Bool16 flag11 = False16; // byte 11: no reader uses it
    Int16 numberOfTests = 0; // byte 12
    Int16 value13 = 0;       // no reader uses it
    Int16 value14 = 0;       // no reader uses it
    Int16 day = 0;
    Int16 month = 0;
    Int16 year = 0; // minus 2000
    Int16 hour = 0;
    Int16 minute = 0;
    Int16 second = 0; // taken from byte 13, as the instrument's files require
    QString Company, Serial, Station, Designation, Manufacturer, Operator, Temperature, Ratio,
        VoltageRating, Class, Position, Phase, Notes;
};

// One test of a KVX data frame (one 942-byte slot).
struct KvxDeviceRecord
{
    static constexpr int PointCapacity = 201; // room; 100 are read
    static constexpr int PointsRead = 100;

    Int16 testNumber = 0;
    Int16 numberOfPoints = 0;
    Int32 value6 = 0; // no reader uses it
    Int16 ratioFirst = 0;
    Int16 ratioSecond = 0;
    float phase = 0;
    float calculatedRatio = 0;
    float measuredRatio = 0;
    float ratioError = 0;
    float kneeIeee30 = 0;
    float kneeIeee45 = 0;
    float kneeIec1050 = 0;
    float insulation = 0;
    float windingResistance = 0;
    float value50 = 0; // no reader uses it
    std::array<float, PointCapacity> voltages{};
    std::array<float, PointCapacity> currents{};
    Bool16 polarityPositive = False16;
    Bool16 excitationValid = False16;
    Bool16 ratioValid = False16;
    Bool16 insulationValid = False16;
    Bool16 windingValid = False16;
    QString tap;
};

// Header of a stored ZBL file (reply 0x6B of a ZBL).
struct ZblHeaderRecord
{
    Int16 fileNumber = 0;   // byte 6
    Int32 value7 = 0;       // bytes 7, 8: no reader uses it
    Bool16 flag9 = False16; // byte 9: no reader uses it
    Int16 numberOfReadings = 0;
    Int16 testNumber = 0;
    Int16 mode = 0; // 0 manual, 1 timed, 2 automatic with tap changer
    Int16 day = 0;
    Int16 month = 0;
    Int16 year = 0; // minus 2000
    Int16 hour = 0;
    Int16 minute = 0;
    Int16 second = 0;
    QString Company, Serial, Station, Designation, Manufacturer, Operator, Temperature, Notes;
};

// One reading of a ZBL data frame (one 120-byte record).
struct ZblDeviceRecord
{
    Int16 readingNumber = 0;
    QString tapA, windingA1, windingA2, resistanceA;
    QString tapB, windingB1, windingB2, resistanceB;
    Int32 current = 0; // the number that the row writer turns into a range text
    Int16 value112 = 0;
    Int16 value113 = 0;
    Int32 interval = 0; // seconds
    Int32 value116 = 0; // no reader uses it
};

} // namespace quenby
