// The host's command factory.
#pragma once

#include "platform/host/command_factory.h"

namespace ZOR::reg {

/// A factory of the host's, to be released by the caller, or null. Looks for the main module in
/// this order, which differs from hostFunction's: the loaded module whose name the export
/// "GetMainDllNameW" of the main executable gives; the loaded "mainview"; what
/// "GetMainDllInstanceEx" of the loaded "ZorApp.dll" gives; and asks its "new_ICmdFactory".
ICmdFactory* commandFactory();

}  // namespace ZOR::reg
