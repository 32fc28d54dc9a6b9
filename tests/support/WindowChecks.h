// Checks of a window's controls for Qt Test window tests: every control the
// window must have exists exactly once under its name, and is of its kind.
#pragma once

#include <QObject>
#include <QStringList>
#include <QWidget>
#include <QtTest>

namespace quenby::testing {

// Every name exists exactly once in the window, and is of the kind given.
template <typename Kind> void requireControls(const QWidget& window, const QStringList& names)
{
    for (const QString& name : names) {
        const QList<QObject*> found = window.findChildren<QObject*>(name);
        QVERIFY2(found.size() == 1, qPrintable(window.objectName() + ": " + name + " found " +
                                               QString::number(found.size()) + " times"));
        QVERIFY2(qobject_cast<Kind*>(found.first()),
                 qPrintable(window.objectName() + ": " + name + " is of the wrong kind"));
    }
}

// Elements 0 to count - 1 of each control array, and none behind them.
template <typename Kind>
void requireArrays(const QWidget& window, const QStringList& arrays, int count)
{
    for (const QString& array : arrays) {
        QStringList names;
        for (int i = 0; i < count; ++i)
            names << QStringLiteral("%1(%2)").arg(array).arg(i);
        requireControls<Kind>(window, names);
        QVERIFY2(!window.findChild<QObject*>(QStringLiteral("%1(%2)").arg(array).arg(count)),
                 qPrintable(array + " has an element behind its last"));
    }
}

} // namespace quenby::testing
