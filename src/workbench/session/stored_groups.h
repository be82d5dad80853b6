// The groups of reference points that a drawing holds.
#pragma once

#include <string>
#include <vector>

#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_database.h"

namespace tiepoint::workbench {

/// One group, open for reading as long as the record lives.
struct StoredGroup {
  std::wstring name;
  ZOR::RegistrationObjectPointsRepositoryPtr repository;

  const ZOR::StoredPointArray& points() const { return repository->storedPoints(); }
};

/// What is stored, in the order of entry; not a session's view.
std::vector<StoredGroup> storedGroups(const OdDbDatabase& database);

}  // namespace tiepoint::workbench
