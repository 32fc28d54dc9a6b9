// Starting other programs, seen from the model: the environment of this
// process entry by entry, the creation of a process with an explicit
// environment block and working folder, the last error code, the system's
// message texts and the shell start of a command line. The program installs
// the Qt implementation behind processStart(); tests install a scripted one.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/Session.h"

#include <QString>

namespace quenby {

// What a process is created with.
struct ProcessCreation
{
    QString applicationName; // the program file
    QString commandLine;     // the whole command line, program included
    // "NAME=value" entries, each followed by a NUL, then one more NUL.
    QString environmentBlock;
    QString workingFolder;
};

class ProcessStart
{
public:
    virtual ~ProcessStart() = default;
    // The environment entry "NAME=value" of `index`, counted from 1, in the
    // order the process holds them; "" past the last one.
    virtual QString environmentEntry(int index) = 0;
    // Creates the process and neither waits for it nor keeps it. Non-zero
    // when it started; 0 when it failed, lastError() telling why.
    virtual Int32 createProcess(const ProcessCreation& request) = 0;
    // The error code of the last operation that failed.
    virtual Int32 lastError() = 0;
    // The system's text for `code` as it comes, line end included, when it
    // fits in `bufferSize` characters; "" when the system has none or it does
    // not fit, lastError() telling why.
    virtual QString formatMessage(Int32 code, int bufferSize) = 0;
    // Starts `commandLine` through the shell, in a minimised window that
    // takes the focus, without waiting. False when it could not be started.
    virtual bool shellStart(const QString& commandLine) = 0;
};

// The process start in force; asking when none is installed is a fault.
ProcessStart& processStart();

} // namespace quenby
