#include "workbench/drawing/sqlite_connection.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <new>

#include "workbench/drawing/drawing_error.h"

namespace tiepoint::workbench {
namespace {

int flagsOf(SqliteConnection::Access access) {
  switch (access) {
    case SqliteConnection::Access::readOnly:
      return SQLITE_OPEN_READONLY;
    case SqliteConnection::Access::readWrite:
      return SQLITE_OPEN_READWRITE;
    default:
      return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  }
}

/// Absolute, as some relative names (":memory:") mean something else to SQLite.
std::string absolute(const std::string& path) {
  return std::filesystem::absolute(std::filesystem::u8path(path)).u8string();
}

sqlite3_file& fileOf(sqlite3* database) {
  sqlite3_file* file = nullptr;
  sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file);
  return *file;
}

/// What a file brings with it besides data is never run.
void disableFileCode(sqlite3* database) {
  sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

}  // namespace

void SqliteConnection::Close::operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }

SqliteConnection::SqliteConnection(const std::string& path, Access access) : name(path) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(absolute(path).c_str(), &opened, flagsOf(access), nullptr);
  database.reset(opened);
  check(result);
  sqlite3_extended_result_codes(opened, 1);
  disableFileCode(opened);
}

bool SqliteConnection::isReadOnly() const { return sqlite3_db_readonly(database.get(), "main") != 0; }

void SqliteConnection::execute(const char* sql) { check(sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr)); }

void SqliteConnection::rollback() noexcept {
  if (sqlite3_get_autocommit(database.get()) == 0) {
    sqlite3_exec(database.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
}

std::int64_t SqliteConnection::fileSize() const {
  sqlite3_file& file = fileOf(database.get());
  sqlite3_int64 size = 0;
  check(file.pMethods->xFileSize(&file, &size));
  return size;
}

std::string SqliteConnection::firstBytes(int count) const {
  sqlite3_file& file = fileOf(database.get());
  std::string bytes(static_cast<std::size_t>(std::min<std::int64_t>(count, fileSize())), '\0');
  check(file.pMethods->xRead(&file, bytes.data(), static_cast<int>(bytes.size()), 0));
  return bytes;
}

void SqliteConnection::check(int resultCode) const {
  if (resultCode == SQLITE_OK || resultCode == SQLITE_ROW || resultCode == SQLITE_DONE) return;
  if (resultCode == SQLITE_NOMEM) throw std::bad_alloc();
  throw drawingError(resultCode, name);
}

}  // namespace tiepoint::workbench
