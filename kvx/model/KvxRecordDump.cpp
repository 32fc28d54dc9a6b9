#include "kvx/model/KvxRecordDump.h"

#include "shell/model/NumberText.h"
#include "shell/model/QuotedText.h"

namespace quenby {

namespace {

QString dynamicText(const Dynamic& value)
{
    if (value.isEmpty())
        return QStringLiteral("(empty)");
    if (value.isNumber())
        return QStringLiteral("number ") + value.toText();
    return QStringLiteral("text ") + quoted(value.toText());
}

class DumpWriter
{
public:
    void field(const QString& indent, const char* name, const QString& value)
    {
        m_out += indent + QLatin1String(name) + QStringLiteral(": ") + quoted(value) + u'\n';
    }
    void line(const QString& text) { m_out += text + u'\n'; }
    QString text() const { return m_out; }

private:
    QString m_out;
};

} // namespace

QString dumpKvxTestRecord(const KvxTestRecord& r, const KvxCondensedReportModel& report)
{
    DumpWriter w;
    const QString top;
    const QString in = QStringLiteral("  ");

    w.line(QStringLiteral("[raw header]"));
    w.field(top, "rawSerial", r.rawSerial);
    w.field(top, "rawCompany", r.rawCompany);
    w.field(top, "rawStation", r.rawStation);
    w.field(top, "rawDesignation", r.rawDesignation);
    w.field(top, "rawManufacturer", r.rawManufacturer);
    w.field(top, "rawOperator", r.rawOperator);
    w.field(top, "rawTemperature", r.rawTemperature);
    w.field(top, "rawRatio", r.rawRatio);
    w.field(top, "rawVoltageRating", r.rawVoltageRating);
    w.field(top, "rawClass", r.rawClass);
    w.field(top, "rawPosition", r.rawPosition);
    w.field(top, "rawPhase", r.rawPhase);
    w.field(top, "rawInstrumentSerial", r.rawInstrumentSerial);
    w.field(top, "rawDate", r.rawDate);
    w.field(top, "rawTime", r.rawTime);
    w.field(top, "rawNotes", r.rawNotes);

    w.line(QStringLiteral("[header]"));
    w.field(top, "fileName", r.fileName);
    w.field(top, "company", r.company);
    w.field(top, "designation", r.designation);
    w.field(top, "ctSerial", r.ctSerial);
    w.field(top, "temperature", r.temperature);
    w.field(top, "ratio", r.ratio);
    w.field(top, "phase", r.phase);
    w.field(top, "testClass", r.testClass);
    w.field(top, "notes", r.notes);
    w.field(top, "dateTime", r.dateTime);
    w.field(top, "station", r.station);
    w.field(top, "manufacturer", r.manufacturer);
    w.field(top, "operatorName", r.operatorName);
    w.line(QStringLiteral("instrumentSerial: ") + dynamicText(r.instrumentSerial));
    w.field(top, "voltageRating", r.voltageRating);
    w.field(top, "position", r.position);
    w.field(top, "kneeTypeText", r.kneeTypeText);

    w.line(QStringLiteral("[table]"));
    w.line(QStringLiteral("lastReference: ") + dynamicText(r.lastReference));
    for (int n = 1; n <= KvxSlotCount; ++n)
        w.line(QStringLiteral("row %1: ").arg(n) +
               quoted(r.tableRows[static_cast<std::size_t>(n - 1)]));

    for (int slot = 1; slot <= KvxSlotCount; ++slot) {
        const KvxTapResult& t = r.taps[static_cast<std::size_t>(slot - 1)];
        w.line(QStringLiteral("[slot %1 %2]").arg(slot).arg(kvxSlotPair(slot)));
        w.field(in, "tapName", t.tapName);
        w.field(in, "nominalRatio", t.nominalRatio);
        w.field(in, "calculatedRatio", t.calculatedRatio);
        w.field(in, "measuredRatio", t.measuredRatio);
        w.field(in, "errorPercent", t.errorPercent);
        w.field(in, "phaseAngle", t.phaseAngle);
        w.field(in, "polarity", t.polarity);
        w.field(in, "vsIeee45", t.vsIeee45);
        w.field(in, "isIeee45", t.isIeee45);
        w.field(in, "vsIeee30", t.vsIeee30);
        w.field(in, "isIeee30", t.isIeee30);
        w.field(in, "vsIec1050", t.vsIec1050);
        w.field(in, "isIec1050", t.isIec1050);
        w.field(in, "windingResistance", t.windingResistance);
        w.field(in, "insulation", t.insulation);

        const KvxKneeMarker& knee = r.knees[static_cast<std::size_t>(slot - 1)];
        w.line(in + QStringLiteral("knee: voltage %1 current %2")
                        .arg(numberText(knee.voltage), numberText(knee.current)));

        const KvxTapCurve& c = r.curves[static_cast<std::size_t>(slot - 1)];
        w.line(in +
               QStringLiteral("curve: pointCount %1, index volts current(mA)").arg(c.pointCount));
        for (std::size_t i = 0; i < c.volts.size(); ++i)
            w.line(in + QStringLiteral("%1 %2 %3")
                            .arg(i, 3, 10, QLatin1Char('0'))
                            .arg(numberText(c.volts[i]), numberText(c.current[i])));
    }

    w.line(QStringLiteral("[condensed report]"));
    for (int n = 0; n <= KvxCondensedReportModel::RowCount; ++n)
        w.line(QStringLiteral("lbInsulationResistanceTest(%1): ").arg(n) +
               quoted(report.lbInsulationResistanceTest(n)));
    return w.text();
}

} // namespace quenby
