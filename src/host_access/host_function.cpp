#include "host_access/host_function.h"

#include "host_access/zor_app.h"
#include "platform/host/exports.h"
#include "platform/os/loaded_modules.h"

namespace ZOR::reg {
namespace {

namespace os = tiepoint::os;

os::ModuleHandle mainModule() {
  const os::ModuleHandle executable = os::loadedModule(static_cast<const wchar_t*>(nullptr));
  // What a host says of its main module stands, also when it says that it has none.
  if (const auto instance = os::exportAs<GetMainDllInstanceFunction>(executable, "GetMainDllInstance")) {
    return instance();
  }
  if (const os::ModuleHandle view = os::loadedModule(L"mainview.dll")) return view;
  return mainModuleOfZorApp();
}

}  // namespace

void* hostFunction(int index) {
  const os::ModuleHandle module = mainModule();
  if (!module) return nullptr;
  const auto entry = os::exportAs<GetHostFunctionFunction>(module, "get_host_funcptr");
  return entry ? entry(index) : nullptr;
}

}  // namespace ZOR::reg
