#include "workbench/geometry/links.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

std::map<GroupId, std::set<std::string>> eligibleNames(const SessionState& state) {
  std::map<GroupId, std::set<std::string>> names;
  for (const SessionPoint& point : state.points) {
    if (isEligible(point.record)) names[point.record.groupId].insert(point.name);
  }
  return names;
}

using Names = std::set<std::string>;

std::vector<Link> linksBetween(const std::vector<Names>& namesOfPart) {
  std::vector<Link> links;
  for (std::size_t a = 0; a < namesOfPart.size(); ++a) {
    for (std::size_t b = a + 1; b < namesOfPart.size(); ++b) {
      Link link{a, b, {}};
      std::set_intersection(namesOfPart[a].begin(), namesOfPart[a].end(), namesOfPart[b].begin(), namesOfPart[b].end(),
                            std::back_inserter(link.names));
      if (!link.names.empty()) links.push_back(std::move(link));
    }
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

/// Groups that have been found to hang together so far, and all their names.
struct GrowingPart {
  std::set<GroupId> groups;
  Names names;

  void join(const GrowingPart& other) {
    groups.insert(other.groups.begin(), other.groups.end());
    names.insert(other.names.begin(), other.names.end());
  }
};

/// One for each group in use; several bases are one.
std::vector<GrowingPart> activeGroupParts(const SessionState& state) {
  std::optional<GroupId> base;
  std::map<GroupId, GrowingPart> parts;
  for (const SessionPoint& point : state.points) {
    if (!point.record.active) continue;
    const GroupId group = point.record.groupId;
    if (point.record.inBase && !base) base = group;
    GrowingPart& part = parts[point.record.inBase ? *base : group];
    part.groups.insert(group);
    part.names.insert(point.name);
  }
  std::vector<GrowingPart> all;
  for (auto& entry : parts) all.push_back(std::move(entry.second));
  return all;
}

bool areLinked(const GrowingPart& a, const GrowingPart& b) {
  const bool fewerInA = a.names.size() < b.names.size();
  const Names& fewer = fewerInA ? a.names : b.names;
  const Names& more = fewerInA ? b.names : a.names;
  std::size_t common = 0;
  for (const std::string& name : fewer) common += more.count(name);
  return common >= namesThatLink;
}

/// Joins two linked parts. False when no two are left.
bool joinTwo(std::vector<GrowingPart>& parts) {
  for (std::size_t a = 0; a < parts.size(); ++a) {
    for (std::size_t b = a + 1; b < parts.size(); ++b) {
      if (!areLinked(parts[a], parts[b])) continue;
      parts[a].join(parts[b]);
      parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(b));
      return true;
    }
  }
  return false;
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
  std::vector<GrowingPart> parts = activeGroupParts(state);
  while (joinTwo(parts)) {
  }
  LinkReport report;
  std::vector<Names> names;
  for (GrowingPart& part : parts) {
    report.parts.push_back({std::nullopt, {part.groups.begin(), part.groups.end()}});
    names.push_back(std::move(part.names));
  }
  report.links = linksBetween(names);
  return report;
}

}  // namespace tiepoint::workbench
