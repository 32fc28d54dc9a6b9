#include "upload/model/UploadGlobals.h"
