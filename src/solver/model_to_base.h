// Brings a model into the coordinate system of the base.
#pragma once

#include "solver/rigid_fit.h"
#include "solver/solve_tables.h"

namespace ZOR::reg {

/// Moves `model`, one row for each row of the common index, by the rigid motion that fits it onto
/// the base's measured points (those present by length). Every row moves, whether the base has its
/// name or not.
void moveModelToBase(const GroupRows& baseStart, PointMatrix& model);

}  // namespace ZOR::reg
