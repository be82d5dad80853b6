#include "workbench/reading/file_reading.h"

#include <algorithm>

namespace tiepoint::workbench {

bool hasColumn(const Columns& columns, ColumnRole role) {
  return std::find(columns.roles.begin(), columns.roles.end(), role) != columns.roles.end();
}

}  // namespace tiepoint::workbench
