// An SQLite file as somebody else opens it.
#pragma once

#include <sqlite3.h>

#include <stdexcept>
#include <string>

class RawSqlite {
 public:
  explicit RawSqlite(const std::string& file) {
    if (sqlite3_open(file.c_str(), &connection) != SQLITE_OK) throw std::runtime_error("sqlite3_open");
  }
  ~RawSqlite() { sqlite3_close(connection); }
  RawSqlite(const RawSqlite&) = delete;
  RawSqlite& operator=(const RawSqlite&) = delete;

  /// The result code.
  int tryRun(const std::string& sql) { return sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr); }
  void run(const std::string& sql) {
    if (tryRun(sql) != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(connection));
  }
  /// The first column of the first row, as text.
  std::string value(const std::string& sql) {
    std::string result;
    const auto keep = [](void* target, int, char** columns, char**) {
      *static_cast<std::string*>(target) = columns[0] ? columns[0] : "NULL";
      return 0;
    };
    if (sqlite3_exec(connection, sql.c_str(), keep, &result, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(connection));
    }
    return result;
  }

 private:
  sqlite3* connection = nullptr;
};
