#include "workbench/drawing/drawing_file.h"

#include <sqlite3.h>

#include <filesystem>

#include "workbench/drawing/drawing_error.h"
#include "workbench/drawing/drawing_schema.h"

namespace tiepoint::workbench {
namespace {

namespace fs = std::filesystem;
using Access = SqliteConnection::Access;

OdError unusable(const std::string& text) { return {eFileAccessErr, text}; }

void requireFolderOf(const fs::path& path) {
  const fs::path folder = fs::absolute(path).parent_path();
  std::error_code ignored;
  if (fs::is_directory(folder, ignored)) return;
  throw unusable(path.u8string() + ": the drawing can't be created, as there is no folder " + folder.u8string() +
                 "; create it first");
}

/// True when there is a file at the path; false when one can be made there.
bool fileExists(const std::string& path, bool createWhenMissing) {
  if (path.empty() || path.find('\0') != std::string::npos) throw unusable("a drawing needs a file path");
  const fs::path file = fs::u8path(path);
  std::error_code failure;
  const fs::file_status status = fs::status(file, failure);
  if (status.type() == fs::file_type::not_found) {
    if (!createWhenMissing) throw unusable(path + ": there is no such drawing; check the path");
    requireFolderOf(file);
    return false;
  }
  if (failure) throw unusable(path + ": the drawing can't be accessed: " + failure.message());
  if (fs::is_directory(status)) throw unusable(path + ": this is a folder, not a drawing; choose a file");
  if (!fs::is_regular_file(status)) throw unusable(path + ": not an ordinary file; choose another file");
  return true;
}

void requireDrawing(const SqliteConnection& connection, bool createWhenMissing) {
  const FileKind kind = kindOfFile(connection);
  if (kind == FileKind::foreign) throw notADrawing(connection.path());
  if (kind != FileKind::empty) return;
  if (!createWhenMissing) throw notADrawing(connection.path());
  if (connection.isReadOnly()) throw drawingError(SQLITE_READONLY, connection.path());
}

/// The lock that the connection takes with its next transaction stays until it is closed.
void keepLocks(SqliteConnection& connection) { connection.execute("PRAGMA locking_mode = EXCLUSIVE"); }

/// A change that is taken back shows whether the journal can be made, without which no change is
/// safe. What may pass (a full disk, a failure of it) isn't told here: reading goes on without.
bool journalCanBeMade(SqliteConnection& connection) {
  const int result =
      sqlite3_exec(connection.handle(), "UPDATE revision SET number = number + 1", nullptr, nullptr, nullptr);
  if (result == SQLITE_READONLY_DIRECTORY) return false;
  const int primaryCode = result & 0xff;
  const bool mayPass = primaryCode == SQLITE_FULL || primaryCode == SQLITE_IOERR || primaryCode == SQLITE_CANTOPEN;
  if (!mayPass) connection.check(result);
  return true;
}

/// False when the folder can't be written, and so the file can only be read.
bool lockForWriting(SqliteConnection& connection, bool createWhenMissing) {
  keepLocks(connection);
  connection.execute("PRAGMA synchronous = FULL");
  connection.execute("BEGIN EXCLUSIVE");
  if (connection.fileSize() == 0) {
    requireDrawing(connection, createWhenMissing);
    createDrawingSchema(connection);
    connection.execute("COMMIT");
    return true;
  }
  requireKnownSchema(connection);
  const bool canBeWritten = journalCanBeMade(connection);
  connection.rollback();
  if (canBeWritten) connection.execute("PRAGMA journal_mode = DELETE");
  return canBeWritten;
}

void lockForReading(SqliteConnection& connection) {
  keepLocks(connection);
  requireKnownSchema(connection);
}

/// Takes the empty file away that a failed creation leaves. Called with the file locked, so that it
/// is nobody else's.
void removeIfNewAndEmpty(const std::string& path, bool existed) {
  std::error_code failure;
  const bool isEmpty = fs::file_size(fs::u8path(path), failure) == 0 && !failure;
  if (!existed && isEmpty) fs::remove(fs::u8path(path), failure);
}

/// Null when the file can only be read.
std::unique_ptr<SqliteConnection> openForWriting(const std::string& path, bool createWhenMissing, bool existed) {
  auto connection = std::make_unique<SqliteConnection>(path, createWhenMissing ? Access::create : Access::readWrite);
  requireDrawing(*connection, createWhenMissing);
  try {
    if (!connection->isReadOnly() && lockForWriting(*connection, createWhenMissing)) return connection;
  } catch (const OdError& error) {
    connection->rollback();
    if (error.code() != eFileSharingViolation) removeIfNewAndEmpty(path, existed);
    throw;
  }
  return nullptr;
}

}  // namespace

std::unique_ptr<SqliteConnection> openDrawingFile(const std::string& path, bool createWhenMissing) {
  const bool existed = fileExists(path, createWhenMissing);
  if (auto connection = openForWriting(path, createWhenMissing, existed)) return connection;

  auto connection = std::make_unique<SqliteConnection>(path, Access::readOnly);
  requireDrawing(*connection, createWhenMissing);
  lockForReading(*connection);
  return connection;
}

}  // namespace tiepoint::workbench
