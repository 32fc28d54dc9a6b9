#include "kvx/model/KneeGraph.h"
