#include "upload/model/ModText.h"
