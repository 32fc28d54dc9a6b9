#include "app/Wiring.h"

#include "app/frmMain.h"

namespace quenby {

void installKvxViews(frmMain& /*main*/)
{
}

} // namespace quenby
