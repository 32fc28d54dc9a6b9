// For the start-up benchmark: with QUENBY_STARTUP_PROBE set in the
// environment, a program prints the wall clock, in nanoseconds since the
// epoch, once its main window has been painted for the first time, and ends
// there without tearing anything down. Without the variable it does nothing.
#pragma once

#include <QEvent>
#include <QObject>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace quenby {

class StartupProbe final : public QObject
{
public:
    static void watch(QWidget& window)
    {
        if (qEnvironmentVariableIsSet("QUENBY_STARTUP_PROBE"))
            window.installEventFilter(new StartupProbe(&window));
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_painted) {
            m_painted = true;
            // Once the paint has been handled and the picture put on screen.
            QTimer::singleShot(0, [] {
                const auto now = std::chrono::system_clock::now().time_since_epoch();
                std::printf("shown %lld\n",
                            static_cast<long long>(
                                std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()));
                std::fflush(stdout);
                std::_Exit(0);
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    explicit StartupProbe(QObject* parent) : QObject(parent) {}
    bool m_painted = false;
};

} // namespace quenby
