#include "app/model/StartUp.h"

#include "localisation/model/LanguageLookup.h"
#include "shell/model/AppState.h"
#include "shell/model/FileSystem.h"
#include "shell/model/Platform.h"
#include "shell/model/Services.h"
#include "shell/model/SettingsStore.h"

namespace quenby {

void frmMainLoad(const StartUpSteps& steps)
{
    MainWindowState& state = mainWindowState();
    state.ZblConverterPath = AppPath() + pathSep() + executableFileName("zbl_report_converter");
    state.KvxConverterPath = AppPath() + pathSep() + executableFileName("kvx_report_converter");

    QString language =
        settingsStore().GetSetting(SettingsAppLanguage, "Language", "Language", QString());

    state.chkKneeTypeVisible = {false, false, false};

    if (language.isEmpty())
        language = QStringLiteral("ENGLISH");

    // The English file is the one tested, whatever the language in force.
    if (!FileExistsApi(AppPath() + pathSep() + "en.lng")) {
        showMessage(UnableToFindLanguageFiles, MsgButtons::Ok, MsgIcon::Critical);
        endProgram(1);
    }
    LoadLanguage(language);

    if (steps.CheckIfDirectoryExist)
        steps.CheckIfDirectoryExist();

    appState().ProcessInProgress = False16;

    if (steps.TreatVisibleMenu)
        steps.TreatVisibleMenu();
}

namespace {
void changeLanguage(const QString& word)
{
    if (!FileExistsApi(languageFilePath(word))) {
        showMessage(UnableToFindLanguageFiles, MsgButtons::Ok, MsgIcon::Critical);
        endProgram(1);
    }
    LoadLanguage(word);
    if (word == QLatin1String("ENGLISH"))
        languageWindows().loadUploadDevice();
    settingsStore().SaveSetting(SettingsAppLanguage, "Language", "Language", word);
}
} // namespace

void mnuAnglais_Click()
{
    changeLanguage(QStringLiteral("ENGLISH"));
}

void mnuFrancais_Click()
{
    changeLanguage(QStringLiteral("FRANCAIS"));
}

void mnuPolish_Click()
{
    changeLanguage(QStringLiteral("POLISH"));
}

} // namespace quenby
