// The groups' motions as texts for other programs.
#pragma once

#include <string>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Four lines of four numbers, row by row, for column vectors, the translation in the last column;
/// 17 significant digits and nothing else, since readers of bare matrices stumble over comments.
std::string plainMatrixText(const OdGeMatrix3d& motion);

/// In one of the module's two formats, as the module writes those of motions that it has found itself; not
/// `plain`.
std::string moduleMatrixText(MatrixFormat format, const OdGeMatrix3d& motion);

/// One JSON object: the convention in words, and every group's rotation, translation, quaternion and
/// points with their residuals. `registration` is registered.
std::string transformsJson(const Registration& registration, Unit unit);

}  // namespace tiepoint::workbench
