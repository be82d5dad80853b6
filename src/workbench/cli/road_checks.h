// What can be known to go wrong before anything is read or changed.
#pragma once

#include <string>

#include "workbench/cli/options.h"
#include "workbench/host/workbench.h"

namespace tiepoint::workbench::cli {

/// Where the common points go. The module adds ".txt" to the name itself.
struct CommonPointsTarget {
  /// Narrow, without the ending.
  std::string name;
  /// With the ending, UTF-8.
  std::string fileName;
  /// The whole path, UTF-8.
  std::string path;
};

/// Throws CommandError: (usage) for a name that the module doesn't take, (file) for a folder that
/// isn't there or a file that may not be replaced.
CommonPointsTarget commonPointsTarget(const RegisterOptions& options);

/// Opens the drawing that is asked for, if it is there. Without files to take in it must be. Throws
/// CommandError(usage) when there is neither.
void openDrawing(Workbench& workbench, const std::string& document, bool hasFiles);

/// Makes the drawing that openDrawing hasn't found; one in memory when none is asked for.
void makeDrawing(Workbench& workbench, const std::string& document);

/// Refuses (usage) groups that neither the drawing nor the files hold, before the files go in.
void checkGroupNames(Workbench& workbench, const RegisterOptions& options, const std::vector<LayoutFiles>& runs);

}  // namespace tiepoint::workbench::cli
