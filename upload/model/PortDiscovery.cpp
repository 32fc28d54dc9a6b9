#include "upload/model/PortDiscovery.h"
