// The start of a converter program, shared by both: without arguments the
// converter window, with arguments the command line, which needs no display.
#pragma once

#include "converters/model/BatchConversion.h"
#include "converters/ui/ConverterWindow.h"

#include <functional>

namespace quenby::converters {

// Called before the application object is made: with arguments and no
// display to talk to, the program draws offscreen, so that a script can run
// it on a machine without a desktop.
void drawOffscreenWithoutDisplay(int argc);

// Runs the converter within the application object of `main`. `loadTexts`
// runs once the language file is set, before any conversion.
int runConverter(const ConverterKind& kind, const std::function<void()>& loadTexts,
                 const ConverterFor& converterFor);

} // namespace quenby::converters
