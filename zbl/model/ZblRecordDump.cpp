#include "zbl/model/ZblRecordDump.h"

#include "shell/model/NumberText.h"
#include "shell/model/QuotedText.h"

namespace quenby {

namespace {

void field(QString& out, const char* name, const QString& value)
{
    out += QLatin1String(name) + QStringLiteral(": ") + quoted(value) + u'\n';
}

} // namespace

QString dumpZblTestRecord(const ZblTestRecord& r)
{
    QString out;
    out += QStringLiteral("[file]\n");
    field(out, "FilePath", r.FilePath);
    field(out, "FileName", r.FileName);

    out += QStringLiteral("[header lines]\n");
    for (std::size_t n = 0; n < r.HeaderLine.size(); ++n)
        out += QStringLiteral("HeaderLine(%1): ").arg(n) + quoted(r.HeaderLine[n]) + u'\n';

    out += QStringLiteral("[header values]\n");
    field(out, "DateTimeText", r.DateTimeText);
    field(out, "ModeText", r.ModeText);
    field(out, "SerialText", r.SerialText);
    field(out, "CompanyText", r.CompanyText);
    field(out, "StationText", r.StationText);
    field(out, "DesignationText", r.DesignationText);
    field(out, "ManufacturerText", r.ManufacturerText);
    field(out, "OperatorText", r.OperatorText);
    field(out, "TemperatureText", r.TemperatureText);
    field(out, "NotesText", r.NotesText);

    out += QStringLiteral("[compensation]\n");
    field(out, "CompensationFactorText", r.CompensationFactorText);
    field(out, "CompensedTempText", r.CompensedTempText);

    out += QStringLiteral("[row lines]\n");
    for (int i = 0; i < ZblRowsUsed; ++i)
        out += QStringLiteral("RowLine(%1): ").arg(i) +
               quoted(r.RowLine[static_cast<std::size_t>(i)]) + u'\n';

    out += QStringLiteral("[rows] TapA WindingA ResistanceA | TapB WindingB ResistanceB | "
                          "CurrentText IntervalSeconds TotalTime | tabChannelA tabChannelB\n");
    for (int i = 0; i < ZblRowsUsed; ++i) {
        const auto k = static_cast<std::size_t>(i);
        out += QStringLiteral("row %1: ").arg(i) + quoted(r.TapA[k]) + u' ' +
               quoted(r.WindingA[k]) + u' ' + quoted(r.ResistanceA[k]) + QStringLiteral(" | ") +
               quoted(r.TapB[k]) + u' ' + quoted(r.WindingB[k]) + u' ' + quoted(r.ResistanceB[k]) +
               QStringLiteral(" | ") + quoted(r.CurrentText[k]) + u' ' +
               numberText(r.IntervalSeconds[k]) + u' ' + quoted(r.TotalTime[k]) +
               QStringLiteral(" | ") + numberText(r.tabChannelA[k]) + u' ' +
               numberText(r.tabChannelB[k]) + u'\n';
    }
    return out;
}

QString dumpZblReportFill(const ZblReportFill& report)
{
    const ZblReportFill::Head& h = report.head;
    QString out;
    out += QStringLiteral("[report head]\n");
    field(out, "lbTexteFileName(1)", h.lbTexteFileName1);
    field(out, "lbTexteDate(1)", h.lbTexteDate1);
    field(out, "lbTexteCompensedTemp(1)", h.lbTexteCompensedTemp1);
    field(out, "txtXFRSerialNumber", h.txtXFRSerialNumber);
    field(out, "txtCompany", h.txtCompany);
    field(out, "txtStation", h.txtStation);
    field(out, "txtDesignator", h.txtDesignator);
    field(out, "txtManufacturer", h.txtManufacturer);
    field(out, "txtOperator", h.txtOperator);
    field(out, "txtTemperature", h.txtTemperature);
    field(out, "txtNotes", h.txtNotes);
    field(out, "cbCompensation", h.cbCompensationText);

    out += QStringLiteral("[compensation dialog]\n");
    field(out, "txtTK", report.dialog.txtTK);
    field(out, "txtTS", report.dialog.txtTS);
    field(out, "txtTM", report.dialog.txtTM);
    out += QStringLiteral("compensated column fills: %1\n").arg(report.compensedColumnFills);

    out += QStringLiteral("[report table]");
    for (int c = 0; c < ZblReportColumnCount; ++c)
        out += u' ' + QLatin1String(zblReportColumnName(static_cast<ZblReportColumn>(c)));
    out += u'\n';
    for (int i = 0; i < ZblRowsUsed; ++i) {
        out += QStringLiteral("row %1:").arg(i);
        for (int c = 0; c < ZblReportColumnCount; ++c)
            out += u' ' + quoted(report.cell(static_cast<ZblReportColumn>(c), i));
        out += u'\n';
    }
    return out;
}

} // namespace quenby
