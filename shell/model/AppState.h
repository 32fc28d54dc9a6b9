// Shared state of the application: what report windows, readers and commands
// read and write by name. One instance lives for the whole run.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/Dynamic.h"

#include <QString>

namespace quenby {

struct AppState
{
    Bool16 ProcessInProgress = False16; // a long job runs; the busy dots move
    QString KneeStandard;               // "IEEE 30", "IEEE 45" or "AINSI/IEC10/50"
    QString LangFilePath;               // full path of the current language file
    QString KvxDataFolderText;          // set when the folder check ends; nothing reads it
    QString ZblDataFolderText;          // likewise
    Dynamic KvxTestFilePath;            // the KVX test file last opened
    Dynamic KvxTestFileNo;              // and its open file number
    Dynamic ZblTestFilePath;
    Dynamic ZblTestFileNo;
    Dynamic LogoImagePath;
    double ZblScrollOverflowPercent = 0.0; // computed and kept; nothing reads it
    QString BrowseInitialFolder;           // folder picker start, NUL-terminated
};

AppState& appState();

} // namespace quenby
