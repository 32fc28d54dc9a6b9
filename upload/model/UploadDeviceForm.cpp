#include "upload/model/UploadDeviceForm.h"
