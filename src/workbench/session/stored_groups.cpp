#include "workbench/session/stored_groups.h"

#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"

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

}  // namespace tiepoint::workbench
