// What a solve leaves behind.
#pragma once

#include <optional>
#include <vector>

#include "records/tables.h"

namespace ZOR::reg {

/// Values of the registration method, as the reports name them.
enum RegistrationMethod : int {
  methodUnknown = -1,
  methodComplete = 0,
  methodCompleteWithBase = 1,
  methodPairwise = 2,
  methodPairwiseWithBase = 3,
  methodIterative = 4,
  methodIterativeWithBase = 5
};

/// What solves have found so far. A solve empties nothing but `groupTransforms`; the other results are
/// added to.
struct SolveResults {
  int registrationMethod = methodUnknown;
  std::vector<RigidTransform> solverTable;
  GroupTransforms groupTransforms;
  CommonPoints commonPoints;
};

}  // namespace ZOR::reg
