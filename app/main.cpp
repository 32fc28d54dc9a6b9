#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
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
    try {
        quenby::startMainWindow();
    } catch (const quenby::RuntimeError& error) {
        quenby::reportFatalError(error);
    }
    return app.exec();
}
