// A scripted start of other programs, for tests: the environment is the list
// it is given, each process creation and shell start is recorded and
// answers as the test says, and the message table is a map. It is in force
// from its construction to its end.
#pragma once

#include "shell/model/ProcessStart.h"

#include <QStringList>

#include <map>
#include <vector>

namespace quenby::testing {

struct MessageRequest
{
    Int32 code;
    int bufferSize;
};

class ScriptedProcessStart final : public ProcessStart
{
public:
    QString environmentEntry(int index) override
    {
        ++environmentReads;
        return index >= 1 && index <= environment.size() ? environment.at(index - 1) : QString();
    }

    Int32 createProcess(const ProcessCreation& request) override
    {
        created.push_back(request);
        if (createFailsWith != 0)
            m_lastError = createFailsWith;
        return createFailsWith != 0 ? 0 : 1;
    }

    Int32 lastError() override { return m_lastError; }

    QString formatMessage(Int32 code, int bufferSize) override
    {
        messageRequests.push_back({code, bufferSize});
        const auto it = messageTable.find(code);
        if (it == messageTable.end()) {
            m_lastError = formatFailsWith;
            return {};
        }
        return it->second;
    }

    bool shellStart(const QString& commandLine) override
    {
        shellCommands.append(commandLine);
        if (!shellStarts)
            m_lastError = createFailsWith;
        return shellStarts;
    }

    QStringList environment;     // the entries by index, from 1
    int environmentReads = 0;    // how many entries were asked for
    Int32 createFailsWith = 0;   // 0: every creation starts
    Int32 formatFailsWith = 317; // the last error of a code the table lacks
    std::map<Int32, QString> messageTable;
    bool shellStarts = true;
    std::vector<ProcessCreation> created;
    std::vector<MessageRequest> messageRequests;
    QStringList shellCommands;

private:
    Int32 m_lastError = 0;
    Installed<ProcessStart> m_installed{*this};
};

} // namespace quenby::testing
