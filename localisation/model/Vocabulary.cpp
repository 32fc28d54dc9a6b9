#include "localisation/model/Vocabulary.h"

namespace quenby {

namespace {

const std::vector<VocabularyKey> kKeys = {
    {MainStatusKeys::ProcessProgress, "mnKVXFiles_Click"},
    {MainStatusKeys::Ready, "mnKVXFiles_Click"},
    {MainStatusKeys::ConversionProgress, "ExportExcel"},
    {MainStatusKeys::CreatingExcelReport, "ExportExcel"},
    {MainStatusKeys::ConversionComplet, "ExportExcel"},

    {DiskRepairKeys::Warning, "mnRepair_Click"},

    {LogoKeys::Success, "mnCLogo_Click"},

    {KvxReportKeys::CompensationAluminium, "frmKVXCondensedReport load"},
    {KvxReportKeys::CompensationCopper, "frmKVXCondensedReport load"},
    {KvxReportKeys::AxisX, "frmKVXCondensedReport load"},
    {KvxReportKeys::AxisY, "frmKVXCondensedReport load"},
    {KvxReportKeys::InsulationHead, "ReadKvxTestFile"},
    {KvxReportKeys::CompensationDialogTitle, "frmKVXCondensedReport cbCompensation_Click"},

    {ZblReportKeys::CompensationAluminium, "frmZBLBasicReport load"},
    {ZblReportKeys::CompensationCopper, "frmZBLBasicReport load"},

    {VGraphKeys::CursorPosition, "frmZBLVGraph cursor change"},

    {DeviceTypeKeys::Kvx, "StateMachineProcess"},
    {DeviceTypeKeys::Zbl, "StateMachineProcess"},

    {UploadKeys::TryToConnect, "InitUpload"},
    {UploadKeys::DeviceFound, "StateMachineProcess"},
    {UploadKeys::DeviceSerialNumber, "StateMachineProcess"},
    {UploadKeys::Connect, "StateMachineProcess"},
    {UploadKeys::GetNumberOfFiles, "frmUploadDevice cmdGetFiles_Click"},
    {UploadKeys::FileOnDevice, "StateMachineProcess"},
    {UploadKeys::UploadInProgress, "StateMachineProcess"},
    {UploadKeys::FilesUploadSucces, "StateMachineProcess"},
    {UploadKeys::StopByUser, "StateMachineProcess"},
    {UploadKeys::Ready, "StateMachineProcess"},
    {UploadKeys::StatusNotConnected, "InitUpload"},
    {UploadKeys::StatusConnected, "StateMachineProcess"},
    {UploadKeys::StatusReady, "StateMachineProcess"},
    {UploadKeys::EndMessage1, "StateMachineProcess"},
    {UploadKeys::EndMessage2, "StateMachineProcess"},
    {UploadKeys::ErrorCorruption, "StateMachineProcess"},
    {UploadKeys::Advice, "StateMachineProcess"},
};

} // namespace

const std::vector<VocabularyKey>& vocabularyKeys()
{
    return kKeys;
}

QString deviceTypeKey(const QString& deviceType)
{
    return QLatin1String(DeviceTypeKeys::Prefix) + deviceType;
}

} // namespace quenby
