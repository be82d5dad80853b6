#include "workbench/cli/commands/clouds_command.h"

#include <fmt/format.h>

#include "workbench/cli/cloud_moves.h"
#include "workbench/cli/cloud_text.h"
#include "workbench/cli/json_parts.h"
#include "workbench/cli/output.h"
#include "workbench/cli/start_workbench.h"
#include "workbench/io/text_encoding.h"
#include "workbench/report/plain_text.h"

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

Json cloudsJson(const Clouds& clouds) {
  Json all = Json::array();
  for (const CloudReport& cloud : clouds) {
    Json entry = jsonCloud(cloud);
    entry.erase("move");
    all.push_back(std::move(entry));
  }
  return {{"clouds", std::move(all)}};
}

Clouds listed(const OdDbDatabase& database) {
  Clouds clouds;
  for (const DrawingCloud& cloud : cloudsOf(database)) {
    CloudReport report;
    report.name = utf8FromWide(cloud.name);
    report.source = utf8FromWide(cloud.source);
    report.matrix = cloud.matrix;
    clouds.push_back(std::move(report));
  }
  return clouds;
}

}  // namespace

ExitStatus runClouds(const CloudsOptions& options) {
  const std::vector<CloudOption> added = cloudsToAdd(options.add, "--add");
  const std::unique_ptr<Workbench> host = startWorkbench(options.host);
  Workbench& workbench = *host;
  const OdDbDatabasePtr database = workbench.openDocument(options.host.document, !added.empty()).database();
  if (!added.empty()) workbench.inTransaction([&] { addClouds(*database, added); });
  Clouds clouds = listed(*database);
  if (!options.moved.empty()) writeCopies(clouds, options.moved, options.force);
  writeOut(options.json ? jsonText(cloudsJson(clouds)) : cloudsText(clouds));
  return ExitStatus::done;
}

}  // namespace tiepoint::workbench::cli
