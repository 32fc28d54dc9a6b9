#include "zbl/model/ZblTestRecord.h"
