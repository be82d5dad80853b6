#include "workbench/session/shown_groups.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "workbench/session/stored_groups.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Half the length of a cross that is offered to the module: so much of the distance that each point
/// would have from the next if they were spread evenly, within these bounds.
constexpr double reachShare = 1.0 / 3.0;
constexpr double smallestReach = 2.0;
constexpr double largestReach = 10.0;
/// The share of a picture that points spread over, and the unit in which a plain picture is measured.
constexpr double drawingShare = 0.5;
constexpr double plainArea = 960.0 * 640.0;

}  // namespace

std::vector<const OdGiDrawable*> drawablesOf(Workbench& workbench) {
  std::vector<const OdGiDrawable*> drawables;
  for (const TransientEntry& entry : workbench.requireActiveDocument().transient().drawables()) {
    drawables.push_back(entry.drawable);
  }
  return drawables;
}

ShownGroups shownGroups(Workbench& workbench, const SessionState& state, const GroupIdSet& hidden) {
  std::map<GroupId, std::size_t> pointCounts;
  for (const SessionPoint& point : state.points) ++pointCounts[point.record.groupId];
  RecordingDraw draw{View()};
  for (const OdGiDrawable* drawable : drawablesOf(workbench)) draw.draw(*drawable);
  ShownGroups shown;
  std::size_t line = 0;
  for (const SessionGroup& group : state.groups) {
    if (hidden.count(group.id) != 0 || line >= draw.lines().size()) continue;
    const std::size_t points = pointCounts[group.id];
    if (points == 0) continue;
    shown[group.id] = {draw.lines()[line].color, points};
    line += 3 * points;
  }
  return shown;
}

void scaleMarkers(Workbench& workbench, double area) {
  std::size_t count = 0;
  const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
  for (const StoredGroup& group : storedGroups(*database)) count += group.points().size();
  if (count == 0) return;
  // Larger pictures are larger all over, not finer.
  const double reach = reachShare * std::sqrt(std::min(plainArea, area) * drawingShare / static_cast<double>(count));
  workbench.profile().setDefault(registrationSection, "SizeLabel",
                                 static_cast<int>(std::clamp(reach, smallestReach, largestReach)));
}

}  // namespace tiepoint::workbench
