// The main window's load step: what happens from process start until the
// main window stands ready for the operator; and its language commands.
#pragma once

#include "shell/model/MainWindowState.h"

#include <QString>

#include <functional>

namespace quenby {

inline constexpr auto UnableToFindLanguageFiles = "Unable to find langage files";

// Steps of the load that other parts of the shell supply; an empty step does
// nothing.
struct StartUpSteps
{
    std::function<void()> CheckIfDirectoryExist;
    std::function<void()> TreatVisibleMenu;
};

// The load step of `frmMain`, in its fixed order:
//  1. the two converter paths beside the program;
//  2. the language word from the store ("Quenbey", "Language", "Language");
//  3. the three knee boxes hidden;
//  4. an empty word taken as "ENGLISH" (nothing is written back);
//  5. en.lng must exist beside the program, whatever the language: if not, the
//     critical message "Unable to find langage files" and the end of the
//     program; else the language is loaded, which fills every window;
//  6. the data folders are checked;
//  7. ProcessInProgress is cleared;
//  8. the menu states are set.
void frmMainLoad(const StartUpSteps& steps);

// The language commands. Each tests its file beside the program (missing: the
// critical message "Unable to find langage files" and the end of the
// program), loads the language, and keeps the word in the store. The English
// command alone loads the upload window once more, to no visible effect.
void mnuAnglais_Click();
void mnuFrancais_Click();
void mnuPolish_Click();

} // namespace quenby
