#include "localisation/model/LanguageLookup.h"
// Implementation lands with the localisation work.
