// The matrix formats of a session, by number.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "files/trans_mat_file_format.h"
#include "records/tables.h"

namespace ZOR::reg {

class MatrixFormats {
 public:
  /// With the two PolyWorks formats: TRF under 0, 4x4 under 1. `results` must outlive this object.
  explicit MatrixFormats(const GroupTransforms* results);

  /// The groups that have a transformation to be written.
  GroupIdSet groupsToWrite() const;
  bool has(std::uint64_t id) const { return formats.count(id) != 0; }
  std::map<std::uint64_t, std::string> descriptions() const;
  /// False when no format has that id; otherwise `text` receives the text of a file.
  bool formatMatrixById(const RigidTransform& transform, std::uint64_t id, std::string& text) const;

 private:
  void add(std::unique_ptr<iTransMatFileFormat> format);

  std::map<std::uint64_t, std::unique_ptr<iTransMatFileFormat>> formats;
  std::uint64_t nextId = 0;
  const GroupTransforms* transforms;
};

}  // namespace ZOR::reg
