#include "upload/model/mdKVXFilesMaker.h"
