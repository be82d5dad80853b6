// From the session's points to transformations.
#include "session/multi_registrator.h"
#include "solver/group_clusters.h"
#include "solver/pairwise.h"
#include "solver/solve_input.h"

namespace ZOR::reg {

bool MultiRegistrator::registerPairwise(std::map<RefPointId, double>& discrepancies) {
  discrepancies.clear();
  RefPointList workingPoints;
  prepareSolvePoints(sessionPoints, workingPoints, pointDiscrepancies);

  const GroupNameSets names = collectGroupNames(workingPoints);
  GroupClusters clusters;
  std::map<GroupId, GroupMerges> mergeLists;
  findGroupClusters(names, clusters, mergeLists);
  if (!formOneCluster(names, clusters)) {
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
