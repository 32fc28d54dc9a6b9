// The state of the open ZBL test: what the ZBL road, its report and its graph
// keep from one command to the next. The application owns one; a test makes
// a fresh one.
#pragma once

#include "shell/model/Session.h"
#include "zbl/model/VGraph.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblPrintReport.h"
#include "zbl/model/ZblTestRecord.h"

#include <QString>

namespace quenby {

struct ZblSession
{
    ZblTestRecord record;       // the test as read from its file
    ZblBasicReportModel report; // frmZBLBasicReport's cells and controls
    ZblPrintReportModel print;  // frmPrintZBLBasicReport
    VGraph vGraph;              // frmZBLVGraph
    QString GraphChannel;       // the channel the V graph shows: "A" or "B"

    // Every field back to its first value.
    void reset() { *this = ZblSession{}; }
};

inline ZblSession& zblSession()
{
    return Slot<ZblSession>::current();
}

} // namespace quenby
