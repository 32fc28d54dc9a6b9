#include "upload/model/SerialPortDevice.h"
