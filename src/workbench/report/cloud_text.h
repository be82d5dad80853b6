// Clouds, for people.
#pragma once

#include <string>
#include <vector>

#include "workbench/values/cloud_report.h"

namespace tiepoint::workbench {

/// Four rows of four numbers, row by row, each as short as it can be to read back the same
/// double. Translation in the last column.
std::string matrixText(const OdGeMatrix3d& matrix);

/// The clouds with what became of each, and the matrices of those that moved.
std::string cloudMovesText(const std::vector<CloudReport>& clouds);

}  // namespace tiepoint::workbench
