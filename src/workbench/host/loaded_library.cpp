#include "workbench/host/loaded_library.h"

#ifdef _WIN32
#include <windows.h>

#include "workbench/io/text_encoding.h"
#else
#include <dlfcn.h>
#endif

namespace tiepoint::workbench {

#ifdef _WIN32

os::ModuleHandle loadLibrary(const std::string& path, std::string& reason) {
  const HMODULE library = LoadLibraryExW(wideFromUtf8(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (!library) reason = "error " + std::to_string(GetLastError()) + " from the system's loader";
  return library;
}

void unloadLibrary(os::ModuleHandle library) { FreeLibrary(static_cast<HMODULE>(library)); }

os::ModuleHandle residentLibrary(const std::string& path) { return GetModuleHandleW(wideFromUtf8(path).c_str()); }

#else

os::ModuleHandle loadLibrary(const std::string& path, std::string& reason) {
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) {
    const char* const text = dlerror();
    reason = text ? text : "the system's loader gives no reason";
  }
  return library;
}

void unloadLibrary(os::ModuleHandle library) { dlclose(library); }

os::ModuleHandle residentLibrary(const std::string& path) {
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
  // The look-up has counted a reference; the one that keeps the library loaded is somebody else's.
  if (library) dlclose(library);
  return library;
}

#endif

}  // namespace tiepoint::workbench
