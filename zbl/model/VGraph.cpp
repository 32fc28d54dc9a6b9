#include "zbl/model/VGraph.h"
