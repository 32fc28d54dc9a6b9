#include "shell/ui/frmGeneralSetting.h"
