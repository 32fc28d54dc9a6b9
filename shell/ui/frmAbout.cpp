#include "shell/ui/frmAbout.h"

#include "localisation/ui/WindowTexts.h"
#include "shell/model/ProgressAbout.h"
#include "shell/ui/AppIcon.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTextDocument>

#include <algorithm>

namespace quenby {

namespace {
// The loaded window; cleared as soon as its close box unloads it, so that the
// next touch makes a new one even before Qt has deleted the old one.
frmAbout* s_loaded = nullptr;

constexpr int LogoWidthPx = 240;

// Designed places of the controls, in twips. Only the lefts and the sizes
// matter: the load step stacks the controls under the picture.
constexpr double DesignLeft = 240;
constexpr double DesignTop = 240;
constexpr double DesignTextWidth = 4800;
constexpr double DesignLabelHeight = 285;
constexpr double DesignAddressHeight = 1200;
} // namespace

frmAbout& frmAbout::instance()
{
    if (!s_loaded)
        new frmAbout; // deleted by its close box
    return *s_loaded;
}

bool frmAbout::isLoaded()
{
    return s_loaded != nullptr;
}

void mnuAbout_Click()
{
    frmAbout& window = frmAbout::instance();
    window.show();
    window.raise();
    window.activateWindow();
}

frmAbout::frmAbout() : QWidget(nullptr, Qt::Dialog)
{
    s_loaded = this;
    setObjectName(QStringLiteral("frmAbout"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("About"));

    m_picLogo = new QLabel(this);
    m_picLogo->setObjectName(QStringLiteral("picLogo"));

    m_lblOrvaneCompany = new QLabel(QStringLiteral("Orvane inc."), this);
    m_lblOrvaneCompany->setObjectName(QStringLiteral("lblOrvaneCompany"));
    QFont bold = m_lblOrvaneCompany->font();
    bold.setBold(true);
    m_lblOrvaneCompany->setFont(bold);

    // A read-only text box rather than a label, so that the operator can
    // select and copy the contact lines.
    m_lbAddress = new QPlainTextEdit(this);
    m_lbAddress->setObjectName(QStringLiteral("lbAddress"));
    m_lbAddress->setReadOnly(true);
    m_lbAddress->setFrameShape(QFrame::NoFrame);
    m_lbAddress->setLineWrapMode(QPlainTextEdit::NoWrap);
    // The box is sized for the contact lines; a scroll bar would only crowd it.
    m_lbAddress->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_lbAddress->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_lbAddress->document()->setDocumentMargin(0);
    QPalette flat = m_lbAddress->palette();
    flat.setColor(QPalette::Base, palette().color(QPalette::Window));
    m_lbAddress->setPalette(flat);

    m_lbSoftwareVersion = new QLabel(QStringLiteral("Software version:"), this);
    m_lbSoftwareVersion->setObjectName(QStringLiteral("lbSoftwareVersion"));

    AboutControls designed;
    designed.picLogo = {DesignLeft, DesignTop, 0, 0};
    designed.lblOrvaneCompany = {DesignLeft, 0, DesignTextWidth, DesignLabelHeight};
    designed.lbAddress = {DesignLeft, 0, DesignTextWidth, DesignAddressHeight};
    designed.lbSoftwareVersion = {DesignLeft, 0, DesignTextWidth, DesignLabelHeight};
    applyControls(designed);

    Form_Load();
}

frmAbout::~frmAbout()
{
    if (s_loaded == this)
        s_loaded = nullptr;
}

void frmAbout::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    if (event->isAccepted() && s_loaded == this)
        s_loaded = nullptr;
}

void frmAbout::Form_Load()
{
    // The picture box takes the size of its picture, which is drawn when it
    // is first seen.
    m_picLogo->setPixmap(QPixmap());
    m_picLogo->resize(productLogoSize(LogoWidthPx));
    stackControls();
}

void frmAbout::drawLogo() const
{
    if (m_picLogo->pixmap().isNull())
        m_picLogo->setPixmap(productLogo(m_picLogo->width()));
}

QLabel* frmAbout::picLogo() const
{
    drawLogo();
    return m_picLogo;
}

void frmAbout::showEvent(QShowEvent* event)
{
    drawLogo();
    QWidget::showEvent(event);
}

void frmAbout::stackControls()
{
    const AboutLayout layout = layoutAbout(controlsInTwips());
    applyControls(layout.controls);
    // The layout's size is taken as the client area: Qt sizes that, and puts
    // the title bar on top of it, so the margin below the last text stays.
    const QScreen* s = screen();
    setFixedSize(twipsToPixels(layout.width, s->logicalDotsPerInchX()),
                 twipsToPixels(layout.height, s->logicalDotsPerInchY()));
}

AboutControls frmAbout::controlsInTwips() const
{
    const QScreen* s = screen();
    const double dpiX = s->logicalDotsPerInchX();
    const double dpiY = s->logicalDotsPerInchY();
    const auto twips = [dpiX, dpiY](const QWidget* w) {
        const QRect r = w->geometry();
        return TwipsRect{pixelsToTwips(r.x(), dpiX), pixelsToTwips(r.y(), dpiY),
                         pixelsToTwips(r.width(), dpiX), pixelsToTwips(r.height(), dpiY)};
    };
    return {twips(m_picLogo), twips(m_lblOrvaneCompany), twips(m_lbAddress),
            twips(m_lbSoftwareVersion)};
}

void frmAbout::applyControls(const AboutControls& controls)
{
    const QScreen* s = screen();
    const double dpiX = s->logicalDotsPerInchX();
    const double dpiY = s->logicalDotsPerInchY();
    const auto place = [dpiX, dpiY](QWidget* w, const TwipsRect& r) {
        w->setGeometry(twipsToPixels(r.left, dpiX), twipsToPixels(r.top, dpiY),
                       twipsToPixels(r.width, dpiX), twipsToPixels(r.height, dpiY));
    };
    place(m_picLogo, controls.picLogo);
    place(m_lblOrvaneCompany, controls.lblOrvaneCompany);
    place(m_lbAddress, controls.lbAddress);
    place(m_lbSoftwareVersion, controls.lbSoftwareVersion);
}

void frmAbout::FillTextsAbout()
{
    // The address comes with its lines joined by CR LF, which the text box
    // shows as line breaks.
    fillWindowTexts(*this, QStringLiteral("FillTextsAbout"));

    // The box keeps its designed height unless the maker's lines need more;
    // then it grows and the lines under it move down.
    const QFontMetrics metrics(m_lbAddress->font());
    const int lines = m_lbAddress->document()->blockCount();
    const int needed = lines * metrics.lineSpacing() + m_lbAddress->frameWidth() * 2;
    const int designed = twipsToPixels(DesignAddressHeight, screen()->logicalDotsPerInchY());
    m_lbAddress->resize(m_lbAddress->width(), std::max(needed, designed));
    stackControls();
}

} // namespace quenby
