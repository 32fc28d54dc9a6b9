#include "shell/model/ProcessStart.h"

namespace quenby {

ProcessStart& processStart()
{
    return Slot<ProcessStart>::current();
}

} // namespace quenby
