// Which sets of names hang together.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace tiepoint::workbench {

/// Two sets are linked when they share at least `least` names (1 or more), and linked ones count as one set
/// of all their names, until no two are linked any more. Which they are doesn't depend on the order in
/// which they are joined.
///
/// Gives the places of the sets of each part, ascending, and the parts ascending by their first place.
/// A name is followed only into sets that lack it, so that the cost grows with the pairs of sets that share a
/// name, not with all pairs.
std::vector<std::vector<std::size_t>> linkedSets(const std::vector<std::set<std::string>>& sets, std::size_t least);

}  // namespace tiepoint::workbench
