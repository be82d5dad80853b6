// A connection to an SQLite file, and statements on it; failures come as OdError in the user's words.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace tiepoint::workbench {

class SqliteConnection {
 public:
  enum class Access { readOnly, readWrite, create };

  /// Opens the file without reading or locking it. `path` (UTF-8) is what messages call it. A file
  /// that can't be opened for writing is opened for reading.
  SqliteConnection(const std::string& path, Access access);

  bool isReadOnly() const;
  const std::string& path() const { return name; }
  sqlite3* handle() const { return database.get(); }

  /// Runs statements without arguments and results.
  void execute(const char* sql);
  /// Takes back the transaction that runs, if any.
  void rollback() noexcept;

  /// The size of the file itself, pages not written yet left out.
  std::int64_t fileSize() const;
  /// The first bytes of the file as they stand there, whoever has it locked; fewer when it is
  /// shorter. Goes through the connection's own open file, since closing another one would take the
  /// process's locks off it on POSIX systems.
  std::string firstBytes(int count) const;

  /// Throws the error for a result code unless it is one of success.
  void check(int resultCode) const;

 private:
  struct Close {
    void operator()(sqlite3* connection) const;
  };

  std::string name;
  std::unique_ptr<sqlite3, Close> database;
};

/// A statement that can be run again and again. Arguments count from 1, columns from 0.
class SqliteStatement {
 public:
  SqliteStatement(SqliteConnection& connection, const char* sql);

  SqliteStatement& bind(int argument, std::uint64_t number);
  SqliteStatement& bind(int argument, const std::wstring& text);
  /// All bits come back: a number that SQL would change (not-a-number, negative zero) is kept as
  /// its eight bytes, the highest first; all others stay numbers for whoever reads the file.
  SqliteStatement& bind(int argument, double number);

  /// Runs it to its end, ready for the next time.
  void run();
  /// The next row; false, and ready for the next time, when there is none.
  bool next();

  /// The columns of the row. A value of another kind throws OdError(eNotADrawing).
  std::uint64_t integer(int column) const;
  std::wstring text(int column) const;
  double number(int column) const;

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const;
  };
  void require(bool condition, const char* what) const;

  SqliteConnection& connection;
  std::unique_ptr<sqlite3_stmt, Finalize> statement;
};

}  // namespace tiepoint::workbench
