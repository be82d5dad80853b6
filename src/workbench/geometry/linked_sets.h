// Which sets of names are connected.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace tiepoint::workbench {

/// Two sets are linked when they share at least `least` names (1 or more), and linked sets count as one set
/// of all their names, until no two are linked any more. Which they are doesn't depend on the order in
/// which they are joined.
///
/// Gives the indices of the sets of each component, ascending, and the components ascending by their first index.
/// A name is followed only into sets that lack it, so that the cost grows with the pairs of sets that share a
/// name, not with all pairs.
std::vector<std::vector<std::size_t>> linkedSets(const std::vector<std::set<std::string>>& sets, std::size_t least);

}  // namespace tiepoint::workbench
