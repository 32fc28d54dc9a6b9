#include "shell/model/CFile.h"
