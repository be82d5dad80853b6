// What goes wrong with a drawing file, in words for its user.
#pragma once

#include <string>

#include "platform/sdk/od_error.h"

namespace tiepoint::workbench {

/// The error for an extended result code of SQLite: one line that says what is wrong with the file
/// at `path` and what to do.
OdError drawingError(int sqliteCode, const std::string& path);

/// The file is a drawing whose content can't be: eNotADrawing. `what` completes "is damaged: ".
OdError damagedDrawing(const std::string& path, const std::string& what);

/// Whether a change that failed with `code` is in the file isn't known now.
OdError doubtfulDrawing(OdResult code, const std::string& path);

OdError notADrawing(const std::string& path);
OdError newerDrawing(const std::string& path, long long version, long long knownVersion);

}  // namespace tiepoint::workbench
