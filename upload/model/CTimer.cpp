#include "upload/model/CTimer.h"
