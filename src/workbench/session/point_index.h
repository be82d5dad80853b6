// From ids of points to their indices in a list.
#pragma once

#include <cstddef>
#include <set>
#include <utility>
#include <vector>

#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// Finds points by id in a list of them. Must be notified when the list has changed.
class PointIndex {
 public:
  inline static constexpr std::size_t none = static_cast<std::size_t>(-1);

  /// The list has grown at its end.
  void grow(const std::vector<SessionPoint>& points);
  void rebuild(const std::vector<SessionPoint>& points);

  /// `none` for an id that the list lacks.
  std::size_t indexOf(ZOR::reg::RefPointId id) const;

 private:
  /// Ascending by id.
  std::vector<std::pair<ZOR::reg::RefPointId, std::size_t>> entries;
};

/// A set of ids that is told whole, again and again.
class ToldIds {
 public:
  /// Calls `mark(id, isIn)` for all that are in now, and for all that were and aren't.
  template <class Mark>
  void replace(const std::set<std::uint64_t>& now, Mark mark) {
    std::vector<std::uint64_t> before(now.begin(), now.end());
    before.swap(ids);
    auto next = ids.begin();
    for (const std::uint64_t id : before) {
      while (next != ids.end() && *next < id) ++next;
      if (next == ids.end() || *next != id) mark(id, false);
    }
    for (const std::uint64_t id : ids) mark(id, true);
  }
  /// These are in as well, without having been told.
  void add(const std::set<std::uint64_t>& more);

 private:
  /// Ascending.
  std::vector<std::uint64_t> ids;
};

}  // namespace tiepoint::workbench
