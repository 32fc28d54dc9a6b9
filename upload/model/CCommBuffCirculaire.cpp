#include "upload/model/CCommBuffCirculaire.h"
