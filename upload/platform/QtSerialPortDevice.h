// The system's serial ports through Qt Serial Port: the port object of the
// link, with bytes handed to the receive event on the window thread.
#pragma once

#include "upload/model/SerialPortDevice.h"

namespace quenby {

// Puts the Qt serial port and the system's port list in use in the upload
// session in force.
void installSerialServices();

} // namespace quenby
