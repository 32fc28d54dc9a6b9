#include "shell/ui/frmAbout.h"
