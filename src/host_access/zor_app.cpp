#include "host_access/zor_app.h"

#include "platform/host/exports.h"

namespace ZOR::reg {

tiepoint::os::ModuleHandle mainModuleOfZorApp() {
  const tiepoint::os::ModuleHandle zorApp = tiepoint::os::loadedModule(L"ZorApp.dll");
  if (!zorApp) return nullptr;
  const auto mainModule = tiepoint::os::exportAs<GetMainDllInstanceFunction>(zorApp, "GetMainDllInstanceEx");
  return mainModule ? mainModule() : nullptr;
}

}  // namespace ZOR::reg
