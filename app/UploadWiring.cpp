#include "app/Wiring.h"

#include "app/frmMain.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/ui/frmUploadDevice.h"

namespace quenby {

void installUploadViews(frmMain& main)
{
    main.installView<UploadDeviceView>(frmUploadDevice::instance());
}

} // namespace quenby
