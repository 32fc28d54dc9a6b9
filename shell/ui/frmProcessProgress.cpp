#include "shell/ui/frmProcessProgress.h"
