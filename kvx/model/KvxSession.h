// The state of the open KVX test: what the KVX road, its report and its graph
// keep from one command to the next. The application owns one; a test makes
// a fresh one.
#pragma once

#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestRecord.h"
#include "shell/model/Session.h"

namespace quenby {

struct KvxSession
{
    KvxTestRecord record;           // the test as read from its file
    KvxCondensedReportModel report; // frmKVXCondensedReport's cells and controls
    KneeGraph graph;                // the report's excitation graph
    TestExcelChart testExcelChart;  // frmTestExcelChart, the development aid

    // Every field back to its first value.
    void reset() { *this = KvxSession{}; }
};

inline KvxSession& kvxSession()
{
    return Slot<KvxSession>::current();
}

} // namespace quenby
