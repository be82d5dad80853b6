// Groups and points as they are named on the command line and in a file of weights.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/values/session_state.h"

namespace tiepoint::workbench::cli {

/// What `GROUP` or `GROUP:POINT` stands for.
struct PointChoice {
  ZOR::reg::GroupId group = 0;
  bool wholeGroup = false;
  /// The points of that name in the group, or all of the group's.
  ZOR::reg::RefPointIdSet points;
};

/// A weight for some points.
struct WeightChoice {
  std::string point;
  double weight = 1.0;
};

/// The group of that name. Throws CommandError(usage) that names `option` and proposes the nearest.
ZOR::reg::GroupId chosenGroup(const SessionState& state, const std::string& name, const std::string& option);

/// `GROUP` or `GROUP:POINT`. A name may hold a colon itself: a group of the whole name goes first,
/// then the first colon at which both sides are known. Nothing when there are no such points.
std::optional<PointChoice> findPoints(const SessionState& state, const std::string& text);
/// The same, but throws CommandError(usage) that says what there isn't.
PointChoice chosenPoints(const SessionState& state, const std::string& text, const std::string& option);

/// `GROUP:POINT=WEIGHT`. The weight stands behind the last equals sign. Throws CommandError(usage)
/// for a weight that is no number from 0 to 1.
WeightChoice parseWeightOption(const std::string& text);

/// A text file of weights: a line `GROUP POINT WEIGHT` each, separated by blanks, tabs, commas or
/// semicolons; the group may hold blanks; blank lines and lines from "#" on are skipped. `path` is
/// UTF-8, and so is the file. Throws CommandError(file) that names the line.
std::vector<WeightChoice> readWeightsFile(const std::string& path);

}  // namespace tiepoint::workbench::cli
