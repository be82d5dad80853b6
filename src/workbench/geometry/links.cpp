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

/// Of each name, the indices of the components that have it, ascending.
std::unordered_map<std::string_view, std::vector<std::size_t>> bearersOf(const std::vector<Names>& namesOfComponent) {
  std::unordered_map<std::string_view, std::vector<std::size_t>> bearers;
  for (std::size_t component = 0; component < namesOfComponent.size(); ++component) {
    for (const std::string& name : namesOfComponent[component]) bearers[name].push_back(component);
  }
  return bearers;
}

std::vector<Link> linksBetween(const std::vector<Names>& namesOfComponent) {
  const auto bearers = bearersOf(namesOfComponent);
  std::vector<Link> links;
  for (std::size_t component = 0; component < namesOfComponent.size(); ++component) {
    std::map<std::size_t, std::vector<std::string>> shared;
    for (const std::string& name : namesOfComponent[component]) {
      const std::vector<std::size_t>& those = bearers.at(name);
      const auto behind = std::upper_bound(those.begin(), those.end(), component);
      std::for_each(behind, those.end(), [&](std::size_t other) { shared[other].push_back(name); });
    }
    for (auto& [other, names] : shared) links.push_back({component, other, std::move(names)});
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

std::vector<Component> componentsOf(const SessionState& state, const GroupClusters& clusters,
                                    const std::map<GroupId, std::set<std::string>>& names) {
  std::vector<Component> components;
  GroupIdSet placed;
  const auto add = [&](std::optional<std::uint64_t> number, const GroupIdSet& groups) {
    components.push_back({number, {groups.begin(), groups.end()}});
    placed.insert(groups.begin(), groups.end());
  };
  for (const auto& [number, groups] : clusters) add(number, withJoinedBases(state, groups));
  for (const auto& entry : names) {
    if (placed.count(entry.first) == 0) add(std::nullopt, withJoinedBases(state, {entry.first}));
  }
  return components;
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
  report.components = componentsOf(state, clusters, names);

  std::vector<std::set<std::string>> namesOfComponent(report.components.size());
  for (std::size_t i = 0; i < report.components.size(); ++i) {
    for (const GroupId group : report.components[i].groups) {
      const auto found = names.find(group);
      if (found != names.end()) namesOfComponent[i].insert(found->second.begin(), found->second.end());
    }
  }
  report.links = linksBetween(namesOfComponent);
  return report;
}

LinkReport activeLinks(const SessionState& state) {
  std::vector<ActiveGroups> all = activeGroupsOf(state);
  std::vector<Names> names;
  for (ActiveGroups& those : all) names.push_back(std::move(those.names));
  LinkReport report;
  std::vector<Names> namesOfComponent;
  for (const std::vector<std::size_t>& component : linkedSets(names, namesThatLink)) {
    std::set<GroupId> groups;
    Names together;
    for (const std::size_t i : component) {
      groups.insert(all[i].groups.begin(), all[i].groups.end());
      together.insert(names[i].begin(), names[i].end());
    }
    report.components.push_back({std::nullopt, {groups.begin(), groups.end()}});
    namesOfComponent.push_back(std::move(together));
  }
  report.links = linksBetween(namesOfComponent);
  return report;
}

}  // namespace tiepoint::workbench
