#include "upload/model/mdZBLFilesMaker.h"
