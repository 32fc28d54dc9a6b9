// The application object. Every event of the program passes through notify(),
// which makes it the top-level handler of the run-time failure: a failure
// raised anywhere in a command, a timer tick or a nested dialog loop ends here,
// is shown, and ends the program.
#pragma once

#include "shell/model/RuntimeError.h"

#include <QApplication>

#include <functional>

namespace quenby {

class QuenbyApplication final : public QApplication
{
public:
    QuenbyApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;

    // What to do with a failure; reportFatalError unless a test says otherwise.
    using FatalHandler = std::function<void(const RuntimeError&)>;
    void setFatalHandler(FatalHandler handler);
    void handleFatal(const RuntimeError& error);

private:
    FatalHandler m_fatal;
};

} // namespace quenby
