// Between the session and the drawing.
#include <string>
#include <unordered_set>

#include "host_access/host_objects.h"
#include "host_access/raised_to_writing.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"
#include "session/multi_registrator.h"
#include "session/name_rules.h"
#include "session/name_tables.h"

namespace ZOR::reg {

namespace {

using Repository = RegistrationObjectPointsRepository;
using RepositoryPtr = RegistrationObjectPointsRepositoryPtr;

/// The dictionary, open for reading. Throws OdError_NotThatKindOfClass for an object of another
/// class.
OdDbDictionaryPtr openDictionary(const OdDbObjectId& id) { return id.safeOpenObject(OdDb::kForRead); }

RefPoint pointAsRead(const _StoredPoint& stored, const std::string& name, RefPointId id, GroupId group,
                     CommonPointId commonId) {
  RefPoint point;
  point.id = id;
  point.groupId = group;
  point.commonId = commonId;
  point.position = {stored.x, stored.y, stored.z};
  point.weight = stored.w;
  point.named = name != unidentifiedName;
  return point;
}

/// The stored points of a dictionary entry; empty when it is no repository or has none.
StoredPointArray storedPointsOf(const OdDbDictionaryIterator& entry) {
  StoredPointArray points;
  const RepositoryPtr repository = RepositoryPtr::cast(entry.getObject(OdDb::kForRead));
  if (repository.isNull() || !repository->getData(points)) points.clear();
  return points;
}

/// The transformation as the drawing's matrix. A part that moves nothing leaves the identity's own
/// entries.
OdGeMatrix3d matrixOf(const RigidTransform& transform) {
  static const RigidTransform unmoved;
  OdGeMatrix3d matrix;
  if (transform.rotation != unmoved.rotation) {
    for (int row = 0; row < 3; ++row) {
      for (int column = 0; column < 3; ++column) {
        matrix(row, column) = transform.rotation[static_cast<std::size_t>(3 * row + column)];
      }
    }
  }
  if (transform.translation != unmoved.translation) {
    for (int row = 0; row < 3; ++row) matrix(row, 3) = transform.translation[static_cast<std::size_t>(row)];
  }
  return matrix;
}

/// Null when none can be made.
RepositoryPtr newRepository() {
  const OdRxClass* repositoryClass = Repository::desc();
  if (!repositoryClass) throw OdError(eNullClass);
  return repositoryClass->create();
}

OdDbObjectId putUnder(const OdString& key, OdDbDictionary& dictionary, OdDbObject& object) {
  const RaisedToWriting access(dictionary);
  return dictionary.setAt(key, &object);
}

void moveCloud(hostDbPointCloudDefinition& cloud, const RigidTransform& transform) {
  const OdGeMatrix3d matrix = matrixOf(transform);
  const RaisedToWriting access(cloud);
  cloud.transformBy(matrix);
}

}  // namespace

bool MultiRegistrator::getAvailableGroups(std::map<GroupId, std::string>& groups) {
  syncFromDrawing();
  if (groupNames.empty()) return false;
  std::unordered_set<GroupId> inSession;
  for (const RefPoint& point : sessionPoints) inSession.insert(point.groupId);
  groups.clear();
  for (const NamedId& group : groupNames) {
    if (inSession.count(group.id) == 0) groups.emplace(group.id, group.name);
  }
  return true;
}

void MultiRegistrator::syncFromDrawing() {
  const OdDbDatabasePtr database = activeDatabase();
  if (database.isNull() || !Repository::documentHasRegistrationPoints(*database)) return;
  const OdDbObjectId dictionaryId = Repository::registrationPointsDictionary(*database);
  if (dictionaryId.isNull()) return;
  const OdDbDictionaryPtr dictionary = openDictionary(dictionaryId);
  if (dictionary->numEntries() == 0) return;

  IdsByName groupsByName = idsByName(groupNames);
  IdsByName commonByName = idsByName(commonNames);
  for (const auto entry = dictionary->newIterator(OdRx::kDictCollated); !entry->done(); entry->next()) {
    const std::string groupName = entry->name().narrow();
    if (groupsByName.count(groupName) != 0) continue;
    const StoredPointArray stored = storedPointsOf(*entry);
    if (stored.isEmpty()) continue;

    // Ids are handed out by the count of names known, even where renames have left gaps.
    const GroupId group = groupsByName.size();
    NamedIdList newGroup{{group, groupName}};
    groupsByName.emplace(groupName, group);
    NamedIdList newNames;
    RefPointList points;
    for (const _StoredPoint& point : stored) {
      const std::string name = point.name.narrow();
      const auto [known, isNew] = commonByName.try_emplace(name, commonByName.size());
      if (isNew) newNames.push_back({known->second, name});
      points.push_back(pointAsRead(point, name, allPoints.size() + points.size(), group, known->second));
    }
    // All of it or nothing: a group that is known is never read again.
    groupNames.splice(groupNames.end(), newGroup);
    commonNames.splice(commonNames.end(), newNames);
    allPoints.splice(allPoints.end(), points);
  }
}

void MultiRegistrator::getPointClouds(std::list<NamedId>& cloudList) {
  clouds.clear();
  const OdDbDatabasePtr database = activeDatabase();
  if (database.isNull() || !hostDbPointCloudDefinition::documentHasPointClouds(*database)) return;
  const OdDbDictionaryPtr dictionary = openDictionary(hostDbPointCloudDefinition::pointCloudDictionary(*database));
  if (dictionary->numEntries() == 0) return;

  for (const auto entry = dictionary->newIterator(OdRx::kDictCollated); !entry->done(); entry->next()) {
    const OdDbObjectId id = dictionary->getAt(entry->name());
    const auto cloud = hostDbPointCloudDefinitionPtr::cast(id.openObject(OdDb::kForRead));
    if (!cloud.isNull()) clouds.push_back(cloud);
  }
  cloudList.clear();
  for (const auto& cloud : clouds) cloudList.push_back({cloudList.size(), cloud->getName().narrow()});
}

bool MultiRegistrator::applyTransformToCloud(GroupId group, std::uint64_t cloud) {
  if (cloud >= clouds.size()) return false;
  const auto transform = results.groupTransforms.find(group);
  if (transform == results.groupTransforms.end()) return false;
  moveCloud(*clouds[cloud], transform->second);
  return true;
}

bool MultiRegistrator::applyTransformations() {
  if (results.groupTransforms.empty() || clouds.empty()) return false;
  const IdsByName groupsByName = idsByName(groupNames);
  for (const auto& cloud : clouds) {
    const auto group = groupsByName.find(cloud->getName().narrow());
    if (group == groupsByName.end()) continue;
    const auto transform = results.groupTransforms.find(group->second);
    if (transform != results.groupTransforms.end()) moveCloud(*cloud, transform->second);
  }
  return true;
}

bool MultiRegistrator::storeCommonPoints(std::string name) {
  if (results.commonPoints.empty() || !isGroupName(name)) return false;
  const OdDbDatabasePtr database = activeDatabase();
  if (database.isNull()) return false;

  const NamesById nameOf(commonNames);
  StoredPointArray points;
  for (const auto& [id, point] : results.commonPoints) {
    points.append(
        {OdString(nameOf[id], CP_ANSI_1251), point.position.x, point.position.y, point.position.z, point.weight});
  }
  const OdDbObjectId dictionaryId = Repository::documentHasRegistrationPoints(*database)
                                        ? Repository::registrationPointsDictionary(*database)
                                        : Repository::createRegistrationPointsDictionary(*database);
  if (dictionaryId.isNull()) return false;
  const OdDbDictionaryPtr dictionary = openDictionary(dictionaryId);
  const OdString key(name, CP_ANSI_1251);
  if (dictionary->getAt(key).isValid()) return false;

  const RepositoryPtr repository = newRepository();
  if (repository.isNull()) return false;
  if (putUnder(key, *dictionary, *repository).isNull()) return false;
  return repository->setData(points);
}

}  // namespace ZOR::reg
