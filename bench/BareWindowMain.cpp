// The yardstick of the start-up benchmark: a bare Qt Widgets main window of
// the size of Quenby's, with a menu bar and a status bar, and nothing else.
#include "app/StartupProbe.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QMainWindow window;
    for (const char* menu : {"Files", "View", "Template", "PC control", "?"})
        window.menuBar()->addMenu(QString::fromLatin1(menu));
    window.statusBar()->showMessage(QStringLiteral("Welcome"));
    window.resize(640, 420);
    quenby::StartupProbe::watch(window);
    window.show();
    return app.exec();
}
