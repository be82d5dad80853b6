#include "session/multi_registrator.h"

#include <algorithm>

#include "host_access/host_objects.h"
#include "session/active_flags.h"
#include "session/collectors.h"
#include "session/display_data.h"
#include "session/name_tables.h"
#include "solver/solve_results.h"

namespace ZOR::reg {

namespace {

/// Colour indices of the drawing's palette, one a group: first six single colours, then four runs
/// in steps of 40 whose entries lie apart on the colour wheel.
constexpr std::uint8_t colorsOfGroups[] = {1,   2,   3,   4,  5,  6,   10,  50,  90,  130, 170, 210, 20,  60,  100,
                                           140, 180, 220, 30, 70, 110, 150, 190, 230, 40,  80,  120, 160, 200, 240};

}  // namespace

MultiRegistrator::MultiRegistrator()
    : transient(&visibleDisplay),
      matrixFormats(&results.groupTransforms),
      groupColors(std::begin(colorsOfGroups), std::end(colorsOfGroups)) {
  maxIterations = static_cast<std::uint64_t>(settings.maxIterations());
  convergenceCriteria = settings.convergenceCriteria();
  transient.beginDrawing();
}

MultiRegistrator::~MultiRegistrator() {
  // What is drawn goes before the drawable does.
  transient.endDrawing();
}

void MultiRegistrator::getIterationLimits(std::uint64_t& iterations, double& criteria) {
  iterations = maxIterations;
  criteria = convergenceCriteria;
}

bool MultiRegistrator::getCommonPointNames(std::list<NamedId>& names) {
  if (commonNames.empty()) return false;
  names = commonNames;
  return true;
}

bool MultiRegistrator::hasUnnamedPoints() {
  return std::any_of(sessionPoints.begin(), sessionPoints.end(), [](const RefPoint& point) { return !point.named; });
}

bool MultiRegistrator::hasUnnamedPointsInRegisteredGroups() {
  return std::any_of(sessionPoints.begin(), sessionPoints.end(), [this](const RefPoint& point) {
    return !point.named && results.groupTransforms.count(point.groupId) != 0;
  });
}

void MultiRegistrator::clearResults() {
  pointDiscrepancies.clear();
  results.solverTable.clear();
  results.commonPoints.clear();
  groupClusters.clear();
  results.groupTransforms.clear();
  allDisplay = untransformedDisplay;
  rebuildVisibleDisplay();
  refreshViews();
}

void MultiRegistrator::setGroupsVisible(GroupIdSet groups, bool visible) {
  for (GroupId group : groups) {
    if (visible) {
      visibleGroups.insert(group);
    } else {
      visibleGroups.erase(group);
    }
  }
  rebuildVisibleDisplay();
  refreshViews();
}

void MultiRegistrator::rebuildActive(GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  rebuildActiveFlags(sessionPoints);
  collectInactive(sessionPoints, inactiveGroups, inactivePoints);
}

void MultiRegistrator::rebuildDisplay() {
  allDisplay = displayOf(sessionPoints, groupNames, commonNames, groupColors);
  rebuildVisibleDisplay();
  refreshViews();
}

void MultiRegistrator::rebuildVisibleDisplay() { visibleDisplay = restrictedTo(visibleGroups, allDisplay); }

void MultiRegistrator::applyTransformsToDisplay() {
  untransformedDisplay = allDisplay;
  if (results.groupTransforms.empty()) return;
  moveMarkers(results.groupTransforms, allDisplay);
  rebuildVisibleDisplay();
  refreshViews();
}

}  // namespace ZOR::reg
