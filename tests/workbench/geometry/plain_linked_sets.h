// Which sets of names are connected, by a scan that starts again after each join: slow, and plain enough to
// be believed.
#pragma once

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tiepoint::testing {

struct PlainComponent {
  std::set<std::size_t> indices;
  std::set<std::string> names;
};

inline bool joinTwoLinked(std::vector<PlainComponent>& components, std::size_t least) {
  for (auto a = components.begin(); a != components.end(); ++a) {
    for (auto b = std::next(a); b != components.end(); ++b) {
      std::vector<std::string> common;
      std::set_intersection(a->names.begin(), a->names.end(), b->names.begin(), b->names.end(),
                            std::back_inserter(common));
      if (common.size() < least) continue;
      a->indices.insert(b->indices.begin(), b->indices.end());
      a->names.insert(b->names.begin(), b->names.end());
      components.erase(b);
      return true;
    }
  }
  return false;
}

inline std::vector<std::vector<std::size_t>> plainLinkedSets(const std::vector<std::set<std::string>>& sets,
                                                             std::size_t least) {
  std::vector<PlainComponent> components;
  for (const auto& names : sets) components.push_back({{components.size()}, names});
  while (joinTwoLinked(components, least)) {
  }
  std::vector<std::vector<std::size_t>> indices;
  for (const PlainComponent& component : components)
    indices.emplace_back(component.indices.begin(), component.indices.end());
  return indices;
}

}  // namespace tiepoint::testing
