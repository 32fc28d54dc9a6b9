#include "app/frmMain.h"

#include "app/Wiring.h"
#include "app/model/CompanyLogo.h"
#include "app/model/StartUp.h"
#include "kvx/model/KvxExcelExport.h"
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxTestRoad.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "logo/ui/frmResizeLogo.h"
#include "report/ui/frmCompensedResistanceSetting.h"
#include "shell/model/BatchConversion.h"
#include "shell/model/DataFolders.h"
#include "shell/model/FileSystem.h"
#include "shell/model/MainMenu.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/Services.h"
#include "shell/ui/QtProcessStart.h"
#include "shell/ui/frmAbout.h"
#include "shell/ui/frmGeneralSetting.h"
#include "shell/ui/frmProcessProgress.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/ui/frmUploadDevice.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/ui/frmPrintZBLBasicReport.h"
#include "zbl/ui/frmZBLBasicReport.h"
#include "zbl/ui/frmZBLVGraph.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QEventLoop>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

namespace quenby {

namespace {
// The knee boxes have fixed texts and no language keys.
constexpr std::array<const char*, 3> KneeTypeTexts = {"IEEE30", "IEEE45", "ANSI/IEC10/50"};
// Out of reach in this version (its menu entry is hidden), but kept: brings
// up the ZBL report as it stands.
void mnZBLBR_Click()
{
    frmZBLBasicReport::instance().bringUp(&frmMain::instance());
}
// The advanced report's entry is disabled; its command does nothing.
void mnZBLAR_Click() {}

} // namespace

// Puts every window in force behind the model that asks for it.
void installWindows(frmMain& main)
{
    main.installView<GeneralSettingView>(frmGeneralSetting::instance());
    main.installView<CompensationDialogView>(frmCompensedResistanceSetting::instance());
    main.installView<LogoSelectionView>(frmResizeLogo::instance());
    // Before the report windows, whose load may ask for the logo.
    installLogoViews(main);
    installKvxViews(main);
    installZblViews(main);
    installUploadViews(main);
    // The converters and the disk check start through Qt.
    static QtProcessStart processStart;
    main.installView<ProcessStart>(processStart);
}

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
        auto* box =
            new QCheckBox(QString::fromLatin1(KneeTypeTexts[static_cast<std::size_t>(i)]), central);
        box->setObjectName(QStringLiteral("chkKneeType(%1)").arg(i));
        connect(box, &QCheckBox::clicked, this, [this, i](bool checked) {
            mainWindowState().chkKneeTypeChecked[static_cast<std::size_t>(i)] = checked;
            chkKneeType_Click(i);
            mirrorState();
        });
        layout->addWidget(box, 0, Qt::AlignHCenter);
        m_chkKneeType[static_cast<std::size_t>(i)] = box;
    }
    layout->addStretch(1);
    setCentralWidget(central);

    // The menu tree, built from its table: a stack of the open sub-menus by depth.
    std::vector<QMenu*> open;
    for (const MainMenuEntry& e : mainMenuEntries()) {
        const QString name = QString::fromLatin1(e.name);
        const QString caption = QString::fromUtf8(e.defaultCaption);
        open.resize(static_cast<std::size_t>(e.depth));
        QAction* entry = nullptr;
        if (e.subMenu) {
            auto* menu =
                new QMenu(caption, e.depth == 0 ? static_cast<QWidget*>(this) : open.back());
            menu->setObjectName(name);
            if (e.depth == 0)
                menuBar()->addMenu(menu);
            else
                open.back()->addMenu(menu);
            entry = menu->menuAction();
            open.push_back(menu);
        } else {
            entry = new QAction(caption, e.depth == 0 ? static_cast<QObject*>(this) : open.back());
            entry->setObjectName(name);
            if (e.depth == 0)
                menuBar()->addAction(entry);
            else
                open.back()->addAction(entry);
        }
        m_menuEntries[name] = entry;
    }
    m_mnLangue = findChild<QMenu*>(QStringLiteral("mnLangue"));

    auto* bar = new QStatusBar(this);
    bar->setObjectName(QStringLiteral("stBar1"));
    m_panel1 = new QLabel(bar);
    m_panel1->setObjectName(QStringLiteral("stBar1.Panels(1)"));
    bar->addWidget(m_panel1, 1);
    setStatusBar(bar);

    auto connectCommand = [this](const char* name, void (*command)()) {
        connect(menuEntry(QString::fromLatin1(name)), &QAction::triggered, this, [name, command] {
            CommandScope scope(QString::fromLatin1(name) + QStringLiteral("_Click"));
            command();
        });
    };
    connectCommand("mnKVXFiles", &mnKVXFiles_Click);
    connectCommand("mnKVXCRIEEE30", &mnKVXCRIEEE30_Click);
    connectCommand("mnKVXIEEE45", &mnKVXIEEE45_Click);
    connectCommand("mnKVXANSIIEC1050", &mnKVXANSIIEC1050_Click);
    connectCommand("mnZBLFiles", &mnZBLFiles_Click);
    connectCommand("mnZBLBR", &mnZBLBR_Click);
    connectCommand("mnZBLAR", &mnZBLAR_Click);
    connectCommand("mnDataFilesPath", &mnDataFilesPath_Click);
    connectCommand("mnUploadPcDevice", &mnUploadPcDevice_Click);
    connectCommand("mnuAnglais", &mnuAnglais_Click);
    connectCommand("mnuFrancais", &mnuFrancais_Click);
    connectCommand("mnuPolish", &mnuPolish_Click);
    connectCommand("mnuAbout", &mnuAbout_Click);
    connectCommand("mnCLogo", &mnCLogo_Click);
    connectCommand("mnExcel", [] { ExportExcel(True16); });
    connectCommand("mnBatchConvertKvxPDF", &mnBatchConvertKvxPDF_Click);
    connectCommand("mnBatchConvertZblCsv", &mnBatchConvertZblCsv_Click);
    // Out of reach in this version (its menu is hidden), but kept.
    connectCommand("mnRepair", [] {
        mnRepair_Click(&frmMain::instance(),
                       [] { return GetLanguageText(DiskRepairKeys::Warning); });
    });

    installView<LanguageWindows>(*this);
    installView<MainWindowView>(*this);
}

void frmMain::showProgress(bool show)
{
    // The busy window, centred on the main one.
    frmProcessProgress& progress = frmProcessProgress::instance();
    if (show) {
        progress.SetPositionForm();
        progress.show();
    } else {
        progress.hide();
    }
}

void frmMain::waitForEvents()
{
    // The knee wait sleeps until the next event instead of spinning a core.
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void frmMain::hideReports()
{
    frmKVXCondensedReport::instance().hide();
    frmZBLBasicReport::instance().hide();
}

void frmMain::fillTexts(const QString& routine)
{
    // A fill routine touches its window and so makes it: this is how the
    // windows come to exist at start.
    const auto is = [&routine](const char* name) { return routine == QLatin1String(name); };
    if (is("FillTextsCompensedResistance"))
        frmCompensedResistanceSetting::instance().FillTextsCompensedResistance();
    else if (is("FillTextsKvxCondensedReport"))
        frmKVXCondensedReport::instance().FillTextsKvxCondensedReport();
    else if (is("FillTextsProcessProgress"))
        frmProcessProgress::instance().FillTextsProcessProgress();
    else if (is("FillTextsUploadDevice"))
        frmUploadDevice::instance().FillTextsUploadDevice();
    else if (is("FillTextsZblBasicReport"))
        frmZBLBasicReport::instance().FillTextsZblBasicReport();
    else if (is("FillTextsAbout"))
        frmAbout::instance().FillTextsAbout();
    else if (is("FillTextsZblVGraph"))
        frmZBLVGraph::instance().FillTextsZblVGraph();
    else if (is("FillTextsMain"))
        FillTextsMain();
    else if (is("FillTextsGeneralSetting"))
        frmGeneralSetting::instance().FillTextsGeneralSetting();
}

void frmMain::setLanguageMenuEnabled(bool enabled)
{
    mainWindowState().mnLangueEnabled = enabled;
    m_mnLangue->menuAction()->setEnabled(enabled);
}

void frmMain::loadUploadDevice()
{
    // Loading the upload window runs its start: the timer begins the port
    // search at once, as the window's load has always done, shown or not.
    frmUploadDevice::instance().Form_Load();
}

QAction* frmMain::menuEntry(const QString& name) const
{
    const auto it = m_menuEntries.find(name);
    return it == m_menuEntries.end() ? nullptr : it->second;
}

void frmMain::FillTextsMain()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsMain"));
}

void frmMain::applyWindowText(const WindowTextEntry& entry, const QString& text)
{
    // The welcome text runs straight into the version.
    if (entry.target == TextTarget::WelcomeStatus) {
        mainWindowState().statusText = text + QLatin1String(VersionText);
        m_panel1->setText(mainWindowState().statusText);
    }
}

void frmMain::TreatVisibleMenu()
{
    const MainWindowState& state = mainWindowState();
    const auto states = quenby::TreatVisibleMenu(FileExistsApi(state.KvxConverterPath) != False16,
                                                 FileExistsApi(state.ZblConverterPath) != False16);
    for (const auto& [name, st] : states) {
        if (QAction* entry = menuEntry(name)) {
            entry->setEnabled(st.enabled);
            entry->setVisible(st.visible);
        }
    }
}

void frmMain::Form_Load()
{
    installWindows(*this);
    StartUpSteps steps;
    steps.CheckIfDirectoryExist = [] { CheckIfDirectoryExist(); };
    steps.TreatVisibleMenu = [this] { TreatVisibleMenu(); };
    frmMainLoad(steps);
    mirrorState();
}

void frmMain::mirrorState()
{
    const MainWindowState& state = mainWindowState();
    for (std::size_t i = 0; i < m_chkKneeType.size(); ++i) {
        const QSignalBlocker quiet(m_chkKneeType[i]);
        m_chkKneeType[i]->setChecked(state.chkKneeTypeChecked[i]);
        m_chkKneeType[i]->setVisible(state.chkKneeTypeVisible[i]);
    }
    m_mnLangue->menuAction()->setEnabled(state.mnLangueEnabled);
    m_panel1->setText(state.statusText);
}

void frmMain::closeEvent(QCloseEvent* event)
{
    // Closing the main window ends the whole program at once, whatever else is open.
    event->accept();
    endProgram(0);
}

namespace {

// Once the main window has been painted, the pages of the two reports, which
// start-up leaves to be made later, are made while the program is idle, one
// at each turn of the event loop: the first report then opens as fast as
// ever. A page a command has made already is not made again.
class MakePagesWhenIdle final : public QObject
{
public:
    explicit MakePagesWhenIdle(QWidget& window) : QObject(&window)
    {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            // The turn after the paint puts the picture on screen; the pages
            // are made in the turns after that.
            QTimer::singleShot(0, this, [] {
                QTimer::singleShot(0, [] {
                    frmKVXCondensedReport::instance().makeControls();
                    QTimer::singleShot(0, [] { frmZBLBasicReport::instance().makeControls(); });
                });
            });
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

void makeReportPagesWhenIdle(QWidget& mainWindow)
{
    new MakePagesWhenIdle(mainWindow);
}

void startMainWindow()
{
    frmMain& window = frmMain::instance();
    window.Form_Load();
    makeReportPagesWhenIdle(window);
    window.show();
}

} // namespace quenby
