// Writes the changes of a database into a drawing file.
#pragma once

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
  void write(const OdDbDatabase& database, const OdDbChanges& changes) override;

 private:
  std::uint64_t revisionOfFile();
  void advanceRevision();
  void commit();
  bool hasArrived() noexcept;

  void erase(std::uint64_t handle);
  void put(OdDbObject& object);
  void putObject(std::uint64_t handle, const wchar_t* keptClass);
  void putEntries(std::uint64_t handle, const OdDbDictionary& dictionary);
  void putPoints(std::uint64_t handle, const ZOR::RegistrationObjectPointsRepository& repository);
  void putCloud(std::uint64_t handle, const hostDbPointCloudDefinition& cloud);

  SqliteConnection& connection;
  /// The number of the file's latest transaction, as far as this store knows.
  std::uint64_t revision;

  SqliteStatement setRevision;
  SqliteStatement insertObject;
  SqliteStatement insertEntry;
  SqliteStatement insertPoint;
  SqliteStatement insertCloud;
  SqliteStatement deleteEntry;
  SqliteStatement deletePoints;
};

}  // namespace tiepoint::workbench
