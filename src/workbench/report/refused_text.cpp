#include "workbench/report/refused_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/report/open_motion_text.h"
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
    table.add({component.cluster ? fmt::format("cluster {}", *component.cluster) : "in no cluster",
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
  if (lack == Lack::nothingToJoin) return "Not registered: no group has a usable point.\n";
  if (lack == Lack::oneGroup) {
    return fmt::format("Not registered: there is only one group, {}, and nothing to join it with.\n",
                       componentName(registration, all.front()));
  }
  if (lack == Lack::allAreBases) {
    return fmt::format("Not registered: all groups ({}) are bases; there is none left to join to them.\n",
                       componentName(registration, all.front()));
  }
  std::string text = fmt::format(
      "Not registered: the groups aren't connected. Two groups are linked when they share {} names;\n"
      "linked groups count as one.\n",
      namesThatLink);
  text += components(registration) + "\nShared names\n" + links(registration);
  if (all.front().cluster) text += "\nTo go on with one cluster only: --keep-cluster NUMBER\n";
  return text;
}

std::string baseNotSharedText(const Registration& registration) {
  return fmt::format(
      "Not registered: the base ({}) shares fewer than 3 points with the other groups. To register them\n"
      "without it, in a system of their own, leave out --base.\n",
      baseNames(registration));
}

std::string undeterminedText(const Registration& registration) {
  const std::string what = fmt::format("Not registered: {}, and no measurement opposes that. {}",
                                       openMotionText(registration), openMotionRemedy(registration));
  const bool areApart = registration.links.components.size() > 1;
  return wrapped(what, textWidth, 0) + "\n" + (areApart ? "\nShared names\n" + links(registration) : "");
}

std::string whyNotConnected(const Registration& registration) {
  const auto& points = registration.points;
  const bool hasNames = std::any_of(points.begin(), points.end(), [](const PointOutcome& p) { return p.named; });
  switch (lackOf(registration.links)) {
    case Lack::nothingToJoin:
      if (hasNames) return "no group has a usable point; see the summary";
      return registration.naming ? "no point could be named; see the summary"
                                 : "no point has a name; --match auto searches for names";
    case Lack::oneGroup:
      return "there is only one group; add a second one";
    case Lack::allAreBases:
      return "all groups are bases; leave out one --base, or add another group";
    case Lack::links:
      break;
  }
  return "the groups aren't connected; see the summary for what is missing";
}

}  // namespace

std::string refusedText(const Registration& registration) {
  if (std::holds_alternative<NotNamed>(registration.outcome)) {
    return "Not registered: the points can't be named with certainty.\n";
  }
  if (std::holds_alternative<Undetermined>(registration.outcome)) return undeterminedText(registration);
  return std::holds_alternative<BaseNotShared>(registration.outcome) ? baseNotSharedText(registration)
                                                                     : notConnectedText(registration);
}

std::string whyNotRegistered(const Registration& registration) {
  if (std::holds_alternative<BaseNotShared>(registration.outcome)) {
    return "the base shares fewer than 3 points with the other groups; choose another base or none";
  }
  if (std::holds_alternative<NotNamed>(registration.outcome)) {
    return "the points can't be named with certainty; see the summary";
  }
  if (std::holds_alternative<Undetermined>(registration.outcome)) {
    return openMotionText(registration) + "; see the summary for what is missing";
  }
  return whyNotConnected(registration);
}

}  // namespace tiepoint::workbench
