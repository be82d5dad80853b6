#include "support/session_host.h"

#include <algorithm>

#include "platform/host/exports.h"
#include "platform/os/loaded_modules.h"
#include "platform/sdk/od_db_dictionary.h"

#if defined(_WIN32)
#define TEST_HOST_EXPORT extern "C" __declspec(dllexport)
#else
#define TEST_HOST_EXPORT extern "C" [[gnu::visibility("default")]]
#endif

namespace tiepoint::testing {

namespace {

SessionHost* current = nullptr;

HostApplication* application() { return current; }

void refresh(unsigned char) { ++current->redraws; }

OdDbDictionaryPtr dictionary(const OdDbObjectId& id) { return OdDbDictionaryPtr(id.safeOpenObject(OdDb::kForWrite)); }

}  // namespace

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

SessionHost::SessionHost() {
  current = this;
  documents.push_back(std::make_unique<TestDocument>());
}

SessionHost::~SessionHost() { current = nullptr; }

TestDocument& SessionHost::openDocument() {
  documents.push_back(std::make_unique<TestDocument>());
  for (HostApDocManagerReactor* reactor : listeners) reactor->documentAdded(documents.back().get());
  return document();
}

void SessionHost::closeDocument() {
  for (HostApDocManagerReactor* reactor : listeners) reactor->documentToBeRemoved(documents.back().get());
  documents.pop_back();
}

HostDocument* SessionHost::activeDocument() { return documents.empty() ? nullptr : documents.back().get(); }

void SessionHost::addReactor(HostApDocManagerReactor* reactor) { listeners.push_back(reactor); }

void SessionHost::removeReactor(HostApDocManagerReactor* reactor) {
  listeners.erase(std::remove(listeners.begin(), listeners.end(), reactor), listeners.end());
}

}  // namespace tiepoint::testing

TEST_HOST_EXPORT void* GetMainDllInstance() { return tiepoint::os::loadedModule(static_cast<const wchar_t*>(nullptr)); }

TEST_HOST_EXPORT void* get_host_funcptr(int index) {
  if (!tiepoint::testing::current) return nullptr;
  if (index == hostApplicationEntry) return reinterpret_cast<void*>(&tiepoint::testing::application);
  if (index == hostRefreshEntry) return reinterpret_cast<void*>(&tiepoint::testing::refresh);
  return nullptr;
}

TEST_HOST_EXPORT HostAppService* GetApp() {
  return tiepoint::testing::current ? tiepoint::testing::current->profile().newAppService() : nullptr;
}
