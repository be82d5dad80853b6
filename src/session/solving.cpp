// From the session's points to transformations.
#include "session/multi_registrator.h"
#include "solver/group_clusters.h"
#include "solver/pairwise.h"
#include "solver/solve_input.h"

namespace ZOR::reg {

namespace {

GroupNameSets nameSetsOf(const RefPointList& workingPoints) {
  GroupNameSets names;
  for (const RefPoint& point : workingPoints) names[point.groupId].insert(point.commonId);
  return names;
}

}  // namespace

bool MultiRegistrator::registerPairwise(std::map<RefPointId, double>& discrepancies) {
  discrepancies.clear();
  RefPointList workingPoints;
  prepareSolvePoints(sessionPoints, workingPoints, pointDiscrepancies);

  const GroupNameSets names = nameSetsOf(workingPoints);
  GroupClusters clusters;
  std::map<GroupId, GroupMerges> mergeLists;
  findGroupClusters(names, clusters, mergeLists);
  if (clusters.size() != 1 || clusters.begin()->second.size() != names.size()) {
    groupClusters = std::move(clusters);
    return false;
  }

  solvePairwise(workingPoints, mergeLists.begin()->second, sessionPoints,
                {registrationMethod, solverTable, groupTransforms, commonPoints, pointDiscrepancies});
  discrepancies = pointDiscrepancies;
  applyTransformsToDisplay();
  return true;
}

}  // namespace ZOR::reg
