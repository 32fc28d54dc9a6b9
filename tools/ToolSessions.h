// The state of a run for a command-line tool or a benchmark: the same session
// objects the application owns, and quiet stand-ins for the windows a tool has
// none of (the main window, the two reports, the compensation dialog). A tool
// that renders a real window installs it over the stand-in.
#pragma once

#include "kvx/model/KvxCompensation.h"
#include "kvx/model/KvxReportWindow.h"
#include "kvx/model/KvxSession.h"
#include "report/model/TemperatureCompensation.h"
#include "report/ui/ReportLogo.h"
#include "shell/model/MainWindowView.h"
#include "shell/model/Services.h"
#include "shell/model/Session.h"
#include "shell/model/ShellSession.h"
#include "shell/model/YieldHook.h"
#include "zbl/model/ZblCompensation.h"
#include "zbl/model/ZblReportWindow.h"
#include "zbl/model/ZblSession.h"

namespace quenby::tools {

class QuietMainWindow final : public MainWindowView
{
public:
    void mirrorMainWindow() override {}
    void showProgress(bool) override {}
    void waitForEvents() override { letSystemBreathe(); }
    void hideReports() override {}
};

class QuietKvxReport final : public KvxReportWindow
{
public:
    void fillReportTexts() override {}
    void mirrorReport() override {}
    void showReport() override {}
    void hideReport() override {}
    void bringUpReport() override {}
    void loadLogo(const QString&, double, double) override {}
};

class QuietZblReport final : public ZblReportWindow
{
public:
    void fillReportTexts() override {}
    void mirrorReport() override {}
    void bringUpReport() override {}
    void hideReport() override {}
    void loadLogo(const QString&, double, double) override {}
};

// No logo on a tool's pages unless the tool installs the logo's processing
// over this one.
class QuietLogo final : public LogoProcessing
{
public:
    void loadAndFit(double, double) override {}
};

class QuietCompensationDialog final : public CompensationDialogView
{
public:
    void showDialogModal() override {}
    void bringDialogToFront() override {}
    void hideDialog() override {}
    void fillDialogTexts() override {}
    void dialogChanged() override {}
};

struct ToolSessions
{
    OwnedSession<Services> services;
    OwnedSession<ShellSession> shell;
    OwnedSession<KvxSession> kvx;
    OwnedSession<ZblSession> zbl;
    OwnedSession<CompensationDialogModel> compensation;

    KvxReportCompensation kvxCompensation;
    ZblReportCompensation zblCompensation;
    QuietMainWindow mainWindow;
    QuietKvxReport kvxReport;
    QuietZblReport zblReport;
    QuietCompensationDialog compensationDialog;
    QuietLogo logo;

private:
    Installed<KvxCompensationReport> m_kvxCompensation{kvxCompensation};
    Installed<ZblCompensationReport> m_zblCompensation{zblCompensation};
    Installed<MainWindowView> m_mainWindow{mainWindow};
    Installed<KvxReportWindow> m_kvxReport{kvxReport};
    Installed<ZblReportWindow> m_zblReport{zblReport};
    Installed<CompensationDialogView> m_compensationDialog{compensationDialog};
    Installed<LogoProcessing> m_logo{logo};
};

} // namespace quenby::tools
