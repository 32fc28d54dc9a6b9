// Printing a window as a form: the window, hidden and laid out for paper,
// goes onto the page in hand as it stands, scaled to the printable width. The
// page is vector output: texts stay texts in their fonts, charts are drawn as
// lines and paths, and only pictures, such as a logo, are images.
#pragma once

#include <QRectF>

class QPainter;
class QWidget;

namespace quenby {

class PrintPages;

// Paints `form` into `area` of `painter`: scaled to the width of the area,
// or less when its height would run past the area's foot, its aspect kept,
// at the area's top left corner. Hidden children are left out.
void paintForm(QWidget& form, QPainter& painter, const QRectF& area);

// Prints `form` onto the page in hand of `pages`, over its printable area.
void printForm(QWidget& form, PrintPages& pages);

} // namespace quenby
