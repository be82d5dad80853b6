#include "workbench/session/session_mirror.h"

#include <algorithm>
#include <iterator>

#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// But for the first `known` ones.
std::vector<PointName> entriesOf(const std::list<NamedId>& names, std::size_t known = 0) {
  std::vector<PointName> entries;
  if (names.size() <= known) return entries;
  entries.reserve(names.size() - known);
  for (auto entry = std::next(names.begin(), static_cast<std::ptrdiff_t>(known)); entry != names.end(); ++entry) {
    entries.push_back({entry->id, utf8FromName(entry->name)});
  }
  return entries;
}

}  // namespace

SessionPoint* SessionMirror::find(RefPointId id) {
  const std::size_t found = index.indexOf(id);
  return found == PointIndex::none ? nullptr : &current.points[found];
}

/// Makes it known when it isn't.
SessionGroup& SessionMirror::groupOf(GroupId id) {
  const auto found = std::lower_bound(current.groups.begin(), current.groups.end(), id,
                                      [](const SessionGroup& group, GroupId wanted) { return group.id < wanted; });
  if (found != current.groups.end() && found->id == id) return *found;
  SessionGroup group;
  group.id = id;
  return *current.groups.insert(found, group);
}

bool SessionMirror::addGroupNames(const std::map<GroupId, std::string>& groups) {
  const std::size_t known = current.groups.size();
  for (const auto& [id, name] : groups) groupOf(id).name = utf8FromName(name);
  return current.groups.size() > known;
}

void SessionMirror::addPoints(const std::list<RefPoint>& added) {
  current.points.reserve(current.points.size() + added.size());
  for (const RefPoint& record : added) {
    current.points.push_back({record, {}});
    showName(current.points.back());
  }
  index.grow(current.points);
  GroupIdSet groups;
  for (const RefPoint& record : added) groups.insert(groups.end(), record.groupId);
  for (const GroupId group : groups) groupOf(group).inSession = true;
}

void SessionMirror::removePoints(const RefPointIdSet& removed) {
  const auto isRemoved = [&](const SessionPoint& point) { return removed.count(point.record.id) != 0; };
  const auto rest = std::remove_if(current.points.begin(), current.points.end(), isRemoved);
  if (rest == current.points.end()) return;
  current.points.erase(rest, current.points.end());
  index.rebuild(current.points);
  for (const RefPointId id : removed) current.unsureNames.erase(id);
  countGroups();
}

/// A group that leaves the session isn't base any more when it comes back.
void SessionMirror::countGroups() {
  for (SessionGroup& group : current.groups) group.inSession = false;
  GroupId last = 0;
  SessionGroup* group = nullptr;
  for (const SessionPoint& point : current.points) {
    if (!group || point.record.groupId != last) group = &groupOf(point.record.groupId);
    last = point.record.groupId;
    group->inSession = true;
  }
  for (SessionGroup& each : current.groups) each.inBase = each.inBase && each.inSession;
}

void SessionMirror::show(const GroupIdSet& groups) { current.visibleGroups.insert(groups.begin(), groups.end()); }

void SessionMirror::hide(const GroupIdSet& groups) {
  for (const GroupId group : groups) current.visibleGroups.erase(group);
}

void SessionMirror::setInactive(const RefPointIdSet& inactivePoints) {
  inactive.replace(inactivePoints, [this](RefPointId id, bool isInactive) {
    if (SessionPoint* point = find(id)) point->record.active = !isInactive;
  });
}

void SessionMirror::setExcluded(const RefPointIdSet& excludedPoints) {
  excluded.replace(excludedPoints, [this](RefPointId id, bool isExcluded) {
    if (SessionPoint* point = find(id)) point->record.included = !isExcluded;
  });
}

void SessionMirror::setBase(const GroupIdSet& baseGroups, const RefPointIdSet& basePoints) {
  for (SessionGroup& group : current.groups) group.inBase = baseGroups.count(group.id) != 0;
  base.replace(basePoints, [this](RefPointId id, bool isBase) {
    if (SessionPoint* point = find(id)) point->record.inBase = isBase;
  });
}

void SessionMirror::switchPoints(const RefPointIdSet& points, bool included) {
  for (const RefPointId id : points) {
    if (SessionPoint* point = find(id)) point->record.included = included;
  }
  if (!included) excluded.add(points);
}

void SessionMirror::setWeight(const RefPointIdSet& points, double weight) {
  for (const RefPointId id : points) {
    if (SessionPoint* point = find(id)) point->record.weight = weight;
  }
}

void SessionMirror::showName(SessionPoint& point) {
  const std::string* name = current.names.nameOf(point.record.commonId);
  if (!name) mayHoldNameless = true;
  point.name = name ? *name : std::string();
}

void SessionMirror::nameUnnamed() {
  if (!mayHoldNameless) return;
  mayHoldNameless = false;
  for (SessionPoint& point : current.points) {
    if (point.name.empty()) showName(point);
  }
}

void SessionMirror::setNames(const std::list<NamedId>& names) {
  current.names = NameTable(entriesOf(names));
  nameUnnamed();
}

void SessionMirror::renameGroup(GroupId group, const std::string& newName) {
  groupOf(group).name = utf8FromName(newName);
}

void SessionMirror::renamePoint(RefPointId id, const std::string& newName) {
  SessionPoint& point = *find(id);
  const CommonPointId oldName = point.record.commonId;
  const std::string name = utf8FromName(newName);
  if (const auto known = current.names.idOf(name)) {
    point.record.commonId = *known;
  } else {
    point.record.commonId = current.names.freeId();
    current.names.append(point.record.commonId, name);
    nameUnnamed();
  }
  point.record.named = newName != unidentifiedName;
  showName(point);
  current.unsureNames.erase(id);
  const bool isUsed = std::any_of(current.points.begin(), current.points.end(),
                                  [&](const SessionPoint& other) { return other.record.commonId == oldName; });
  if (!isUsed) current.names.eraseFirst(oldName);
}

void SessionMirror::assignNames(const std::map<RefPointId, std::string>& assigned, const std::list<NamedId>& names) {
  CommonPointIdSet automatic;
  for (const SessionPoint& point : current.points) {
    if (point.record.autoNamed) automatic.insert(point.record.commonId);
  }
  std::map<RefPointId, std::string> texts;
  for (const auto& [id, name] : assigned) texts.emplace_hint(texts.end(), id, utf8FromName(name));
  const std::vector<PointName> made = entriesOf(names, current.names.entries().size());
  const AssignedIds ids(texts, current.points, made);

  for (const PointName& entry : made) current.names.append(entry.id, entry.name);
  for (const auto& [id, text] : texts) {
    if (SessionPoint* point = find(id)) assignName(*point, text, ids.of(text), automatic);
  }
  nameUnnamed();
}

/// Who joins a name of the user's is the user's, who joins an automatic one stays automatic.
void SessionMirror::assignName(SessionPoint& point, const std::string& name, const std::optional<AssignedId>& assigned,
                               const CommonPointIdSet& automatic) {
  point.name = name;
  point.record.named = true;
  if (assigned) {
    point.record.commonId = assigned->id;
    point.record.autoNamed = assigned->isNew || automatic.count(assigned->id) != 0;
  }
  if (assigned && assigned->isSure) {
    current.unsureNames.erase(point.record.id);
  } else {
    current.unsureNames.insert(point.record.id);
  }
}

GroupIdSet SessionMirror::movingGroups() const {
  GroupIdSet groups;
  // As a rule the points of a group stand together.
  const SessionPoint* last = nullptr;
  for (const SessionPoint& point : current.points) {
    if (!point.record.active || point.record.inBase) continue;
    if (!last || last->record.groupId != point.record.groupId) groups.insert(point.record.groupId);
    last = &point;
  }
  return groups;
}

bool SessionMirror::hasActiveBase() const {
  return std::any_of(current.points.begin(), current.points.end(),
                     [](const SessionPoint& point) { return point.record.active && point.record.inBase; });
}

void SessionMirror::setRegistered(const PointDiscrepancies& discrepancies) {
  current.discrepancies = discrepancies;
  current.registeredGroups = movingGroups();
}

void SessionMirror::setRegisteredIteratively(const PointDiscrepancies& discrepancies) {
  current.discrepancies = discrepancies;
  // Several bases are one group of the solve.
  const GroupIdSet moving = movingGroups();
  if (moving.size() + (hasActiveBase() ? 1 : 0) >= 2) current.registeredGroups = moving;
}

void SessionMirror::clearResults() {
  current.discrepancies.clear();
  current.registeredGroups.clear();
  current.clusters.clear();
}

void SessionMirror::setIterationLimits(std::uint64_t maxIterations, double convergenceCriteria) {
  current.maxIterations = maxIterations;
  current.convergenceCriteria = convergenceCriteria;
}

void SessionMirror::setTolerances(double distance, double triangleSide, double triangleMinSideDifference) {
  current.matchDistanceTolerance = distance;
  current.triangleSideTolerance = triangleSide;
  current.triangleMinSideDifference = triangleMinSideDifference;
}

void SessionMirror::setClouds(const std::list<NamedId>& clouds) {
  current.clouds.clear();
  for (const NamedId& cloud : clouds) current.clouds.push_back({cloud.id, utf8FromName(cloud.name)});
}

}  // namespace tiepoint::workbench
