// Which groups hang together, and what the others lack.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// How many common names link two groups.
inline constexpr std::size_t namesThatLink = 3;

/// Groups that hang together: a cluster of the session, or one group that is in none.
struct Part {
  std::optional<std::uint64_t> cluster;
  /// Several base groups count as one.
  std::vector<ZOR::reg::GroupId> groups;
};

/// The names that two parts share.
struct Link {
  std::size_t first = 0;
  std::size_t second = 0;
  /// UTF-8, ascending.
  std::vector<std::string> names;
};

struct LinkReport {
  /// Clusters by number, then the groups that are in none.
  std::vector<Part> parts;
  /// The pairs of parts that share a name, the most names first.
  std::vector<Link> links;
};

/// Only eligible points count, also those that were left out for what their group lacks.
LinkReport describeLinks(const SessionState& state, const ZOR::reg::GroupClusters& clusters);

/// The same for the points in use alone and without clusters' numbers: one part when the groups in
/// use hang together, as the session would find if it were asked to join them pairwise.
LinkReport activeLinks(const SessionState& state);

}  // namespace tiepoint::workbench
