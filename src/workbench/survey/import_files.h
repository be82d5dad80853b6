// Reference point files into a drawing, through the module's import command.
//
// The command says little: it stops silently at a line that it can't read, and drops a file
// silently when the drawing has a group of its name. So the files are surveyed first and imported
// into a drawing in memory, and what came of each is told; only then the drawing itself changes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "workbench/host/workbench.h"
#include "workbench/session/staging_folder.h"
#include "workbench/survey/known_names.h"
#include "workbench/values/finding.h"
#include "workbench/values/import_report.h"
#include "workbench/values/reading_request.h"

namespace tiepoint::workbench {

/// What the active drawing holds; nothing without one.
KnownNames storedNames(Workbench& workbench);

/// The names of the groups that the files give, in order, UTF-8. Throws Refused: (pathNotUtf8,
/// groupTwice, emptyPath).
std::vector<std::string> groupsOfFiles(const std::vector<LayoutFiles>& runs);

/// What the module reads: the files themselves, or their points in a form that it reads, in a folder
/// that is gone with the last copy of this.
struct ModuleFiles {
  std::vector<LayoutFiles> runs;
  std::shared_ptr<StagingFolder> folder;
};

struct ImportRehearsal {
  ImportReport report;
  KnownNames names;
  ModuleFiles files;
};

/// Imports into a drawing in memory, so that every file is known before a drawing changes or is made.
/// Files that the module's layouts don't read from the first line to the last, and with every letter of
/// their names, are read here, as the request and they themselves say. Throws Refused for a file that
/// can't be read or gives no point.
ImportRehearsal rehearseImport(Workbench& workbench, const std::vector<LayoutFiles>& runs,
                               const ReadingRequest& request, Findings& findings);

/// Imports into the active drawing what was rehearsed, and notes what it didn't take. Throws Refused
/// (fileChanged) when a file gave other points than in the rehearsal; then nothing is taken in.
void carryOutImport(Workbench& workbench, const ModuleFiles& files, ImportReport& import, Findings& findings);

/// Takes out of the active drawing again what the import stored.
void undoImport(Workbench& workbench, const ImportReport& import);

}  // namespace tiepoint::workbench
