#include "app/Wiring.h"

#include "app/frmMain.h"
#include "zbl/model/ZblReportWindow.h"
#include "zbl/ui/frmZBLBasicReport.h"

namespace quenby {

void installZblViews(frmMain& main)
{
    main.installView<ZblReportWindow>(frmZBLBasicReport::instance());
}

} // namespace quenby
