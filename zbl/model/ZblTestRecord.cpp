#include "zbl/model/ZblTestRecord.h"
#include "zbl/model/ZblSession.h"

namespace quenby {

ZblTestRecord& zblTestRecord()
{
    return zblSession().record;
}

} // namespace quenby
