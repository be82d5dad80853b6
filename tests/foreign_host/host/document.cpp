#include "document.h"

#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/sdk/od_db_dictionary.h"

namespace foreign {

namespace {

using Repository = ZOR::RegistrationObjectPointsRepository;

/// Null for a drawing that doesn't have the dictionary.
OdDbDictionaryPtr opened(const OdDbObjectId& id, OdDb::OpenMode mode = OdDb::kForRead) {
  return id.isNull() ? OdDbDictionaryPtr() : OdDbDictionaryPtr(id.safeOpenObject(mode));
}

/// An object that is closed has one reference, its database's.
std::size_t openEntries(const OdDbDictionaryPtr& dictionary) {
  if (dictionary.isNull()) return 0;
  // The pointer of this function is one.
  std::size_t open = dictionary->numRefs() > 2 ? 1 : 0;
  for (const OdDbDictionaryEntry& entry : dictionary->entries()) {
    const OdDbObject* object = entry.object.owningDatabase()->objectAt(entry.object.getHandle());
    if (object && object->numRefs() > 1) ++open;
  }
  return open;
}

}  // namespace

Document::Document(Switchboard& switchboard, Graphics& graphics)
    : HostObject(switchboard, "document"), drawing(new OdDbDatabase), transients(switchboard, graphics) {}

OdDbDatabasePtr Document::database() {
  return answer(
      "Document::database", [this] { return drawing; }, [] { return OdDbDatabasePtr(new OdDbDatabase); });
}

HostTransientService* Document::transientService() {
  return answer("Document::transientService", [this]() -> HostTransientService* { return &transients; });
}

bool Document::isReady() const {
  return answer("Document::isReady", [] { return true; });
}

void Document::close() {
  end();
  transients.end();
  transients.view().end();
  drawing = {};
}

std::size_t Document::holders() const {
  if (drawing.isNull()) return 0;
  return static_cast<std::size_t>(drawing->numRefs() - 1) +
         openEntries(opened(Repository::registrationPointsDictionary(*drawing))) +
         openEntries(opened(hostDbPointCloudDefinition::pointCloudDictionary(*drawing)));
}

void Document::addCloud(const std::string& name) {
  const OdDbDictionaryPtr clouds =
      opened(hostDbPointCloudDefinition::createPointCloudDictionary(*drawing), OdDb::kForWrite);
  const hostDbPointCloudDefinitionPtr cloud = hostDbPointCloudDefinition::desc()->create();
  clouds->setAt(OdString(name), cloud.get());
  cloud->setName(OdString(name));
}

OdGeMatrix3d Document::cloudMatrix(const std::string& name) const {
  const OdDbDictionaryPtr clouds = opened(hostDbPointCloudDefinition::pointCloudDictionary(*drawing));
  const hostDbPointCloudDefinitionPtr cloud = clouds->getAt(OdString(name)).safeOpenObject();
  return cloud->transformation();
}

std::size_t Document::groupCount() const {
  const OdDbDictionaryPtr groups = opened(Repository::registrationPointsDictionary(*drawing));
  return groups.isNull() ? 0 : groups->numEntries();
}

ZOR::StoredPointArray Document::groupPoints(const std::string& name) const {
  const OdDbDictionaryPtr groups = opened(Repository::registrationPointsDictionary(*drawing));
  if (groups.isNull()) return {};
  const OdDbObjectId id = groups->getAt(OdString(name));
  if (id.isNull()) return {};
  const ZOR::RegistrationObjectPointsRepositoryPtr group = id.safeOpenObject();
  return group->storedPoints();
}

}  // namespace foreign
