// The record's slot table, its clearing (gaps included), the flush and the
// repair of the curves for logarithmic axes.
#include "kvx/model/KvxTestRecord.h"
#include "tests/kvx/KvxTestSupport.h"

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

namespace {

// Every string of every slot and of the header set to a marker text.
void fillEverything(KvxTestRecord& r, const QString& mark)
{
    for (QString* s : {&r.rawSerial,
                       &r.rawCompany,
                       &r.rawStation,
                       &r.rawDesignation,
                       &r.rawManufacturer,
                       &r.rawOperator,
                       &r.rawTemperature,
                       &r.rawRatio,
                       &r.rawVoltageRating,
                       &r.rawClass,
                       &r.rawPosition,
                       &r.rawPhase,
                       &r.rawInstrumentSerial,
                       &r.rawDate,
                       &r.rawTime,
                       &r.rawNotes,
                       &r.fileName,
                       &r.company,
                       &r.designation,
                       &r.ctSerial,
                       &r.temperature,
                       &r.ratio,
                       &r.phase,
                       &r.testClass,
                       &r.notes,
                       &r.dateTime,
                       &r.station,
                       &r.manufacturer,
                       &r.operatorName,
                       &r.voltageRating,
                       &r.position,
                       &r.kneeTypeText})
        *s = mark;
    r.instrumentSerial = Dynamic(mark);
    for (KvxTapResult& t : r.taps)
        for (QString* s :
             {&t.tapName, &t.nominalRatio, &t.calculatedRatio, &t.measuredRatio, &t.errorPercent,
              &t.phaseAngle, &t.polarity, &t.vsIeee45, &t.isIeee45, &t.vsIeee30, &t.isIeee30,
              &t.vsIec1050, &t.isIec1050, &t.windingResistance, &t.insulation})
            *s = mark;
}

class kvxRecord : public KvxFixture
{
};

} // namespace

TEST_F(kvxRecord, SlotTableHoldsTheTenPairsAndShortCodesInOrder)
{
    const char* pairs[] = {"X1-X2", "X1-X3", "X1-X4", "X1-X5", "X2-X3",
                           "X2-X4", "X2-X5", "X3-X4", "X3-X5", "X4-X5"};
    const char* codes[] = {"X1X2", "X1X3", "X1X4", "X1X5", "X2X3",
                           "X2X4", "X2X5", "X3X4", "X3X5", "X4X5"};
    for (int slot = 1; slot <= 10; ++slot) {
        EXPECT_EQ(kvxSlotPair(slot), QString::fromLatin1(pairs[slot - 1]));
        EXPECT_EQ(kvxSlotShortCode(slot), QString::fromLatin1(codes[slot - 1]));
        EXPECT_EQ(kvxSlotOfPair(QString::fromLatin1(pairs[slot - 1])), slot);
    }
    EXPECT_EQ(kvxSlotOfPair(QStringLiteral("X1-X6")), 0);
    EXPECT_EQ(kvxSlotOfPair(QStringLiteral("X2-X1")), 0);
    EXPECT_EQ(kvxSlotOfPair(QStringLiteral("x1-x2")), 0);
    EXPECT_EQ(kvxSlotOfPair(QString()), 0);
    EXPECT_EQ(kvxSlotPair(0), QString());
    EXPECT_EQ(kvxSlotPair(11), QString());
}

TEST_F(kvxRecord, ClearEmptiesHeaderButKeepsDesignation)
{
    KvxTestRecord& r = record();
    fillEverything(r, QStringLiteral("old"));
    ClearKvxRecord();
    EXPECT_EQ(r.designation, QStringLiteral("old"));
    for (const QString* s :
         {&r.fileName, &r.company, &r.ctSerial, &r.temperature, &r.ratio, &r.phase, &r.testClass,
          &r.notes, &r.dateTime, &r.station, &r.manufacturer, &r.operatorName, &r.voltageRating,
          &r.position, &r.rawSerial, &r.rawDesignation, &r.rawNotes})
        EXPECT_TRUE(s->isEmpty());
    EXPECT_EQ(r.instrumentSerial.toText(), QString());
}

TEST_F(kvxRecord, ClearLeavesCalculatedRatioPolarityKneeCurrentsAndLaterInsulations)
{
    KvxTestRecord& r = record();
    fillEverything(r, QStringLiteral("old"));
    ClearKvxRecord();
    for (int n = 1; n <= 10; ++n) {
        SCOPED_TRACE(n);
        const KvxTapResult& t = slot(n);
        EXPECT_TRUE(t.tapName.isEmpty());
        EXPECT_TRUE(t.nominalRatio.isEmpty());
        EXPECT_TRUE(t.measuredRatio.isEmpty());
        EXPECT_TRUE(t.errorPercent.isEmpty());
        EXPECT_TRUE(t.phaseAngle.isEmpty());
        EXPECT_TRUE(t.vsIeee45.isEmpty());
        EXPECT_TRUE(t.vsIeee30.isEmpty());
        EXPECT_TRUE(t.vsIec1050.isEmpty());
        EXPECT_TRUE(t.windingResistance.isEmpty());
        EXPECT_EQ(t.calculatedRatio, QStringLiteral("old"));
        EXPECT_EQ(t.polarity, QStringLiteral("old"));
        EXPECT_EQ(t.isIeee45, QStringLiteral("old"));
        EXPECT_EQ(t.isIeee30, QStringLiteral("old"));
        EXPECT_EQ(t.isIec1050, QStringLiteral("old"));
        EXPECT_EQ(t.insulation, n == 1 ? QString() : QStringLiteral("old"));
    }
}

TEST_F(kvxRecord, ClearTouchesNoCurveNorKnee)
{
    KvxTestRecord& r = record();
    r.curves[3].volts[7] = 12.5;
    r.curves[3].pointCount = 7;
    r.knees[2].voltage = 80;
    ClearKvxRecord();
    EXPECT_EQ(r.curves[3].volts[7], 12.5);
    EXPECT_EQ(r.curves[3].pointCount, 7);
    EXPECT_EQ(r.knees[2].voltage, 80);
}

TEST_F(kvxRecord, FlushZeroesAllTwentyArrays)
{
    KvxTestRecord& r = record();
    for (KvxTapCurve& c : r.curves) {
        c.volts.fill(3.0);
        c.current.fill(4.0);
    }
    FlushKvxCurves();
    for (const KvxTapCurve& c : r.curves) {
        for (double v : c.volts)
            EXPECT_EQ(v, 0.0);
        for (double v : c.current)
            EXPECT_EQ(v, 0.0);
    }
}

TEST_F(kvxRecord, RepairStartsAtATenThousandthAndFillsGapsFromTheLeft)
{
    std::array<double, KvxCurvePoints> a{};
    a[1] = 2.0;
    a[2] = -1.0;
    a[3] = 0.0;
    a[4] = 5.0;
    a[40] = 9.0;
    RepairKvxCurve(a);
    EXPECT_EQ(a[0], 0.0001);
    EXPECT_EQ(a[1], 2.0);
    EXPECT_EQ(a[2], 2.0);
    EXPECT_EQ(a[3], 2.0);
    EXPECT_EQ(a[4], 5.0);
    EXPECT_EQ(a[39], 5.0);
    EXPECT_EQ(a[40], 9.0);
    EXPECT_EQ(a[119], 9.0);
}

TEST_F(kvxRecord, RepairKeepsAPositiveFirstElement)
{
    std::array<double, KvxCurvePoints> a{};
    a[0] = 0.5;
    RepairKvxCurve(a);
    EXPECT_EQ(a[0], 0.5);
    EXPECT_EQ(a[119], 0.5);
}

TEST_F(kvxRecord, RepairAllLeavesEveryElementPositive)
{
    KvxTestRecord& r = record();
    FlushKvxCurves();
    r.curves[4].current[3] = 750;
    r.curves[4].volts[3] = 5.5;
    RepairAllKvxCurves();
    for (const KvxTapCurve& c : r.curves) {
        for (double v : c.volts)
            EXPECT_GT(v, 0.0);
        for (double v : c.current)
            EXPECT_GT(v, 0.0);
    }
    EXPECT_EQ(r.curves[0].current[119], 0.0001);
    EXPECT_EQ(r.curves[4].current[2], 0.0001);
    EXPECT_EQ(r.curves[4].current[119], 750);
    EXPECT_EQ(r.curves[4].volts[119], 5.5);
}
