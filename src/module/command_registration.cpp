// Makes the module's command known to the host, while the library is being loaded.
#include "host_access/command_factory_lookup.h"
#include "host_access/held.h"
#include "module/import_command.h"

namespace ZOR::reg {
namespace {

constexpr const wchar_t* commandGroup = L"CLOUD_REGISTRATION";
constexpr const wchar_t* commandName = L"TSL_REG_IMPORT_REFS";
constexpr int commandFlags = 4;

/// False when the host has no factory, or one that fails: there is no command then, and nothing is
/// said about it. What left this function would end the process, since the library is being loaded.
bool registerImportCommand() noexcept {
  try {
    const Held<ICmdFactory> factory(commandFactory());
    if (!factory) return false;
    factory->addCommand(commandGroup, commandName, commandName, commandFlags, &importReferencePoints);
    return true;
  } catch (...) {
    return false;
  }
}

[[maybe_unused]] const bool isRegistered = registerImportCommand();

}  // namespace
}  // namespace ZOR::reg
