// What the models ask of the main window: the mirror of its state (knee
// boxes, status text), the busy window centred on it, one blocking turn of
// the event loop, and the hiding of both report windows before a new test.
// The main window implements it; a test installs a scripted one.
#pragma once

#include "shell/model/Session.h"

namespace quenby {

class MainWindowView
{
public:
    virtual ~MainWindowView() = default;
    // The main window's state changed: its window mirrors it.
    virtual void mirrorMainWindow() = 0;
    // The busy window up (centred on the main window) or away.
    virtual void showProgress(bool show) = 0;
    // Sleeps until the next event and handles it.
    virtual void waitForEvents() = 0;
    // The KVX and ZBL report windows hidden.
    virtual void hideReports() = 0;
};

inline MainWindowView& mainWindowView()
{
    return Slot<MainWindowView>::current();
}

} // namespace quenby
