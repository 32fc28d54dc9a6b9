#include "shell/model/MainMenu.h"

namespace quenby {

namespace {
using S = MenuState;

const std::vector<MainMenuEntry> kEntries = {
    {0, "mnFiles", "Files", "frmMain.mnfiles.Caption", S::Live, true},
    {1, "mnOpen", "Open", "frmMain.mnOpen.Caption", S::Live, true},
    {2, "mnKVXFiles", "KVX  test Files", "frmMain.mnKVXFiles.Caption", S::Live, false},
    {2, "mnZBLFiles", "ZBL test Files", "frmMain.mnZBLFiles.Caption", S::Live, false},
    {2, "mnZBLRefFile", "Combined ZBL Ref File (with run test Button)",
     "frmMain.mnZBLRefFile.Caption", S::Disabled, false},
    {1, "mnSave", "Save", "frmMain.mnSave.Caption ", S::Disabled, true},
    {2, "mnOverriteFile", "Overite test File", "frmMain.mnOverriteFile.Caption", S::Disabled,
     false},
    {2, "mnSaveFile", "Save as new File", "frmMain.mnSaveFile.Caption", S::Disabled, false},
    {2, "mnSaveCombFile", "Save as combined File", "frmMain.mnSaveCombFile.Caption", S::Disabled,
     false},
    {2, "mnSavetestplan", "Save Test plan", "frmMain.mnSavetestplan.Caption", S::Disabled, true},
    {3, "mnSTPKVX", "KVX", "frmMain.mnSTPKVX.Caption", S::Disabled, false},
    {3, "mnSTPZBL", "ZBL", "frmMain.mnSTPZBL.Caption", S::Disabled, false},
    {2, "mnSRF", "Save Report Format", "frmMain.mnSRF.Caption", S::Disabled, true},
    {3, "mnSRFKVX", "KVX", "frmMain.mnOpen.Caption", S::Disabled, false},
    {3, "mnSRFZBL", "ZBL", "frmMain.mnSRFZBL.Caption", S::Disabled, false},
    {1, "mnClose", "Close", "frmMain.mnClose.Caption", S::Disabled, false},
    {1, "mnUplad", "Up-Load Data", "frmMain.mnUplad.Caption", S::Live, true},
    {2, "mnUploadPcDevice", "Device --> PC", "frmMain.mnUploadPcDevice.Caption", S::Live, false},
    {1, "mnBatchConvert", "Batch convert files", "", S::ConverterMenu, true},
    {2, "mnBatchConvertKvxPDF", "Convert KVXs files in PDF", "", S::ConverterEntry, false},
    {2, "mnBatchConvertZblCsv", "Convert ZBLs files in CSV", "", S::ConverterEntry, false},
    {1, "mnGenSetting", "General Setting", "frmMain.mnGenSetting.Caption", S::Live, true},
    {2, "mnDataFilesPath", "Data files path", "frmMain.mnDataFilesPath.Caption", S::Live, false},
    {2, "mnKVXFP", "KVX files path", "frmMain.mnKVXFP.Caption", S::Disabled, false},
    {2, "mnZBLFP", "ZBL files path", "frmMain.mnZBLFP.Caption", S::Disabled, false},
    {2, "mnZBLRTCV", "ZBL report temperature compensation value (default 75C)",
     "frmMain.mnZBLRTCV.Caption", S::Hidden, false},
    {2, "mnDT", "Date & Time format", "frmMain.mnDT.Caption", S::Hidden, false},
    {2, "mnCom", "Pc Communication", "frmMain.mnCom.Caption", S::Hidden, true},
    {3, "mnRS232", "RS-232C", "frmMain.mnRS232.Caption", S::Hidden, false},
    {3, "mnUSB", "USB", "frmMain.mnUSB.Caption", S::Hidden, false},
    {1, "mnExportReport", "Export Report", "frmMain.mnExportReport.Caption", S::Live, true},
    {2, "mnExcel", "Excel", "frmMain.mnExcel.Caption", S::Live, false},
    {2, "mnWord", "Word", "frmMain.mnWord.Caption", S::Hidden, false},
    {1, "mnPrint", "Print", "frmMain.mnPrint.Caption", S::Disabled, true},
    {2, "mnPrinter", "Printer", "frmMain.mnPrinter.Caption", S::Disabled, false},
    {2, "mnNCopy", "# of Copies", "frmMain.mnNCopy.Caption", S::Disabled, false},
    {2, "mnPDF", "Print to File (PDF)", "frmMain.mnPDF.Caption", S::Disabled, false},
    {1, "mnPrintoutSetting", "Printout Settings", "frmMain.mnPrintoutSetting.Caption", S::Live,
     true},
    {2, "mnCLogo", "Company Logo insert", "frmMain.mnCLogo.Caption", S::Live, false},
    {2, "mnWindingDiag", "Winding diagram CT or Transformer", "frmMain.mnWindingDiag.Caption",
     S::Disabled, false},
    {2, "mnNotes", "Notes", "frmMain.mnNotes.Caption", S::Disabled, false},
    {0, "mnView", "View", "frmMain.mnView.Caption", S::Live, true},
    {1, "mnKVXCR", "KVX condensed report", "frmMain.mnKVXCR.Caption", S::Hidden, true},
    {2, "mnKVXCRIEEE30", "IEEE 30", "frmMain.mnKVXCRIEEE30.Caption", S::OutOfReach, false},
    {2, "mnKVXIEEE45", "IEEE 45", "frmMain.mnKVXIEEE45.Caption", S::OutOfReach, false},
    {2, "mnKVXANSIIEC1050", "ANSI/IEC10/50", "frmMain.mnKVXANSIIEC1050.Caption", S::OutOfReach,
     false},
    {1, "mnKVXER", "KVX expanded report", "frmMain.mnKVXER.Caption", S::Disabled, true},
    {2, "mnKVXERIEEE30", "IEEE 30", "frmMain.mnKVXERIEEE30.Caption", S::Disabled, false},
    {2, "mnKVXERIEEE45", "IEEE 45", "frmMain.mnKVXERIEEE45.Caption", S::Disabled, false},
    {2, "mnKVXERANSIIEC1050", "ANSI/IEC10/50", "frmMain.mnKVXERANSIIEC1050.Caption", S::Disabled,
     false},
    {1, "mnZBLBR", "ZBL basic report", "frmMain.mnZBLBR.Caption", S::Hidden, false},
    {1, "mnZBLAR", "ZBL advanced report", "frmMain.mnZBLAR.Caption", S::Disabled, false},
    {1, "mnZBLARLTC", "ZBL advanced report for LTC", "frmMain.mnZBLARLTC.Caption", S::Disabled,
     true},
    {2, "mnSPWOC", "Single phase without commitioning/manufacturing data",
     "frmMain.mnSPWOC.Caption", S::Disabled, false},
    {2, "mnSPWCMD", "Single phase with commitioning or manufacturing data",
     "frmMain.mnSPWCMD.Caption", S::Disabled, false},
    {1, "mnZBLAC3PR", "ZBL advanced combined 3 phase report", "frmMain.mnZBLAC3PR.Caption",
     S::Disabled, false},
    {1, "mnZBLHRR", "ZBL Heat Run report", "frmMain.mnZBLHRR.Caption", S::Disabled, false},
    {1, "mnKVXOVERLAYTF", "OVERLAY KVX test files (before & after)",
     "frmMain.mnKVXOVERLAYTF.Caption", S::Disabled, false},
    {1, "mnOZBLTF", "OVERLAY ZBL test files (before & after)", "frmMain.mnOZBLTF.Caption",
     S::Disabled, false},
    {0, "mnTemplate", "Template", "frmMain.mnTemplate.Caption", S::Disabled, true},
    {1, "mnTemplateKVX", "KVX", "frmMain.mnTemplateKVX.Caption", S::Disabled, false},
    {1, "mnTemplateZBL", "ZBL", "frmMain.mnTemplateZBL.Caption", S::Disabled, false},
    {0, "mnPCC", "PC control", "frmMain.mnPCC.Caption", S::Disabled, false},
    {0, "mnTool", "Tool", "frmMain.mnuTool.Caption", S::Hidden, true},
    {1, "mnRepair", "Repair Files", "frmMain.mnuRepair.Caption", S::OutOfReach, false},
    {0, "mnuIP", "?", "frmMain.mnuIP.Caption", S::Live, true},
    {1, "mnLangue", "Language", "frmMain.mnLangue.Caption", S::Live, true},
    {2, "mnuAnglais", "English", "frmMain.mnuAnglais.Caption", S::Live, false},
    {2, "mnuFrancais", "Francais", "frmMain.mnuFrancais.Caption", S::Live, false},
    {2, "mnuPolish", "Polski", "", S::Live, false},
    {1, "mnuAbout", "À propos...", "frmMain.mnuAbout.Caption", S::Live, false},
};
} // namespace

const std::vector<MainMenuEntry>& mainMenuEntries()
{
    return kEntries;
}

std::map<QString, MenuItemState> TreatVisibleMenu(bool kvxConverterExists, bool zblConverterExists)
{
    std::map<QString, MenuItemState> states;
    for (const MainMenuEntry& e : kEntries) {
        MenuItemState& st = states[QString::fromLatin1(e.name)];
        st.enabled = e.state != MenuState::Disabled;
        // Hidden entries are hidden by the window's own definition.
        st.visible = e.state != MenuState::Hidden;
    }
    states[QStringLiteral("mnKVXCR")].visible = false;
    states[QStringLiteral("mnZBLBR")].visible = false;
    MenuItemState& zbl = states[QStringLiteral("mnBatchConvertZblCsv")];
    MenuItemState& kvx = states[QStringLiteral("mnBatchConvertKvxPDF")];
    zbl.enabled = zblConverterExists;
    kvx.enabled = kvxConverterExists;
    states[QStringLiteral("mnBatchConvert")].visible = zbl.enabled || kvx.enabled;
    states[QStringLiteral("mnuPolish")].visible = true;
    return states;
}

} // namespace quenby
