// A moved copy of a point cloud in text form.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "platform/sdk/od_ge_matrix3d.h"

namespace tiepoint::workbench {

/// A cloud file can't be read or written; what() is one line that names it.
class CloudFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct MovedCloud {
  std::uint64_t points = 0;
  /// Lines that don't begin with three numbers, copied as they stand.
  std::uint64_t otherLines = 0;
};

/// `line` (without its line feed) with its first three numbers taken through `motion`, written with
/// the fewest digits that read back as the same double; everything else stands as it was. False, and
/// the line untouched, when it doesn't begin with three numbers separated by blanks, tabs, commas
/// or semicolons.
bool moveLine(std::string& line, const OdGeMatrix3d& motion);

/// Writes `target` as a copy of the text file `source` with every point moved, line by line, so
/// that the size of the cloud doesn't matter. Paths are UTF-8. The copy appears whole under its name
/// or not at all; one that stands there is replaced when `replace`. Throws CloudFileError, also for
/// a source that isn't text or holds no point.
MovedCloud writeMovedCloud(const std::string& source, const std::string& target, const OdGeMatrix3d& motion,
                           bool replace);

}  // namespace tiepoint::workbench
