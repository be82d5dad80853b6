#include "workbench/drawing/sqlite_store.h"

#include <string>

#include "workbench/drawing/drawing_error.h"
#include "workbench/drawing/drawing_schema.h"

namespace tiepoint::workbench {
namespace {

constexpr const char* insertCloudSql =
    "INSERT OR REPLACE INTO cloud VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

template <class Class>
const Class* as(const OdDbObject& object) {
  return object.isKindOf(Class::desc()) ? static_cast<const Class*>(&object) : nullptr;
}

std::set<std::uint64_t> handlesOf(const OdDbChanges& changes) {
  std::set<std::uint64_t> handles(changes.erased.begin(), changes.erased.end());
  for (const OdDbObject* object : changes.written) handles.insert(object->objectId().getHandle());
  return handles;
}

}  // namespace

SqliteStore::SqliteStore(SqliteConnection& on)
    : connection(on),
      revision(revisionOfFile()),
      lastTried(revision),
      insertObject(on, "INSERT INTO object VALUES (?, ?) ON CONFLICT (handle) DO NOTHING"),
      insertEntry(on,
                  "INSERT INTO dictionary_entry VALUES (?, ?, ?, ?) "
                  "ON CONFLICT (dictionary, sequence) DO UPDATE SET object = excluded.object"),
      insertPoint(on, "INSERT INTO reference_point VALUES (?, ?, ?, ?, ?, ?, ?)"),
      insertCloud(on, insertCloudSql),
      deleteEntry(on, "DELETE FROM dictionary_entry WHERE dictionary = ? AND sequence = ?"),
      deletePoints(on, "DELETE FROM reference_point WHERE repository = ?") {}

void SqliteStore::write(const OdDbDatabase& database, const OdDbChanges& changes) {
  const Handles changedHandles = handlesOf(changes);
  try {
    connection.execute("BEGIN IMMEDIATE");
    rollBackDoubtfulChanges(database);
    setRevisionOfFile(++lastTried);
    for (const std::uint64_t handle : changes.erased) erase(handle);
    for (const OdDbObject* object : changes.written) put(*object);
  } catch (...) {
    connection.rollback();
    throw;
  }
  commit(changedHandles);
}

void SqliteStore::settle(const OdDbDatabase& database) noexcept {
  if (doubtful.empty()) return;
  try {
    write(database, {});
  } catch (...) {
    // The file stays with a change that was refused, or without it.
  }
}

std::uint64_t SqliteStore::revisionOfFile() {
  SqliteStatement select(connection, "SELECT number FROM revision");
  select.next();
  return select.integer(0);
}

std::optional<std::uint64_t> SqliteStore::revisionOfFileIfReadable() noexcept {
  try {
    return revisionOfFile();
  } catch (...) {
    return std::nullopt;
  }
}

void SqliteStore::setRevisionOfFile(std::uint64_t number) {
  SqliteStatement(connection, "UPDATE revision SET number = ?").bind(1, number).run();
}

/// A commit can be reported as failed although it has reached the disk; the file itself knows.
void SqliteStore::commit(const Handles& changedHandles) {
  try {
    connection.execute("COMMIT");
  } catch (const OdError& error) {
    connection.rollback();
    const std::optional<std::uint64_t> found = revisionOfFileIfReadable();
    if (!found) {
      doubtful.insert(changedHandles.begin(), changedHandles.end());
      throw doubtfulDrawing(error.code(), connection.path());
    }
    if (*found != lastTried) throw;
  }
  revision = lastTried;
  doubtful.clear();
}

void SqliteStore::rollBackDoubtfulChanges(const OdDbDatabase& database) {
  if (doubtful.empty() || revisionOfFile() == revision) return;
  for (const std::uint64_t handle : doubtful) {
    const OdDbObject* object = database.objectAt(handle);
    if (object && !object->isErased()) {
      put(*object);
    } else {
      erase(handle);
    }
  }
  rewriteDictionaries(database);
}

/// An entry goes with its object, so that any dictionary may lack one that the database still has.
void SqliteStore::rewriteDictionaries(const OdDbDatabase& database) {
  connection.execute("DELETE FROM dictionary_entry");
  SqliteStatement select(connection, "SELECT handle FROM object WHERE class = 'dictionary'");
  while (select.next()) {
    const std::uint64_t handle = select.integer(0);
    const OdDbObject* object = database.objectAt(handle);
    const auto* dictionary = object ? as<OdDbDictionary>(*object) : nullptr;
    if (!dictionary) continue;
    for (const OdDbDictionaryEntry& entry : dictionary->entries()) putEntry(handle, entry);
  }
}

void SqliteStore::erase(std::uint64_t handle) {
  for (const char* sql : {"DELETE FROM object WHERE handle = ?", "DELETE FROM reference_point WHERE repository = ?",
                          "DELETE FROM cloud WHERE handle = ?", "DELETE FROM dictionary_entry WHERE dictionary = ?",
                          "DELETE FROM dictionary_entry WHERE object = ?"}) {
    SqliteStatement(connection, sql).bind(1, handle).run();
  }
}

void SqliteStore::put(const OdDbObject& object) {
  const std::uint64_t handle = object.objectId().getHandle();
  if (const auto* dictionary = as<OdDbDictionary>(object)) {
    putEntries(handle, *dictionary);
  } else if (const auto* repository = as<ZOR::RegistrationObjectPointsRepository>(object)) {
    putPoints(handle, *repository);
  } else if (const auto* cloud = as<hostDbPointCloudDefinition>(object)) {
    putCloud(handle, *cloud);
  } else {
    throw OdError(eNotApplicable, "a drawing file can't store an object of this class");
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
  for (const auto& [sequence, entry] : dictionary.addedEntries()) putEntry(handle, entry);
}

void SqliteStore::putEntry(std::uint64_t handle, const OdDbDictionaryEntry& entry) {
  if (!entry.object.isValid()) return;
  insertEntry.bind(1, handle).bind(2, entry.sequence).bind(3, entry.name.wideText());
  insertEntry.bind(4, entry.object.getHandle()).run();
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
