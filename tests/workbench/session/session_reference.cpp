#include "workbench/session/session_reference.h"

#include "files/html_reports.h"
#include "session/name_tables.h"
#include "solver/group_clusters.h"
#include "solver/iterative.h"
#include "solver/pairwise.h"
#include "solver/solve_input.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// More than the tests have.
constexpr std::uint64_t allIds = 300;

std::set<std::uint64_t> everyId() {
  std::set<std::uint64_t> ids;
  for (std::uint64_t id = 0; id < allIds; ++id) ids.insert(ids.end(), id);
  return ids;
}

}  // namespace

SessionLists::SessionLists(const SessionState& state) {
  for (const SessionPoint& point : state.points) points.push_back(point.record);
  for (const SessionGroup& group : state.groups) groupNames.push_back({group.id, nameFromUtf8(group.name)});
  for (const PointName& entry : state.names.entries()) commonNames.push_back({entry.id, nameFromUtf8(entry.name)});
}

bool SessionReference::registerPairwise(const SessionLists& lists) {
  RefPointList working;
  prepareSolvePoints(lists.points, working, pointDiscrepancies);
  const GroupNameSets names = collectGroupNames(working);
  GroupClusters found;
  std::map<GroupId, GroupMerges> merges;
  findGroupClusters(names, found, merges);
  if (!formOneCluster(names, found)) {
    clusters = found;
    return false;
  }
  solvePairwise(working, merges.begin()->second, lists.points, results, pointDiscrepancies);
  return true;
}

void SessionReference::registerIterative(const SessionLists& lists, std::uint64_t maxIterations,
                                         double convergenceCriteria) {
  RefPointList working;
  prepareSolvePoints(lists.points, working, pointDiscrepancies);
  const auto end =
      solveIterative(working, {maxIterations, convergenceCriteria}, lists.points, results, pointDiscrepancies);
  if (!end) return;
  actualIterations = end->iterations;
  actualDiscrepancy = end->movement;
}

void SessionReference::clearResults() {
  pointDiscrepancies.clear();
  results.solverTable.clear();
  results.commonPoints.clear();
  clusters.clear();
  results.groupTransforms.clear();
}

std::wstring SessionReference::reports(const SessionState& state) const {
  const SessionLists lists(state);
  const ReportSource source{
      lists.points,         lists.groupNames,   lists.commonNames,          results.groupTransforms,
      results.commonPoints, pointDiscrepancies, results.registrationMethod, actualIterations,
      state.maxIterations,  actualDiscrepancy,  state.convergenceCriteria};
  return pointsReport(source, everyId()) + groupsReport(source, everyId()) + resultsReport(source);
}

std::wstring reportsOf(iMultiRegistrator& session) {
  const std::wstring points = session.getPointsReport(everyId());
  const std::wstring groups = session.getGroupsReport(everyId());
  return points + groups + session.getResultsReport();
}

MatchReference::MatchReference(SessionLists before, const NamingChanges& changes) : lists(std::move(before)) {
  std::set<CommonPointId> automatic;
  for (const RefPoint& point : lists.points) {
    if (point.autoNamed) automatic.insert(point.commonId);
  }
  const NamesById nameOf(lists.commonNames);
  for (const auto& [id, name] : changes.existingAssignments) assignedNames[id] = nameOf[name];
  std::map<std::uint64_t, CommonPointId> made;
  for (const auto& entry : changes.newAssignments) made[entry.second] = 0;
  for (auto& entry : made) {
    entry.second = smallestFreeId(lists.commonNames);
    lists.commonNames.push_back({entry.second, "auto" + std::to_string(entry.second)});
  }
  for (const auto& [id, label] : changes.newAssignments) assignedNames[id] = "auto" + std::to_string(made[label]);
  for (RefPoint& point : lists.points) {
    const auto existing = changes.existingAssignments.find(point.id);
    const auto label = changes.newAssignments.find(point.id);
    if (existing != changes.existingAssignments.end()) {
      point.commonId = existing->second;
      point.autoNamed = automatic.count(point.commonId) != 0;
      point.named = true;
    }
    if (label != changes.newAssignments.end()) {
      point.commonId = made[label->second];
      point.autoNamed = true;
      point.named = true;
    }
  }
}

}  // namespace tiepoint::workbench
