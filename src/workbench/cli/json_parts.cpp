#include "workbench/cli/json_parts.h"

#include <cmath>

#include "workbench/cli/layouts.h"

namespace tiepoint::workbench::cli {

namespace {

const char* moveKey(CloudMove move) {
  switch (move) {
    case CloudMove::moved:
      return "moved";
    case CloudMove::notAsked:
      return "not-asked";
    case CloudMove::base:
      return "base";
    case CloudMove::notRegistered:
      return "not-registered";
    case CloudMove::noGroup:
      return "no-group";
  }
  return "";
}

Json jsonFile(const ImportedFile& file) {
  Json stop;
  if (file.stop) stop = {{"line", file.stop->line}, {"reason", file.stop->complaint}};
  return {{"path", file.path},     {"layout", layoutInfo(file.layout).name},
          {"group", file.group},   {"lines", file.lines},
          {"points", file.points}, {"stored", file.stored},
          {"stoppedAt", stop}};
}

}  // namespace

Json jsonNumber(double value) {
  if (std::isfinite(value)) return value;
  return std::isnan(value) ? "nan" : (value > 0.0 ? "inf" : "-inf");
}

Json jsonNumber(const std::optional<double>& value) { return value ? jsonNumber(*value) : Json(); }

Json jsonPoint(const OdGePoint3d& point) {
  return Json::array({jsonNumber(point.x), jsonNumber(point.y), jsonNumber(point.z)});
}

Json jsonMatrix(const OdGeMatrix3d& matrix) {
  Json rows = Json::array();
  for (int row = 0; row < 4; ++row) {
    Json cells = Json::array();
    for (int column = 0; column < 4; ++column) cells.push_back(jsonNumber(matrix(row, column)));
    rows.push_back(std::move(cells));
  }
  return rows;
}

Json jsonImport(const Import& import) {
  Json files = Json::array();
  for (const ImportedFile& file : import.files) files.push_back(jsonFile(file));
  return {{"files", std::move(files)}, {"messages", import.messages}};
}

Json jsonCloud(const CloudReport& cloud) {
  Json copy;
  if (cloud.copy) {
    copy = {{"path", cloud.copy->path},
            {"points", cloud.copy->counts.points},
            {"otherLines", cloud.copy->counts.otherLines}};
  }
  return {{"name", cloud.name},
          {"source", cloud.source},
          {"move", moveKey(cloud.move)},
          {"matrix", jsonMatrix(cloud.matrix)},
          {"copy", copy}};
}

std::string jsonText(const Json& json) {
  return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

}  // namespace tiepoint::workbench::cli
