#include "workbench/session/point_index.h"

#include <algorithm>
#include <iterator>

namespace tiepoint::workbench {

void PointIndex::grow(const std::vector<SessionPoint>& points) {
  const std::size_t known = places.size();
  places.reserve(points.size());
  const bool wasEmpty = places.empty();
  const auto before = wasEmpty ? 0 : places.back().first;
  for (std::size_t i = known; i < points.size(); ++i) places.emplace_back(points[i].record.id, i);
  const auto added = places.begin() + static_cast<std::ptrdiff_t>(known);
  // As a rule the points come in ascending ids, behind those that are there.
  if (!std::is_sorted(added, places.end())) std::sort(added, places.end());
  if (!wasEmpty && added != places.end() && added->first <= before) {
    std::inplace_merge(places.begin(), added, places.end());
  }
}

void PointIndex::rebuild(const std::vector<SessionPoint>& points) {
  places.clear();
  grow(points);
}

std::size_t PointIndex::placeOf(ZOR::reg::RefPointId id) const {
  if (places.empty() || id < places.front().first) return none;
  // Where no id is missing, the way from the first one is the place.
  const std::uint64_t distance = id - places.front().first;
  if (distance < places.size() && places[distance].first == id) return places[distance].second;
  const auto found = std::lower_bound(places.begin(), places.end(), id,
                                      [](const auto& entry, auto wanted) { return entry.first < wanted; });
  return found == places.end() || found->first != id ? none : found->second;
}

void ToldIds::add(const std::set<std::uint64_t>& more) {
  std::vector<std::uint64_t> all;
  all.reserve(ids.size() + more.size());
  std::set_union(ids.begin(), ids.end(), more.begin(), more.end(), std::back_inserter(all));
  ids = std::move(all);
}

}  // namespace tiepoint::workbench
