// The drawing's clouds and what a registration does to them.
#pragma once

#include <string>
#include <vector>

#include "session/i_multi_registrator.h"
#include "workbench/clouds/drawing_clouds.h"
#include "workbench/values/progress.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// The file of each cloud, absolute. Throws Refused: (cloudTwice) for a name twice, (cloudFileMissing).
std::vector<CloudRequest> cloudsToAdd(const std::vector<CloudRequest>& requests);

/// Adds the clouds. A cloud that is there with the same file is fine; with another file it throws
/// Refused (cloudTaken). Inside a transaction.
void addClouds(OdDbDatabase& database, const std::vector<CloudRequest>& clouds);

/// The clouds of a drawing as they are.
std::vector<CloudReport> cloudsIn(const OdDbDatabase& database);

/// What would become of each cloud if the registration were applied. Only `moved` ones are touched then.
std::vector<CloudReport> plannedMoves(const OdDbDatabase& database, const std::vector<GroupOutcome>& groups);

/// Moves the clouds and updates the reports. Throws Refused (cloudMovedBefore) when one was moved before
/// and not `force`: the same motion twice is nearly always a mistake. Inside a transaction.
void applyMoves(const OdDbDatabase& database, ZOR::reg::iMultiRegistrator& session, std::vector<CloudReport>& clouds,
                bool force);
/// The same by the motions of groups that the session hasn't found itself.
void applyMoves(OdDbDatabase& database, const std::vector<GroupOutcome>& groups, std::vector<CloudReport>& clouds,
                bool force);

/// Where writeCopies puts the copy of a cloud that has a file. UTF-8.
std::string copyPath(const CloudReport& cloud, const std::string& folder);

/// Writes a moved copy of each cloud that has a file into the folder, under the file's own name. The
/// folder is made when it is missing. Throws Refused (of the class `file`, or cancelled).
void writeCopies(std::vector<CloudReport>& clouds, const std::string& folder, bool force, Progress& progress);

}  // namespace tiepoint::workbench
