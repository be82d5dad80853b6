#include "workbench/geometry/linked_sets.h"

#include <algorithm>
#include <boost/unordered/unordered_flat_set.hpp>
#include <numeric>
#include <string_view>
#include <unordered_map>

namespace tiepoint::workbench {

namespace {

using Names = boost::unordered_flat_set<std::size_t>;

/// Adds one set after the other. In between no two components are linked, so that only the one that grows
/// has to be compared, and of the others only those that bear a name that is new to it.
class ComponentSearch {
 public:
  ComponentSearch(std::size_t setCount, std::size_t least_)
      : least(least_), names(setCount), joinedTo(setCount), shared(setCount, 0) {
    std::iota(joinedTo.begin(), joinedTo.end(), std::size_t{0});
  }

  void add(std::size_t set, const std::set<std::string>& itsNames) {
    for (const std::string& name : itsNames) names[set].insert(numberOf(name));
    linked = linkedWith(names[set]);
    for (const std::size_t name : names[set]) bearers[name].push_back(set);
    std::size_t grown = set;
    while (!linked.empty()) {
      const std::size_t other = rootOf(linked.back());
      linked.pop_back();
      if (other != grown) grown = join(grown, other);
    }
  }

  std::vector<std::vector<std::size_t>> result() {
    std::vector<std::vector<std::size_t>> components;
    std::unordered_map<std::size_t, std::size_t> indexOf;
    for (std::size_t set = 0; set < joinedTo.size(); ++set) {
      const auto [index, isNew] = indexOf.emplace(rootOf(set), components.size());
      if (isNew) components.emplace_back();
      components[index->second].push_back(set);
    }
    return components;
  }

 private:
  std::size_t numberOf(const std::string& name) {
    const auto [number, isNew] = numbers.emplace(name, bearers.size());
    if (isNew) bearers.emplace_back();
    return number->second;
  }

  std::size_t rootOf(std::size_t set) {
    while (joinedTo[set] != set) {
      joinedTo[set] = joinedTo[joinedTo[set]];
      set = joinedTo[set];
    }
    return set;
  }

  std::vector<std::size_t> linkedWith(const Names& wanted) {
    std::vector<std::size_t> touched, found;
    for (const std::size_t name : wanted) {
      for (const std::size_t component : bearers[name]) {
        if (shared[component]++ == 0) touched.push_back(component);
      }
    }
    for (const std::size_t component : touched) {
      if (shared[component] >= least) found.push_back(component);
      shared[component] = 0;
    }
    return found;
  }

  /// The one with fewer names goes into the other, which is given back.
  std::size_t join(std::size_t one, std::size_t other) {
    const auto [fewer, more] = names[one].size() < names[other].size() ? std::pair(one, other) : std::pair(other, one);
    joinedTo[fewer] = more;
    std::vector<std::size_t> brought;
    for (const std::size_t name : names[fewer]) {
      const bool isNew = names[more].insert(name).second;
      if (isNew) brought.push_back(name);
      auto& those = bearers[name];
      const auto entry = std::find(those.begin(), those.end(), fewer);
      *entry = isNew ? more : those.back();
      if (!isNew) those.pop_back();
    }
    names[fewer] = Names();
    findNewlyLinked(more, brought);
    return more;
  }

  /// Two components that weren't linked can be so now only if the third has a name of either that the other lacked.
  void findNewlyLinked(std::size_t grown, const std::vector<std::size_t>& brought) {
    std::vector<std::size_t> touched;
    for (const std::size_t name : brought) {
      for (const std::size_t component : bearers[name]) {
        if (component != grown && shared[component]++ == 0) touched.push_back(component);
      }
    }
    for (const std::size_t component : touched) {
      shared[component] = 0;
      if (shareEnough(names[component], names[grown])) linked.push_back(component);
    }
  }

  bool shareEnough(const Names& a, const Names& b) const {
    const Names& fewer = a.size() < b.size() ? a : b;
    const Names& more = a.size() < b.size() ? b : a;
    std::size_t common = 0;
    for (const std::size_t name : fewer) {
      common += more.count(name);
      if (common >= least) return true;
    }
    return false;
  }

  std::size_t least;
  std::unordered_map<std::string_view, std::size_t> numbers;
  /// Of each name, the components that have it.
  std::vector<std::vector<std::size_t>> bearers;
  /// Of each component; none for a set that was joined to another.
  std::vector<Names> names;
  std::vector<std::size_t> joinedTo;
  /// For counting; 0 between two counts.
  std::vector<std::size_t> shared;
  /// Found to be linked with the component that grows, and not joined yet.
  std::vector<std::size_t> linked;
};

}  // namespace

std::vector<std::vector<std::size_t>> linkedSets(const std::vector<std::set<std::string>>& sets, std::size_t least) {
  ComponentSearch search(sets.size(), least);
  for (std::size_t i = 0; i < sets.size(); ++i) search.add(i, sets[i]);
  return search.result();
}

}  // namespace tiepoint::workbench
