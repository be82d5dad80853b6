// The POSIX loader, in the GNU manner: dl_iterate_phdr lists what is loaded, in the order of loading.
#include <dlfcn.h>
#include <limits.h>
#include <link.h>
#include <unistd.h>

#include <array>
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

// In a buffer of the stack: whoever looks for its host does so also where there is no memory.
using PathBuffer = std::array<char, PATH_MAX>;

// Empty when the system doesn't tell.
std::string_view mainExecutablePath(PathBuffer& buffer) {
  const ssize_t length = readlink(mainExecutableLink, buffer.data(), buffer.size());
  return {buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
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

std::string_view lastElement(std::string_view path) { return path.substr(path.find_last_of('/') + 1); }

// A point at the beginning belongs to a hidden file's name.
bool hasEnding(std::string_view path) {
  const std::string_view element = lastElement(path);
  const std::size_t point = element.find_last_of('.');
  return point != std::string_view::npos && point != 0 && element != "..";
}

// The name that the library has here: "mainview.dll" and "mainview" are "mainview.so".
std::string libraryName(std::string_view name) {
  if (endsWithIgnoringCase(name, foreignEnding)) {
    return std::string(name.substr(0, name.size() - foreignEnding.size())).append(libraryEnding);
  }
  return hasEnding(name) ? std::string(name) : std::string(name).append(libraryEnding);
}

bool isNameOf(std::string_view name, std::string_view modulePath) {
  if (name.find('/') != std::string_view::npos) return name == fullPath(std::string(modulePath));
  return name == lastElement(modulePath);
}

struct LibrarySearch {
  std::string name;
  /// The loader's own text; null as long as nothing is found.
  const char* foundPath = nullptr;
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
  LibrarySearch search{libraryName(name)};
  dl_iterate_phdr(visitLoaded, &search);
  if (search.foundPath) return borrowedHandle(search.foundPath);
  PathBuffer buffer;
  return isNameOf(name, mainExecutablePath(buffer)) ? borrowedHandle(nullptr) : nullptr;
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
  PathBuffer buffer;
  const std::string path = *map->l_name == '\0' ? std::string(mainExecutablePath(buffer)) : fullPath(map->l_name);
  return boost::locale::conv::utf_to_utf<wchar_t>(path);
}

}  // namespace tiepoint::os
