// A minimum with the factored normal equations there: what all statements about it are computed from.
#pragma once

#include "workbench/analysis/elimination.h"
#include "workbench/analysis/normal_equations.h"
#include "workbench/analysis/sparse_factor.h"

namespace tiepoint::workbench::analysis {

struct Solution {
  const Survey& survey;
  const Placements& placements;
  const Elimination& elimination;
  const NormalEquations& equations;
  const SparseFactor& factor;

  PointRows rowsOf(std::size_t sighting) const {
    const bool isLevelled = survey.stations[survey.sightings[sighting].station].levelled;
    return pointRows(armOf(survey, placements, elimination, sighting), isLevelled);
  }
};

}  // namespace tiepoint::workbench::analysis
