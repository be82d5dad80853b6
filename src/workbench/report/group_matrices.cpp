#include "workbench/report/group_matrices.h"

#include <fmt/format.h>

#include <Eigen/Geometry>

#include "workbench/report/json_parts.h"

namespace tiepoint::workbench {

namespace {

OrderedJson jsonConvention(Unit unit) {
  const char* const files = unit == Unit::unknown ? "the files' own" : (unit == Unit::metre ? "m" : "mm");
  return {{"direction", "from the group's own system to the common system: p' = rotation p + translation"},
          {"vectors", "column vectors; the rotation stands row by row"},
          {"quaternion", "order w x y z, unit length, w not negative"},
          {"unit", files}};
}

OrderedJson jsonRotation(const OdGeMatrix3d& motion) {
  OrderedJson rows = OrderedJson::array();
  for (int row = 0; row < 3; ++row) rows.push_back(jsonPoint({motion(row, 0), motion(row, 1), motion(row, 2)}));
  return rows;
}

Eigen::Matrix3d rotationOf(const OdGeMatrix3d& motion) {
  Eigen::Matrix3d rotation;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) rotation(row, column) = motion(row, column);
  }
  return rotation;
}

OrderedJson jsonQuaternion(const OdGeMatrix3d& motion) {
  Eigen::Quaterniond q(rotationOf(motion));
  q.normalize();
  if (q.w() < 0.0) q.coeffs() = -q.coeffs();
  return OrderedJson::array({q.w(), q.x(), q.y(), q.z()});
}

/// Angles in radians about z, x and z of the transposed rotation.
std::string trfText(const OdGeMatrix3d& motion) {
  const Eigen::Vector3d angles = rotationOf(motion).transpose().eulerAngles(2, 0, 2);
  std::string text;
  for (int i = 0; i < 3; ++i) text += fmt::format("ROT_{}:\t\t{:+.6f}\n", "XYZ"[i], angles(i));
  for (int i = 0; i < 3; ++i) text += fmt::format("SHIFT_{}:\t{:+.6f}\n", "XYZ"[i], motion(i, 3));
  return text;
}

/// The rotation transposed, the shift in the last column.
std::string fourByFourText(const OdGeMatrix3d& motion) {
  std::string text = "VERSION\t=\t1\nMATRIX\t=\n";
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      const bool isRotation = row < 3 && column < 3;
      text +=
          fmt::format("{:16.8e}{}", isRotation ? motion(column, row) : motion(row, column), column < 3 ? "  " : "\n");
    }
  }
  return text;
}

OrderedJson jsonResidual(const PointOutcome& point) {
  return {{"name", point.name},
          {"active", point.active},
          {"discrepancy", jsonNumber(point.discrepancy)},
          {"atBase", jsonNumber(point.atBase)}};
}

OrderedJson jsonGroup(const GroupOutcome& group) {
  const std::optional<OdGeMatrix3d> motion = group.motion();
  OrderedJson json{{"name", group.name}, {"base", group.inBase}, {"registered", motion.has_value()}};
  json["rotation"] = motion ? jsonRotation(*motion) : OrderedJson();
  json["translation"] = motion ? jsonPoint({(*motion)(0, 3), (*motion)(1, 3), (*motion)(2, 3)}) : OrderedJson();
  json["quaternionWXYZ"] = motion ? jsonQuaternion(*motion) : OrderedJson();
  json["discrepancies"] = jsonRms(group.discrepancies);
  json["atBase"] = jsonRms(group.atBase);
  json["points"] = OrderedJson::array();
  return json;
}

}  // namespace

std::string plainMatrixText(const OdGeMatrix3d& motion) {
  std::string text;
  for (int row = 0; row < 4; ++row) {
    text += fmt::format("{:.17g} {:.17g} {:.17g} {:.17g}\n", motion(row, 0), motion(row, 1), motion(row, 2),
                        motion(row, 3));
  }
  return text;
}

std::string moduleMatrixText(MatrixFormat format, const OdGeMatrix3d& motion) {
  return format == MatrixFormat::trf ? trfText(motion) : fourByFourText(motion);
}

std::string transformsJson(const Registration& registration, Unit unit) {
  OrderedJson groups = OrderedJson::array();
  for (const GroupOutcome& group : registration.groups) groups.push_back(jsonGroup(group));
  for (const PointOutcome& point : registration.points) groups[point.group]["points"].push_back(jsonResidual(point));
  const Registered& registered = *registration.registered();
  OrderedJson json;
  json["convention"] = jsonConvention(unit);
  json["method"] = methodKey(registration.method);
  json["discrepancies"] = jsonRms(registered.discrepancies);
  json["atBase"] = jsonRms(registered.atBase);
  json["groups"] = std::move(groups);
  return jsonText(json);
}

}  // namespace tiepoint::workbench
