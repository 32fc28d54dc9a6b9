#include "report/ui/ReportLogo.h"

#include "shell/model/DataFolders.h"
#include "shell/model/FileSystem.h"

#include <QLabel>

namespace quenby {

DesignedLogo::DesignedLogo() = default;
DesignedLogo::~DesignedLogo() = default;

QLabel* DesignedLogo::design(QLabel* box)
{
    m_box = box;
    m_room = box->geometry();
    return box;
}

void DesignedLogo::attach(QLabel* box)
{
    m_box = box;
    if (m_standIn && !m_standIn->pixmap().isNull()) {
        box->setGeometry(m_standIn->geometry());
        box->setPixmap(m_standIn->pixmap());
    }
    m_standIn.reset();
}

QLabel& DesignedLogo::imgLogo()
{
    if (m_box)
        return *m_box;
    if (!m_standIn)
        m_standIn = std::make_unique<QLabel>();
    return *m_standIn;
}

void loadLogoIfAny(double left, double top)
{
    if (FileExistsApi(LogoFilePath()) != False16)
        logoProcessing().loadAndFit(left, top);
}

} // namespace quenby
