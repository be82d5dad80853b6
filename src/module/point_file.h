// A text file of reference points.
#pragma once

#include <string>

#include "platform/pointclouds/stored_point.h"

namespace ZOR::reg {

/// Reads the points of a file up to the first line that doesn't match the layout, which is the row
/// of the import dialog's filter list: 1 name x y z, 2 x y z, 3 x y z weight, 4 name x y z weight;
/// any other reads nothing. Appends to `points`. False when the file can't be opened, which holds
/// for a path without a narrow form too.
bool readPointFile(const std::wstring& path, int layout, StoredPointArray& points);

}  // namespace ZOR::reg
