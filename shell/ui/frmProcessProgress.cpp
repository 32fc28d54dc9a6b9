#include "shell/ui/frmProcessProgress.h"

#include "localisation/ui/WindowTexts.h"
#include "shell/model/ProgressAbout.h"
#include "shell/ui/MainWindowOwner.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace quenby {

namespace {
constexpr int TimerIntervalMs = 50;
constexpr int WindowWidthPx = 330;
constexpr int WindowHeightPx = 120;

QFrame* lineNamed(const QString& name, QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setObjectName(name);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}
} // namespace

frmProcessProgress& frmProcessProgress::instance()
{
    static frmProcessProgress* window = new frmProcessProgress; // lives until the process ends
    return *window;
}

frmProcessProgress::frmProcessProgress()
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
{
    // A title bar without a close box: the window goes away when the job
    // that showed it ends, not at the operator's click.
    setObjectName(QStringLiteral("frmProcessProgress"));
    setFixedSize(WindowWidthPx, WindowHeightPx);

    auto* layout = new QVBoxLayout(this);
    m_Line1 = lineNamed(QStringLiteral("Line1"), this);
    layout->addWidget(m_Line1);

    m_lbTexteStatus = new QLabel(QStringLiteral("Process in Progress"), this);
    m_lbTexteStatus->setObjectName(QStringLiteral("lbTexteStatus"));
    m_lbTexteStatus->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_lbTexteStatus);

    m_lbPoint = new QLabel(QStringLiteral("..."), this);
    m_lbPoint->setObjectName(QStringLiteral("lbPoint"));
    m_lbPoint->setAlignment(Qt::AlignCenter);
    QFont dots = m_lbPoint->font();
    dots.setPointSizeF(dots.pointSizeF() * 2);
    dots.setBold(true);
    m_lbPoint->setFont(dots);
    layout->addWidget(m_lbPoint);

    m_Line2 = lineNamed(QStringLiteral("Line2"), this);
    layout->addWidget(m_Line2);

    // A captionless, sizeless button that holds the keyboard focus, so that a
    // key pressed during a job lands on a control whose click does nothing.
    m_Command1 = new QPushButton(this);
    m_Command1->setObjectName(QStringLiteral("Command1"));
    m_Command1->setFlat(true);
    m_Command1->setGeometry(0, 0, 0, 0);
    setFocusProxy(m_Command1);

    m_tmrProgress = new QTimer(this);
    m_tmrProgress->setObjectName(QStringLiteral("tmrProgress"));
    m_tmrProgress->setInterval(TimerIntervalMs);
    connect(m_tmrProgress, &QTimer::timeout, this, &frmProcessProgress::tmrProgress_Timer);
    m_tmrProgress->start();
}

void frmProcessProgress::tmrProgress_Timer()
{
    // The tick sets the timer enabled again; it always is, and restarting it
    // would only shift the next tick.
    if (!m_tmrProgress->isActive())
        m_tmrProgress->start();
    m_lbPoint->setText(tmrProgressStep(m_lbPoint->text()));
}

void frmProcessProgress::SetPositionForm()
{
    // Twips, not pixels: the centring is defined on 16-bit twips, and so is
    // its overflow for a main window far to the right or below. Frame
    // geometry, because a window's left, top, width and height include its
    // border and title bar, and move() places that frame.
    const QWidget& main = mainWindow();
    const QScreen* screen = main.screen();
    const double dpiX = screen->logicalDotsPerInchX();
    const double dpiY = screen->logicalDotsPerInchY();
    const auto toTwips = [dpiX, dpiY](const QRect& r) {
        return TwipsRect{pixelsToTwips(r.x(), dpiX), pixelsToTwips(r.y(), dpiY),
                         pixelsToTwips(r.width(), dpiX), pixelsToTwips(r.height(), dpiY)};
    };
    const FormPosition p =
        centredFormPosition(toTwips(main.frameGeometry()), toTwips(frameGeometry()));
    move(twipsToPixels(p.left, dpiX), twipsToPixels(p.top, dpiY));
}

void frmProcessProgress::FillTextsProcessProgress()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsProcessProgress"));
}

} // namespace quenby
