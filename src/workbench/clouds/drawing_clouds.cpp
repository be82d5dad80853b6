#include "workbench/clouds/drawing_clouds.h"

#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/sdk/od_db_dictionary.h"

namespace tiepoint::workbench {

namespace {

using Cloud = hostDbPointCloudDefinition;
using CloudPtr = hostDbPointCloudDefinitionPtr;

OdDbDictionaryPtr openDictionary(const OdDbObjectId& id, OdDb::OpenMode mode) {
  return OdDbDictionaryPtr(id.safeOpenObject(mode));
}

}  // namespace

std::vector<DrawingCloud> cloudsOf(const OdDbDatabase& database) {
  std::vector<DrawingCloud> clouds;
  if (!Cloud::documentHasPointClouds(database)) return clouds;
  const OdDbDictionaryPtr dictionary = openDictionary(Cloud::pointCloudDictionary(database), OdDb::kForRead);
  for (const auto entry = dictionary->newIterator(); !entry->done(); entry->next()) {
    const CloudPtr cloud = CloudPtr::cast(entry->getObject());
    if (cloud.isNull()) continue;
    clouds.push_back({cloud->getName().wideText(), cloud->getSource().wideText(), cloud->transformation()});
  }
  return clouds;
}

bool addCloud(OdDbDatabase& database, const std::wstring& name, const std::wstring& source) {
  const OdDbObjectId id = Cloud::createPointCloudDictionary(database);
  if (id.isNull()) throw OdError(database.isReadOnly() ? eWriteProtected : eNullObjectId);
  const OdDbDictionaryPtr dictionary = openDictionary(id, OdDb::kForWrite);
  if (dictionary->getAt(name).isValid()) return false;
  const CloudPtr cloud = Cloud::desc()->create();
  // Before the drawing has it, it keeps nothing to undo.
  cloud->setName(name);
  cloud->setSource(source);
  dictionary->setAt(name, cloud.get());
  return true;
}

void moveClouds(OdDbDatabase& database, const std::map<std::wstring, OdGeMatrix3d>& motions) {
  if (!Cloud::documentHasPointClouds(database)) return;
  const OdDbDictionaryPtr dictionary = openDictionary(Cloud::pointCloudDictionary(database), OdDb::kForRead);
  for (const auto& [name, motion] : motions) {
    const OdDbObjectId id = dictionary->getAt(name);
    if (id.isNull()) continue;
    const CloudPtr cloud = CloudPtr::cast(id.safeOpenObject(OdDb::kForWrite));
    if (!cloud.isNull()) cloud->transformBy(motion);
  }
}

}  // namespace tiepoint::workbench
