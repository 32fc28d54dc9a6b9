#include "kvx/model/KvxCondensedReportModel.h"

#include "shell/model/RuntimeError.h"

namespace quenby {

namespace {
std::size_t cellIndex(int n)
{
    if (n < 0 || n > KvxCondensedReportModel::RowCount)
        raiseRuntimeError(err::SubscriptOutOfRange,
                          QStringLiteral("lbInsulationResistanceTest(%1)").arg(n));
    return static_cast<std::size_t>(n);
}
} // namespace

QString& KvxCondensedReportModel::lbInsulationResistanceTest(int n)
{
    return m_insulationResistanceTest[cellIndex(n)];
}

const QString& KvxCondensedReportModel::lbInsulationResistanceTest(int n) const
{
    return m_insulationResistanceTest[cellIndex(n)];
}

KvxCondensedReportModel& kvxCondensedReport()
{
    static KvxCondensedReportModel report;
    return report;
}

} // namespace quenby
