// The language keys that the program fetches while it runs, outside the
// routines that fill the windows: status texts, upload messages, the names of
// the instruments, message boxes, and the texts a window puts on its controls
// when it loads or when an event fires. Code fetches these through the named
// constants below rather than through literals, so that a key is spelt once.
//
// The fill routines' keys stand in WindowTextKeys.cpp and the menu's keys in
// MainMenu.cpp. A few keys appear both there and here: a fill routine puts
// them on a control, and a running routine fetches them again later.
#pragma once

#include <QString>

#include <vector>

namespace quenby {

// Panel 1 of the main window's status bar while a road runs.
namespace MainStatusKeys {
// A KVX test is being opened.
inline constexpr auto ProcessProgress = "frmMain.stBar1.Panels.Text.ProcessProgress";
// A road has ended.
inline constexpr auto Ready = "frmMain.stBar1.Panels.Text.Ready";
// Spreadsheet export: the test file is being read.
inline constexpr auto ConversionProgress = "frmMain.stBar1.Panels.Text.ConversionProgress";
// Spreadsheet export: the workbook is being written.
inline constexpr auto CreatingExcelReport = "frmMain.stBar1.Panels.Text.CreatingExcelReport";
// Spreadsheet export: done. Replaced by Ready at once.
inline constexpr auto ConversionComplet = "frmMain.stBar1.Panels.Text.ConversionComplet";
} // namespace MainStatusKeys

// The disk repair command: the yes-no question, followed by a blank and the
// chosen folder.
namespace DiskRepairKeys {
inline constexpr auto Warning = "frmMain.mnTools.Avertissement.Caption";
} // namespace DiskRepairKeys

// The logo change command: text and title of the message box that confirms it.
namespace LogoKeys {
inline constexpr auto Success = "frmProcessLogo.lbMsgSucces.Caption";
} // namespace LogoKeys

// The KVX report window's load step, its reader and its compensation road.
namespace KvxReportKeys {
// Items 0 and 1 of cbCompensation.
inline constexpr auto CompensationAluminium = "frmKVXCondensedReport.cbCompensation.Aluminium";
inline constexpr auto CompensationCopper = "frmKVXCondensedReport.cbCompensation.Coper";
// Captions of the excitation graph's axes.
inline constexpr auto AxisX = "frmKVXCondensedReport.CWGraph1.AxesX";
inline constexpr auto AxisY = "frmKVXCondensedReport.CWGraph1.AxesY";
// Head of the insulation column, which the reader rewrites with the test
// voltage behind it.
inline constexpr auto InsulationHead = "frmKVXCondensedReport.txtInsulationRes.Text";
// Title of the compensation dialog, put behind "KVX " when the KVX report
// opens it.
inline constexpr auto CompensationDialogTitle = "frmCompensedResistanceSetting.Caption";
} // namespace KvxReportKeys

// The ZBL report window's load step.
namespace ZblReportKeys {
// Items 0 and 1 of cbCompensation.
inline constexpr auto CompensationAluminium = "frmZBLBasicReport.cbCompensation.Aluminium";
inline constexpr auto CompensationCopper = "frmZBLBasicReport.cbCompensation.Coper";
} // namespace ZblReportKeys

// The V graph's cursor event: the text, a blank, then the row position.
namespace VGraphKeys {
inline constexpr auto CursorPosition = "frmZBLVGraph.lbCurrent";
} // namespace VGraphKeys

// The instrument's name in the upload messages: the prefix followed by the
// device type, "KVX" or "ZBL". The messages put it behind their own text, so
// the language files write it in brackets, "Ready (KVX CT test set)", which
// reads right behind every message in every language.
namespace DeviceTypeKeys {
inline constexpr auto Prefix = "DeviceType.";
inline constexpr auto Kvx = "DeviceType.KVX";
inline constexpr auto Zbl = "DeviceType.ZBL";
} // namespace DeviceTypeKeys

// The upload state machine and its window.
namespace UploadKeys {
// Message line.
inline constexpr auto TryToConnect = "frmUploadDevice.lbPrintMessage.TryToConnect";
inline constexpr auto DeviceFound = "frmUploadDevice.lbPrintMessage.DeviceFound";
inline constexpr auto DeviceSerialNumber = "frmUploadDevice.lbPrintMessage.DeviceSerialNumber";
inline constexpr auto GetNumberOfFiles = "frmUploadDevice.lbPrintMessage.GetNumberOfFiles";
// Follows the file count and a blank.
inline constexpr auto FileOnDevice = "frmUploadDevice.lbPrintMessage.FileOnDevice";
// Message line, each followed by a blank and the instrument's name.
inline constexpr auto Connect = "frmUploadDevice.lbPrintMessage.Connect";
inline constexpr auto FilesUploadSucces = "frmUploadDevice.lbPrintMessage.FilesUploadSucces";
inline constexpr auto StopByUser = "frmUploadDevice.lbPrintMessage.StopByUser";
inline constexpr auto Ready = "frmUploadDevice.lbPrintMessage.Ready";
// Followed by the instrument's name on the message line, alone on the status
// bar.
inline constexpr auto UploadInProgress = "frmUploadDevice.lbPrintMessage.UploadInProgress";
// Status bar panel 1.
inline constexpr auto StatusNotConnected = "frmUploadDevice.lbDeviceStatus.Caption";
inline constexpr auto StatusConnected = "frmUploadDevice.lbDeviceStatus.Connect";
inline constexpr auto StatusReady = "frmUploadDevice.lbDeviceStatus.Ready";
// End of upload message box: EndMessage1, the files stored, EndMessage2 and
// the files dealt with, blank separated; when some were skipped, two more
// lines: ErrorCorruption and Advice. Advice's key ends with its point: that is
// the key the state machine asks for.
inline constexpr auto EndMessage1 = "frmUploadDevice.msgBox.EndMessage1";
inline constexpr auto EndMessage2 = "frmUploadDevice.msgBox.EndMessage2";
inline constexpr auto ErrorCorruption = "frmUploadDevice.msgBox.ErrorCorruption";
inline constexpr auto Advice = "frmUploadDevice.msgBox.";
} // namespace UploadKeys

// One key of the vocabulary and the routine that fetches it.
struct VocabularyKey
{
    const char* key;
    const char* fetchedBy;
};

// Every key above but the device type prefix, which is no key by itself.
const std::vector<VocabularyKey>& vocabularyKeys();

// The key of an instrument's name: "DeviceType.KVX" for "KVX".
QString deviceTypeKey(const QString& deviceType);

} // namespace quenby
