// Where an upload's test files go: one folder for each opening of the upload
// window, named by its stamp, in the test files folder of the instrument's
// data root. Both file makers use it.
#pragma once

#include <QString>

namespace quenby {

// The folder of this upload's test files for `instrument` ("KVX" or "ZBL"):
// the instrument's data root that the settings store keeps under
// "UserFileTransfert", its test files folder, the upload's stamp, and a
// separator at the end. An absent key leaves the path starting at the
// separator.
QString UploadFolder(const QString& instrument);

// Makes `folder` when a listing of it, hidden entries included, gives
// nothing: an existing empty folder is made again, one with entries is left
// alone. A folder that can't be made raises RuntimeError.
void MakeUploadFolder(const QString& folder);

} // namespace quenby
