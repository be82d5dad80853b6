#include "matching/naming_state.h"

#include <algorithm>

namespace ZOR::reg {

void NamingChanges::clear() {
  existingAssignments.clear();
  newAssignments.clear();
}

NamingState::NamingState(const RefPointList& points) {
  for (const RefPoint& point : points) {
    pointGroups[point.id] = point.groupId;
    if (!point.named) {
      unnamedPoints.insert(point.id);
    } else if (point.autoNamed) {
      giveLabel(point.id, point.commonId);
    } else {
      manualNames[point.id] = point.commonId;
    }
  }
  manualBefore = manualNames;
  autoBefore = autoNames;
}

NamingState::Kinds NamingState::kindsOf(const std::list<RefPointId>& members) const {
  Kinds kinds;
  for (RefPointId member : members) {
    if (const auto manual = manualNames.find(member); manual != manualNames.end()) {
      kinds.bindingNames.insert(manual->second);
    } else if (const auto automatic = autoNames.find(member); automatic != autoNames.end()) {
      kinds.labels.insert(automatic->second);
      kinds.labelled.push_back(member);
    } else if (unnamedPoints.count(member) != 0) {
      kinds.unnamed.push_back(member);
    }
  }
  return kinds;
}

bool NamingState::uniteCorrespondence(const std::list<RefPointId>& members) {
  if (!lieInDifferentGroups(members)) return false;
  Kinds kinds = kindsOf(members);
  if (kinds.bindingNames.size() > 1) return false;
  if (kinds.unnamed.empty() && kinds.labelled.empty()) return true;

  if (!kinds.bindingNames.empty()) {
    const CommonPointId name = *kinds.bindingNames.begin();
    for (std::uint64_t label : kinds.labels) replaceLabel(label, name);
    for (RefPointId point : kinds.unnamed) giveManualName(point, name);
    return true;
  }
  if (kinds.labels.empty()) {
    kinds.labels.insert(nextLabel());
    newLabels.insert(*kinds.labels.begin());
  }
  const std::uint64_t label = *kinds.labels.begin();
  for (RefPointId point : kinds.labelled) giveLabel(point, label);
  for (RefPointId point : kinds.unnamed) giveLabel(point, label);
  return true;
}

bool NamingState::lieInDifferentGroups(const std::list<RefPointId>& members) {
  GroupIdSet groups;
  for (RefPointId member : members) groups.insert(pointGroups[member]);
  return groups.size() == members.size();
}

std::uint64_t NamingState::nextLabel() const {
  while (pointsOfLabel.count(lowestFree) != 0 || newLabels.count(lowestFree) != 0) ++lowestFree;
  return lowestFree;
}

void NamingState::giveLabel(RefPointId point, std::uint64_t label) {
  unnamedPoints.erase(point);
  const auto [entry, isNew] = autoNames.try_emplace(point, label);
  if (!isNew) {
    if (entry->second == label) return;
    const auto bearers = pointsOfLabel.find(entry->second);
    bearers->second.erase(point);
    if (bearers->second.empty()) {
      lowestFree = std::min(lowestFree, bearers->first);
      pointsOfLabel.erase(bearers);
    }
    entry->second = label;
  }
  pointsOfLabel[label].insert(point);
}

void NamingState::giveManualName(RefPointId point, CommonPointId name) {
  unnamedPoints.erase(point);
  manualNames[point] = name;
}

void NamingState::replaceLabel(std::uint64_t label, CommonPointId name) {
  const auto bearers = pointsOfLabel.find(label);
  for (RefPointId point : bearers->second) {
    autoNames.erase(point);
    giveManualName(point, name);
  }
  lowestFree = std::min(lowestFree, label);
  pointsOfLabel.erase(bearers);
}

void NamingState::collectChanges(NamingChanges& changes) const {
  changes.clear();
  for (const auto& [point, name] : manualNames) {
    const auto before = manualBefore.find(point);
    if (before == manualBefore.end() || before->second != name) changes.existingAssignments.emplace(point, name);
  }
  for (const auto& [point, label] : autoNames) {
    const auto before = autoBefore.find(point);
    if (before != autoBefore.end() && before->second == label) continue;
    auto& assignments = newLabels.count(label) != 0 ? changes.newAssignments : changes.existingAssignments;
    assignments.emplace(point, label);
  }
}

}  // namespace ZOR::reg
