#include "logo/ui/frmProcessLogo.h"

#include "logo/model/BilinearResize.h"
#include "logo/model/LogoSession.h"
#include "shell/model/DataFolders.h"
#include "shell/model/NumberText.h"
#include "shell/model/Twips.h"
#include "shell/model/YieldHook.h"

#include <QFileInfo>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>

namespace quenby {

namespace {

// The preview's places, in twips from its margin: the window is not shown,
// so only their order matters.
constexpr double SourceDistance = 900;
constexpr double ImageDistance = 1200;
// cmdProcess fits the logo at the preview's own place.
constexpr double PreviewLeft = 16440;
constexpr double PreviewTop = 120;

QRect pixelsOf(const TwipsRect& r)
{
    return {pixelsOfTwips(r.left), pixelsOfTwips(r.top), pixelsOfTwips(r.width),
            pixelsOfTwips(r.height)};
}

} // namespace

frmProcessLogo& frmProcessLogo::instance()
{
    static frmProcessLogo* window = new frmProcessLogo; // lives until the process ends
    return *window;
}

frmProcessLogo::frmProcessLogo()
{
    setObjectName(QStringLiteral("frmProcessLogo"));
    setWindowTitle(objectName());
    const auto label = [this](const char* name) {
        auto* box = new QLabel(this);
        box->setObjectName(QString::fromLatin1(name));
        return box;
    };
    m_srcPicture = label("srcPicture");
    m_dstPicture = label("dstPicture");
    m_image1 = label("Image1");
    m_image2 = label("Image2");
    m_label1 = label("Label1");
    m_label2 = label("Label2");
    m_label3 = label("Label3");
    // The load: the resampling's target size in its text boxes.
    const auto box = [this](const char* name) {
        auto* edit = new QLineEdit(QStringLiteral("1960"), this);
        edit->setObjectName(QString::fromLatin1(name));
        return edit;
    };
    m_txtWidth = box("txtWidth");
    m_txtHeight = box("txtHeight");
    m_txtHeight->move(0, m_txtWidth->sizeHint().height());
    const auto button = [this](const char* name, auto command) {
        auto* push = new QPushButton(QString::fromLatin1(name), this);
        push->setObjectName(QString::fromLatin1(name));
        connect(push, &QPushButton::clicked, this, command);
    };
    button("cmdLoad", [this] { cmdLoad(); });
    button("cmdProcess", [this] { cmdProcess(); });
    button("cmdProcess2", [this] { cmdProcess2(); });
}

void frmProcessLogo::loadAndFit(double left, double top)
{
    if (cmdLoad())
        SetImageProcessed(left, top);
}

bool frmProcessLogo::cmdLoad()
{
    for (QLabel* measure : {m_label1, m_label2, m_label3})
        measure->show();
    m_image1->hide();
    const QFileInfo file(LogoFilePath());
    const bool unchanged = !m_source.isNull() && file.absoluteFilePath() == m_sourcePath &&
                           file.lastModified() == m_sourceModified && file.size() == m_sourceBytes;
    if (!unchanged) {
        forgetLoadedLogo();
        // Whatever the image plugins read; the logo is a bitmap of the
        // program's own making, but its file may have been replaced by hand.
        QImageReader reader(file.absoluteFilePath());
        const QImage picture = reader.read();
        if (picture.isNull())
            return false;
        m_source = picture.convertToFormat(QImage::Format_RGB32);
        m_sourcePath = file.absoluteFilePath();
        m_sourceModified = file.lastModified();
        m_sourceBytes = file.size();
    }
    const QPixmap shown = QPixmap::fromImage(m_source);
    m_image1->setPixmap(shown);
    m_srcPicture->setPixmap(shown);
    m_srcPicture->resize(m_source.size());
    ProcessImage();
    return true;
}

void frmProcessLogo::forgetLoadedLogo()
{
    m_sourcePath.clear();
    m_sourceModified = QDateTime();
    m_sourceBytes = -1;
    m_shownLogo = QPixmap();
}

void frmProcessLogo::ProcessImage()
{
    ProcessLogo& members = processLogo();
    members.ProcessImage(pixelsToTwips(m_source.width(), ReportPageDpi),
                         pixelsToTwips(m_source.height(), ReportPageDpi));
    m_srcPicture->move(pixelsOfTwips(SourceDistance + members.Margin), 0);
    m_image1->move(pixelsOfTwips(ImageDistance + members.Margin), 0);
    m_image2->move(pixelsOfTwips(ImageDistance + members.Margin),
                   pixelsOfTwips(ImageDistance + members.Margin));
    mirrorMeasures();
}

void frmProcessLogo::mirrorMeasures()
{
    const ProcessLogo& members = processLogo();
    m_label1->setText(QStringLiteral("Width: ") + numberText(members.LogoWidth));
    m_label2->setText(QStringLiteral("Height: ") + numberText(members.LogoHeight));
    m_label3->setText(QStringLiteral("Ratio: ") + numberText(members.LogoRatio));
}

TwipsRect frmProcessLogo::SetImageProcessed(double left, double top)
{
    ProcessLogo& members = processLogo();
    const TwipsRect image1 = members.SetImageProcessed(left, top);
    m_image1->setGeometry(pixelsOf(image1));

    // The logo on each window there is, in the order of the list: centred
    // over the window's head label, at the height of its top.
    const int width = pixelsOfTwips(members.LogoShownWidth);
    const int height = pixelsOfTwips(members.LogoShownHeight);
    if (width <= 0 || height <= 0 || !m_targets)
        return image1;
    if (m_shownLogo.size() != QSize(width, height))
        m_shownLogo = QPixmap::fromImage(
            m_source.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    const QPixmap& logo = m_shownLogo;
    for (LogoTarget* target : m_targets()) {
        const QRect head = target->logoHeadLabel();
        const TwipsRect at =
            PlaceLogoOverHeadLabel(head.left(), head.top(), head.width(), width, height);
        QLabel& box = target->imgLogo();
        box.setGeometry(static_cast<int>(at.left), static_cast<int>(at.top), width, height);
        box.setPixmap(logo);
    }
    return image1;
}

void frmProcessLogo::cmdProcess()
{
    m_image1->setScaledContents(true);
    m_image2->setScaledContents(true);
    SetImageProcessed(PreviewLeft, PreviewTop);
}

bool frmProcessLogo::cmdProcess2()
{
    m_image1->setScaledContents(false);
    m_image2->setScaledContents(false);
    m_srcPicture->show();
    m_dstPicture->show();
    const DestinationSize size = SetDestinationSize(m_txtWidth->text(), m_txtHeight->text());
    m_dstPicture->resize(static_cast<int>(size.Width), static_cast<int>(size.Height));
    letSystemBreathe();
    // The two extra units are the box's border: the picture inside is the
    // size the text boxes give.
    m_destination =
        ResizeImageBilinear(m_source, m_dstPicture->width() - 2, m_dstPicture->height() - 2);
    if (m_destination.isNull())
        return false;
    m_dstPicture->setPixmap(QPixmap::fromImage(m_destination));
    const bool saved = m_destination.save(LogoFilePath(), "BMP");
    forgetLoadedLogo();
    return saved;
}

} // namespace quenby
