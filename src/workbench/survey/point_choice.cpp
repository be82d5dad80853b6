#include "workbench/survey/point_choice.h"

#include <algorithm>
#include <functional>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// In the order of the session, in which a message lists them.
std::vector<std::string> groupsOf(const SessionState& state) {
  std::vector<std::string> groups;
  for (const SessionGroup& group : state.groups) groups.push_back(group.name);
  return groups;
}

[[noreturn]] void refuseGroup(Field field, const std::string& given, const std::string& group,
                              std::vector<std::string> known) {
  Refusal refusal{RefusalKind::noSuchGroup, field, given, group};
  refusal.known = std::move(known);
  throw Refused(std::move(refusal));
}

[[noreturn]] void refusePoint(Field field, const std::string& given, const PointRef& ref,
                              std::vector<std::string> known) {
  Refusal refusal{RefusalKind::noSuchPoint, field, given, ref.group, *ref.point};
  refusal.known = std::move(known);
  throw Refused(std::move(refusal));
}

std::optional<GroupId> groupOfName(const SessionState& state, const std::string& text) {
  const std::string name = sessionName(text);
  for (const SessionGroup& group : state.groups) {
    if (group.name == name) return group.id;
  }
  return std::nullopt;
}

std::vector<std::string> pointNames(const SessionState& state, GroupId group) {
  std::vector<std::string> names;
  for (const SessionPoint& point : state.points) {
    if (point.record.groupId == group) names.push_back(point.name);
  }
  return names;
}

std::optional<ChosenPoints> pointsOf(const SessionState& state, const PointRef& ref) {
  const auto group = groupOfName(state, ref.group);
  if (!group) return std::nullopt;
  ChosenPoints chosen{*group, !ref.point, {}};
  const std::string name = ref.point ? sessionName(*ref.point) : "";
  for (const SessionPoint& point : state.points) {
    if (point.record.groupId == *group && (!ref.point || point.name == name)) chosen.points.insert(point.record.id);
  }
  if (ref.point && chosen.points.empty()) return std::nullopt;
  return chosen;
}

/// The reading that a message is about: the first of a point whose group is known, else the one that
/// names the shortest group.
const PointRef& readingToBlame(const PointChoice& choice, const std::function<bool(const std::string&)>& isGroup) {
  for (const PointRef& ref : choice.readings) {
    if (ref.point && isGroup(ref.group)) return ref;
  }
  return *std::min_element(choice.readings.begin(), choice.readings.end(),
                           [](const PointRef& a, const PointRef& b) { return a.group.size() < b.group.size(); });
}

}  // namespace

GroupId chosenGroup(const SessionState& state, const std::string& name, Field field) {
  if (const auto group = groupOfName(state, name)) return *group;
  refuseGroup(field, name, name, groupsOf(state));
}

std::optional<ChosenPoints> findPoints(const SessionState& state, const PointChoice& choice) {
  for (const PointRef& ref : choice.readings) {
    if (auto chosen = pointsOf(state, ref)) return chosen;
  }
  return std::nullopt;
}

ChosenPoints chosenPoints(const SessionState& state, const PointChoice& choice, Field field) {
  if (auto chosen = findPoints(state, choice)) return *chosen;
  const auto isGroup = [&](const std::string& name) { return groupOfName(state, name).has_value(); };
  const PointRef& ref = readingToBlame(choice, isGroup);
  const auto group = groupOfName(state, ref.group);
  if (!group) refuseGroup(field, choice.given, ref.group, groupsOf(state));
  refusePoint(field, choice.given, ref, pointNames(state, *group));
}

void requireGroup(const KnownNames& names, const std::string& group, const std::string& given, Field field) {
  if (!names.find(sessionName(group))) refuseGroup(field, given, group, names.groups());
}

void requireKnown(const KnownNames& names, const PointChoice& choice, Field field, NamesToCome toCome) {
  const auto pointsOf = [&](const std::string& group) { return names.find(sessionName(group)); };
  for (const PointRef& ref : choice.readings) {
    const std::vector<std::string>* const points = pointsOf(ref.group);
    if (!points) continue;
    if (!ref.point || toCome == NamesToCome::some) return;
    if (std::find(points->begin(), points->end(), sessionName(*ref.point)) != points->end()) return;
  }
  const PointRef& ref = readingToBlame(choice, [&](const std::string& name) { return pointsOf(name) != nullptr; });
  if (!pointsOf(ref.group)) refuseGroup(field, choice.given, ref.group, names.groups());
  refusePoint(field, choice.given, ref, *pointsOf(ref.group));
}

}  // namespace tiepoint::workbench
