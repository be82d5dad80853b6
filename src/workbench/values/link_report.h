// Which groups are connected, and what the others lack.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "records/tables.h"

namespace tiepoint::workbench {

/// How many common names link two groups.
inline constexpr std::size_t namesThatLink = 3;

/// Groups that are connected: a cluster of the session, or one group that is in none.
struct Component {
  std::optional<std::uint64_t> cluster;
  /// Several base groups count as one.
  std::vector<ZOR::reg::GroupId> groups;
};

/// The names that two components share.
struct Link {
  std::size_t first = 0;
  std::size_t second = 0;
  /// UTF-8, ascending.
  std::vector<std::string> names;
};

struct LinkReport {
  /// Clusters by number, then the groups that are in none.
  std::vector<Component> components;
  /// The pairs of components that share a name, the most names first.
  std::vector<Link> links;
};

}  // namespace tiepoint::workbench
