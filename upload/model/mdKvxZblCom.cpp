#include "upload/model/mdKvxZblCom.h"
