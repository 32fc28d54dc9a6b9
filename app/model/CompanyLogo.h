// The main window's Company Logo command: the operator picks a picture, it
// becomes the logo bitmap, and the report windows load it again.
#pragma once

namespace quenby {

void mnCLogo_Click();

} // namespace quenby
