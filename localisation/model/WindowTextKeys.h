// The texts of every window: for each fill routine, the keys it looks up in
// call order and the control each one fills. A control is named as the window
// names it, with its index for arrays ("lbTapTest(0)"); "" is the window.
#pragma once

#include "shell/model/Version.h"
#include <QString>

#include <vector>

namespace quenby {

// What a text is put into.
enum class TextTarget {
    Text,           // the caption or text of the control
    WindowTitle,    // the window's title
    WelcomeStatus,  // status bar panel 1: the text followed directly by the version
    VersionCaption, // the text, a blank, then the version
    ListItem0,      // replaces item 0 of a list
    ListItem1,      // replaces item 1 of a list
    AxisXCaption,   // caption of the graph's x axis
    AxisYCaption,   // caption of the graph's y axis
};

struct WindowTextEntry
{
    const char* key;
    const char* control;
    TextTarget target;
};

struct WindowTextTable
{
    QString routine; // "FillTextsMain"
    QString window;  // "frmMain"
    const std::vector<WindowTextEntry>& entries;
};

// The version text shown on the status bar and in the About window.
inline constexpr auto VersionText = QuenbyVersion;

const std::vector<WindowTextTable>& windowTextTables();
// The table of a fill routine, or nullptr.
const WindowTextTable* windowTextTable(const QString& routine);

} // namespace quenby
