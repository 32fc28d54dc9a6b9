#include "shell/ui/frmMain.h"

#include "localisation/model/LanguageLookup.h"
#include "shell/model/MainWindowModel.h"
#include "shell/model/Services.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QVBoxLayout>

namespace quenby {

namespace {
// The knee boxes have fixed texts and no language keys.
constexpr std::array<const char*, 3> KneeTypeTexts = {"IEEE30", "IEEE45", "ANSI/IEC10/50"};
constexpr auto VersionText = "3.13.1";
} // namespace

frmMain& frmMain::instance()
{
    static frmMain* window = new frmMain; // lives until the process ends
    return *window;
}

frmMain::frmMain()
{
    setObjectName(QStringLiteral("frmMain"));
    resize(640, 420);

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->addStretch(1);
    for (int i = 0; i < 3; ++i) {
        auto* box = new QCheckBox(QString::fromLatin1(KneeTypeTexts[static_cast<std::size_t>(i)]), central);
        box->setObjectName(QStringLiteral("chkKneeType(%1)").arg(i));
        layout->addWidget(box, 0, Qt::AlignHCenter);
        m_chkKneeType[static_cast<std::size_t>(i)] = box;
    }
    layout->addStretch(1);
    setCentralWidget(central);

    m_mnLangue = new QMenu(QStringLiteral("Language"), this);
    m_mnLangue->setObjectName(QStringLiteral("mnLangue"));

    auto* bar = new QStatusBar(this);
    bar->setObjectName(QStringLiteral("stBar1"));
    m_panel1 = new QLabel(bar);
    m_panel1->setObjectName(QStringLiteral("stBar1.Panels(1)"));
    bar->addWidget(m_panel1, 1);
    setStatusBar(bar);

    LanguageHooks& hooks = languageHooks();
    hooks.fillers[QStringLiteral("FillTextsMain")] = [this] { FillTextsMain(); };
    hooks.setLanguageMenuEnabled = [this](bool enabled) {
        mainWindowState().mnLangueEnabled = enabled;
        m_mnLangue->setEnabled(enabled);
    };
}

void frmMain::FillTextsMain()
{
    setWindowTitle(GetLanguageText(QStringLiteral("frmMain.Caption")));
    m_mnLangue->setTitle(GetLanguageText(QStringLiteral("frmMain.mnLangue.Caption")));
    // The welcome text runs straight into the version.
    m_panel1->setText(GetLanguageText(QStringLiteral("frmMain.stBar1.Panels.Text.Welcome")) +
                      QString::fromLatin1(VersionText));
}

void frmMain::Form_Load()
{
    frmMainLoad(StartUpSteps{});
    mirrorState();
}

void frmMain::mirrorState()
{
    const MainWindowState& state = mainWindowState();
    for (std::size_t i = 0; i < m_chkKneeType.size(); ++i)
        m_chkKneeType[i]->setVisible(state.chkKneeTypeVisible[i]);
    m_mnLangue->setEnabled(state.mnLangueEnabled);
}

void frmMain::closeEvent(QCloseEvent* event)
{
    // Closing the main window ends the whole program at once, whatever else is open.
    event->accept();
    endProgram(0);
}

void startMainWindow()
{
    frmMain& window = frmMain::instance();
    window.Form_Load();
    window.show();
}

} // namespace quenby
