#include "kvx/model/KvxTestRecord.h"
#include "kvx/model/KvxSession.h"

namespace quenby {

namespace {

struct SlotName
{
    const char* pair;
    const char* shortCode;
};

constexpr std::array<SlotName, KvxSlotCount> SlotNames{{
    {"X1-X2", "X1X2"},
    {"X1-X3", "X1X3"},
    {"X1-X4", "X1X4"},
    {"X1-X5", "X1X5"},
    {"X2-X3", "X2X3"},
    {"X2-X4", "X2X4"},
    {"X2-X5", "X2X5"},
    {"X3-X4", "X3X4"},
    {"X3-X5", "X3X5"},
    {"X4-X5", "X4X5"},
}};

bool isSlot(int slot)
{
    return slot >= 1 && slot <= KvxSlotCount;
}

} // namespace

QString kvxSlotPair(int slot)
{
    return isSlot(slot) ? QString::fromLatin1(SlotNames[static_cast<std::size_t>(slot - 1)].pair)
                        : QString();
}

QString kvxSlotShortCode(int slot)
{
    return isSlot(slot)
               ? QString::fromLatin1(SlotNames[static_cast<std::size_t>(slot - 1)].shortCode)
               : QString();
}

int kvxSlotOfPair(const QString& pair)
{
    for (int slot = 1; slot <= KvxSlotCount; ++slot)
        if (pair == QLatin1String(SlotNames[static_cast<std::size_t>(slot - 1)].pair))
            return slot;
    return 0;
}

KvxTestRecord& kvxTestRecord()
{
    return kvxSession().record;
}

void ClearKvxRecord()
{
    KvxTestRecord& r = kvxTestRecord();

    r.rawSerial.clear();
    r.rawCompany.clear();
    r.rawStation.clear();
    r.rawDesignation.clear();
    r.rawManufacturer.clear();
    r.rawOperator.clear();
    r.rawTemperature.clear();
    r.rawRatio.clear();
    r.rawVoltageRating.clear();
    r.rawClass.clear();
    r.rawPosition.clear();
    r.rawPhase.clear();
    r.rawInstrumentSerial.clear();
    r.rawDate.clear();
    r.rawTime.clear();
    r.rawNotes.clear();

    r.fileName.clear();
    r.company.clear();
    // Intended: `designation` is left as it was and `station` is emptied a
    // second time in its place. The program has always done this.
    r.station.clear();
    r.ctSerial.clear();
    r.temperature.clear();
    r.ratio.clear();
    r.phase.clear();
    r.testClass.clear();
    r.notes.clear();
    r.dateTime.clear();
    r.station.clear();
    r.manufacturer.clear();
    r.operatorName.clear();
    r.instrumentSerial = Dynamic(QString());
    r.voltageRating.clear();
    r.position.clear();
    r.kneeTypeText.clear();

    // Intended gaps, kept as the program has always had them: calculatedRatio,
    // polarity and the three knee currents are never emptied, nor the
    // insulation of slots 2 to 10; the second nominalRatio clear of slot 10
    // lands on slot 9. tapName is emptied, so the leftovers stay hidden except
    // through the knee currents.
    for (std::size_t i = 0; i < r.taps.size(); ++i) {
        KvxTapResult& tap = r.taps[i];
        tap.tapName.clear();
        tap.nominalRatio.clear();
        tap.vsIeee30.clear();
        tap.vsIeee45.clear();
        tap.vsIec1050.clear();
        tap.measuredRatio.clear();
        tap.errorPercent.clear();
        tap.phaseAngle.clear();
        tap.windingResistance.clear();
        r.taps[i == r.taps.size() - 1 ? i - 1 : i].nominalRatio.clear();
    }
    r.taps[0].insulation.clear();
}

void FlushKvxCurves()
{
    for (KvxTapCurve& curve : kvxTestRecord().curves) {
        curve.volts.fill(0.0);
        curve.current.fill(0.0);
    }
}

void RepairKvxCurve(std::array<double, KvxCurvePoints>& values)
{
    // A logarithmic axis cannot draw 0: the start becomes a tiny positive
    // value and every gap takes the value before it, so a curve ends flat at
    // its last measured point.
    if (values[0] <= 0.0)
        values[0] = 0.0001;
    for (std::size_t i = 1; i < values.size(); ++i)
        if (values[i] <= 0.0)
            values[i] = values[i - 1];
}

void RepairAllKvxCurves()
{
    KvxTestRecord& r = kvxTestRecord();
    for (KvxTapCurve& curve : r.curves)
        RepairKvxCurve(curve.current);
    for (KvxTapCurve& curve : r.curves)
        RepairKvxCurve(curve.volts);
}

} // namespace quenby
