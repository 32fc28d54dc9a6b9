// The data folders and the selection of files by the operator.
//
// Test files live under one root folder per instrument family, in
// <root>/KVX/Files/ and <root>/ZBL/Files/. The operator names the root on the
// first run and may change either family's root in the general settings
// window; both roots are kept in the settings store ("Quenby",
// "UserFileTransfert"). The selection routines show the open dialog, remember
// the folder of the chosen file ("Quenby", "FileTransfert") and open the file
// under a free number of the sequential file service, where it stays open for
// the readers.
//
// The general settings window is seen here as data: its two folder labels and
// the question asked before a change. The window mirrors them; showing, hiding
// and filling its texts go through hooks that the window sets, so that every
// routine runs without a screen.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/FileSystem.h"

#include <QString>

#include <functional>

namespace quenby {

inline constexpr auto DataDirectoryNotExist =
    "Data directory not exist.  Select directory for data storage."; // two blanks, as shown
inline constexpr auto SelectFolderTitle = "Please select a folder:";
inline constexpr auto SectionUserFileTransfert = "UserFileTransfert"; // the chosen roots
inline constexpr auto SectionFileTransfert = "FileTransfert"; // folders of the last opened files
inline constexpr auto KvxTestFilePattern = "*.txt";
inline constexpr auto ZblTestFilePattern = "*.zbl";
inline constexpr auto TestFileDialogTitle = "Test";
inline constexpr auto LogoImagePattern = "*.jpg;*.bmp";
inline constexpr auto LogoDialogTitle = "Image Files";

// Raised by FolderExistsFso when the system has no folder test object.
inline constexpr int CannotCreateObjectError = 429;

// `frmGeneralSetting` seen as data. The label texts start as their control
// names, as the window's controls do until something fills them.
class GeneralSettingModel
{
public:
    // The KVX files folder shown; also the start folder of the KVX open dialog.
    const QString& txtCurrentKVXFilesPath() const { return m_kvxFolder; }
    // The ZBL files folder shown; likewise for the ZBL open dialog.
    const QString& txtCurrentZBLFilesPath() const { return m_zblFolder; }
    // The question asked before a root is changed, as the language filled it.
    const QString& MessageBox_AreYouSureToChange() const { return m_question; }

    // Each setter lets the window mirror the change.
    void setTxtCurrentKVXFilesPath(const QString& text);
    void setTxtCurrentZBLFilesPath(const QString& text);
    void setMessageBox_AreYouSureToChange(const QString& text);

    // The buttons of the window.
    void btChangeKVXFilePath_Click();
    void btChangeZBLFilePath_Click();
    void btOk_Click();

private:
    QString m_kvxFolder = QStringLiteral("txtCurrentKVXFilesPath");
    QString m_zblFolder = QStringLiteral("txtCurrentZBLFilesPath");
    QString m_question = QStringLiteral("MessageBox_AreYouSureToChange");
};

GeneralSettingModel& generalSetting();

// What the model asks of the general settings window.
class GeneralSettingView
{
public:
    virtual ~GeneralSettingView() = default;
    virtual void FillTextsGeneralSetting() = 0;
    // Focus if the window is visible, else show it modally, owned by frmMain.
    virtual void bringUp() = 0;
    virtual void hideWindow() = 0;
    // A label text of the model changed.
    virtual void mirrorModel() = 0;
    // The owner of the folder picker: the main window.
    virtual OwnerWindow folderPickerOwner() = 0;
};
GeneralSettingView& generalSettingView();

// What SelectLogoImage asks of the logo windows.
class LogoSelectionView
{
public:
    virtual ~LogoSelectionView() = default;
    // Hides frmResizeLogo before the dialog opens.
    virtual void hideResizeLogo() = 0;
    // Loads the chosen image into the picture of the logo window and runs
    // AutoResizeLogo on it, which saves the logo bitmap. False when the
    // picture could not be read: nothing was saved.
    virtual bool loadLogoImage(const QString& imagePath) = 0;
};
LogoSelectionView& logoSelectionView();

// The test files folder of one instrument under a data root:
// root + sep + instrument + sep + "Files", as every folder of the data tree is
// named ("KVX" or "ZBL").
QString dataFilesFolder(const QString& root, const QString& instrument);

// Start-up: finds the data folders from the store and puts them on the
// window's labels; on the first run asks for a root, makes the tree and
// stores it. Ends by copying both labels into KvxDataFolderText and
// ZblDataFolderText. A folder that cannot be made raises RuntimeError.
void CheckIfDirectoryExist();

// The menu command that opens the general settings window with both roots
// from the store.
void mnDataFilesPath_Click();

// Ask for a KVX or ZBL test file and open it under KvxTestFileNo or
// ZblTestFileNo. True16 means no file was opened (cancel or a failure).
Bool16 SelectKvxTestFile();
Bool16 SelectZblTestFile();

// Opens again, without a dialog, the file named by CommonDialog1's file name.
// True16 when that name is still the pattern. A file that cannot be opened
// raises RuntimeError.
Bool16 ReopenKvxTestFile();

// Opens `path` for input as the KVX file chooser does once the operator has
// picked it: KvxTestFilePath and KvxTestFileNo name it. A failed open raises.
void OpenKvxTestFileAt(const QString& path);

// Asks for a logo image; True16 means none was chosen.
Bool16 SelectLogoImage();

// Where the logo bitmap "logo.bmp" lives, for writing and for reading alike:
// beside the program when that folder is writable, otherwise (an installed
// program) in the user's own application data folder.
QString LogoFilePath();

// True16 if `path` is a folder, through the folder test object; raises
// CannotCreateObjectError when the system has none.
Bool16 FolderExistsFso(const QString& path);

// True16 if `path` names a folder; any failure, such as a missing path, is
// False16.
Bool16 IsDirectory(const QString& path);

// The text up to and including the last separator; "" if there is none.
QString PathOfFile(const QString& name);

// The folder test object behind FolderExistsFso. An empty one stands for a
// system without it; resetFolderTestObject puts the built-in one back.
using FolderTestObject = std::function<bool(const QString& path)>;
void setFolderTestObject(FolderTestObject object);
// The system's own test: a folder that exists.
bool builtInFolderTest(const QString& path);
void resetFolderTestObject();

} // namespace quenby
