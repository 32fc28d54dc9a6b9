#include "app/Wiring.h"

#include "app/frmMain.h"
#include "kvx/model/KvxReportWindow.h"
#include "kvx/ui/frmKVXCondensedReport.h"

namespace quenby {

void installKvxViews(frmMain& main)
{
    main.installView<KvxReportWindow>(frmKVXCondensedReport::instance());
}

} // namespace quenby
