#include "workbench/fake_module/fake_host_access.h"

#include "platform/host/exports.h"
#include "platform/os/loaded_modules.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"

namespace {

template <class Function>
Function hostEntry(int index) {
  using namespace tiepoint::os;
  const ModuleHandle program = loadedModule(static_cast<const wchar_t*>(nullptr));
  const auto table = exportAs<GetHostFunctionFunction>(program, "get_host_funcptr");
  return table ? reinterpret_cast<Function>(table(index)) : nullptr;
}

}  // namespace

HostApplication* fakeHostApplication() {
  const auto entry = hostEntry<HostApplicationFunction>(hostApplicationEntry);
  return entry ? entry() : nullptr;
}

void fakeRefresh() { hostEntry<HostRefreshFunction>(hostRefreshEntry)(0); }

void fakeStoreGroup(const std::string& name) {
  using Repository = ZOR::RegistrationObjectPointsRepository;
  const OdDbDatabasePtr database = fakeHostApplication()->activeDocument()->database();
  const OdDbDictionaryPtr dictionary =
      Repository::createRegistrationPointsDictionary(*database).safeOpenObject(OdDb::kForWrite);
  const OdSmartPtr<Repository> repository = Repository::desc()->create();
  dictionary->setAt(OdString(name), repository.get());
  ZOR::StoredPointArray points;
  points.append({OdString("T"), 0.0, 0.0, 0.0, 1.0});
  repository->setData(points);
}
