// Reference point files into a drawing, through the module's import command.
//
// The command says little: it stops silently at a line that it can't read, and drops a file
// silently when the drawing has a group of its name. So the files are surveyed first and imported
// into a drawing in memory, and what came of each is told; only then the drawing itself changes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/cli/output.h"
#include "workbench/host/workbench.h"

namespace tiepoint::workbench::cli {

/// Files of one layout; each layout is one run of the import command.
struct LayoutFiles {
  Layout layout = Layout::nxyz;
  /// UTF-8.
  std::vector<std::string> paths;
};

/// Where the reading of a file ended before its end.
struct LineStop {
  std::uint64_t line = 0;
  /// As by lineComplaint.
  std::string complaint;
};

struct ImportedFile {
  std::string path;
  /// The group's name: the file's name without its last ending.
  std::string group;
  Layout layout = Layout::nxyz;
  std::uint64_t lines = 0;
  /// Points that the file gives.
  std::uint64_t points = 0;
  std::optional<LineStop> stop;
  /// False when the drawing had a group of that name already, which was left as it is.
  bool stored = true;
};

struct Import {
  std::vector<ImportedFile> files;
  /// What the command printed, run after run.
  std::vector<std::string> messages;
};

/// The names of the groups that the files give, in order, UTF-8. Throws CommandError: (file) for a
/// path that isn't UTF-8, (usage) when two files give one group.
std::vector<std::string> groupsOfFiles(const std::vector<LayoutFiles>& runs);

/// Imports into a drawing in memory, so that every file is known before a drawing changes or is made.
/// Throws CommandError(file) for a file that can't be read or gives no point.
Import rehearseImport(Workbench& workbench, const std::vector<LayoutFiles>& runs, Warnings& warnings);

/// Imports into the active drawing what was rehearsed, and notes what it didn't take.
void carryOutImport(Workbench& workbench, const std::vector<LayoutFiles>& runs, Import& import, Warnings& warnings);

}  // namespace tiepoint::workbench::cli
