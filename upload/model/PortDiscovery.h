// Finding the instrument's port without asking the operator: list the working
// serial ports, and on each attempt open the next one and send it the identify
// command. The list is rebuilt on every attempt, so a key plugged in later is
// seen; the search goes round the list without end until a device answers.
#pragma once

#include "shell/model/Checked.h"

#include <QString>

#include <vector>

namespace quenby {

// One device of the system's device list, as a plug-and-play entity. Windows
// captions carry the COM number ("USB Serial Port (COM7)"); elsewhere the
// caption is the port's name and `location` its device path.
struct PnpEntity
{
    QString caption;
    bool captionNull = false;
    Int32 configManagerErrorCode = 0;
    QString location;
};

// How the list names ports: by the COM number in the caption (Windows), or by
// the device names in the order given (elsewhere).
enum class PortNaming { ComCaption, DeviceName };

class PortListService
{
public:
    virtual ~PortListService() = default;
    // The devices in the system's order. A failure of the listing raises
    // RuntimeError.
    virtual std::vector<PnpEntity> entities() = 0;
    virtual PortNaming naming() const = 0;
};

// The list in use, in the upload session; none means no ports at all.
void setPortListService(PortListService* service);
PortListService* portListService();

// Refills PortList and cbCom; answers the number of ports found.
Int16 ScanComPorts();
// One attempt of the search.
void TryNextPort();

// The device to open for a port number: "COM<n>" where ports have COM
// numbers, else the path recorded by the last scan ("" if none).
QString portLocationForNumber(Int16 number);

} // namespace quenby
