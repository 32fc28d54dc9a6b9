// What the tests of every subsystem share: the number of the run-time failure
// a piece of code ends in, and readable QString values in test messages.
#pragma once

#include "shell/model/RuntimeError.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <ostream>

QT_BEGIN_NAMESPACE
// GoogleTest prints values of these types through PrintTo found by lookup in
// their own namespace.
inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* os)
{
    *os << '"' << bytes.toStdString() << '"';
}
QT_END_NAMESPACE

namespace quenby::testing {

// The error number of the run-time failure that `f` raises, or 0 when it ends
// normally.
inline int failureOf(const std::function<void()>& f)
{
    try {
        f();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

} // namespace quenby::testing
