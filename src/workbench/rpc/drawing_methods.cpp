// What the active drawing holds: groups of reference points, and clouds.
#include <utility>

#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"
#include "workbench/clouds/drawing_clouds.h"
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
      throw BadValue("has a bad point at index " + std::to_string(points.size()) + ": " + error.complaint());
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

OrderedJson cloudJson(const DrawingCloud& cloud) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "name", toJson(cloud.name));
  addMember(object, "source", toJson(cloud.source));
  addMember(object, "matrix", matrixJson(cloud.matrix));
  return object;
}

// --- The dictionary of groups.

/// In the order of entry.
OrderedJson groupsJson(const OdDbObjectId& dictionaryId) {
  OrderedJson groups = OrderedJson::array();
  if (dictionaryId.isNull()) return groups;
  const OdDbDictionaryPtr dictionary = dictionaryId.safeOpenObject();
  const OdDbDictionaryIteratorPtr entry = dictionary->newIterator(OdRx::kDictCollated);
  for (; !entry->done(); entry->next()) {
    const auto repository = RegistrationObjectPointsRepositoryPtr::cast(entry->getObject());
    if (!repository.isNull()) groups.push_back(groupJson(entry->name(), repository->storedPoints()));
  }
  return groups;
}

/// False when the name is taken.
bool addGroup(OdDbDatabase& database, const OdString& name, const StoredPointArray& points) {
  const OdDbObjectId id = RegistrationObjectPointsRepository::createRegistrationPointsDictionary(database);
  if (id.isNull()) throw OdError(database.isReadOnly() ? eWriteProtected : eNullObjectId);
  const OdDbDictionaryPtr dictionary = id.safeOpenObject(OdDb::kForWrite);
  if (!dictionary->getAt(name).isNull()) return false;
  const RegistrationObjectPointsRepositoryPtr repository = RegistrationObjectPointsRepository::desc()->create();
  dictionary->setAt(name, repository.get());
  repository->setData(points);
  return true;
}

// --- Methods.

OrderedJson listGroups(RpcContext& context, const Parameters&) {
  const OdDbDatabasePtr database = context.workbench.requireActiveDocument().database();
  OrderedJson result = OrderedJson::object();
  addMember(result, "groups", groupsJson(RegistrationObjectPointsRepository::registrationPointsDictionary(*database)));
  return result;
}

OrderedJson storeGroup(RpcContext& context, const Parameters& parameters) {
  const OdDbDatabasePtr database = context.workbench.requireActiveDocument().database();
  const OdString name = parameters.name("name");
  const StoredPointArray points = parameters.read("points", pointsFromJson);
  bool stored = false;
  context.workbench.inTransaction([&] { stored = addGroup(*database, name, points); });
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
  for (const DrawingCloud& cloud : cloudsOf(*database)) clouds.push_back(cloudJson(cloud));
  OrderedJson result = OrderedJson::object();
  addMember(result, "clouds", std::move(clouds));
  return result;
}

OrderedJson addNamedCloud(RpcContext& context, const Parameters& parameters) {
  const OdDbDatabasePtr database = context.workbench.requireActiveDocument().database();
  const OdString name = parameters.name("name");
  const std::wstring source = parameters.has("source") ? wideFromUtf8(parameters.path("source")) : std::wstring();
  bool added = false;
  context.workbench.inTransaction([&] { added = addCloud(*database, name.wideText(), source); });
  return resultOf(added);
}

}  // namespace

void addDrawingMethods(Methods& methods) {
  methods["document.groups"] = {{}, listGroups};
  methods["document.storeGroup"] = {{"name", "points"}, storeGroup};
  methods["document.removeGroup"] = {{"name"}, removeGroup};
  methods["document.addCloud"] = {{"name", "source"}, addNamedCloud};
  methods["document.clouds"] = {{}, listClouds};
}

}  // namespace tiepoint::workbench
