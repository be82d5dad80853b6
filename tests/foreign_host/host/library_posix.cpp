#include <dlfcn.h>

#include <stdexcept>

#include "library.h"

namespace foreign {

LibraryHandle loadLibrary(const std::filesystem::path& file) {
  void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) throw std::runtime_error(dlerror());
  return library;
}

void unloadLibrary(LibraryHandle library) { dlclose(library); }

bool isInMemory(const std::filesystem::path& file) {
  void* const library = dlopen(file.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (library) dlclose(library);
  return library != nullptr;
}

Export exportOf(LibraryHandle library, const char* name) { return reinterpret_cast<Export>(dlsym(library, name)); }

std::filesystem::path programFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path(); }

std::string libraryFile(const std::string& name) { return name + ".so"; }

}  // namespace foreign
