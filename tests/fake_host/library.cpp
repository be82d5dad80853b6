#include "fake_host/library.h"

#include <cstdio>

#ifdef _WIN32
#include <windows.h>

#include <filesystem>
#else
#include <dlfcn.h>
#endif

namespace tiepoint::testing {

#ifdef _WIN32

namespace {

std::wstring widePath(const std::string& path) { return std::filesystem::u8path(path).make_preferred().wstring(); }

}  // namespace

os::ModuleHandle loadLibrary(const std::string& path) {
  // What the library depends on stands beside it.
  const HMODULE library = LoadLibraryExW(widePath(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (!library) std::fprintf(stderr, "%s: error %lu\n", path.c_str(), GetLastError());
  return library;
}

void unloadLibrary(os::ModuleHandle library) { FreeLibrary(static_cast<HMODULE>(library)); }

bool isLoaded(const std::string& path) { return GetModuleHandleW(widePath(path).c_str()) != nullptr; }

#else

os::ModuleHandle loadLibrary(const std::string& path) {
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) std::fprintf(stderr, "%s\n", dlerror());
  return library;
}

void unloadLibrary(os::ModuleHandle library) { dlclose(library); }

bool isLoaded(const std::string& path) {
  void* const library = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (library) dlclose(library);
  return library != nullptr;
}

#endif

}  // namespace tiepoint::testing
