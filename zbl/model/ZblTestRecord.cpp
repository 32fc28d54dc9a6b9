#include "zbl/model/ZblTestRecord.h"

namespace quenby {

ZblTestRecord& zblTestRecord()
{
    static ZblTestRecord record;
    return record;
}

} // namespace quenby
