// The main window's menu tree as data: every entry in menu order with its
// depth, default caption, language key and the state it has for the whole run
// once TreatVisibleMenu has set it. Most of the tree is laid out for features
// this version does not have; those entries are greyed or hidden.
#pragma once

#include <QString>

#include <map>
#include <vector>

namespace quenby {

enum class MenuState {
    Live,           // reachable
    Disabled,       // shown greyed
    Hidden,         // not shown
    OutOfReach,     // enabled, under a hidden entry
    ConverterMenu,  // shown when either converter program exists
    ConverterEntry, // enabled when its converter program exists
};

struct MainMenuEntry
{
    int depth; // 0 for the menu bar
    const char* name;
    const char* defaultCaption; // UTF-8
    const char* key;            // "" for an entry without a language key
    MenuState state;
    bool subMenu;
};

const std::vector<MainMenuEntry>& mainMenuEntries();

struct MenuItemState
{
    bool enabled = true;
    bool visible = true;
};

// The states TreatVisibleMenu gives the entries, by name:
//  1. enabled as the table says (hidden and out-of-reach entries enabled),
//     hidden entries keeping their hidden definition;
//  2. mnKVXCR and mnZBLBR hidden;
//  3. each converter entry enabled when its program exists;
//  4. mnBatchConvert shown when either entry is enabled;
//  5. mnuPolish shown.
std::map<QString, MenuItemState> TreatVisibleMenu(bool kvxConverterExists, bool zblConverterExists);

} // namespace quenby
