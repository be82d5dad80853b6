#include "host_access/command_factory_lookup.h"

#include "host_access/zor_app.h"
#include "platform/host/exports.h"
#include "platform/os/loaded_modules.h"

namespace ZOR::reg {
namespace {

namespace os = tiepoint::os;

os::ModuleHandle mainModule() {
  const os::ModuleHandle executable = os::loadedModule(static_cast<const wchar_t*>(nullptr));
  // The module that a host names is the main module, also when it isn't loaded.
  if (const auto name = os::exportAs<GetMainDllNameFunction>(executable, "GetMainDllNameW")) {
    return os::loadedModule(name());
  }
  if (const os::ModuleHandle view = os::loadedModule("mainview")) return view;
  return mainModuleOfZorApp();
}

}  // namespace

ICmdFactory* commandFactory() {
  const os::ModuleHandle module = mainModule();
  if (!module) return nullptr;
  const auto newFactory = os::exportAs<NewCommandFactoryFunction>(module, "new_ICmdFactory");
  if (!newFactory) return nullptr;
  ICmdFactory* factory = nullptr;
  newFactory(&factory);
  return factory;
}

}  // namespace ZOR::reg
