#include <windows.h>

#include <array>
#include <stdexcept>

#include "library.h"

namespace foreign {

LibraryHandle loadLibrary(const std::filesystem::path& file) {
  const HMODULE library = LoadLibraryW(file.c_str());
  if (!library) throw std::runtime_error(file.string() + ": error " + std::to_string(GetLastError()));
  return library;
}

void unloadLibrary(LibraryHandle library) { FreeLibrary(static_cast<HMODULE>(library)); }

bool isInMemory(const std::filesystem::path& file) { return GetModuleHandleW(file.filename().c_str()) != nullptr; }

Export exportOf(LibraryHandle library, const char* name) {
  return reinterpret_cast<Export>(GetProcAddress(static_cast<HMODULE>(library), name));
}

std::filesystem::path programFolder() {
  std::array<wchar_t, 32768> path{};
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return std::filesystem::path(path.data()).parent_path();
}

std::string libraryFile(const std::string& name) { return name + ".dll"; }

}  // namespace foreign
