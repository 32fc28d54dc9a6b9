// Filling a window's texts from the language: the window icon, then each key
// of the window's fill routine in order, into the control it names.
#pragma once

#include "localisation/model/WindowTextKeys.h"

#include <QString>

class QWidget;

namespace quenby {

// A window whose texts go to places other than a control's caption (list
// items, axis captions, the status bar) takes those entries itself.
class WindowTextReceiver
{
public:
    virtual ~WindowTextReceiver() = default;
    virtual void applyWindowText(const WindowTextEntry& entry, const QString& text) = 0;
};

// Runs the fill routine `routine` ("FillTextsMain") on `window`.
void fillWindowTexts(QWidget& window, const QString& routine);

// Puts a text into the control named `control` of `window` ("" is the
// window's title): a label's, button's, box's or menu entry's caption, a text
// box's text. Returns false when the window has no such control.
bool setControlText(QWidget& window, const QString& control, const QString& text);

// The caption or text a control shows now, as setControlText sets it.
QString controlText(const QWidget& window, const QString& control);

} // namespace quenby
