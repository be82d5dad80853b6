#include "workbench/cli/group_matrices.h"

#include <fmt/format.h>

#include <Eigen/Geometry>

#include "workbench/cli/json_parts.h"

namespace tiepoint::workbench::cli {

namespace {

Json jsonConvention(const std::string& unit) {
  return {{"direction", "from the group's own system to the common system: p' = rotation p + translation"},
          {"vectors", "column vectors; the rotation stands row by row"},
          {"quaternion", "order w x y z, unit length, w not negative"},
          {"unit", unit.empty() ? "the files' own" : unit}};
}

Json jsonRotation(const OdGeMatrix3d& motion) {
  Json rows = Json::array();
  for (int row = 0; row < 3; ++row) rows.push_back(jsonPoint({motion(row, 0), motion(row, 1), motion(row, 2)}));
  return rows;
}

Json jsonQuaternion(const OdGeMatrix3d& motion) {
  Eigen::Matrix3d rotation;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) rotation(row, column) = motion(row, column);
  }
  Eigen::Quaterniond q(rotation);
  q.normalize();
  if (q.w() < 0.0) q.coeffs() = -q.coeffs();
  return Json::array({q.w(), q.x(), q.y(), q.z()});
}

Json jsonRms(const std::optional<Rms>& rms) {
  if (!rms) return {};
  return {{"points", rms->count}, {"rms", jsonNumber(rms->value)}, {"largest", jsonNumber(rms->largest)}};
}

Json jsonPoints(const SessionState& state, const Results& results, ZOR::reg::GroupId group) {
  Json points = Json::array();
  for (std::size_t i = 0; i < state.points.size(); ++i) {
    const SessionPoint& point = state.points[i];
    if (point.record.groupId != group) continue;
    points.push_back({{"name", point.name},
                      {"active", point.record.active},
                      {"discrepancy", jsonNumber(results.points[i].discrepancy)},
                      {"atBase", jsonNumber(results.points[i].atBase)}});
  }
  return points;
}

Json jsonGroup(const SessionState& state, const Results& results, std::size_t place) {
  const SessionGroup& group = state.groups[place];
  const std::optional<OdGeMatrix3d> motion = motionOf(state, results, place);
  Json json{{"name", group.name}, {"base", group.inBase}, {"registered", motion.has_value()}};
  json["rotation"] = motion ? jsonRotation(*motion) : Json();
  json["translation"] = motion ? jsonPoint({(*motion)(0, 3), (*motion)(1, 3), (*motion)(2, 3)}) : Json();
  json["quaternionWXYZ"] = motion ? jsonQuaternion(*motion) : Json();
  json["discrepancies"] = jsonRms(results.groups[place].discrepancies);
  json["atBase"] = jsonRms(results.groups[place].atBase);
  json["points"] = jsonPoints(state, results, group.id);
  return json;
}

}  // namespace

std::optional<OdGeMatrix3d> motionOf(const SessionState& state, const Results& results, std::size_t place) {
  const std::optional<OdGeMatrix3d>& toCommon = results.groups[place].toCommon;
  return !toCommon && state.groups[place].inBase ? std::optional(OdGeMatrix3d()) : toCommon;
}

std::string plainMatrixText(const OdGeMatrix3d& motion) {
  std::string text;
  for (int row = 0; row < 4; ++row) {
    text += fmt::format("{:.17g} {:.17g} {:.17g} {:.17g}\n", motion(row, 0), motion(row, 1), motion(row, 2),
                        motion(row, 3));
  }
  return text;
}

std::string transformsJson(const TransformsHead& head, const SessionState& state, const Results& results) {
  Json groups = Json::array();
  for (std::size_t place = 0; place < state.groups.size(); ++place) groups.push_back(jsonGroup(state, results, place));
  Json json;
  json["convention"] = jsonConvention(head.unit);
  json["method"] = head.method;
  json["discrepancies"] = jsonRms(results.discrepancies);
  json["atBase"] = jsonRms(results.atBase);
  json["groups"] = std::move(groups);
  return jsonText(json);
}

}  // namespace tiepoint::workbench::cli
