// Whether no other poses fit better: the dual bound of the semidefinite relaxation at a stationary point.
#pragma once

#include <optional>

#include "workbench/analysis/rotation_form.h"
#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis {

/// S = M - L is positive semidefinite only where no set of rotations does better. Its smallest eigenvalue on
/// the complement of Z' bounds what could be gained. The sign comes from the inertia of one sparse factor
/// with the shifts kept in, the number from inverse iteration with it. A bound, not a verdict: where the
/// targets of a station lie in one plane to within the noise, the relaxation can't tell it from its mirror
/// image, and the least sum may stay uncertified with a small gap.
Certificate certify(const RotationForm& form, const Placements& placements, const Elimination& elimination);

/// The trace of M in the form's units of length.
double traceOfRotations(const RotationForm& form);

}  // namespace tiepoint::workbench::analysis
