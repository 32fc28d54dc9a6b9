#include "kvx/model/TemperatureCompensation.h"
