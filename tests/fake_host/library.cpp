#include "fake_host/library.h"

#include <cstdio>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace tiepoint::testing {

#ifdef _WIN32

os::ModuleHandle loadLibrary(const std::string& path) {
  const HMODULE library = LoadLibraryA(path.c_str());
  if (!library) std::fprintf(stderr, "%s: error %lu\n", path.c_str(), GetLastError());
  return library;
}

void unloadLibrary(os::ModuleHandle library) { FreeLibrary(static_cast<HMODULE>(library)); }

#else

os::ModuleHandle loadLibrary(const std::string& path) {
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) std::fprintf(stderr, "%s\n", dlerror());
  return library;
}

void unloadLibrary(os::ModuleHandle library) { dlclose(library); }

#endif

}  // namespace tiepoint::testing
