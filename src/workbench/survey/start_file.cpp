#include "workbench/survey/start_file.h"

#include <Eigen/LU>
#include <Eigen/SVD>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <unordered_set>
#include <utility>

#include "workbench/survey/file_survey.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

namespace {

using Json = nlohmann::json;

/// What the elements of R' R may be off those of the identity: a file may have been rounded to seven digits.
constexpr double orthogonalTo = 1e-6;

/// Where in the file something is wrong, and what.
struct Place {
  std::string path;
  std::string group = {};
  std::uint64_t count = 0;

  [[noreturn]] void refuse(const char* cause) const {
    Refusal refusal{RefusalKind::startNotRead, Field::startFile, path, group};
    refusal.cause = cause;
    refusal.count = count;
    throw Refused(std::move(refusal));
  }
};

std::string bytesOf(const std::string& path) {
  const ByteSource bytes = bytesOfFile(path);
  std::string text;
  std::string piece(1u << 16, '\0');
  while (const std::size_t size = bytes(piece.data(), piece.size())) text.append(piece, 0, size);
  return text;
}

std::string textOf(const std::string& path) {
  try {
    return bytesOf(path);
  } catch (const Refused& refused) {
    Refusal refusal = refused.refusal();
    refusal.field = Field::startFile;
    throw Refused(std::move(refusal));
  }
}

Json jsonOf(const std::string& path, const std::string& text) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(error.byte, text.size()));
    const auto line = 1 + std::count(text.begin(), end, '\n');
    Place{path, {}, static_cast<std::uint64_t>(line)}.refuse("json");
  } catch (const Json::out_of_range&) {
    Place{path}.refuse("number");
  }
}

/// Three finite numbers, or nothing.
std::optional<Eigen::Vector3d> vectorOf(const Json& json) {
  if (!json.is_array() || json.size() != 3) return std::nullopt;
  Eigen::Vector3d vector;
  for (std::size_t i = 0; i < 3; ++i) {
    if (!json[i].is_number()) return std::nullopt;
    vector[static_cast<Eigen::Index>(i)] = json[i].get<double>();
  }
  return vector.allFinite() ? std::optional(vector) : std::nullopt;
}

Eigen::Matrix3d rowsOf(const Json& json, const Place& place) {
  if (!json.is_array() || json.size() != 3) place.refuse("rotation");
  Eigen::Matrix3d rows;
  for (std::size_t row = 0; row < 3; ++row) {
    const std::optional<Eigen::Vector3d> vector = vectorOf(json[row]);
    if (!vector) place.refuse("rotation");
    rows.row(static_cast<Eigen::Index>(row)) = vector->transpose();
  }
  return rows;
}

/// The nearest rotation.
Eigen::Matrix3d rotationOf(const Json& json, const Place& place) {
  const Eigen::Matrix3d given = rowsOf(json, place);
  const double off = (given.transpose() * given - Eigen::Matrix3d::Identity()).cwiseAbs().maxCoeff();
  if (!(off <= orthogonalTo) || given.determinant() <= 0.0) place.refuse("improper");
  const Eigen::JacobiSVD<Eigen::Matrix3d> svd(given, Eigen::ComputeFullU | Eigen::ComputeFullV);
  return svd.matrixU() * svd.matrixV().transpose();
}

/// Nothing for a group that isn't registered.
std::optional<StationPose> poseOf(const Json& group, Place place) {
  if (!group.is_object() || !group.contains("name") || !group["name"].is_string()) place.refuse("name");
  place.group = group["name"].get<std::string>();
  const auto registered = group.find("registered");
  if (registered == group.end() || !registered->is_boolean()) place.refuse("registered");
  if (!registered->get<bool>()) return std::nullopt;
  StationPose pose{place.group, {}};
  pose.pose.rotation = rotationOf(group.value("rotation", Json()), place);
  const std::optional<Eigen::Vector3d> shift = vectorOf(group.value("translation", Json()));
  if (!shift) place.refuse("translation");
  pose.pose.shift = *shift;
  return pose;
}

}  // namespace

std::vector<StationPose> readStartFile(const std::string& path) {
  const Json json = jsonOf(path, textOf(path));
  Place place{path};
  if (!json.is_object() || !json.contains("groups") || !json["groups"].is_array()) place.refuse("groups");
  std::vector<StationPose> poses;
  std::unordered_set<std::string> names;
  for (const Json& group : json["groups"]) {
    ++place.count;
    std::optional<StationPose> pose = poseOf(group, place);
    if (!pose) continue;
    if (!names.insert(pose->group).second) Place{path, pose->group, place.count}.refuse("twice");
    poses.push_back(std::move(*pose));
  }
  return poses;
}

}  // namespace tiepoint::workbench
