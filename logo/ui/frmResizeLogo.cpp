#include "logo/ui/frmResizeLogo.h"

#include "logo/model/AutoResizeLogo.h"
#include "logo/ui/frmProcessLogo.h"

#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>

namespace quenby {

frmResizeLogo& frmResizeLogo::instance()
{
    static frmResizeLogo* window = new frmResizeLogo; // lives until the process ends
    return *window;
}

frmResizeLogo::frmResizeLogo()
{
    setObjectName(QStringLiteral("frmResizeLogo"));
    setWindowTitle(objectName());
    auto* row = new QHBoxLayout(this);
    m_pbOriginalPicture = new QLabel(this);
    m_pbOriginalPicture->setObjectName(QStringLiteral("pbOriginalPicture"));
    m_pbResizePicture = new QLabel(this);
    m_pbResizePicture->setObjectName(QStringLiteral("pbResizePicture"));
    m_command1 = new QPushButton(QStringLiteral("Command1"), this);
    m_command1->setObjectName(QStringLiteral("Command1"));
    row->addWidget(m_pbOriginalPicture);
    row->addWidget(m_pbResizePicture);
    row->addWidget(m_command1);
    connect(m_command1, &QPushButton::clicked, this, [this] { AutoResizeLogo(); });
}

bool frmResizeLogo::loadLogoImage(const QString& imagePath)
{
    // Whatever the image plugins read: BMP, PNG, JPEG, GIF.
    QImageReader reader(imagePath);
    reader.setAutoTransform(true);
    QImage picture = reader.read();
    m_pbOriginalPicture->clear();
    if (picture.isNull())
        return false;
    m_original = picture.convertToFormat(QImage::Format_RGB32);
    m_pbOriginalPicture->setPixmap(QPixmap::fromImage(m_original));
    return AutoResizeLogo();
}

bool frmResizeLogo::AutoResizeLogo()
{
    if (m_original.isNull())
        return false;
    const QSize box = AutoResizeLogoBox(m_original.width(), m_original.height(), ResizeBox);
    // The picture stretched to the whole box from its top left corner; a
    // transparent picture stands on white, as on the report's paper.
    m_resized = QImage(box, QImage::Format_RGB32);
    m_resized.fill(Qt::white);
    {
        QPainter painter(&m_resized);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRect(QPoint(0, 0), box), m_original);
    }
    m_pbResizePicture->setPixmap(QPixmap::fromImage(m_resized));
    const bool saved = m_resized.save(LogoFilePath(), "BMP");
    // The logo's processing reads the new bitmap at its next load.
    frmProcessLogo::instance().forgetLoadedLogo();
    return saved;
}

} // namespace quenby
