// What differs between Windows and the other systems: the path separator, the
// program's own folder and the name of the executable files.
#pragma once

#include <QString>

namespace quenby {

// "\" on Windows, "/" elsewhere: used wherever a path is built from parts.
QString pathSep();

// The folder of the running executable, without a trailing separator. Asked
// anew each time. Tests may point it elsewhere.
QString AppPath();
void setAppPathOverride(const QString& folder); // "" restores the real one

// Turns "/" and "\" into the platform's separator, leaving doubled separators
// as they fall.
QString toPlatformPath(const QString& path);

bool isWindowsPlatform();

} // namespace quenby

namespace quenby {

// The file name of a program beside this one: "name.exe" on Windows, "name"
// elsewhere.
QString executableFileName(const QString& baseName);

} // namespace quenby
