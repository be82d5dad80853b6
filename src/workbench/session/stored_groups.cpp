#include "workbench/session/stored_groups.h"

#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"
#include "records/ref_point.h"
#include "workbench/io/stand_in_names.h"

namespace tiepoint::workbench {

using Repository = ZOR::RegistrationObjectPointsRepository;
using RepositoryPtr = ZOR::RegistrationObjectPointsRepositoryPtr;

std::vector<StoredGroup> storedGroups(const OdDbDatabase& database) {
  std::vector<StoredGroup> groups;
  if (!Repository::documentHasRegistrationPoints(database)) return groups;
  const OdDbDictionaryPtr dictionary(Repository::registrationPointsDictionary(database).safeOpenObject(OdDb::kForRead));
  for (const auto entry = dictionary->newIterator(); !entry->done(); entry->next()) {
    const RepositoryPtr repository = RepositoryPtr::cast(entry->getObject());
    if (!repository.isNull()) groups.push_back({entry->name().wideText(), repository});
  }
  return groups;
}

bool storeGroup(OdDbDatabase& database, const StationPoints& station) {
  const OdString name(moduleGroupName(station.name));
  ZOR::StoredPointArray points;
  for (const MeasuredPoint& point : station.points) {
    const std::string pointName = point.name.empty() ? std::string(ZOR::reg::unidentifiedName) : point.name;
    points.append(
        {OdString(moduleName(pointName)), point.position.x, point.position.y, point.position.z, point.weight});
  }
  const OdDbDictionaryPtr dictionary(
      Repository::createRegistrationPointsDictionary(database).safeOpenObject(OdDb::kForWrite));
  if (!dictionary->getAt(name).isNull()) return false;
  const RepositoryPtr repository = Repository::desc()->create();
  dictionary->setAt(name, repository.get());
  repository->setData(points);
  return true;
}

void removeGroups(const OdDbDatabase& database, const std::vector<std::wstring>& names) {
  const OdDbObjectId id = Repository::registrationPointsDictionary(database);
  if (id.isNull()) return;
  const OdDbDictionaryPtr dictionary(id.safeOpenObject(OdDb::kForWrite));
  for (const std::wstring& name : names) dictionary->remove(OdString(name.c_str()));
}

}  // namespace tiepoint::workbench
