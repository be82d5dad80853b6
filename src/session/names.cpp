// Names of groups and points.
#include <algorithm>

#include "session/multi_registrator.h"
#include "session/name_rules.h"
#include "session/name_tables.h"

namespace ZOR::reg {

namespace {

NamedIdList::iterator findId(NamedIdList& table, std::uint64_t id) {
  return std::find_if(table.begin(), table.end(), [&](const NamedId& entry) { return entry.id == id; });
}

bool groupHasName(const RefPointList& points, GroupId group, CommonPointId name) {
  return std::any_of(points.begin(), points.end(),
                     [&](const RefPoint& point) { return point.groupId == group && point.commonId == name; });
}

bool anyPointHasName(const RefPointList& points, CommonPointId name) {
  return std::any_of(points.begin(), points.end(), [&](const RefPoint& point) { return point.commonId == name; });
}

}  // namespace

bool MultiRegistrator::renameGroup(GroupId group, std::string newName, RefPointIdSet& groupPoints) {
  if (!isGroupName(newName)) return false;
  if (idsByName(groupNames).count(newName) != 0) return false;
  const auto entry = findId(groupNames, group);
  if (entry == groupNames.end()) return false;

  groupPoints.clear();
  for (const RefPoint& point : sessionPoints) {
    if (point.groupId == group) groupPoints.insert(point.id);
  }
  entry->name = std::move(newName);
  rebuildDisplay();
  return true;
}

bool MultiRegistrator::renamePoint(RefPointId id, std::string newName, GroupId& group, GroupIdSet& inactiveGroups,
                                   RefPointIdSet& inactivePoints) {
  if (!isPointName(newName)) return false;
  const auto point = std::find_if(sessionPoints.begin(), sessionPoints.end(),
                                  [&](const RefPoint& candidate) { return candidate.id == id; });
  if (point == sessionPoints.end()) return false;
  const CommonPointId oldName = point->commonId;
  group = point->groupId;

  const IdsByName known = idsByName(commonNames);
  const bool unidentified = newName == unidentifiedName;
  if (const auto found = known.find(newName); found != known.end()) {
    if (!unidentified && groupHasName(sessionPoints, point->groupId, found->second)) return false;
    point->commonId = found->second;
  } else {
    const CommonPointId newId = smallestFreeId(commonNames);
    commonNames.push_back({newId, std::move(newName)});
    point->commonId = newId;
  }
  point->named = !unidentified;

  if (!anyPointHasName(sessionPoints, oldName)) {
    if (const auto entry = findId(commonNames, oldName); entry != commonNames.end()) commonNames.erase(entry);
  }
  rebuildActive(inactiveGroups, inactivePoints);
  rebuildDisplay();
  return true;
}

}  // namespace ZOR::reg
