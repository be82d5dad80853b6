// Loading of libraries at a path, as a host does it.
#pragma once

#include <string>

#include "platform/os/loaded_modules.h"

namespace tiepoint::testing {

/// The path is UTF-8. Null when the file can't be loaded; the system's reason then stands on standard error.
os::ModuleHandle loadLibrary(const std::string& path);
void unloadLibrary(os::ModuleHandle library);

/// Whether the file at that full path is loaded, as the system's loader itself says it.
bool isLoaded(const std::string& path);

}  // namespace tiepoint::testing
