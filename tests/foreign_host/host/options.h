// What the program is told to do.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace foreign {

/// Files of one layout; `filterIndex` is the row of the dialog's filter list.
struct ImportFiles {
  int filterIndex = 1;
  std::vector<std::filesystem::path> paths;
};

struct Options {
  std::string caseName;
  std::filesystem::path module;
  /// An empty folder for the files of results.
  std::filesystem::path folder;
  std::string base;
  std::vector<ImportFiles> imports;
  /// 0, or the one number of a call that is to be spoiled.
  std::uint64_t onlyCall = 0;
};

/// foreign_host CASE --module FILE --out FOLDER --base NAME --nxyz FILE... [--nxyzw FILE...] [--call N]
/// Throws std::runtime_error for anything else.
Options parseOptions(int argumentCount, char** arguments);

}  // namespace foreign
