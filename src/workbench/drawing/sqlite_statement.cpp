#include <sqlite3.h>

#include <cmath>
#include <cstring>

#include "workbench/drawing/drawing_error.h"
#include "workbench/drawing/kept_text.h"
#include "workbench/drawing/sqlite_connection.h"

namespace tiepoint::workbench {
namespace {

constexpr int bytesOfDouble = 8;

/// SQL takes not-a-number for NULL, and holds both zeros for the same.
bool isChangedBySql(double number) { return std::isnan(number) || (number == 0.0 && std::signbit(number)); }

std::string bytesOf(double number) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  std::string bytes;
  for (int shift = 56; shift >= 0; shift -= 8) bytes.push_back(static_cast<char>((bits >> shift) & 0xff));
  return bytes;
}

double doubleFrom(const unsigned char* bytes) {
  std::uint64_t bits = 0;
  for (int i = 0; i < bytesOfDouble; ++i) bits = (bits << 8) | bytes[i];
  double number = 0.0;
  std::memcpy(&number, &bits, sizeof number);
  return number;
}

}  // namespace

void SqliteStatement::Finalize::operator()(sqlite3_stmt* prepared) const { sqlite3_finalize(prepared); }

SqliteStatement::SqliteStatement(SqliteConnection& on, const char* sql) : connection(on) {
  sqlite3_stmt* prepared = nullptr;
  connection.check(sqlite3_prepare_v3(connection.handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr));
  statement.reset(prepared);
}

SqliteStatement& SqliteStatement::bind(int argument, std::uint64_t number) {
  connection.check(sqlite3_bind_int64(statement.get(), argument, static_cast<sqlite3_int64>(number)));
  return *this;
}

SqliteStatement& SqliteStatement::bind(int argument, const std::wstring& text) {
  const std::string kept = keptFormOf(text);
  connection.check(
      sqlite3_bind_text64(statement.get(), argument, kept.data(), kept.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
  return *this;
}

SqliteStatement& SqliteStatement::bind(int argument, double number) {
  if (isChangedBySql(number)) {
    const std::string bytes = bytesOf(number);
    connection.check(sqlite3_bind_blob64(statement.get(), argument, bytes.data(), bytes.size(), SQLITE_TRANSIENT));
  } else {
    connection.check(sqlite3_bind_double(statement.get(), argument, number));
  }
  return *this;
}

void SqliteStatement::run() {
  while (next()) continue;
}

bool SqliteStatement::next() {
  const int result = sqlite3_step(statement.get());
  if (result == SQLITE_ROW) return true;
  sqlite3_reset(statement.get());
  connection.check(result);
  return false;
}

std::uint64_t SqliteStatement::integer(int column) const {
  require(sqlite3_column_type(statement.get(), column) == SQLITE_INTEGER, "a number isn't whole");
  return static_cast<std::uint64_t>(sqlite3_column_int64(statement.get(), column));
}

std::wstring SqliteStatement::text(int column) const {
  require(sqlite3_column_type(statement.get(), column) == SQLITE_TEXT, "a name isn't text");
  const unsigned char* bytes = sqlite3_column_text(statement.get(), column);
  const int count = sqlite3_column_bytes(statement.get(), column);
  if (!bytes) throw std::bad_alloc();
  const auto text =
      textFromKeptForm({reinterpret_cast<const char*>(bytes), static_cast<std::string_view::size_type>(count)});
  require(text.has_value(), "a name isn't UTF-8");
  return *text;
}

double SqliteStatement::number(int column) const {
  const int type = sqlite3_column_type(statement.get(), column);
  if (type == SQLITE_FLOAT || type == SQLITE_INTEGER) return sqlite3_column_double(statement.get(), column);
  const bool isKeptAsBytes = type == SQLITE_BLOB && sqlite3_column_bytes(statement.get(), column) == bytesOfDouble;
  require(isKeptAsBytes, "a coordinate isn't a number");
  return doubleFrom(static_cast<const unsigned char*>(sqlite3_column_blob(statement.get(), column)));
}

void SqliteStatement::require(bool condition, const char* what) const {
  if (!condition) throw damagedDrawing(connection.path(), what);
}

}  // namespace tiepoint::workbench
