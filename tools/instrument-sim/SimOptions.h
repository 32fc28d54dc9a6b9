// The simulator's command line: the instrument to play, the scenario file
// and the faults to inject. Faults count from 1: "--bad-data-check 2" spoils
// the second data frame sent.
#pragma once

#include "tools/instrument-sim/InstrumentFrames.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace quenby::sim {

struct FaultOptions
{
    int badHeaderCheck = 0; // the N-th header frame goes out with a wrong check; 0 none
    int badDataCheck = 0;
    int cutHeader = 0;       // the N-th header frame stops short; 0 none
    int cutHeaderBytes = -1; // bytes of it that go out; -1 half of it
    int cutData = 0;
    int cutDataBytes = -1;
    bool silent = false;             // never answers
    int silentAfter = 0;             // answers the first N commands only; 0 always answers
    bool noise = false;              // junk on the line before each identify reply
    std::optional<int> identifyCode; // reply code of identify instead of the kind's own
    qint64 unplugAfter = 0;          // closes the line after this many bytes sent; 0 never
};

struct SimOptions
{
    std::optional<DeviceKind> kind;
    QString scenarioPath;
    FaultOptions faults;
    bool log = false;
    bool exitOnStdinEof = false;
    bool help = false;
};

// Parses the arguments after the program name. On a mistake returns nothing
// and puts the reason in `error`.
std::optional<SimOptions> parseSimOptions(const QStringList& args, QString& error);

// The text of --help.
QString simUsage();

} // namespace quenby::sim
