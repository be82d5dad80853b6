// A drawing that lasts: one SQLite file behind an OdDbDatabase.
#pragma once

#include <memory>
#include <string>

#include "platform/sdk/od_db_database.h"

namespace tiepoint::workbench {

/// An open drawing file. The file is locked for other processes, and for a second opening in this
/// one, until the object goes; every transaction of the database reaches the file whole or not at
/// all. When the object goes while somebody still holds the database, that stays as it was last
/// kept, for reading only; a transaction that runs is aborted.
class Drawing {
 public:
  /// Opens the drawing at `path` (UTF-8), creating it when it is missing and `createWhenMissing`.
  /// A file without a single byte, as a crash at its creation leaves it, counts as missing too.
  /// A file that can be read but not written, or beside which no journal can be made, opens
  /// read-only and shared with other readers: changes then throw OdError(eWriteProtected).
  /// Throws OdError whose text says in one line what is wrong with which file and what to do:
  /// eFileAccessErr (missing, unreadable, a folder), eNotADrawing (another file, left as it is; or a
  /// damaged drawing), eNewerFormat, eFileSharingViolation (open elsewhere), eDiskFull,
  /// eWriteProtected (a change that was cut short can't be taken back there).
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
