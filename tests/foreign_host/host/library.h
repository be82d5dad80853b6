// Libraries that are loaded while the program runs.
#pragma once

#include <filesystem>
#include <string>

namespace foreign {

/// The system's own handle.
using LibraryHandle = void*;
using Export = void (*)();

/// Throws std::runtime_error with the system's reason when the file can't be loaded.
LibraryHandle loadLibrary(const std::filesystem::path& file);
void unloadLibrary(LibraryHandle library);
/// Whether the system still has the file in memory.
bool isInMemory(const std::filesystem::path& file);
/// Null when there is no such export.
Export exportOf(LibraryHandle library, const char* name);

/// The folder of the running program.
std::filesystem::path programFolder();
/// How the file of a library is called here.
std::string libraryFile(const std::string& name);

}  // namespace foreign
