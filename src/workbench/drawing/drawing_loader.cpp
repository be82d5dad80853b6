#include "workbench/drawing/drawing_loader.h"

#include <string>
#include <utility>

#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"
#include "workbench/drawing/drawing_error.h"
#include "workbench/drawing/drawing_schema.h"

namespace tiepoint::workbench {
namespace {

class Loader {
 public:
  Loader(SqliteConnection& from, OdDbDatabase& into) : connection(from), database(into) {}

  void loadObjects();
  void loadPoints();
  void loadClouds();
  void loadEntries();

 private:
  [[noreturn]] void damaged(const std::string& what) const { throw damagedDrawing(connection.path(), what); }
  OdDbObjectPtr newObject(const std::wstring& keptClass) const;

  /// The object of that class under a handle; the file is damaged when there is none.
  template <class Class>
  Class& objectAt(std::uint64_t handle) const {
    OdDbObject* object = database.objectAt(handle);
    if (!object || !object->isKindOf(Class::desc())) damaged("data of a missing object");
    return static_cast<Class&>(*object);
  }

  SqliteConnection& connection;
  OdDbDatabase& database;
};

OdDbObjectPtr Loader::newObject(const std::wstring& keptClass) const {
  if (keptClass == kept_class::dictionary) return OdDbObjectPtr(new OdDbDictionary);
  if (keptClass == kept_class::points) return OdDbObjectPtr(new ZOR::RegistrationObjectPointsRepository);
  if (keptClass == kept_class::cloud) return OdDbObjectPtr(new hostDbPointCloudDefinition);
  damaged("an object of an unknown class");
}

void Loader::loadObjects() {
  const std::uint64_t root = database.getNamedObjectsDictionaryId().getHandle();
  SqliteStatement select(connection, "SELECT handle, class FROM object ORDER BY handle");
  while (select.next()) {
    const OdDbObjectPtr object = newObject(select.text(1));
    const std::uint64_t handle = select.integer(0);
    if (handle != root) database.restoreObject(object.get(), handle);
    // The database brings the dictionary of named objects along.
    if (handle == root && !object->isKindOf(OdDbDictionary::desc())) damaged("named objects without a dictionary");
  }
}

void Loader::loadPoints() {
  SqliteStatement select(connection,
                         "SELECT repository, name, x, y, z, w FROM reference_point ORDER BY repository, position");
  ZOR::StoredPointArray points;
  std::uint64_t repository = 0;
  const auto finish = [&] {
    if (points.isEmpty()) return;
    objectAt<ZOR::RegistrationObjectPointsRepository>(repository).restoreData(std::exchange(points, {}));
  };
  while (select.next()) {
    if (select.integer(0) != repository) finish();
    repository = select.integer(0);
    points.append({select.text(1), select.number(2), select.number(3), select.number(4), select.number(5)});
  }
  finish();
}

void Loader::loadClouds() {
  SqliteStatement select(connection,
                         "SELECT handle, name, source, m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, "
                         "m14, m15 FROM cloud");
  while (select.next()) {
    OdGeMatrix3d matrix;
    for (int i = 0; i < 16; ++i) matrix(i / 4, i % 4) = select.number(3 + i);
    objectAt<hostDbPointCloudDefinition>(select.integer(0)).restore(select.text(1), select.text(2), matrix);
  }
}

void Loader::loadEntries() {
  SqliteStatement select(connection,
                         "SELECT dictionary, sequence, name, object FROM dictionary_entry "
                         "ORDER BY dictionary, sequence");
  while (select.next()) {
    const OdDbObjectId object = objectAt<OdDbObject>(select.integer(3)).objectId();
    objectAt<OdDbDictionary>(select.integer(0)).restoreEntry({select.integer(1), select.text(2), object});
  }
}

}  // namespace

void loadDrawing(SqliteConnection& connection, OdDbDatabase& database) {
  Loader loader(connection, database);
  try {
    loader.loadObjects();
    loader.loadPoints();
    loader.loadClouds();
    loader.loadEntries();
  } catch (const OdError& error) {
    // What the database doesn't take back can't have come from it.
    if (error.code() == eInvalidInput) throw damagedDrawing(connection.path(), "an invalid entry or handle");
    throw;
  }
}

}  // namespace tiepoint::workbench
