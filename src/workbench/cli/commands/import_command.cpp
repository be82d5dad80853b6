#include "workbench/cli/commands/import_command.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/cli/output.h"
#include "workbench/cli/request.h"
#include "workbench/cli/start_workbench.h"
#include "workbench/report/finding_text.h"
#include "workbench/report/import_text.h"
#include "workbench/report/json_parts.h"
#include "workbench/survey/import_files.h"
#include "workbench/survey/resolve.h"

namespace tiepoint::workbench::cli {

ExitStatus runImport(const ImportOptions& options) {
  const std::vector<LayoutFiles> runs = importRuns(options.files);
  if (runs.empty()) throw CommandError(ExitStatus::usage, "nothing to import; name files of reference points");
  groupsOfFiles(runs);
  Findings findings(printFindings(options.quiet));
  const std::unique_ptr<Workbench> host = startWorkbench(options.host);
  Workbench& workbench = *host;
  openDrawing(workbench, options.host.document, true);
  ImportReport import = rehearseImport(workbench, runs, findings).report;
  makeDrawing(workbench, options.host.document);
  carryOutImport(workbench, runs, import, findings);

  if (options.json) {
    OrderedJson json = jsonImport(import);
    json["warnings"] = OrderedJson::array();
    for (const Finding& finding : findings.all()) json["warnings"].push_back(findingText(finding));
    writeOut(jsonText(json));
  } else if (!options.quiet) {
    writeOut(importText(import));
  }
  const auto left =
      std::count_if(import.files.begin(), import.files.end(), [](const ImportedFile& file) { return !file.stored; });
  if (left == 0) return ExitStatus::done;
  printError(
      fmt::format("{} of {} files not imported; the drawing already has their groups", left, import.files.size()));
  return ExitStatus::refused;
}

}  // namespace tiepoint::workbench::cli
