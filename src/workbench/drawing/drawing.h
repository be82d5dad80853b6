// A drawing that lasts: one SQLite file behind an OdDbDatabase.
#pragma once

#include <memory>
#include <string>

#include "platform/sdk/od_db_database.h"

namespace tiepoint::workbench {

/// An open drawing file. The file is locked for other processes until the object goes; every
/// transaction of the database reaches the file whole or not at all.
class Drawing {
 public:
  /// Opens the drawing at `path` (UTF-8), creating it when it is missing and `createWhenMissing`.
  /// A file that can be read but not written opens read-only: changes then throw
  /// OdError(eWriteProtected). Throws OdError whose text says in one line what is wrong with which
  /// file and what to do: eFileAccessErr (missing, unreadable, a folder), eNotADrawing,
  /// eNewerFormat, eFileSharingViolation (locked by another process), eDiskFull.
  static std::unique_ptr<Drawing> open(const std::string& path, bool createWhenMissing);

  /// A drawing in memory, gone with the object.
  static std::unique_ptr<Drawing> temporary();

  ~Drawing();
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  /// UTF-8; empty for a temporary drawing.
  const std::string& path() const;
  const OdDbDatabasePtr& database() const;

 private:
  class File;
  explicit Drawing(std::unique_ptr<File> file);
  std::unique_ptr<File> file;
};

}  // namespace tiepoint::workbench
