#include "upload/platform/QtSerialPortDevice.h"
