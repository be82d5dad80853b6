// A small survey with noise, for the tests of the program's adjustments.
#pragma once

#include <Eigen/Dense>
#include <algorithm>

#include "workbench/cli/survey_files.h"

inline Eigen::Vector3d vectorOf(const nlohmann::json& values) {
  return {values[0].get<double>(), values[1].get<double>(), values[2].get<double>()};
}

/// From a group's system to the common one; the identity for a base.
inline Eigen::Affine3d motionOf(const nlohmann::json& group) {
  Eigen::Affine3d motion = Eigen::Affine3d::Identity();
  const nlohmann::json& transform = group["transform"];
  if (transform.is_null()) return motion;
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      motion.matrix()(row, column) =
          transform["matrix"][static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }
  }
  return motion;
}

/// The object of that name in a list.
inline nlohmann::json named(const nlohmann::json& list, const std::string& name) {
  const auto found = std::find_if(list.begin(), list.end(), [&](const auto& row) { return row["name"] == name; });
  return found == list.end() ? nlohmann::json() : *found;
}

inline nlohmann::json pointOf(const nlohmann::json& result, const std::string& group, const std::string& name) {
  for (const nlohmann::json& point : result["points"]) {
    if (point["group"] == group && point["name"] == name) return point;
  }
  return {};
}

/// Five targets as three stations measured them, a millimetre or two off: `base`, `shifted`, which stands at
/// (-100, -200, -300), and `turned`, which is turned by 90 degrees about z and stands at (10, -2.5, 0.125).
class AdjustedSurveyFiles : public SurveyFiles {
 protected:
  AdjustedSurveyFiles() {
    write("base.txt", "P1 0 0 0\nP2 10 0 0\nP3 0 10 0\nP4 0 0 10\nP5 10 10 5\n");
    write("shifted.txt",
          "P1 100 200 300\nP2 110.001 200 300\nP3 100 210 300.001\nP4 100 200 310\nP5 110 210 304.998\n");
    write("turned.txt", "P1 2.5 10 -0.125\nP2 2.5 0 -0.125\nP3 12.5 10 -0.125\nP4 2.5 10.001 9.875\nP5 12.5 0 4.875\n");
  }

  /// Of a network without a base.
  std::vector<std::string> freely(std::vector<std::string> more) const {
    more.insert(more.begin(), {"register", "--method", "adjust", "base.txt", "shifted.txt", "turned.txt"});
    return more;
  }
  std::vector<std::string> onBase(std::vector<std::string> more) const {
    more.insert(more.begin(), {"--base", "base"});
    return freely(more);
  }
};
