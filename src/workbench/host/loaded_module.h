// A registration module in this process.
#pragma once

#include <array>
#include <memory>
#include <stdexcept>
#include <string>

#include "session/i_multi_registrator.h"
#include "workbench/host/command_registry.h"

namespace tiepoint::workbench {

/// The module can't be used: what() says in one line why, and what to do.
class ModuleError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The version of the drawing SDK that a module must be made for.
inline constexpr std::array<int, 4> neededApiVersion{21, 8, 0, 0};

/// A module that is loaded and started; stopped and unloaded with the object.
class LoadedModule {
 public:
  /// `path` is UTF-8; a relative one counts from the working directory. The host must stand, as
  /// the module registers its commands while it is being loaded; `commands` then has them. Throws
  /// ModuleError.
  LoadedModule(const std::string& path, CommandRegistry& commands);
  ~LoadedModule();
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;

  /// UTF-8, absolute.
  const std::string& path() const;
  std::array<int, 4> apiVersion() const;
  /// A new session; throws std::bad_alloc when the module gives none.
  std::unique_ptr<ZOR::reg::iMultiRegistrator> newSession();

 private:
  class Library;
  class Started;
  std::unique_ptr<Library> library;
  std::unique_ptr<Started> started;
};

/// The module that belongs to this program: beside the executable, or else in the library folder
/// of its installation. UTF-8. Throws ModuleError when it is in neither place.
std::string installedModule();

}  // namespace tiepoint::workbench
