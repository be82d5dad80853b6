// The step that both look-ups of the main module share.
#pragma once

#include "platform/os/loaded_modules.h"

namespace ZOR::reg {

/// The main module as "GetMainDllInstanceEx" of the loaded "ZorApp.dll" gives it; null without
/// that module or that export.
tiepoint::os::ModuleHandle mainModuleOfZorApp();

}  // namespace ZOR::reg
