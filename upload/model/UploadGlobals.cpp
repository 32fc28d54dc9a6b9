#include "upload/model/UploadGlobals.h"

#include "upload/model/CCommBuffCirculaire.h"
#include "upload/model/CSerialCom.h"
#include "upload/model/mdKvxZblCom.h"

#include <memory>

namespace quenby {

namespace {

// Program-long: made on first use and only dropped by a test's reset.
std::unique_ptr<CSerialCom>& serialComHolder()
{
    static std::unique_ptr<CSerialCom> holder;
    return holder;
}

std::unique_ptr<CCommBuffCirculaire>& commBufferHolder()
{
    static std::unique_ptr<CCommBuffCirculaire> holder;
    return holder;
}

} // namespace

UploadGlobals& uploadGlobals()
{
    static UploadGlobals globals;
    return globals;
}

CSerialCom& serialCom()
{
    auto& holder = serialComHolder();
    if (!holder)
        holder = std::make_unique<CSerialCom>();
    return *holder;
}

CCommBuffCirculaire& commBuffer()
{
    auto& holder = commBufferHolder();
    if (!holder)
        holder = std::make_unique<CCommBuffCirculaire>();
    return *holder;
}

void resetUploadGlobals()
{
    uploadGlobals() = UploadGlobals{};
    // The old link closes its port as it goes; the next use makes new objects
    // from the factory in force then.
    serialComHolder().reset();
    commBufferHolder().reset();
    // The protocol's working stores go back to zeros as well.
    kvxSlotTable() = KvxSlotTable{};
    kvxDeviceRecords() = std::array<KvxDeviceRecord, KvxDeviceSlotCount>{};
    payloadStore() = std::array<unsigned char, PayloadStoreSize>{};
}

} // namespace quenby
