// What a solve leaves behind.
#pragma once

#include <optional>
#include <vector>

#include "records/tables.h"

namespace ZOR::reg {

/// The members of a session that a solve writes. Nothing is emptied by a solve but
/// `groupTransforms`.
struct SolveResults {
  int& registrationMethod;
  std::vector<RigidTransform>& solverTable;
  GroupTransforms& groupTransforms;
  CommonPoints& commonPoints;
  PointDiscrepancies& pointDiscrepancies;
};

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

}  // namespace ZOR::reg
