#include "support/watched_repositories.h"

#include <dlfcn.h>

#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"

namespace tiepoint::testing {

namespace {

using Repository = ZOR::RegistrationObjectPointsRepository;
using SetData = bool (*)(Repository*, const ZOR::StoredPointArray&);

/// The library's own definition.
SetData trueSetData() {
  return reinterpret_cast<SetData>(
      dlsym(RTLD_NEXT,
            "_ZN3ZOR34RegistrationObjectPointsRepository7setDataERK7OdArrayINS_12_StoredPointE18OdObjects"
            "AllocatorIS2_EE"));
}

DataGiven standingOf(const Repository& repository, std::size_t points) {
  DataGiven standing;
  standing.points = points;
  if (!repository.database()) return standing;
  const OdDbDictionaryPtr groups = Repository::registrationPointsDictionary(*repository.database()).safeOpenObject();
  for (const OdDbDictionaryEntry& entry : groups->entries()) {
    if (entry.object == repository.objectId()) standing.wasInDictionary = true;
  }
  standing.dictionaryWasRaised = groups->isWriteEnabled();
  return standing;
}

}  // namespace

WatchedRepositories& watchedRepositories() {
  static WatchedRepositories watched;
  return watched;
}

}  // namespace tiepoint::testing

bool ZOR::RegistrationObjectPointsRepository::setData(const StoredPointArray& newPoints) {
  using namespace tiepoint::testing;
  watchedRepositories().given.push_back(standingOf(*this, newPoints.size()));
  return watchedRepositories().takeData && trueSetData()(this, newPoints);
}
