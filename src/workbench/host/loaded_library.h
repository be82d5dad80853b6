// Loading and unloading a library by its path.
#pragma once

#include <string>

#include "platform/os/loaded_modules.h"

namespace tiepoint::workbench {

/// Loads the library at `path` (UTF-8, absolute) with its symbols kept to itself. Null when it
/// can't be loaded; `reason` then says why.
os::ModuleHandle loadLibrary(const std::string& path, std::string& reason);
void unloadLibrary(os::ModuleHandle library);

/// The library at `path` when it is loaded already, else null.
os::ModuleHandle residentLibrary(const std::string& path);

}  // namespace tiepoint::workbench
