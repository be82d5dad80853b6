#include "support/test_document.h"

#include "platform/sdk/od_db_dictionary.h"

namespace tiepoint::testing {

namespace {

OdDbDictionaryPtr dictionary(const OdDbObjectId& id) { return OdDbDictionaryPtr(id.safeOpenObject(OdDb::kForWrite)); }

}  // namespace

TestDocument::TestDocument() : drawing(new OdDbDatabase) {}

void TestDocument::storeGroup(const std::string& name, const std::vector<Target>& targets) {
  ZOR::StoredPointArray points;
  for (const Target& target : targets)
    points.append({OdString(target.name), target.x, target.y, target.z, target.weight});
  const ZOR::RegistrationObjectPointsRepositoryPtr repository(
      ZOR::RegistrationObjectPointsRepository::desc()->create());
  dictionary(ZOR::RegistrationObjectPointsRepository::createRegistrationPointsDictionary(*drawing))
      ->setAt(OdString(name), repository.get());
  repository->setData(points);
}

std::vector<Target> TestDocument::storedGroup(const std::string& name) const {
  std::vector<Target> targets;
  const OdDbObjectId id = ZOR::RegistrationObjectPointsRepository::registrationPointsDictionary(*drawing);
  if (id.isNull()) return targets;
  const OdDbObjectId entry = OdDbDictionaryPtr(id.safeOpenObject())->getAt(OdString(name));
  if (!entry.isValid()) return targets;
  ZOR::StoredPointArray points;
  ZOR::RegistrationObjectPointsRepositoryPtr(entry.safeOpenObject())->getData(points);
  for (const ZOR::_StoredPoint& point : points) {
    targets.push_back({point.name.narrow(), point.x, point.y, point.z, point.w});
  }
  return targets;
}

void TestDocument::addCloud(const std::string& name) {
  const hostDbPointCloudDefinitionPtr cloud(hostDbPointCloudDefinition::desc()->create());
  cloud->setName(OdString(name));
  dictionary(hostDbPointCloudDefinition::createPointCloudDictionary(*drawing))->setAt(OdString(name), cloud.get());
}

OdGeMatrix3d TestDocument::cloudMatrix(const std::string& name) const {
  const OdDbObjectId id = hostDbPointCloudDefinition::pointCloudDictionary(*drawing);
  const OdDbObjectId entry = OdDbDictionaryPtr(id.safeOpenObject())->getAt(OdString(name));
  return hostDbPointCloudDefinitionPtr(entry.safeOpenObject())->transformation();
}

}  // namespace tiepoint::testing
