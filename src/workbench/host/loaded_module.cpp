#include "workbench/host/loaded_module.h"

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>
#include <cstdint>
#include <map>
#include <new>
#include <vector>

#include "platform/sdk/od_rx_module.h"
#include "workbench/host/loaded_library.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

namespace {

namespace fs = boost::filesystem;

#ifdef _WIN32
constexpr const char* moduleFile = "TSL_Registration.dll";
#else
constexpr const char* moduleFile = "TSL_Registration.so";
#endif

#ifdef _MSC_VER
constexpr const char* sessionExport = "?GetMultiRegistrator@reg@ZOR@@YAPEAViMultiRegistrator@12@XZ";
#else
constexpr const char* sessionExport = "_ZN3ZOR3reg19GetMultiRegistratorEv";
#endif

using GetApiVersionFunction = void (*)(std::int32_t& major, std::int32_t& minor, std::int32_t& majorBuild,
                                       std::int32_t& minorBuild);
using CreateModuleObjectFunction = OdRxModule* (*)(OdModuleHandle* handle);
using ZOR::reg::GetMultiRegistratorFunction;

/// What a library has registered while it was loaded. A library that the system keeps in memory
/// after it was unloaded doesn't register again when it is loaded anew.
std::map<os::ModuleHandle, std::vector<RegisteredCommand>>& commandsOfLibraries() {
  static std::map<os::ModuleHandle, std::vector<RegisteredCommand>> commands;
  return commands;
}

std::string versionText(const std::array<int, 4>& version) {
  std::string text;
  for (int part : version) text += (text.empty() ? "" : ".") + std::to_string(part);
  return text;
}

ModuleError refusal(const std::string& path, const std::string& reason) {
  return ModuleError(path + ": the module can't be used: " + reason);
}

std::string absolutePath(const std::string& path) { return fs::absolute(fs::path(path)).lexically_normal().string(); }

void requireFile(const std::string& path) {
  boost::system::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) throw refusal(path, "there is no such file; name the module with --module");
  if (fs::is_directory(status)) throw refusal(path, "this is a folder; name the module's file");
}

}  // namespace

/// The library and the three exports that make it a registration module.
class LoadedModule::Library {
 public:
  Library(const std::string& givenPath, CommandRegistry& commands) : path(absolutePath(givenPath)) {
    requireFile(path);
    const bool resident = residentLibrary(path) != nullptr;
    std::string reason;
    handle = loadLibrary(path, reason);
    if (!handle) throw refusal(path, "it isn't a library that can be loaded here (" + reason + ")");
    try {
      resolveExports();
      recallCommands(resident, commands);
    } catch (...) {
      unloadLibrary(handle);
      throw;
    }
  }
  ~Library() { unloadLibrary(handle); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  std::string path;
  os::ModuleHandle handle = nullptr;
  std::array<std::int32_t, 4> version{};
  CreateModuleObjectFunction createModuleObject = nullptr;
  GetMultiRegistratorFunction getMultiRegistrator = nullptr;

 private:
  template <class Function>
  Function required(const char* name) {
    const Function function = os::exportAs<Function>(handle, name);
    if (!function) throw refusal(path, std::string("it isn't a registration module, as it doesn't export ") + name);
    return function;
  }

  void resolveExports() {
    const auto getApiVersion = required<GetApiVersionFunction>("odrxGetAPIVersion");
    createModuleObject = required<CreateModuleObjectFunction>("odrxCreateModuleObject");
    getMultiRegistrator = required<GetMultiRegistratorFunction>(sessionExport);
    getApiVersion(version[0], version[1], version[2], version[3]);
    if (version != neededApiVersion) {
      throw refusal(path, "it was built for version " + versionText(version) + " of the drawing SDK; " +
                              versionText(neededApiVersion) + " is needed");
    }
  }

  void recallCommands(bool resident, CommandRegistry& commands) {
    auto& remembered = commandsOfLibraries()[handle];
    if (!resident) remembered = commands.commands();
    if (commands.commands().empty()) {
      for (const RegisteredCommand& command : remembered) commands.add(command);
    }
  }
};

/// The module's object, started.
class LoadedModule::Started {
 public:
  explicit Started(const Library& library) {
    OdModuleHandle handle = library.handle;
    module = library.createModuleObject(&handle);
    if (!module) throw std::bad_alloc();
    module->addRef();
    module->initApp();
  }
  ~Started() {
    module->uninitApp();
    module->release();
  }
  Started(const Started&) = delete;
  Started& operator=(const Started&) = delete;

 private:
  OdRxModule* module = nullptr;
};

LoadedModule::LoadedModule(const std::string& path, CommandRegistry& commands)
    : library(std::make_unique<Library>(path, commands)), started(std::make_unique<Started>(*library)) {}

LoadedModule::~LoadedModule() = default;

const std::string& LoadedModule::path() const { return library->path; }

std::array<int, 4> LoadedModule::apiVersion() const { return library->version; }

std::unique_ptr<ZOR::reg::iMultiRegistrator> LoadedModule::newSession() {
  std::unique_ptr<ZOR::reg::iMultiRegistrator> session(library->getMultiRegistrator());
  if (!session) throw std::bad_alloc();
  return session;
}

std::string installedModule() {
  const fs::path folder =
      fs::path(os::moduleFileName(os::loadedModule(static_cast<const wchar_t*>(nullptr)))).parent_path();
  const fs::path beside = folder / moduleFile;
  const fs::path installed = (folder / ".." / "lib" / "tiepoint" / moduleFile).lexically_normal();
  for (const fs::path& candidate : {beside, installed}) {
    if (fs::exists(candidate)) return candidate.string();
  }
  throw ModuleError("the module is neither at " + beside.string() + " nor at " + installed.string() +
                    "; name it with --module");
}

}  // namespace tiepoint::workbench
