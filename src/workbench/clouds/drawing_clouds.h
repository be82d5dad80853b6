// The point clouds of a drawing: their names, files and accumulated transformations.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/sdk/od_db_database.h"
#include "platform/sdk/od_ge_matrix3d.h"

namespace tiepoint::workbench {

struct DrawingCloud {
  std::wstring name;
  /// The cloud's file; empty when there is none.
  std::wstring source;
  /// From the file's coordinates to the drawing's.
  OdGeMatrix3d matrix;
};

/// In the order of entry.
std::vector<DrawingCloud> cloudsOf(const OdDbDatabase& database);

/// Adds an unmoved cloud; false when the name is taken. To be called inside a transaction. Throws
/// OdError(eWriteProtected) when the drawing is read-only.
bool addCloud(OdDbDatabase& database, const std::wstring& name, const std::wstring& source);

/// Each of the drawing's clouds of that name goes on by a rigid motion behind what has moved it so far. Clouds
/// that the drawing lacks are passed over. To be called inside a transaction.
void moveClouds(OdDbDatabase& database, const std::map<std::wstring, OdGeMatrix3d>& motions);

}  // namespace tiepoint::workbench
