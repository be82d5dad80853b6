// Makes the module's command known to the host, while the library is being loaded.
#include "host_access/command_factory_lookup.h"
#include "module/import_command.h"

namespace ZOR::reg {
namespace {

constexpr const wchar_t* commandGroup = L"CLOUD_REGISTRATION";
constexpr const wchar_t* commandName = L"TSL_REG_IMPORT_REFS";
constexpr int commandFlags = 4;

/// False when the host has no factory: there is no command then, and nothing is said about it.
bool registerImportCommand() {
  ICmdFactory* factory = commandFactory();
  if (!factory) return false;
  factory->addCommand(commandGroup, commandName, commandName, commandFlags, &importReferencePoints);
  factory->release();
  return true;
}

[[maybe_unused]] const bool isRegistered = registerImportCommand();

}  // namespace
}  // namespace ZOR::reg
