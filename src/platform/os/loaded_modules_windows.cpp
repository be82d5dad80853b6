#include <windows.h>

#include "platform/os/loaded_modules.h"

namespace tiepoint::os {

ModuleHandle loadedModule(const wchar_t* name) { return GetModuleHandleW(name); }

ModuleHandle loadedModule(const char* name) { return GetModuleHandleA(name); }

ExportAddress exportedFunction(ModuleHandle module, const char* name) {
  if (!module || !name) return nullptr;
  return reinterpret_cast<ExportAddress>(GetProcAddress(static_cast<HMODULE>(module), name));
}

std::wstring moduleFileName(ModuleHandle module) {
  if (!module) return {};
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD size = static_cast<DWORD>(path.size());
    const DWORD length = GetModuleFileNameW(static_cast<HMODULE>(module), path.data(), size);
    // A path that fills the buffer has been cut.
    if (length < size) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace tiepoint::os
