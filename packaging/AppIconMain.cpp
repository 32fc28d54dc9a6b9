// quenby-app-icon <picture.png> [size]: writes the program's window icon as a
// square picture (256 pixels unless told), for the desktop entry of the
// installed program.
#include "shell/ui/AppIcon.h"

#include <QGuiApplication>
#include <QStringList>

#include <cstdio>

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() < 2 || args.size() > 3) {
        std::fputs("usage: quenby-app-icon <picture.png> [size]\n", stderr);
        return 2;
    }
    bool ok = true;
    const int size = args.size() == 3 ? args.at(2).toInt(&ok) : 256;
    if (!ok || size < 16) {
        std::fputs("quenby-app-icon: the size is a number of pixels, 16 or more\n", stderr);
        return 2;
    }
    if (!quenby::applicationIcon().pixmap(size, size).save(args.at(1), "PNG")) {
        std::fputs("quenby-app-icon: the picture could not be written\n", stderr);
        return 1;
    }
    return 0;
}
