#include "shell/model/ProgressAbout.h"
