// Writes the changes of a database into a drawing file.
#pragma once

#include <optional>
#include <set>

#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_database.h"
#include "platform/sdk/od_db_dictionary.h"
#include "workbench/drawing/sqlite_connection.h"

namespace tiepoint::workbench {

class SqliteStore : public OdDbStore {
 public:
  /// The connection must outlive the store, and have the drawing's tables.
  explicit SqliteStore(SqliteConnection& connection);

  /// One transaction of the file, whose cost goes with what was changed: the entries that were added
  /// to a dictionary, and the whole of every other object. An entry whose object is erased goes
  /// with it. Throws OdError; then the file is as it was.
  ///
  /// When a failing disk doesn't even let the file be read back, the change may stand in it
  /// although it was refused: the next write takes it back first, and so does `settle`.
  void write(const OdDbDatabase& database, const OdDbChanges& changes) override;

  /// Takes back a refused change that may stand in the file. For the end of the drawing: nobody is
  /// told when the disk still fails.
  void settle(const OdDbDatabase& database) noexcept;

 private:
  using Handles = std::set<std::uint64_t>;

  std::uint64_t revisionOfFile();
  std::optional<std::uint64_t> revisionOfFileIfReadable() noexcept;
  void setRevisionOfFile(std::uint64_t number);
  void commit(const Handles& changedHandles);
  void rollBackDoubtfulChanges(const OdDbDatabase& database);
  void rewriteDictionaries(const OdDbDatabase& database);

  void erase(std::uint64_t handle);
  void put(const OdDbObject& object);
  void putObject(std::uint64_t handle, const wchar_t* keptClass);
  void putEntries(std::uint64_t handle, const OdDbDictionary& dictionary);
  void putEntry(std::uint64_t handle, const OdDbDictionaryEntry& entry);
  void putPoints(std::uint64_t handle, const ZOR::RegistrationObjectPointsRepository& repository);
  void putCloud(std::uint64_t handle, const hostDbPointCloudDefinition& cloud);

  SqliteConnection& connection;
  /// The number that the file bears when it holds what the database holds. Every transaction that
  /// is tried gives the file a number of its own.
  std::uint64_t revision;
  std::uint64_t lastTried;
  /// What refused changes that may stand in the file have touched.
  Handles doubtful;

  SqliteStatement insertObject;
  SqliteStatement insertEntry;
  SqliteStatement insertPoint;
  SqliteStatement insertCloud;
  SqliteStatement deleteEntry;
  SqliteStatement deletePoints;
};

}  // namespace tiepoint::workbench
