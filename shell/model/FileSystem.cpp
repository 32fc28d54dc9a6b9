#include "shell/model/FileSystem.h"
