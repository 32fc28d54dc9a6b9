#include "report/ui/ReportLogo.h"

#include "shell/model/DataFolders.h"
#include "shell/model/FileSystem.h"

#include <QLabel>

namespace quenby {

QLabel* DesignedLogo::design(QLabel* box)
{
    m_box = box;
    m_room = box->geometry();
    return box;
}

void loadLogoIfAny(double left, double top)
{
    if (FileExistsApi(LogoFilePath()) != False16)
        logoProcessing().loadAndFit(left, top);
}

} // namespace quenby
