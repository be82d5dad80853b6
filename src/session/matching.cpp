// Automatic naming, and how far named points stay apart.
#include <boost/unordered/unordered_flat_set.hpp>

#include "host_access/host_objects.h"
#include "matching/match_by_distance.h"
#include "matching/match_by_triangles.h"
#include "matching/point_spread.h"
#include "session/collectors.h"
#include "session/display_data.h"
#include "session/multi_registrator.h"
#include "session/name_tables.h"

namespace ZOR::reg {

namespace {

using Names = boost::unordered_flat_set<CommonPointId>;

Names autoNamesOf(const RefPointList& points) {
  Names names;
  for (const RefPoint& point : points) {
    if (point.autoNamed) names.insert(point.commonId);
  }
  return names;
}

/// An existing name keeps its kind: who joins a name of the user's is the user's, who joins an
/// automatic one stays automatic.
void joinExistingNames(const std::map<RefPointId, CommonPointId>& assignments, const Names& autoCommonIds,
                       RefPointList& points) {
  for (RefPoint& point : points) {
    const auto assignment = assignments.find(point.id);
    if (assignment == assignments.end()) continue;
    point.commonId = assignment->second;
    point.named = true;
    point.autoNamed = autoCommonIds.count(point.commonId) != 0;
  }
}

/// New names fill the gaps in the numbering, the lowest first.
std::map<std::uint64_t, CommonPointId> idsForLabels(const std::map<RefPointId, std::uint64_t>& assignments,
                                                    const NamedIdList& commonNames) {
  Names usedCommonIds;
  usedCommonIds.reserve(commonNames.size());
  for (const NamedId& entry : commonNames) usedCommonIds.insert(entry.id);
  std::set<std::uint64_t> labels;
  for (const auto& entry : assignments) labels.insert(entry.second);

  std::map<std::uint64_t, CommonPointId> labelIds;
  CommonPointId cursor = 0;
  for (std::uint64_t label : labels) {
    while (usedCommonIds.count(cursor) != 0) ++cursor;
    usedCommonIds.insert(cursor);
    labelIds[label] = cursor;
  }
  return labelIds;
}

void assignNewNames(const std::map<RefPointId, std::uint64_t>& assignments,
                    const std::map<std::uint64_t, CommonPointId>& labelIds, RefPointList& points) {
  for (RefPoint& point : points) {
    const auto assignment = assignments.find(point.id);
    if (assignment == assignments.end()) continue;
    point.commonId = labelIds.at(assignment->second);
    point.named = true;
    point.autoNamed = true;
  }
}

std::string autoName(CommonPointId id) { return "auto" + std::to_string(id); }

}  // namespace

void MultiRegistrator::getMatchDistanceTolerance(double& tolerance) { tolerance = matchDistanceTolerance; }

void MultiRegistrator::getTriangleMatchTolerances(double& sideTolerance, double& minSideDifference) {
  sideTolerance = triangleSideTolerance;
  minSideDifference = triangleMinSideDifference;
}

void MultiRegistrator::matchPointsByDistance(double tolerance, std::map<RefPointId, std::string>& assignedNames,
                                             GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  assignedNames.clear();
  matchDistanceTolerance = tolerance;
  NamingChanges changes;
  matchByDistance(sessionPoints, results.groupTransforms, tolerance, changes);
  applyMatch(changes, assignedNames, inactiveGroups, inactivePoints);
}

void MultiRegistrator::matchGroupsByTriangles(const GroupIdSet& groups, double sideTolerance, double minSideDifference,
                                              std::map<RefPointId, std::string>& assignedNames,
                                              GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  assignedNames.clear();
  triangleSideTolerance = sideTolerance;
  triangleMinSideDifference = minSideDifference;
  RefPointList chosen;
  for (const RefPoint& point : sessionPoints) {
    if (groups.count(point.groupId) != 0) chosen.push_back(point);
  }
  NamingChanges changes;
  matchByTriangles(chosen, sideTolerance, minSideDifference, changes);
  applyMatch(changes, assignedNames, inactiveGroups, inactivePoints);
}

void MultiRegistrator::matchAllGroupsByTriangles(double sideTolerance, double minSideDifference,
                                                 std::map<RefPointId, std::string>& assignedNames,
                                                 GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  assignedNames.clear();
  triangleSideTolerance = sideTolerance;
  triangleMinSideDifference = minSideDifference;
  NamingChanges changes;
  matchByTriangles(sessionPoints, sideTolerance, minSideDifference, changes);
  applyMatch(changes, assignedNames, inactiveGroups, inactivePoints);
}

void MultiRegistrator::applyMatch(const NamingChanges& changes, std::map<RefPointId, std::string>& assignedNames,
                                  GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  if (changes.isEmpty()) {
    collectInactive(sessionPoints, inactiveGroups, inactivePoints);
    return;
  }
  const Names autoCommonIds = autoNamesOf(sessionPoints);
  joinExistingNames(changes.existingAssignments, autoCommonIds, sessionPoints);
  const NamesById nameOf(commonNames);
  for (const auto& [point, name] : changes.existingAssignments) assignedNames[point] = nameOf[name];

  const std::map<std::uint64_t, CommonPointId> labelIds = idsForLabels(changes.newAssignments, commonNames);
  assignNewNames(changes.newAssignments, labelIds, sessionPoints);
  for (const auto& entry : labelIds) commonNames.push_back({entry.second, autoName(entry.second)});
  for (const auto& [point, label] : changes.newAssignments) assignedNames[point] = autoName(labelIds.at(label));

  rebuildActive(inactiveGroups, inactivePoints);
  RefPointIdSet renamed;
  for (const auto& entry : changes.existingAssignments) renamed.insert(entry.first);
  for (const auto& entry : changes.newAssignments) renamed.insert(entry.first);
  refreshDisplayNames(renamed);
}

void MultiRegistrator::refreshDisplayNames(const RefPointIdSet& points) {
  if (points.empty()) return;
  const std::map<RefPointId, OdString> names = displayNamesOf(points, sessionPoints, commonNames);
  renameMarkers(names, visibleDisplay);
  renameMarkers(names, allDisplay);
  if (!results.groupTransforms.empty()) renameMarkers(names, untransformedDisplay);
  refreshViews();
}

double MultiRegistrator::getMaxPointSpread() {
  std::vector<double> distances;
  collectSpreadDistances(sessionPoints, results.groupTransforms, results.commonPoints, distances);
  return maxSpread(distances);
}

bool MultiRegistrator::getPointSpreadHistogram(std::vector<std::uint64_t>& binCounts, std::vector<double>& binEdges) {
  std::vector<double> distances;
  if (!collectSpreadDistances(sessionPoints, results.groupTransforms, results.commonPoints, distances)) return false;
  spreadHistogram(distances, binCounts, binEdges);
  return true;
}

}  // namespace ZOR::reg
