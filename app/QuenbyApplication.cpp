#include "app/QuenbyApplication.h"

#include "shell/model/FatalError.h"
#include "shell/model/Version.h"

#include <new>

namespace quenby {

QuenbyApplication::QuenbyApplication(int& argc, char** argv) : QApplication(argc, argv)
{
    setApplicationName(QStringLiteral("Quenby"));
    setApplicationVersion(QString::fromLatin1(QuenbyVersion));
}

bool QuenbyApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const RuntimeError& error) {
        handleFatal(error);
    } catch (const std::bad_alloc&) {
        handleFatal(RuntimeError(err::OutOfMemory));
    } catch (const std::exception& other) {
        RuntimeError error(err::InternalError);
        error.setDetail(QString::fromLocal8Bit(other.what()));
        handleFatal(error);
    }
    return true;
}

void QuenbyApplication::setFatalHandler(FatalHandler handler)
{
    m_fatal = std::move(handler);
}

void QuenbyApplication::handleFatal(const RuntimeError& error)
{
    if (m_fatal)
        m_fatal(error);
    else
        reportFatalError(error);
}

} // namespace quenby
