// Which sets of names hang together, by a scan that starts again after each join: slow, and plain enough to
// be believed.
#pragma once

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tiepoint::testing {

struct PlainPart {
  std::set<std::size_t> places;
  std::set<std::string> names;
};

inline bool joinTwoLinked(std::vector<PlainPart>& parts, std::size_t least) {
  for (auto a = parts.begin(); a != parts.end(); ++a) {
    for (auto b = std::next(a); b != parts.end(); ++b) {
      std::vector<std::string> common;
      std::set_intersection(a->names.begin(), a->names.end(), b->names.begin(), b->names.end(),
                            std::back_inserter(common));
      if (common.size() < least) continue;
      a->places.insert(b->places.begin(), b->places.end());
      a->names.insert(b->names.begin(), b->names.end());
      parts.erase(b);
      return true;
    }
  }
  return false;
}

inline std::vector<std::vector<std::size_t>> plainLinkedSets(const std::vector<std::set<std::string>>& sets,
                                                             std::size_t least) {
  std::vector<PlainPart> parts;
  for (const auto& names : sets) parts.push_back({{parts.size()}, names});
  while (joinTwoLinked(parts, least)) {
  }
  std::vector<std::vector<std::size_t>> places;
  for (const PlainPart& part : parts) places.emplace_back(part.places.begin(), part.places.end());
  return places;
}

}  // namespace tiepoint::testing
