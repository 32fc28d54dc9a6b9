#include "upload/platform/QtPortList.h"
