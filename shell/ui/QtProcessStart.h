// The start of other programs through Qt: the environment of this process in
// its own order, detached processes with exactly the environment block and
// working folder they are given, the system's error texts, and the shell
// start of a command line.
#pragma once

#include "shell/model/ProcessStart.h"

namespace quenby {

class QtProcessStart final : public ProcessStart
{
public:
    QString environmentEntry(int index) override;
    Int32 createProcess(const ProcessCreation& request) override;
    Int32 lastError() override { return m_lastError; }
    QString formatMessage(Int32 code, int bufferSize) override;
    bool shellStart(const QString& commandLine) override;

private:
    Int32 m_lastError = 0;
};

} // namespace quenby
