#include "zbl/model/ZblBasicReportView.h"
