#include "kvx/model/KvxReportView.h"
