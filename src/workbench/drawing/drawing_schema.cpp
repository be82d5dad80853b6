#include "workbench/drawing/drawing_schema.h"

#include <algorithm>
#include <filesystem>
#include <string>

#include "workbench/drawing/drawing_error.h"

namespace tiepoint::workbench {
namespace {

/// The file header of SQLite: how it begins, its length, and where the application id stands in it.
constexpr std::string_view sqliteMagic{"SQLite format 3\0", 16};
constexpr int headerLength = 100;
constexpr std::size_t applicationIdOffset = 68;

/// Every table bears what one class holds, under the object's handle. Numbers of type ANY are
/// numbers, or the eight bytes of one that SQL can't hold. The transaction counter in `revision`
/// tells whether a commit that was reported as failed has arrived after all.
constexpr const char* createTables = R"(
CREATE TABLE revision (number INTEGER NOT NULL) STRICT;
CREATE TABLE object (handle INTEGER PRIMARY KEY, class TEXT NOT NULL) STRICT;
CREATE TABLE dictionary_entry (
  dictionary INTEGER NOT NULL, sequence INTEGER NOT NULL, name TEXT NOT NULL, object INTEGER NOT NULL,
  PRIMARY KEY (dictionary, sequence), UNIQUE (dictionary, name)
) STRICT, WITHOUT ROWID;
CREATE INDEX dictionary_entry_by_object ON dictionary_entry (object);
CREATE TABLE reference_point (
  repository INTEGER NOT NULL, position INTEGER NOT NULL, name TEXT NOT NULL,
  x ANY NOT NULL, y ANY NOT NULL, z ANY NOT NULL, w ANY NOT NULL,
  PRIMARY KEY (repository, position)
) STRICT, WITHOUT ROWID;
CREATE TABLE cloud (
  handle INTEGER PRIMARY KEY, name TEXT NOT NULL, source TEXT NOT NULL,
  m0 ANY NOT NULL, m1 ANY NOT NULL, m2 ANY NOT NULL, m3 ANY NOT NULL,
  m4 ANY NOT NULL, m5 ANY NOT NULL, m6 ANY NOT NULL, m7 ANY NOT NULL,
  m8 ANY NOT NULL, m9 ANY NOT NULL, m10 ANY NOT NULL, m11 ANY NOT NULL,
  m12 ANY NOT NULL, m13 ANY NOT NULL, m14 ANY NOT NULL, m15 ANY NOT NULL
) STRICT;
INSERT INTO revision VALUES (0);
INSERT INTO object VALUES (1, 'dictionary');
)";

std::string applicationIdBytes() {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8)
    bytes.push_back(static_cast<char>((drawingApplicationId >> shift) & 0xff));
  return bytes;
}

/// A power cut while a drawing is being created can leave pages that were never written, with a
/// journal that takes them back.
bool isUnfinishedCreation(const std::string& header, const std::string& path) {
  const bool isBlank = std::all_of(header.begin(), header.end(), [](char byte) { return byte == '\0'; });
  std::error_code ignored;
  return isBlank && std::filesystem::exists(std::filesystem::u8path(path + "-journal"), ignored);
}

std::uint64_t pragma(SqliteConnection& connection, const char* sql) {
  SqliteStatement statement(connection, sql);
  statement.next();
  return statement.integer(0);
}

}  // namespace

FileKind kindOfFile(const SqliteConnection& connection) {
  const std::string header = connection.firstBytes(headerLength);
  if (header.empty()) return FileKind::empty;
  const bool isSqlite = header.size() == headerLength && header.compare(0, sqliteMagic.size(), sqliteMagic) == 0;
  if (isSqlite && header.compare(applicationIdOffset, 4, applicationIdBytes()) == 0) return FileKind::drawing;
  return isUnfinishedCreation(header, connection.path()) ? FileKind::drawing : FileKind::foreign;
}

void createDrawingSchema(SqliteConnection& connection) {
  connection.execute(("PRAGMA application_id = " + std::to_string(drawingApplicationId)).c_str());
  connection.execute(("PRAGMA user_version = " + std::to_string(drawingSchemaVersion)).c_str());
  connection.execute(createTables);
}

void requireKnownSchema(SqliteConnection& connection) {
  if (pragma(connection, "PRAGMA application_id") != drawingApplicationId) throw notADrawing(connection.path());
  const auto version = static_cast<std::int64_t>(pragma(connection, "PRAGMA user_version"));
  const auto known = static_cast<std::int64_t>(drawingSchemaVersion);
  if (version > known) throw newerDrawing(connection.path(), version, known);
  if (version != known) throw damagedDrawing(connection.path(), "its format has no version");
}

}  // namespace tiepoint::workbench
