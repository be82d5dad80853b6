// A start that no order of joining has a part in: the rotations nearest to the softest eigenvectors of the
// whole survey's form.
#pragma once

#include "workbench/analysis/rotation_form.h"

namespace tiepoint::workbench::analysis {

/// From the three eigenvectors of M with the smallest eigenvalues. On the survey's datum.
Placements spectralStart(const Survey& survey, const RotationForm& form);

}  // namespace tiepoint::workbench::analysis
