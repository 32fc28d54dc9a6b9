#include "app/Wiring.h"

#include "app/frmMain.h"

namespace quenby {

void installZblViews(frmMain& /*main*/)
{
}

} // namespace quenby
