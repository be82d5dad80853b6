#include "workbench/cli/commands/import_command.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/cli/import_text.h"
#include "workbench/cli/json_parts.h"
#include "workbench/cli/output.h"
#include "workbench/cli/road_checks.h"
#include "workbench/cli/start_workbench.h"

namespace tiepoint::workbench::cli {

ExitStatus runImport(const ImportOptions& options) {
  const std::vector<LayoutFiles> runs = importRuns(options.files);
  if (runs.empty()) throw CommandError(ExitStatus::usage, "nothing to import; name files of reference points");
  groupsOfFiles(runs);
  Warnings warnings(options.quiet);
  const std::unique_ptr<Workbench> host = startWorkbench(options.host);
  Workbench& workbench = *host;
  openDrawing(workbench, options.host.document, true);
  Import import = rehearseImport(workbench, runs, warnings);
  makeDrawing(workbench, options.host.document);
  carryOutImport(workbench, runs, import, warnings);

  if (options.json) {
    Json json = jsonImport(import);
    json["warnings"] = warnings.all();
    writeOut(jsonText(json));
  } else if (!options.quiet) {
    writeOut(importText(import));
  }
  const auto left =
      std::count_if(import.files.begin(), import.files.end(), [](const ImportedFile& file) { return !file.stored; });
  if (left == 0) return ExitStatus::done;
  sayError(fmt::format("{} of {} files not taken in: the drawing has their groups already", left, import.files.size()));
  return ExitStatus::refused;
}

}  // namespace tiepoint::workbench::cli
