#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxSession.h"

#include "shell/model/RuntimeError.h"

namespace quenby {

namespace {
constexpr std::array<const char*, KvxReportColumnCount> ColumnNames = {
    "lbTestNumber",
    "lbTapTest",
    "lbIEE30Test",
    "lbIEE45Test",
    "lbAINSIIC1050Test",
    "lbNPRATIOTest",
    "lbMSRATIOTest",
    "lbErrorTest",
    "lbPhaseTest",
    "lbPolarity",
    "lbWindingResTest",
    "lbWindingCompTest",
    "lbInsulationResistanceTest"};

std::size_t rowIndex(KvxReportColumn column, int n)
{
    if (n < 0 || n > KvxCondensedReportModel::RowCount)
        raiseRuntimeErrorOnValue(
            err::SubscriptOutOfRange,
            QStringLiteral("%1(%2)").arg(QLatin1String(kvxReportColumnName(column))).arg(n));
    return static_cast<std::size_t>(n);
}
} // namespace

const char* kvxReportColumnName(KvxReportColumn column)
{
    return ColumnNames[static_cast<std::size_t>(column)];
}

QString& KvxCondensedReportModel::cell(KvxReportColumn column, int n)
{
    return m_cells[static_cast<std::size_t>(column)][rowIndex(column, n)];
}

const QString& KvxCondensedReportModel::cell(KvxReportColumn column, int n) const
{
    return m_cells[static_cast<std::size_t>(column)][rowIndex(column, n)];
}

bool KvxCondensedReportModel::rowVisible(int n) const
{
    return m_rowVisible[rowIndex(KvxReportColumn::TestNumber, n)];
}

void KvxCondensedReportModel::setRowVisible(int n, bool visible)
{
    m_rowVisible[rowIndex(KvxReportColumn::TestNumber, n)] = visible;
}

const std::array<KvxReportHeaderControl, KvxReportHeaderFieldCount + 1>& kvxReportHeaderControls()
{
    using M = KvxCondensedReportModel;
    static const std::array<KvxReportHeaderControl, KvxReportHeaderFieldCount + 1> controls = {{
        {"lbTexteFileName(1)", &M::lbTexteFileName1},
        {"lbTexteDate(1)", &M::lbTexteDate1},
        {"lbTexteInstrumentSN(1)", &M::lbTexteInstrumentSN1},
        {"txtCompany", &M::txtCompany},
        {"txtDesignator", &M::txtDesignator},
        {"txtCTSerialNumber", &M::txtCTSerialNumber},
        {"txtTemperature", &M::txtTemperature},
        {"txtRatio", &M::txtRatio},
        {"txtPhase", &M::txtPhase},
        {"txtClass", &M::txtClass},
        {"txtNotes", &M::txtNotes},
        {"txtStation", &M::txtStation},
        {"txtManufacturer", &M::txtManufacturer},
        {"txtOperator", &M::txtOperator},
        {"txtVoltageRating", &M::txtVoltageRating},
        {"txtPosition", &M::txtPosition},
        {"lbKneeType", &M::lbKneeType},
        {"txBurden", &M::txBurden},
    }};
    return controls;
}

QString* KvxCondensedReportModel::headerField(const QString& control)
{
    for (const KvxReportHeaderControl& c : kvxReportHeaderControls())
        if (control == QLatin1String(c.control))
            return &(this->*c.cell);
    return nullptr;
}

KvxCondensedReportModel& kvxCondensedReport()
{
    return kvxSession().report;
}

} // namespace quenby
