#include "workbench/naming/scratch_session.h"

#include <map>
#include <utility>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

GroupIdSet groupsOf(const SessionState& state) {
  GroupIdSet groups;
  for (const SessionPoint& point : state.points) groups.insert(point.record.groupId);
  return groups;
}

}  // namespace

SettingsById settingsOf(const SessionState& state) {
  SettingsById settings;
  for (const SessionPoint& point : state.points) {
    settings[point.record.id] = {point.record.included, point.record.weight};
  }
  return settings;
}

ScratchSession::ScratchSession(Workbench& workbench, const SettingsById& settings_)
    : mirrored(workbench.newSession()), driven(mirrored), settings(settings_) {
  driven.addAllGroups();
  groups = groupsOf(driven.state());
  choose();
}

ScratchSession::ScratchSession(Workbench& workbench, const SettingsById& settings_, GroupIdSet groups_)
    : mirrored(workbench.newSession()), driven(mirrored), settings(settings_), groups(std::move(groups_)) {
  driven.addGroups(groups);
  choose();
}

void ScratchSession::restart() { changeTo(groups); }

void ScratchSession::changeTo(GroupIdSet groups_) {
  driven.clearResults();
  driven.removeGroups(groups);
  groups = std::move(groups_);
  driven.addGroups(groups);
  choose();
}

void ScratchSession::choose() {
  RefPointIdSet excluded;
  std::map<double, RefPointIdSet> weights;
  for (const SessionPoint& point : driven.state().points) {
    const PointSettings& wanted = settings.at(point.record.id);
    if (!wanted.included) excluded.insert(point.record.id);
    if (wanted.weight < point.record.weight || wanted.weight > point.record.weight) {
      weights[wanted.weight].insert(point.record.id);
    }
  }
  if (!excluded.empty()) driven.excludePoints(excluded);
  for (const auto& [weight, points] : weights) driven.setWeight(points, weight);
  naming.emplace(driven);
}

}  // namespace tiepoint::workbench
