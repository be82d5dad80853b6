#include "workbench/report/json_parts.h"

#include <cmath>

#include "workbench/report/line_fault_text.h"
#include "workbench/report/reading_text.h"

namespace tiepoint::workbench {

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

const char* separatorKey(Separator separator) {
  switch (separator) {
    case Separator::semicolon:
      return "semicolon";
    case Separator::tab:
      return "tab";
    case Separator::comma:
      return "comma";
    case Separator::blank:
      return "blank";
    case Separator::mixed:
      return "mixed";
  }
  return "";
}

OrderedJson jsonReading(const FileReading& reading) {
  return {{"encoding", encodingName(reading.encoding)},
          {"mark", reading.hasMark},
          {"separator", separatorKey(reading.lines.separator)},
          {"decimal", reading.lines.decimal == DecimalMark::comma ? "comma" : "point"},
          {"columns", columnsText(reading.lines.columns)},
          {"header", reading.header},
          {"unit", lengthUnitName(reading.unit)},
          {"comments", reading.commentCount},
          {"blankLines", reading.blankCount}};
}

OrderedJson jsonFile(const ImportedFile& file) {
  OrderedJson stop;
  if (file.stop) stop = {{"line", file.stop->line}, {"reason", lineFaultText(*file.stop)}};
  return {{"path", file.path},     {"layout", layoutInfo(file.layout).name},
          {"group", file.group},   {"lines", file.lines},
          {"points", file.points}, {"stored", file.stored},
          {"stoppedAt", stop},     {"reading", file.reading ? jsonReading(*file.reading) : OrderedJson()}};
}

}  // namespace

OrderedJson jsonNumber(double value) {
  if (std::isfinite(value)) return value;
  return std::isnan(value) ? "nan" : (value > 0.0 ? "inf" : "-inf");
}

OrderedJson jsonNumber(const std::optional<double>& value) { return value ? jsonNumber(*value) : OrderedJson(); }

OrderedJson jsonPoint(const OdGePoint3d& point) {
  return OrderedJson::array({jsonNumber(point.x), jsonNumber(point.y), jsonNumber(point.z)});
}

OrderedJson jsonVector(const Eigen::Vector3d& vector) {
  return OrderedJson::array({jsonNumber(vector.x()), jsonNumber(vector.y()), jsonNumber(vector.z())});
}

OrderedJson jsonVector(const std::optional<Eigen::Vector3d>& vector) {
  return vector ? jsonVector(*vector) : OrderedJson();
}

OrderedJson jsonMatrix(const OdGeMatrix3d& matrix) {
  OrderedJson rows = OrderedJson::array();
  for (int row = 0; row < 4; ++row) {
    OrderedJson cells = OrderedJson::array();
    for (int column = 0; column < 4; ++column) cells.push_back(jsonNumber(matrix(row, column)));
    rows.push_back(std::move(cells));
  }
  return rows;
}

OrderedJson jsonRows(const Eigen::Ref<const Eigen::MatrixXd>& matrix) {
  OrderedJson rows = OrderedJson::array();
  for (Eigen::Index row = 0; row < matrix.rows(); ++row) {
    OrderedJson cells = OrderedJson::array();
    for (Eigen::Index column = 0; column < matrix.cols(); ++column) cells.push_back(jsonNumber(matrix(row, column)));
    rows.push_back(std::move(cells));
  }
  return rows;
}

OrderedJson jsonRms(const std::optional<Rms>& rms) {
  if (!rms) return {};
  return {{"points", rms->count},
          {"mean", jsonNumber(rms->mean)},
          {"rms", jsonNumber(rms->value)},
          {"largest", jsonNumber(rms->largest)}};
}

const char* methodKey(RegistrationMethod method) {
  switch (method) {
    case RegistrationMethod::pairwise:
      return "pairwise";
    case RegistrationMethod::iterative:
      return "iterative";
    case RegistrationMethod::adjust:
      return "adjust";
  }
  return "";
}

OrderedJson jsonImport(const ImportReport& import) {
  OrderedJson files = OrderedJson::array();
  for (const ImportedFile& file : import.files) files.push_back(jsonFile(file));
  return {{"files", std::move(files)}, {"messages", import.messages}};
}

OrderedJson jsonCloud(const CloudReport& cloud) {
  OrderedJson copy;
  if (cloud.copy) {
    copy = {{"path", cloud.copy->path}, {"points", cloud.copy->points}, {"otherLines", cloud.copy->otherLines}};
  }
  return {{"name", cloud.name},
          {"source", cloud.source},
          {"move", moveKey(cloud.move)},
          {"matrix", jsonMatrix(cloud.matrix)},
          {"copy", copy}};
}

std::string jsonText(const OrderedJson& json) {
  return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

}  // namespace tiepoint::workbench
