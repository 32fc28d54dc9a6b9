// The state of the device upload for one run, in one place: the loop's
// variables, the upload window seen as data, the serial link with its receive
// store, the protocol's working stores, the line of the test file maker, and
// the services the link and the port search use. The application owns one
// (app/Sessions.h); a test makes a fresh one. It lives as long as the program
// does, so everything in it survives from one opening of the upload window to
// the next until something sets it.
#pragma once

#include "shell/model/Session.h"
#include "upload/model/CCommBuffCirculaire.h"
#include "upload/model/CSerialCom.h"
#include "upload/model/DeviceRecords.h"
#include "upload/model/PortDiscovery.h"
#include "upload/model/SerialPortDevice.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/mdKvxZblCom.h"

#include <QString>

#include <functional>
#include <memory>

namespace quenby {

struct UploadSession
{
    UploadGlobals globals; // uploadGlobals(): the variables of the loop
    UploadDeviceForm form; // uploadDeviceForm(): frmUploadDevice as data

    // Makes the link's port objects; empty: a port that never opens.
    SerialPortFactory serialPortFactory;
    // The list of the system's serial ports the search asks; none: no ports.
    PortListService* portList = nullptr;
    // The list the program put in (installSerialServices), kept here.
    std::unique_ptr<PortListService> ownedPortList;
    // Where the link's trace lines go; empty: the platform's debug output.
    std::function<void(const QString&)> debugTraceSink;

    // The two serial objects, made on first use by serialCom() and commBuffer().
    std::unique_ptr<CSerialCom> link;
    std::unique_ptr<CCommBuffCirculaire> receiveStore;

    // CheckFrame's copy of the last frame's payload; nothing reads it.
    PayloadStore payloadStore{};
    // The KVX slot table as the last data frame left it: a payload shorter
    // than its tests leaves the bytes of the frame before in the rest.
    KvxSlotTable kvxSlots{};
    // The header records of the file in hand, decoded when it is saved.
    KvxHeaderRecord kvxHeader;
    ZblHeaderRecord zblHeader;

    // ModText's text line under construction.
    QString textLine;

    // Every field back to its first value; the serial objects go, closing
    // their port.
    void reset() { *this = UploadSession{}; }
};

inline UploadSession& uploadSession()
{
    return Slot<UploadSession>::current();
}

} // namespace quenby
