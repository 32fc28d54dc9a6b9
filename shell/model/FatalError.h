// The one place where a run-time failure ends the program: a critical message
// naming the error, its number and the file or command involved, then the end
// of the process with a non-zero status (the error number).
#pragma once

#include "shell/model/RuntimeError.h"

#include <QString>

namespace quenby {

// The text of the fatal message, e.g.
//   Run-time error '62':
//
//   Input past end of file
//
//   File: /data/KVX/Files/T1.txt
//   Command: mnKVXFiles_Click
QString fatalErrorMessage(const RuntimeError& error, const QString& command);

// Shows the message through the message service and ends the program.
[[noreturn]] void reportFatalError(const RuntimeError& error);

} // namespace quenby
