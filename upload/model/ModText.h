// The line builder of the KVX test file maker, and MyStr, the number text of
// the test files.
#pragma once

#include "shell/model/Checked.h"

#include <QString>

namespace quenby {

// MyStr(value, width, decimals): rounded half to even to `decimals`, forced
// to that many decimals, and filled on the left to `width` (a "0" first when
// the magnitude is below 1). A single-precision value is taken by the decimal
// text it shows.
QString MyStr(double value, int width, int decimals);
QString MyStr(float value, int width, int decimals);

void ClearTextLine();
// Pads the line with blanks until `position` reaches `column`, appends `text`,
// and moves `position` on; answers the new position.
Int32 TextAtColumn(const QString& text, Int32 column, Int32& position);
// The number variants: text = MyStr(value, width, decimals).
Int32 TextAtColumn1_0(float value, Int32 column, Int32& position);
Int32 TextAtColumn5_3(float value, Int32 column, Int32& position);
Int32 TextAtColumn3_1(float value, Int32 column, Int32& position);
Int32 TextAtColumn3_1b(float value, Int32 column, Int32& position);
Int32 TextAtColumn4_2(float value, Int32 column, Int32& position);
Int32 TextAtColumn7_5(float value, Int32 column, Int32& position);
// Appends `text` centred in `width` (left blanks = (width - n) / 2, halves to
// even); text as long as the width or longer goes alone.
void TextLineCentered(const QString& text, Int32 width);
QString TextLineResult();

} // namespace quenby
