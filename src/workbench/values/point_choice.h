// Points that a request names.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tiepoint::workbench {

/// The points of one name in a group, or the whole of it.
struct PointRef {
  std::string group;
  std::optional<std::string> point = std::nullopt;
};

/// Points that are chosen. A text with colons can be read in several ways; the first that names points
/// that there are is meant.
struct PointChoice {
  std::vector<PointRef> readings;
  /// As it was given, for messages.
  std::string given = {};
};

}  // namespace tiepoint::workbench
