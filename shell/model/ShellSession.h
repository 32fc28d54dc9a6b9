// The shared state of the application shell for one run: the state that the
// report windows, readers and commands read and write by name, the main
// window's members, its two open dialogs, the general settings window, the
// command in hand and the open file numbers. The application owns one; each
// test gets a fresh one.
#pragma once

#include "shell/model/AppState.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/DataFolders.h"
#include "shell/model/MainWindowState.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/Session.h"

#include <QString>

#include <memory>

namespace quenby {

struct ShellSession
{
    AppState app;               // appState()
    MainWindowState mainWindow; // mainWindowState(): the members of frmMain
    CommonDialogState CommonDialog1;
    CommonDialogState cdOpenLogo;
    GeneralSettingModel generalSetting; // frmGeneralSetting seen as data
    QString currentCommand;             // the command a failure names
    // The object FolderExistsFso asks; a test may take it away.
    FolderTestObject folderTest = builtInFolderTest;
    // The numbered files of the sequential file service, open or free.
    std::unique_ptr<SequentialFiles> files = std::make_unique<SequentialFiles>();

    // Every field back to its first value; open files are closed.
    void reset() { *this = ShellSession{}; }
};

inline ShellSession& shellSession()
{
    return Slot<ShellSession>::current();
}

} // namespace quenby
