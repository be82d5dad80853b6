#include "workbench/report/refused_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/report/plain_text.h"
#include "workbench/report/registered_line.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

constexpr auto left = TextTable::Side::left;

enum class Lack { nothingToJoin, oneGroup, allAreBases, links };

/// Why groups that could take part aren't connected.
Lack lackOf(const LinkReport& links) {
  if (links.components.empty()) return Lack::nothingToJoin;
  if (links.components.size() > 1 || links.components.front().cluster) return Lack::links;
  return links.components.front().groups.size() > 1 ? Lack::allAreBases : Lack::oneGroup;
}

std::string groupNames(const Registration& registration, const std::vector<GroupId>& ids) {
  std::vector<std::string> names;
  names.reserve(ids.size());
  for (const GroupId id : ids) names.push_back(printable(registration.group(id).name));
  return joined(names);
}

std::string componentName(const Registration& registration, const Component& component) {
  const std::string groups = groupNames(registration, component.groups);
  return component.cluster ? fmt::format("cluster {} ({})", *component.cluster, groups) : groups;
}

std::string components(const Registration& registration) {
  TextTable table({left, left});
  for (const Component& component : registration.links.components) {
    table.add({component.cluster ? fmt::format("cluster {}", *component.cluster) : "in none",
               groupNames(registration, component.groups)});
  }
  return table.text();
}

std::string links(const Registration& registration) {
  TextTable table({left, left, left});
  for (const Link& link : registration.links.links) {
    std::vector<std::string> names;
    for (const std::string& name : link.names) names.push_back(printable(name));
    const std::size_t lacking = names.size() < namesThatLink ? namesThatLink - names.size() : 0;
    table.add({componentName(registration, registration.links.components[link.first]) + " and " +
                   componentName(registration, registration.links.components[link.second]),
               fmt::format("{} ({})", plural(names.size(), "common name"), joined(names)),
               lacking == 0 ? "" : fmt::format("{} more needed", lacking)});
  }
  return table.isEmpty() ? "  No two of them share a name.\n" : table.text();
}

std::string notConnectedText(const Registration& registration) {
  const std::vector<Component>& all = registration.links.components;
  const Lack lack = lackOf(registration.links);
  if (lack == Lack::nothingToJoin) return "Not registered: no group has a point that could take part.\n";
  if (lack == Lack::oneGroup) {
    return fmt::format("Not registered: {} is alone; there is no second group to join it with.\n",
                       componentName(registration, all.front()));
  }
  if (lack == Lack::allAreBases) {
    return fmt::format("Not registered: {} are bases; there is no group to join to them.\n",
                       componentName(registration, all.front()));
  }
  std::string text = fmt::format(
      "Not registered: the groups don't hang together. Two link when they share {} names, and "
      "linked ones count as one.\n",
      namesThatLink);
  text += components(registration) + "\nWhat they share\n" + links(registration);
  if (all.front().cluster) text += "\nTo go on with one cluster alone: --keep-cluster NUMBER\n";
  return text;
}

std::string baseNotSharedText(const Registration& registration) {
  return fmt::format(
      "Not registered: of the base ({}) fewer than 3 points are shared with the other groups. Without it\n"
      "they would lie in a system of their own; leave out --base to have that.\n",
      baseNames(registration));
}

std::string whyNotConnected(const Registration& registration) {
  const auto& points = registration.points;
  const bool hasNames = std::any_of(points.begin(), points.end(), [](const PointOutcome& p) { return p.named; });
  switch (lackOf(registration.links)) {
    case Lack::nothingToJoin:
      if (hasNames) return "no group has a point that could take part; the summary tells why";
      return registration.naming ? "no point could be named; the summary tells why"
                                 : "no point has a name; --match auto finds names";
    case Lack::oneGroup:
      return "there is one group alone; add a second to join it with";
    case Lack::allAreBases:
      return "all groups are bases; leave one --base out, or add a group that is none";
    case Lack::links:
      break;
  }
  return "the groups don't hang together; the summary tells what they lack";
}

}  // namespace

std::string refusedText(const Registration& registration) {
  if (std::holds_alternative<NotNamed>(registration.outcome)) {
    return "Not registered: the points can't be named so that it is certain.\n";
  }
  return std::holds_alternative<BaseNotShared>(registration.outcome) ? baseNotSharedText(registration)
                                                                     : notConnectedText(registration);
}

std::string whyNotRegistered(const Registration& registration) {
  if (std::holds_alternative<BaseNotShared>(registration.outcome)) {
    return "the base shares fewer than 3 points with the others; choose another base or none";
  }
  if (std::holds_alternative<NotNamed>(registration.outcome)) {
    return "the points can't be named so that it is certain; the summary tells why";
  }
  return whyNotConnected(registration);
}

}  // namespace tiepoint::workbench
