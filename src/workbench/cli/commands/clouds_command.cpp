#include "workbench/cli/commands/clouds_command.h"

#include <fmt/format.h>

#include "workbench/cli/output.h"
#include "workbench/cli/request.h"
#include "workbench/cli/start_workbench.h"
#include "workbench/cli/terminal_progress.h"
#include "workbench/report/cloud_text.h"
#include "workbench/report/json_parts.h"
#include "workbench/report/plain_text.h"
#include "workbench/survey/cloud_moves.h"

namespace tiepoint::workbench::cli {

namespace {

using Clouds = std::vector<CloudReport>;

std::string cloudsText(const Clouds& clouds) {
  if (clouds.empty()) return "The drawing holds no clouds.\n";
  std::string text;
  for (const CloudReport& cloud : clouds) {
    text += fmt::format("{} ({})\n{}", printable(cloud.name),
                        cloud.source.empty() ? "no file" : printable(cloud.source), matrixText(cloud.matrix));
    if (cloud.copy) text += fmt::format("  moved copy: {}\n", printable(cloud.copy->path));
  }
  return text;
}

OrderedJson cloudsJson(const Clouds& clouds) {
  OrderedJson all = OrderedJson::array();
  for (const CloudReport& cloud : clouds) {
    OrderedJson entry = jsonCloud(cloud);
    entry.erase("move");
    all.push_back(std::move(entry));
  }
  return {{"clouds", std::move(all)}};
}

}  // namespace

ExitStatus runClouds(const CloudsOptions& options) {
  const std::vector<CloudRequest> added = cloudsToAdd(cloudRequests(options.add, "--add"));
  const std::unique_ptr<Workbench> host = startWorkbench(options.host);
  Workbench& workbench = *host;
  const OdDbDatabasePtr database = workbench.openDocument(options.host.document, !added.empty()).database();
  if (!added.empty()) workbench.inTransaction([&] { addClouds(*database, added); });
  Clouds clouds = cloudsIn(*database);
  TerminalProgress progress(false);
  if (!options.moved.empty()) writeCopies(clouds, options.moved, options.force, progress);
  writeOut(options.json ? jsonText(cloudsJson(clouds)) : cloudsText(clouds));
  return ExitStatus::done;
}

}  // namespace tiepoint::workbench::cli
