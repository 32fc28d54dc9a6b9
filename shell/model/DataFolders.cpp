#include "shell/model/DataFolders.h"

#include "shell/model/ShellSession.h"

#include "shell/model/AppState.h"
#include "shell/model/CFile.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/Services.h"
#include "shell/model/SettingsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace quenby {

namespace {

QString getSetting(const char* section, const char* key, const QString& fallback = {})
{
    return settingsStore().GetSetting(SettingsAppData, section, key, fallback);
}

void saveSetting(const char* section, const char* key, const QString& value)
{
    settingsStore().SaveSetting(SettingsAppData, section, key, value);
}

void makeDirectory(QString path)
{
    CFile().MakeDirectory(path);
}

QString askForRoot()
{
    return BrowseForFolder(generalSettingView().folderPickerOwner(), QString(), SelectFolderTitle,
                           False16, True16);
}

} // namespace

bool builtInFolderTest(const QString& path)
{
    return !path.isEmpty() && QFileInfo(path).isDir();
}

namespace {

FolderTestObject& folderTestObject()
{
    return shellSession().folderTest;
}

// Opens `path` for line input under a free number, leaving the path and the
// number in the shared state first, so that they name the file even when the
// open fails.
void openTestFile(const QString& path, Dynamic& pathCell, Dynamic& numberCell)
{
    SequentialFiles& files = SequentialFiles::instance();
    pathCell = Dynamic(path);
    const Int16 no = files.freeFile();
    numberCell = Dynamic(static_cast<int>(no));
    files.open(no, path, SequentialFiles::Mode::Input);
}

// The common part of both test file selections, from the file name box on:
// the dialog reports cancel as an error, and every error from here on means
// that no file was opened.
Bool16 selectTestFile(const char* pattern, const char* family, Dynamic& pathCell,
                      Dynamic& numberCell)
{
    CommonDialogState& dialog = CommonDialog1();
    dialog.FileName = QString::fromLatin1(pattern);
    dialog.DialogTitle = QString::fromLatin1(TestFileDialogTitle);
    dialog.CancelError = true;
    try {
        dialog.ShowOpen();
        // Saved before the pattern test: an OK on the bare pattern stores "".
        saveSetting(SectionFileTransfert, family, PathOfFile(dialog.FileName));
        if (dialog.FileName == QLatin1String(pattern))
            return True16;
        openTestFile(dialog.FileName, pathCell, numberCell);
        return False16;
    } catch (const RuntimeError&) {
        return True16;
    }
}

} // namespace

void GeneralSettingModel::setTxtCurrentKVXFilesPath(const QString& text)
{
    m_kvxFolder = text;
    generalSettingView().mirrorModel();
}

void GeneralSettingModel::setTxtCurrentZBLFilesPath(const QString& text)
{
    m_zblFolder = text;
    generalSettingView().mirrorModel();
}

void GeneralSettingModel::setMessageBox_AreYouSureToChange(const QString& text)
{
    m_question = text;
    generalSettingView().mirrorModel();
}

void GeneralSettingModel::btChangeKVXFilePath_Click()
{
    const QString sep = pathSep();
    const QString root = askForRoot();
    if (!root.isEmpty()) {
        if (showMessage(m_question, MsgButtons::YesNo, MsgIcon::None, QString()) != MsgAnswer::No) {
            // An existing family folder is taken as it is, even without its
            // Files folder. The doubled separator before Files is intended;
            // the file system reads it as one.
            if (IsDirectory(root + sep + "KVX" + sep) == False16) {
                makeDirectory(root + sep + "KVX" + sep);
                makeDirectory(dataFilesFolder(root, "KVX" + sep) +
                              sep); // the doubled separator is kept
            }
            saveSetting(SectionUserFileTransfert, "KVX", root);
            setTxtCurrentKVXFilesPath(
                dataFilesFolder(getSetting(SectionUserFileTransfert, "KVX"), "KVX") + sep);
        }
    }
    generalSettingView().bringUp();
}

void GeneralSettingModel::btChangeZBLFilePath_Click()
{
    const QString sep = pathSep();
    const QString root = askForRoot();
    if (!root.isEmpty()) {
        if (showMessage(m_question, MsgButtons::YesNo, MsgIcon::None, QString()) != MsgAnswer::No) {
            if (IsDirectory(root + sep + "ZBL" + sep) == False16) {
                makeDirectory(root + sep + "ZBL" + sep);
                makeDirectory(dataFilesFolder(root, "ZBL") + sep);
            }
            saveSetting(SectionUserFileTransfert, "ZBL", root);
            setTxtCurrentZBLFilesPath(dataFilesFolder(root, "ZBL") + sep);
        }
    }
    generalSettingView().bringUp();
}

void GeneralSettingModel::btOk_Click()
{
    // Nothing to keep: each change was saved when it was made.
    generalSettingView().hideWindow();
}

GeneralSettingModel& generalSetting()
{
    return shellSession().generalSetting;
}

GeneralSettingView& generalSettingView()
{
    return Slot<GeneralSettingView>::current();
}

LogoSelectionView& logoSelectionView()
{
    return Slot<LogoSelectionView>::current();
}

QString dataFilesFolder(const QString& root, const QString& instrument)
{
    const QString sep = pathSep();
    return root + sep + instrument + sep + QStringLiteral("Files");
}

void CheckIfDirectoryExist()
{
    const QString sep = pathSep();
    GeneralSettingModel& window = generalSetting();
    const QString user = getSetting(SectionUserFileTransfert, "KVX");
    const QString last = getSetting(SectionFileTransfert, "KVX");

    // Neither branch checks that the folders exist: a removed root shows up
    // only when a dialog opens there.
    if (!user.isEmpty()) {
        window.setTxtCurrentKVXFilesPath(dataFilesFolder(user, "KVX"));
        window.setTxtCurrentZBLFilesPath(
            dataFilesFolder(getSetting(SectionUserFileTransfert, "ZBL", user), "ZBL"));
    } else if (!last.isEmpty()) {
        // The folder of the last opened file ends in a separator, so the join
        // doubles it; this is intended and left as it falls.
        window.setTxtCurrentKVXFilesPath(dataFilesFolder(last, "KVX"));
        window.setTxtCurrentZBLFilesPath(
            dataFilesFolder(getSetting(SectionFileTransfert, "ZBL", last), "ZBL"));
    } else {
        showMessage(DataDirectoryNotExist, MsgButtons::Ok, MsgIcon::Critical);
        // A cancelled picker gives "": the tree is then made at the root of
        // the file system and "" is stored, so the question comes back on the
        // next start. This is intended.
        const QString root = askForRoot();
        if (IsDirectory(root + sep + "ZBL" + sep) == False16) {
            makeDirectory(root + sep + "ZBL" + sep);
            makeDirectory(dataFilesFolder(root, "ZBL") + sep);
        }
        if (IsDirectory(root + sep + "KVX" + sep) == False16) {
            makeDirectory(root + sep + "KVX" + sep);
            makeDirectory(dataFilesFolder(root, "KVX" + sep) +
                          sep); // the doubled separator is kept
        }
        saveSetting(SectionUserFileTransfert, "KVX", root);
        saveSetting(SectionUserFileTransfert, "ZBL", root);
        window.setTxtCurrentKVXFilesPath(dataFilesFolder(root, "KVX"));
        window.setTxtCurrentZBLFilesPath(dataFilesFolder(root, "ZBL"));
    }

    appState().KvxDataFolderText = window.txtCurrentKVXFilesPath();
    appState().ZblDataFolderText = window.txtCurrentZBLFilesPath();
}

void mnDataFilesPath_Click()
{
    const QString sep = pathSep();
    GeneralSettingView& view = generalSettingView();
    view.FillTextsGeneralSetting();
    // Unlike the start-up texts, these end in a separator, and the ZBL root
    // has no fallback on the KVX one.
    GeneralSettingModel& window = generalSetting();
    window.setTxtCurrentKVXFilesPath(
        dataFilesFolder(getSetting(SectionUserFileTransfert, "KVX"), "KVX") + sep);
    window.setTxtCurrentZBLFilesPath(
        dataFilesFolder(getSetting(SectionUserFileTransfert, "ZBL"), "ZBL") + sep);
    view.bringUp();
}

void OpenKvxTestFileAt(const QString& path)
{
    openTestFile(path, appState().KvxTestFilePath, appState().KvxTestFileNo);
}

Bool16 SelectKvxTestFile()
{
    const QString sep = pathSep();
    const QString folder = generalSetting().txtCurrentKVXFilesPath();
    CommonDialogState& dialog = CommonDialog1();
    // Outside the error handler: a system without the folder test object ends
    // the program here. An empty label starts at the root of the file system;
    // a label that is no folder is taken as a root, and when that folder is
    // missing too the dialog falls back by itself.
    if (folder.isEmpty())
        dialog.InitDir = folder + sep;
    else if (FolderExistsFso(folder) != False16)
        dialog.InitDir = folder;
    else
        dialog.InitDir = dataFilesFolder(folder, "KVX");
    return selectTestFile(KvxTestFilePattern, "KVX", appState().KvxTestFilePath,
                          appState().KvxTestFileNo);
}

Bool16 SelectZblTestFile()
{
    const QString sep = pathSep();
    const QString folder = generalSetting().txtCurrentZBLFilesPath();
    CommonDialogState& dialog = CommonDialog1();
    // Not the KVX rule, and intended so: an empty label starts beside the
    // program, and a label that is no folder leaves the dialog in the folder
    // it had.
    if (folder.isEmpty())
        dialog.InitDir = dataFilesFolder(AppPath(), "ZBL");
    else if (IsDirectory(folder) != False16)
        dialog.InitDir = folder;
    return selectTestFile(ZblTestFilePattern, "ZBL", appState().ZblTestFilePath,
                          appState().ZblTestFileNo);
}

Bool16 ReopenKvxTestFile()
{
    // The dialog's file name is the memory of the last selected file; after a
    // language change it names the language file, which is then opened.
    // Intended: the report windows are modal, so this is hard to reach.
    const QString name = CommonDialog1().FileName;
    if (name == QLatin1String(KvxTestFilePattern))
        return True16;
    openTestFile(name, appState().KvxTestFilePath, appState().KvxTestFileNo);
    return False16;
}

Bool16 SelectLogoImage()
{
    LogoSelectionView& view = logoSelectionView();
    view.hideResizeLogo();
    CommonDialogState& dialog = cdOpenLogo();
    dialog.FileName = QString::fromLatin1(LogoImagePattern);
    dialog.DialogTitle = QString::fromLatin1(LogoDialogTitle);
    dialog.CancelError = false;
    dialog.ShowOpen();
    if (dialog.FileName == QLatin1String(LogoImagePattern))
        return True16;
    appState().LogoImagePath = Dynamic(dialog.FileName);
    // A picture that cannot be read stops the command here, without a word.
    if (!view.loadLogoImage(dialog.FileName))
        return True16;
    return False16;
}

QString LogoFilePath()
{
    const QString beside = AppPath();
    const QString name = QStringLiteral("logo.bmp");
    if (QFileInfo(beside).isDir() && QFileInfo(beside).isWritable())
        return beside + pathSep() + name;
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(own);
    return own + pathSep() + name;
}

Bool16 FolderExistsFso(const QString& path)
{
    const FolderTestObject& object = folderTestObject();
    if (!object)
        raiseRuntimeError(CannotCreateObjectError, QStringLiteral("FolderExists"));
    return toBool16(object(path));
}

Bool16 IsDirectory(const QString& path)
{
    // QFileInfo reports a missing or unreadable path as no folder, which is
    // the answer an error gives.
    return toBool16(!path.isEmpty() && QFileInfo(path).isDir());
}

QString PathOfFile(const QString& name)
{
    const qsizetype last = name.lastIndexOf(pathSep());
    return last < 0 ? QString() : name.left(last + 1);
}

void setFolderTestObject(FolderTestObject object)
{
    folderTestObject() = std::move(object);
}

void resetFolderTestObject()
{
    folderTestObject() = builtInFolderTest;
}

} // namespace quenby
