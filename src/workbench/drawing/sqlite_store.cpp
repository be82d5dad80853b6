#include "workbench/drawing/sqlite_store.h"

#include <string>

#include "workbench/drawing/drawing_schema.h"

namespace tiepoint::workbench {
namespace {

constexpr const char* insertCloudSql =
    "INSERT OR REPLACE INTO cloud VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

template <class Class>
const Class* as(const OdDbObject& object) {
  return object.isKindOf(Class::desc()) ? static_cast<const Class*>(&object) : nullptr;
}

}  // namespace

SqliteStore::SqliteStore(SqliteConnection& on)
    : connection(on),
      revision(revisionOfFile()),
      setRevision(on, "UPDATE revision SET number = ? WHERE number = ?"),
      insertObject(on, "INSERT INTO object VALUES (?, ?) ON CONFLICT (handle) DO NOTHING"),
      insertEntry(on,
                  "INSERT INTO dictionary_entry VALUES (?, ?, ?, ?) "
                  "ON CONFLICT (dictionary, sequence) DO UPDATE SET object = excluded.object"),
      insertPoint(on, "INSERT INTO reference_point VALUES (?, ?, ?, ?, ?, ?, ?)"),
      insertCloud(on, insertCloudSql),
      deleteEntry(on, "DELETE FROM dictionary_entry WHERE dictionary = ? AND sequence = ?"),
      deletePoints(on, "DELETE FROM reference_point WHERE repository = ?") {}

void SqliteStore::write(const OdDbDatabase&, const OdDbChanges& changes) {
  try {
    connection.execute("BEGIN IMMEDIATE");
    advanceRevision();
    for (const std::uint64_t handle : changes.erased) erase(handle);
    for (OdDbObject* object : changes.written) put(*object);
  } catch (...) {
    connection.rollback();
    throw;
  }
  commit();
}

std::uint64_t SqliteStore::revisionOfFile() {
  SqliteStatement select(connection, "SELECT number FROM revision");
  select.next();
  return select.integer(0);
}

void SqliteStore::advanceRevision() {
  setRevision.bind(1, revision + 1).bind(2, revision).run();
  if (connection.changedRows() == 1) return;
  throw OdError(eFileAccessErr, "The drawing '" + connection.path() +
                                    "' isn't as it was left here after a failure of its disk: close it and open it "
                                    "again");
}

/// A commit can be reported as failed although it has reached the disk; the file itself knows.
void SqliteStore::commit() {
  try {
    connection.execute("COMMIT");
  } catch (...) {
    connection.rollback();
    if (!hasArrived()) throw;
  }
  ++revision;
}

bool SqliteStore::hasArrived() noexcept {
  try {
    return revisionOfFile() == revision + 1;
  } catch (...) {
    return false;
  }
}

void SqliteStore::erase(std::uint64_t handle) {
  for (const char* sql : {"DELETE FROM object WHERE handle = ?", "DELETE FROM reference_point WHERE repository = ?",
                          "DELETE FROM cloud WHERE handle = ?", "DELETE FROM dictionary_entry WHERE dictionary = ?",
                          "DELETE FROM dictionary_entry WHERE object = ?"}) {
    SqliteStatement(connection, sql).bind(1, handle).run();
  }
}

void SqliteStore::put(OdDbObject& object) {
  const std::uint64_t handle = object.objectId().getHandle();
  if (const auto* dictionary = as<OdDbDictionary>(object)) {
    putEntries(handle, *dictionary);
  } else if (const auto* repository = as<ZOR::RegistrationObjectPointsRepository>(object)) {
    putPoints(handle, *repository);
  } else if (const auto* cloud = as<hostDbPointCloudDefinition>(object)) {
    putCloud(handle, *cloud);
  } else {
    throw OdError(eNotApplicable, "A drawing file has no place for an object of this class");
  }
}

void SqliteStore::putObject(std::uint64_t handle, const wchar_t* keptClass) {
  insertObject.bind(1, handle).bind(2, std::wstring(keptClass)).run();
}

void SqliteStore::putEntries(std::uint64_t handle, const OdDbDictionary& dictionary) {
  putObject(handle, kept_class::dictionary);
  // First, as a name that was removed may have been entered again.
  for (const std::uint64_t sequence : dictionary.removedSequences()) {
    deleteEntry.bind(1, handle).bind(2, sequence).run();
  }
  for (const auto& [sequence, entry] : dictionary.addedEntries()) {
    if (!entry.object.isValid()) continue;
    insertEntry.bind(1, handle).bind(2, sequence).bind(3, entry.name.wideText()).bind(4, entry.object.getHandle());
    insertEntry.run();
  }
}

void SqliteStore::putPoints(std::uint64_t handle, const ZOR::RegistrationObjectPointsRepository& repository) {
  putObject(handle, kept_class::points);
  deletePoints.bind(1, handle).run();
  std::uint64_t position = 0;
  for (const ZOR::_StoredPoint& point : repository.storedPoints()) {
    insertPoint.bind(1, handle).bind(2, position++).bind(3, point.name.wideText());
    insertPoint.bind(4, point.x).bind(5, point.y).bind(6, point.z).bind(7, point.w).run();
  }
}

void SqliteStore::putCloud(std::uint64_t handle, const hostDbPointCloudDefinition& cloud) {
  putObject(handle, kept_class::cloud);
  insertCloud.bind(1, handle).bind(2, cloud.getName().wideText()).bind(3, cloud.getSource().wideText());
  for (int i = 0; i < 16; ++i) insertCloud.bind(4 + i, cloud.transformation()(i / 4, i % 4));
  insertCloud.run();
}

}  // namespace tiepoint::workbench
