#include "tools/instrument-sim/InstrumentFrames.h"
