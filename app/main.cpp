#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/StartupProbe.h"
#include "app/frmMain.h"
#include "shell/model/FatalError.h"
#include "shell/ui/QtServices.h"
#include "upload/platform/QtSerialPortDevice.h"

int main(int argc, char** argv)
{
    quenby::QuenbyApplication app(argc, argv);
    quenby::Sessions sessions;
    quenby::installQtServices();
    quenby::installSerialServices();
    quenby::StartupProbe::watch(quenby::frmMain::instance());
    try {
        quenby::StartupProbe::watch(quenby::frmMain::instance());
        quenby::startMainWindow();
    } catch (const quenby::RuntimeError& error) {
        quenby::reportFatalError(error);
    }
    return app.exec();
}
