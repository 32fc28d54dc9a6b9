#include "upload/model/UploadGlobals.h"

#include "upload/model/UploadSession.h"

namespace quenby {

UploadGlobals& uploadGlobals()
{
    return uploadSession().globals;
}

CSerialCom& serialCom()
{
    std::unique_ptr<CSerialCom>& link = uploadSession().link;
    if (!link)
        link = std::make_unique<CSerialCom>();
    return *link;
}

CCommBuffCirculaire& commBuffer()
{
    std::unique_ptr<CCommBuffCirculaire>& store = uploadSession().receiveStore;
    if (!store)
        store = std::make_unique<CCommBuffCirculaire>();
    return *store;
}

} // namespace quenby
