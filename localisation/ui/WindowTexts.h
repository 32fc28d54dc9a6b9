// Filling a window's texts from the language: the window icon, then each key
// of the window's fill routine in order, into the control it names.
#pragma once

#include "localisation/model/WindowTextKeys.h"

#include <QString>

#include <utility>
#include <vector>

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

// A window that makes part of its controls later (its page) keeps the texts
// put on them until then, and puts them on once they are made, in the order
// they came; asked for such a text meanwhile, it answers with the one kept,
// and asked for the text of another control of the page, it makes the page.
class KeptControlTexts
{
public:
    virtual ~KeptControlTexts() = default;
    // Makes the controls made later, once: buildControls, which puts the kept
    // texts on them (putKeptTexts) where the window's order wants them.
    void makeControls();
    bool controlsMade() const { return m_made; }
    // Whether a control not found is one made later, so that its text is kept.
    bool keepsTexts() const { return !m_made; }
    void keep(const QString& control, const QString& text);
    // The text kept for `control`, or none.
    const QString* kept(const QString& control) const;

protected:
    virtual void buildControls() = 0;
    // Puts the kept texts on the controls of `window` and forgets them.
    void putKeptTexts(QWidget& window);

private:
    std::vector<std::pair<QString, QString>> m_kept;
    bool m_made = false;
};

// Runs the fill routine `routine` ("FillTextsMain") on `window`.
void fillWindowTexts(QWidget& window, const QString& routine);

// Puts a text into the control named `control` of `window` ("" is the
// window's title): a label's, button's, box's or menu entry's caption, a text
// box's text. Returns false when the window has no such control, unless it
// keeps the texts of controls it makes later.
bool setControlText(QWidget& window, const QString& control, const QString& text);

// The caption or text a control shows now, as setControlText sets it; for a
// control made later, the text it will show.
QString controlText(const QWidget& window, const QString& control);

} // namespace quenby
