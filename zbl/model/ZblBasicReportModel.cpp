#include "zbl/model/ZblBasicReportModel.h"

namespace quenby {

ZblBasicReportModel& zblBasicReport()
{
    static ZblBasicReportModel report;
    return report;
}

} // namespace quenby
