// The host's table of functions, found anew at each use.
#pragma once

namespace ZOR::reg {

/// The entry `index` of the host's table, or null. Looks for the main module in this order: what
/// the export "GetMainDllInstance" of the main executable gives; the loaded "mainview.dll"; what
/// "GetMainDllInstanceEx" of the loaded "ZorApp.dll" gives; and asks its "get_host_funcptr".
void* hostFunction(int index);

}  // namespace ZOR::reg
