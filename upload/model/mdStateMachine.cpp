#include "upload/model/mdStateMachine.h"
