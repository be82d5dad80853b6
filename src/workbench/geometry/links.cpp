#include "workbench/geometry/links.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>

#include "workbench/geometry/linked_sets.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

using Names = std::set<std::string>;

std::map<GroupId, Names> eligibleNames(const SessionState& state) {
  std::map<GroupId, Names> names;
  for (const SessionPoint& point : state.points) {
    if (isEligible(point.record)) names[point.record.groupId].insert(point.name);
  }
  return names;
}

/// Of each name, the places of the parts that have it, ascending.
std::unordered_map<std::string_view, std::vector<std::size_t>> bearersOf(const std::vector<Names>& namesOfPart) {
  std::unordered_map<std::string_view, std::vector<std::size_t>> bearers;
  for (std::size_t part = 0; part < namesOfPart.size(); ++part) {
    for (const std::string& name : namesOfPart[part]) bearers[name].push_back(part);
  }
  return bearers;
}

std::vector<Link> linksBetween(const std::vector<Names>& namesOfPart) {
  const auto bearers = bearersOf(namesOfPart);
  std::vector<Link> links;
  for (std::size_t part = 0; part < namesOfPart.size(); ++part) {
    std::map<std::size_t, std::vector<std::string>> shared;
    for (const std::string& name : namesOfPart[part]) {
      const std::vector<std::size_t>& those = bearers.at(name);
      const auto behind = std::upper_bound(those.begin(), those.end(), part);
      std::for_each(behind, those.end(), [&](std::size_t other) { shared[other].push_back(name); });
    }
    for (auto& [other, names] : shared) links.push_back({part, other, std::move(names)});
  }
  std::stable_sort(links.begin(), links.end(),
                   [](const Link& a, const Link& b) { return a.names.size() > b.names.size(); });
  return links;
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

/// A group in use, or several bases, which are one.
struct ActiveGroups {
  std::set<GroupId> groups;
  Names names;
};

std::vector<ActiveGroups> activeGroupsOf(const SessionState& state) {
  std::optional<GroupId> base;
  std::map<GroupId, ActiveGroups> byId;
  for (const SessionPoint& point : state.points) {
    if (!point.record.active) continue;
    const GroupId group = point.record.groupId;
    if (point.record.inBase && !base) base = group;
    ActiveGroups& those = byId[point.record.inBase ? *base : group];
    those.groups.insert(group);
    those.names.insert(point.name);
  }
  std::vector<ActiveGroups> all;
  for (auto& entry : byId) all.push_back(std::move(entry.second));
  return all;
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
  report.links = linksBetween(namesOfPart);
  return report;
}

LinkReport activeLinks(const SessionState& state) {
  std::vector<ActiveGroups> all = activeGroupsOf(state);
  std::vector<Names> names;
  for (ActiveGroups& those : all) names.push_back(std::move(those.names));
  LinkReport report;
  std::vector<Names> namesOfPart;
  for (const std::vector<std::size_t>& part : linkedSets(names, namesThatLink)) {
    std::set<GroupId> groups;
    Names together;
    for (const std::size_t i : part) {
      groups.insert(all[i].groups.begin(), all[i].groups.end());
      together.insert(names[i].begin(), names[i].end());
    }
    report.parts.push_back({std::nullopt, {groups.begin(), groups.end()}});
    namesOfPart.push_back(std::move(together));
  }
  report.links = linksBetween(namesOfPart);
  return report;
}

}  // namespace tiepoint::workbench
