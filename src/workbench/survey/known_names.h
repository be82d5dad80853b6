// The names of groups and points that exist, or will once the files are imported.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace tiepoint::workbench {

/// As a session will show them, the groups in the order in which they are added.
class KnownNames {
 public:
  /// The points of a group, which is added if it isn't known.
  std::vector<std::string>& pointsOf(const std::string& group) {
    const auto [entry, isNew] = index.try_emplace(group, names.size());
    if (isNew) {
      names.push_back(group);
      points.emplace_back();
    }
    return points[entry->second];
  }

  /// Null for a group that isn't known.
  const std::vector<std::string>* find(const std::string& group) const {
    const auto entry = index.find(group);
    return entry == index.end() ? nullptr : &points[entry->second];
  }

  const std::vector<std::string>& groups() const { return names; }

 private:
  std::vector<std::string> names;
  std::vector<std::vector<std::string>> points;
  std::unordered_map<std::string, std::size_t> index;
};

}  // namespace tiepoint::workbench
