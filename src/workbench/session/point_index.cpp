#include "workbench/session/point_index.h"

#include <algorithm>
#include <iterator>

namespace tiepoint::workbench {

void PointIndex::grow(const std::vector<SessionPoint>& points) {
  const std::size_t known = entries.size();
  entries.reserve(points.size());
  const bool wasEmpty = entries.empty();
  const auto before = wasEmpty ? 0 : entries.back().first;
  for (std::size_t i = known; i < points.size(); ++i) entries.emplace_back(points[i].record.id, i);
  const auto added = entries.begin() + static_cast<std::ptrdiff_t>(known);
  // As a rule the points come in ascending ids, behind those that are there.
  if (!std::is_sorted(added, entries.end())) std::sort(added, entries.end());
  if (!wasEmpty && added != entries.end() && added->first <= before) {
    std::inplace_merge(entries.begin(), added, entries.end());
  }
}

void PointIndex::rebuild(const std::vector<SessionPoint>& points) {
  entries.clear();
  grow(points);
}

std::size_t PointIndex::indexOf(ZOR::reg::RefPointId id) const {
  if (entries.empty() || id < entries.front().first) return none;
  // Where no id is missing, the distance from the first one is the index.
  const std::uint64_t distance = id - entries.front().first;
  if (distance < entries.size() && entries[distance].first == id) return entries[distance].second;
  const auto found = std::lower_bound(entries.begin(), entries.end(), id,
                                      [](const auto& entry, auto wanted) { return entry.first < wanted; });
  return found == entries.end() || found->first != id ? none : found->second;
}

void ToldIds::add(const std::set<std::uint64_t>& more) {
  std::vector<std::uint64_t> all;
  all.reserve(ids.size() + more.size());
  std::set_union(ids.begin(), ids.end(), more.begin(), more.end(), std::back_inserter(all));
  ids = std::move(all);
}

}  // namespace tiepoint::workbench
