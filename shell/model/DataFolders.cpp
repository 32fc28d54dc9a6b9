#include "shell/model/DataFolders.h"
