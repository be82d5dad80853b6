#include "workbench/drawing/drawing_error.h"

#include <sqlite3.h>

namespace tiepoint::workbench {
namespace {

/// The primary code stands in the lowest byte of an extended one.
constexpr int primaryCodeMask = 0xff;

std::string named(const std::string& path) { return path + ": the drawing "; }

OdError accessError(int sqliteCode, const std::string& path) {
  return {eFileAccessErr, named(path) + "can't be read or written (" + sqlite3_errstr(sqliteCode) +
                              "); check the disk and your permissions, and try again"};
}

}  // namespace

OdError drawingError(int sqliteCode, const std::string& path) {
  if (sqliteCode == SQLITE_READONLY_ROLLBACK) {
    return {eWriteProtected, named(path) +
                                 "was interrupted in the middle of a change, and is write-protected, so it "
                                 "can't be recovered; open it once where it can be written"};
  }
  switch (sqliteCode & primaryCodeMask) {
    case SQLITE_FULL:
      return {eDiskFull,
              named(path) + "can't be written, as the disk is full; nothing was stored: free some space and try again"};
    case SQLITE_READONLY:
      return {eWriteProtected,
              named(path) + "is write-protected; make the file and its folder writable, or work on a copy"};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return {eFileSharingViolation, named(path) + "is open in another process; close it there and try again"};
    case SQLITE_NOTADB:
      return notADrawing(path);
    case SQLITE_CORRUPT:
    case SQLITE_ERROR:  // Ours are fixed statements: they fail where a table isn't as it should be.
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
      return damagedDrawing(path, sqlite3_errstr(sqliteCode));
    default:
      return accessError(sqliteCode, path);
  }
}

OdError damagedDrawing(const std::string& path, const std::string& what) {
  return {eNotADrawing, named(path) + "is damaged (" + what + "); restore it from a backup"};
}

OdError doubtfulDrawing(OdResult code, const std::string& path) {
  return {code, named(path) +
                    "can't be read back after a disk error; free some space or repair the disk, then store or "
                    "close the drawing, which rolls the failed change back"};
}

OdError notADrawing(const std::string& path) { return {eNotADrawing, path + ": not a drawing; choose another file"}; }

OdError newerDrawing(const std::string& path, long long version, long long knownVersion) {
  return {eNewerFormat, named(path) + "has format " + std::to_string(version) + ", and this program supports up to " +
                            std::to_string(knownVersion) + "; open it with a newer version of the program"};
}

}  // namespace tiepoint::workbench
