#include "workbench/cli/links.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

std::map<GroupId, std::set<std::string>> eligibleNames(const SessionState& state) {
  std::map<GroupId, std::set<std::string>> names;
  for (const SessionPoint& point : state.points) {
    if (isEligible(point.record)) names[point.record.groupId].insert(point.name);
  }
  return names;
}

/// The session joins all base groups before it solves and calls them by the smallest of their ids.
GroupIdSet withJoinedBases(const SessionState& state, GroupIdSet groups) {
  const bool hasBase = std::any_of(groups.begin(), groups.end(), [&](GroupId id) { return state.group(id).inBase; });
  if (!hasBase) return groups;
  for (const SessionGroup& group : state.groups) {
    if (group.inBase) groups.insert(group.id);
  }
  return groups;
}

std::vector<Part> partsOf(const SessionState& state, const GroupClusters& clusters,
                          const std::map<GroupId, std::set<std::string>>& names) {
  std::vector<Part> parts;
  GroupIdSet placed;
  const auto add = [&](std::optional<std::uint64_t> number, const GroupIdSet& groups) {
    parts.push_back({number, {groups.begin(), groups.end()}});
    placed.insert(groups.begin(), groups.end());
  };
  for (const auto& [number, groups] : clusters) add(number, withJoinedBases(state, groups));
  for (const auto& entry : names) {
    if (placed.count(entry.first) == 0) add(std::nullopt, withJoinedBases(state, {entry.first}));
  }
  return parts;
}

}  // namespace

LinkReport describeLinks(const SessionState& state, const GroupClusters& clusters) {
  const auto names = eligibleNames(state);
  LinkReport report;
  report.parts = partsOf(state, clusters, names);

  std::vector<std::set<std::string>> namesOfPart(report.parts.size());
  for (std::size_t i = 0; i < report.parts.size(); ++i) {
    for (const GroupId group : report.parts[i].groups) {
      const auto found = names.find(group);
      if (found != names.end()) namesOfPart[i].insert(found->second.begin(), found->second.end());
    }
  }
  for (std::size_t a = 0; a < namesOfPart.size(); ++a) {
    for (std::size_t b = a + 1; b < namesOfPart.size(); ++b) {
      Link link{a, b, {}};
      std::set_intersection(namesOfPart[a].begin(), namesOfPart[a].end(), namesOfPart[b].begin(), namesOfPart[b].end(),
                            std::back_inserter(link.names));
      if (!link.names.empty()) report.links.push_back(std::move(link));
    }
  }
  std::stable_sort(report.links.begin(), report.links.end(),
                   [](const Link& a, const Link& b) { return a.names.size() > b.names.size(); });
  return report;
}

}  // namespace tiepoint::workbench::cli
