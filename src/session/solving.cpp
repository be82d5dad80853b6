// From the session's points to transformations.
#include "session/multi_registrator.h"
#include "solver/complete.h"
#include "solver/group_clusters.h"
#include "solver/iterative.h"
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

  solvePairwise(workingPoints, mergeLists.begin()->second, sessionPoints, results, pointDiscrepancies);
  discrepancies = pointDiscrepancies;
  applyTransformsToDisplay();
  return true;
}

bool MultiRegistrator::registerIterative(std::uint64_t iterations, double criteria,
                                         std::map<RefPointId, double>& discrepancies) {
  discrepancies.clear();
  if (iterations == 0 || !(criteria > 0.0)) return false;
  RefPointList workingPoints;
  prepareSolvePoints(sessionPoints, workingPoints, pointDiscrepancies);
  maxIterations = iterations;
  convergenceCriteria = criteria;

  const auto end =
      solveIterative(workingPoints, {maxIterations, convergenceCriteria}, sessionPoints, results, pointDiscrepancies);
  if (end) {
    actualIterations = end->iterations;
    actualDiscrepancy = end->movement;
  }
  discrepancies = pointDiscrepancies;
  applyTransformsToDisplay();
  return true;
}

void MultiRegistrator::registerComplete(const std::list<RefPoint>& workingPoints, GroupId referenceGroup,
                                        std::map<RefPointId, double>& discrepancies) {
  solveComplete(workingPoints, referenceGroup, sessionPoints, results, discrepancies);
}

}  // namespace ZOR::reg
