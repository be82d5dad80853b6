// The groups of reference points that a drawing holds.
#pragma once

#include <string>
#include <vector>

#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_database.h"
#include "workbench/values/station_points.h"

namespace tiepoint::workbench {

/// One group, open for reading as long as the record lives.
struct StoredGroup {
  std::wstring name;
  ZOR::RegistrationObjectPointsRepositoryPtr repository;

  const ZOR::StoredPointArray& points() const { return repository->storedPoints(); }
};

/// What is stored, in the order of entry; not a session's view.
std::vector<StoredGroup> storedGroups(const OdDbDatabase& database);

/// Stores a station as a group; false when the name is taken. Throws EncodingError for a name that isn't
/// UTF-8. Inside a transaction.
bool storeGroup(OdDbDatabase& database, const StationPoints& station);

/// Takes groups out of the drawing; those that it doesn't hold are passed over. Inside a transaction.
void removeGroups(const OdDbDatabase& database, const std::vector<std::wstring>& names);

}  // namespace tiepoint::workbench
