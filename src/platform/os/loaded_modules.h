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
/// a loaded library whose file is called `mainview.so`, wherever it was loaded from: ".dll" in any
/// case, the rest exactly. A name with a path means that very file. The main executable is also
/// found by its own file name. Of several libraries of one name, the one that was loaded first.
/// Narrow names are UTF-8 on POSIX, of the system's code page on Windows.
ModuleHandle loadedModule(const wchar_t* name);
ModuleHandle loadedModule(const char* name);

/// The export of that name in the module itself (not in what it depends on), or null.
ExportAddress exportedFunction(ModuleHandle module, const char* name);

/// The full path of the module's file; empty for null.
std::wstring moduleFileName(ModuleHandle module);

/// As exportedFunction, as a function of type `Function`.
template <class Function>
Function exportAs(ModuleHandle module, const char* name) {
  return reinterpret_cast<Function>(exportedFunction(module, name));
}

}  // namespace tiepoint::os
