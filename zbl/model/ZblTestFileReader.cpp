#include "zbl/model/ZblTestFileReader.h"
