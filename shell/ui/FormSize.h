// Sizing a hidden print window to paper.
#pragma once

class QWidget;

namespace quenby {

// Makes the client area of `window` `widthInches` by `heightInches` at its
// screen's logical resolution. The frame stays as it is and out of the size:
// the window grows by it. A window's client area is the rectangle inside its
// frame (contentsRect); the frame the window manager draws round a top-level
// window lies outside the widget and is never counted.
void SetFormClientSize(QWidget& window, float widthInches, float heightInches);

} // namespace quenby
