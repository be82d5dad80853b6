// What became of a drawing's clouds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/sdk/od_ge_matrix3d.h"

namespace tiepoint::workbench {

enum class CloudMove {
  moved,
  /// Nobody asked for it.
  notAsked,
  /// Its group is a base: the cloud lies in the common system already.
  base,
  notRegistered,
  noGroup
};

/// A moved copy of a cloud's file.
struct CloudCopy {
  /// UTF-8.
  std::string path;
  std::uint64_t points = 0;
  /// Lines that were copied as they stand.
  std::uint64_t otherLines = 0;
};

struct CloudReport {
  /// UTF-8.
  std::string name;
  std::string source;
  CloudMove move = CloudMove::notAsked;
  /// From the file's coordinates to the drawing's, after the move.
  OdGeMatrix3d matrix;
  std::optional<CloudCopy> copy;
};

}  // namespace tiepoint::workbench
