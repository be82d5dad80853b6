// Loaded modules and their exports: Windows' own calls there, the POSIX loader elsewhere.
#pragma once

#include <string>

namespace tiepoint::os {

/// A module that is loaded in this process; null is none. Nothing here counts references.
using ModuleHandle = void*;
/// The address of an exported function.
using ExportAddress = void (*)();

/// The loaded module of that name, or the main executable for null. Never loads anything.
/// A name without an ending means the library's; on POSIX "mainview.dll" and "mainview" both mean
/// a loaded library whose file is called `mainview.so`, wherever it was loaded from. The main
/// executable is also found by its own file name.
ModuleHandle loadedModule(const wchar_t* name);
ModuleHandle loadedModule(const char* name);

/// The export of that name in the module itself (not in what it depends on), or null.
ExportAddress exportedFunction(ModuleHandle module, const char* name);

/// The path of the module's file; empty when there is no such module.
std::wstring moduleFileName(ModuleHandle module);

/// As exportedFunction, as a function of type `Function`.
template <class Function>
Function exportAs(ModuleHandle module, const char* name) {
  return reinterpret_cast<Function>(exportedFunction(module, name));
}

}  // namespace tiepoint::os
