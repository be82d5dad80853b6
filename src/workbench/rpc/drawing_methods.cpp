// What the active drawing holds: groups of reference points, and clouds.
#include <utility>

#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"
#include "workbench/io/text_encoding.h"
#include "workbench/rpc/methods.h"

namespace tiepoint::workbench {

namespace {

using ZOR::_StoredPoint;
using ZOR::RegistrationObjectPointsRepository;
using ZOR::RegistrationObjectPointsRepositoryPtr;
using ZOR::StoredPointArray;

OrderedJson resultOf(bool done) {
  OrderedJson result = OrderedJson::object();
  addMember(result, "result", done);
  return result;
}

// --- The forms of points and clouds.

OrderedJson pointJson(const _StoredPoint& point) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "name", toJson(point.name.wideText()));
  addMember(object, "x", toJson(point.x));
  addMember(object, "y", toJson(point.y));
  addMember(object, "z", toJson(point.z));
  addMember(object, "w", toJson(point.w));
  return object;
}

_StoredPoint pointFromJson(const Json& value) {
  if (!value.is_object()) throw BadParameter("it", "must be an object");
  const Parameters members(value);
  members.requireKnown({"name", "x", "y", "z", "w"});
  return {members.name("name"), members.number("x"), members.number("y"), members.number("z"), members.number("w")};
}

StoredPointArray pointsFromJson(const Json& value) {
  if (!value.is_array()) throw BadValue("must be an array of points");
  StoredPointArray points;
  points.reserve(value.size());
  for (const Json& element : value) {
    try {
      points.append(pointFromJson(element));
    } catch (const BadParameter& error) {
      throw BadValue("has a bad point at place " + std::to_string(points.size()) + ": " + error.complaint());
    }
  }
  return points;
}

OrderedJson groupJson(const OdString& name, const StoredPointArray& points) {
  OrderedJson array = OrderedJson::array();
  for (const _StoredPoint& point : points) array.push_back(pointJson(point));
  OrderedJson object = OrderedJson::object();
  addMember(object, "name", toJson(name.wideText()));
  addMember(object, "points", std::move(array));
  return object;
}

OrderedJson matrixJson(const OdGeMatrix3d& matrix) {
  OrderedJson numbers = OrderedJson::array();
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) numbers.push_back(toJson(matrix(row, column)));
  }
  return numbers;
}

OrderedJson cloudJson(const hostDbPointCloudDefinition& cloud) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "name", toJson(cloud.getName().wideText()));
  addMember(object, "source", toJson(cloud.getSource().wideText()));
  addMember(object, "matrix", matrixJson(cloud.transformation()));
  return object;
}

// --- The two dictionaries.

/// Calls `use(name, object)` for each entry that is a `T`, in the order of entry.
template <class T, class Use>
void forEachEntry(const OdDbObjectId& dictionaryId, Use use) {
  if (dictionaryId.isNull()) return;
  const OdDbDictionaryPtr dictionary = dictionaryId.safeOpenObject();
  const OdDbDictionaryIteratorPtr entry = dictionary->newIterator(OdRx::kDictCollated);
  for (; !entry->done(); entry->next()) {
    const OdSmartPtr<T> object = OdSmartPtr<T>::cast(entry->getObject());
    if (!object.isNull()) use(entry->name(), *object);
  }
}

/// Enters a new object; false when the name is taken. `fill(object)` comes when it is in.
template <class T, class Fill>
bool enter(const OdDbDatabase& database, const OdDbObjectId& dictionaryId, const OdString& name, Fill fill) {
  if (dictionaryId.isNull()) throw OdError(database.isReadOnly() ? eWriteProtected : eNullObjectId);
  const OdDbDictionaryPtr dictionary = dictionaryId.safeOpenObject(OdDb::kForWrite);
  if (!dictionary->getAt(name).isNull()) return false;
  const OdSmartPtr<T> object = T::desc()->create();
  dictionary->setAt(name, object.get());
  fill(*object);
  return true;
}

// --- Methods.

OrderedJson listGroups(RpcContext& context, const Parameters&) {
  const OdDbDatabasePtr database = context.workbench.requireActiveDocument().database();
  OrderedJson groups = OrderedJson::array();
  forEachEntry<RegistrationObjectPointsRepository>(
      RegistrationObjectPointsRepository::registrationPointsDictionary(*database),
      [&](const OdString& name, const RegistrationObjectPointsRepository& repository) {
        groups.push_back(groupJson(name, repository.storedPoints()));
      });
  OrderedJson result = OrderedJson::object();
  addMember(result, "groups", std::move(groups));
  return result;
}

OrderedJson storeGroup(RpcContext& context, const Parameters& parameters) {
  const OdDbDatabasePtr database = context.workbench.requireActiveDocument().database();
  const OdString name = parameters.name("name");
  const StoredPointArray points = parameters.read("points", pointsFromJson);
  bool stored = false;
  context.workbench.inTransaction([&] {
    stored = enter<RegistrationObjectPointsRepository>(
        *database, RegistrationObjectPointsRepository::createRegistrationPointsDictionary(*database), name,
        [&](RegistrationObjectPointsRepository& repository) { repository.setData(points); });
  });
  return resultOf(stored);
}

OrderedJson removeGroup(RpcContext& context, const Parameters& parameters) {
  const OdDbDatabasePtr database = context.workbench.requireActiveDocument().database();
  const OdString name = parameters.wideText("name");
  bool removed = false;
  context.workbench.inTransaction([&] {
    const OdDbObjectId id = RegistrationObjectPointsRepository::registrationPointsDictionary(*database);
    if (id.isNull()) return;
    const OdDbDictionaryPtr dictionary = id.safeOpenObject(OdDb::kForWrite);
    removed = dictionary->remove(name);
  });
  return resultOf(removed);
}

OrderedJson listClouds(RpcContext& context, const Parameters&) {
  const OdDbDatabasePtr database = context.workbench.requireActiveDocument().database();
  OrderedJson clouds = OrderedJson::array();
  forEachEntry<hostDbPointCloudDefinition>(
      hostDbPointCloudDefinition::pointCloudDictionary(*database),
      [&](const OdString&, const hostDbPointCloudDefinition& cloud) { clouds.push_back(cloudJson(cloud)); });
  OrderedJson result = OrderedJson::object();
  addMember(result, "clouds", std::move(clouds));
  return result;
}

OrderedJson addCloud(RpcContext& context, const Parameters& parameters) {
  const OdDbDatabasePtr database = context.workbench.requireActiveDocument().database();
  const OdString name = parameters.name("name");
  const OdString source = parameters.has("source") ? wideFromUtf8(parameters.path("source")) : std::wstring();
  bool added = false;
  context.workbench.inTransaction([&] {
    added =
        enter<hostDbPointCloudDefinition>(*database, hostDbPointCloudDefinition::createPointCloudDictionary(*database),
                                          name, [&](hostDbPointCloudDefinition& cloud) {
                                            cloud.setName(name);
                                            cloud.setSource(source);
                                          });
  });
  return resultOf(added);
}

}  // namespace

void addDrawingMethods(Methods& methods) {
  methods["document.groups"] = {{}, listGroups};
  methods["document.storeGroup"] = {{"name", "points"}, storeGroup};
  methods["document.removeGroup"] = {{"name"}, removeGroup};
  methods["document.addCloud"] = {{"name", "source"}, addCloud};
  methods["document.clouds"] = {{}, listClouds};
}

}  // namespace tiepoint::workbench
