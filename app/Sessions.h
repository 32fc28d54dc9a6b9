// The state of the run, owned by the application from start to end: every
// session object, installed where the model finds it. main() makes one before
// any window; a window test makes its own.
#pragma once

#include "kvx/model/KvxCompensation.h"
#include "kvx/model/KvxExcelExport.h"
#include "kvx/model/KvxSession.h"
#include "logo/model/LogoSession.h"
#include "report/model/TemperatureCompensation.h"
#include "shell/model/Services.h"
#include "shell/model/Session.h"
#include "shell/model/ShellSession.h"
#include "upload/model/UploadSession.h"
#include "zbl/model/ZblCompensation.h"
#include "zbl/model/ZblSession.h"

namespace quenby {

struct Sessions
{
    OwnedSession<Services> services;
    OwnedSession<ShellSession> shell;
    OwnedSession<KvxSession> kvx;
    OwnedSession<KvxExcelExportState> kvxExcelExport;
    OwnedSession<ZblSession> zbl;
    OwnedSession<UploadSession> upload;
    OwnedSession<LogoSession> logo;
    OwnedSession<CompensationDialogModel> compensation;

    // The two reports as the compensation dialog sees them.
    KvxReportCompensation kvxCompensation;
    ZblReportCompensation zblCompensation;
    Installed<KvxCompensationReport> kvxCompensationSlot{kvxCompensation};
    Installed<ZblCompensationReport> zblCompensationSlot{zblCompensation};
};

} // namespace quenby
