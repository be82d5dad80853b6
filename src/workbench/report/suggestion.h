// "Did you mean": the nearest of several names.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tiepoint::workbench {

/// How many bytes must be inserted, removed or replaced to make `b` of `a` (Levenshtein, 1966).
std::size_t editDistance(const std::string& a, const std::string& b);

/// The name that `wanted` is a slip of the keys away from, if there is one.
std::optional<std::string> nearestName(const std::string& wanted, const std::vector<std::string>& names);

/// A clause to end an error message with: `; did you mean "S1"?` when a name is near enough to be
/// a slip of the keys, else `; there are: S1, S2, S3` (the first ten), or nothing when there are no
/// names.
std::string suggestion(const std::string& wanted, const std::vector<std::string>& names);

}  // namespace tiepoint::workbench
