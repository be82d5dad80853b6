// The POSIX loader, in the GNU manner: dl_iterate_phdr lists what is loaded, in the order of loading.
#include <dlfcn.h>
#include <link.h>

#include <boost/locale/encoding_utf.hpp>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/os/loaded_modules.h"

namespace tiepoint::os {

namespace {

namespace fs = std::filesystem;

constexpr const char* mainExecutableLink = "/proc/self/exe";
constexpr std::string_view foreignEnding = ".dll";
constexpr std::string_view libraryEnding = ".so";

std::string mainExecutablePath() {
  std::error_code error;
  return fs::read_symlink(mainExecutableLink, error).string();
}

// The loader may have been given a path relative to the working folder.
std::string fullPath(const std::string& path) {
  std::error_code error;
  const fs::path full = fs::absolute(path, error);
  return error ? path : full.lexically_normal().string();
}

bool endsWithIgnoringCase(std::string_view text, std::string_view lowerCaseEnding) {
  if (text.size() < lowerCaseEnding.size()) return false;
  const std::string_view ending = text.substr(text.size() - lowerCaseEnding.size());
  for (std::size_t i = 0; i < ending.size(); ++i) {
    const char lower = ending[i] >= 'A' && ending[i] <= 'Z' ? static_cast<char>(ending[i] - 'A' + 'a') : ending[i];
    if (lower != lowerCaseEnding[i]) return false;
  }
  return true;
}

// The name that the library has here: "mainview.dll" and "mainview" are "mainview.so".
std::string libraryName(const std::string& name) {
  if (endsWithIgnoringCase(name, foreignEnding)) {
    return name.substr(0, name.size() - foreignEnding.size()).append(libraryEnding);
  }
  return fs::path(name).has_extension() ? name : std::string(name).append(libraryEnding);
}

bool isNameOf(const std::string& name, const std::string& modulePath) {
  if (name.find('/') != std::string::npos) return name == fullPath(modulePath);
  return name == fs::path(modulePath).filename().string();
}

struct LibrarySearch {
  std::string name;
  /// As the loader knows it; empty as long as nothing is found.
  std::string foundPath;
};

int visitLoaded(dl_phdr_info* info, std::size_t, void* data) {
  auto& search = *static_cast<LibrarySearch*>(data);
  // The main executable stands in the list without a name.
  if (!info->dlpi_name || *info->dlpi_name == '\0' || !isNameOf(search.name, info->dlpi_name)) return 0;
  search.foundPath = info->dlpi_name;
  return 1;
}

// The handle of what is loaded already. It is given back at once: the number stays good as long as
// somebody else keeps the module, and nothing here is to keep it.
ModuleHandle borrowedHandle(const char* path) {
  void* const handle = dlopen(path, RTLD_LAZY | RTLD_NOLOAD);
  if (handle) dlclose(handle);
  return handle;
}

const link_map* linkMapOf(ModuleHandle module) {
  link_map* map = nullptr;
  return dlinfo(module, RTLD_DI_LINKMAP, &map) == 0 ? map : nullptr;
}

const void* loadAddress(const void* addressInside) {
  Dl_info info{};
  return dladdr(addressInside, &info) != 0 ? info.dli_fbase : nullptr;
}

}  // namespace

ModuleHandle loadedModule(const wchar_t* name) {
  if (!name) return borrowedHandle(nullptr);
  return loadedModule(boost::locale::conv::utf_to_utf<char>(name).c_str());
}

ModuleHandle loadedModule(const char* name) {
  if (!name) return borrowedHandle(nullptr);
  LibrarySearch search{libraryName(name), {}};
  dl_iterate_phdr(visitLoaded, &search);
  if (!search.foundPath.empty()) return borrowedHandle(search.foundPath.c_str());
  return isNameOf(name, mainExecutablePath()) ? borrowedHandle(nullptr) : nullptr;
}

ExportAddress exportedFunction(ModuleHandle module, const char* name) {
  if (!module || !name) return nullptr;
  void* const address = dlsym(module, name);
  const link_map* const map = linkMapOf(module);
  if (!address || !map) return nullptr;
  // dlsym goes on to the module's dependencies; its own export lies where its own tables lie.
  const bool isOwn = loadAddress(address) == loadAddress(map->l_ld);
  return isOwn ? reinterpret_cast<ExportAddress>(address) : nullptr;
}

std::wstring moduleFileName(ModuleHandle module) {
  const link_map* const map = module ? linkMapOf(module) : nullptr;
  if (!map) return {};
  const std::string path = *map->l_name == '\0' ? mainExecutablePath() : fullPath(map->l_name);
  return boost::locale::conv::utf_to_utf<wchar_t>(path);
}

}  // namespace tiepoint::os
