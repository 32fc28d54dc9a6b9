// The system's list of serial ports through Qt Serial Port, with the virtual
// ports named by QUENBY_EXTRA_PORTS after the enumerated ones.
#pragma once

#include "upload/model/PortDiscovery.h"

namespace quenby {

class QtPortList final : public PortListService
{
public:
    std::vector<PnpEntity> entities() override;
    PortNaming naming() const override;
};

// The device paths of QUENBY_EXTRA_PORTS, split at the platform's path-list
// separator (";" on Windows, ":" elsewhere), empty entries dropped.
QStringList extraPortPaths();

} // namespace quenby
