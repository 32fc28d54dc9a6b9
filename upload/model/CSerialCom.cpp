#include "upload/model/CSerialCom.h"
