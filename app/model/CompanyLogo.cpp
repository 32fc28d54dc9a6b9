#include "app/model/CompanyLogo.h"

#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxReportWindow.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/DataFolders.h"
#include "shell/model/Services.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblReportWindow.h"

namespace quenby {

void mnCLogo_Click()
{
    const Bool16 noImage = SelectLogoImage();
    logoSelectionView().hideResizeLogo();
    if (noImage != False16)
        return;
    const QString success = GetLanguageText(QString::fromLatin1(LogoKeys::Success));
    showMessage(success, MsgButtons::Ok, MsgIcon::Exclamation, success);
    // The load steps of the reports put the new logo in them.
    KvxReport_Form_Load();
    kvxReportWindow().mirrorReport();
    ZblReport_Form_Load();
    zblReportWindow().mirrorReport();
}

} // namespace quenby
