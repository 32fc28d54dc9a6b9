// The simulator's scenario files: a small text format that describes one
// instrument, its serial number and its stored files, so that a trainer can
// write what the instrument holds without touching bytes. The format is laid
// out at the top of ScenarioReader.cpp and in docs/instrument-sim.md.
#pragma once

#include "tools/instrument-sim/InstrumentFrames.h"

#include <QString>

#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace quenby::sim {

// A scenario that cannot be read: the message names the file and the line,
// "kvx.sim:12: ...".
class ScenarioError : public std::runtime_error
{
public:
    ScenarioError(const QString& message, int line)
        : std::runtime_error(message.toStdString()), m_line(line)
    {
    }
    int line() const { return m_line; }

private:
    int m_line;
};

// Reads a scenario from its text. `name` heads the messages. `kind`, when
// given (from the command line), must agree with the file's own kind, and
// stands in for it when the file has none.
Instrument readScenario(const QString& text, const QString& name,
                        std::optional<DeviceKind> kind = std::nullopt);
// Reads a scenario file, UTF-8.
Instrument readScenarioFile(const QString& path, std::optional<DeviceKind> kind = std::nullopt);

// A made-up excitation curve of `count` points (volts, amperes) with rising
// current: steep below the knee, flat above it, and its 45-degree point (where
// the log-log slope is 1) at exactly (kneeVolts, kneeAmperes). Currents are
// spaced evenly on a log scale from an eighth of the knee current to twenty
// times it.
std::vector<std::pair<float, float>> madeUpExcitationCurve(int count, double kneeVolts,
                                                           double kneeAmperes);

} // namespace quenby::sim
