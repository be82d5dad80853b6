// The drawing's clouds and what a registration does to them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/i_multi_registrator.h"
#include "workbench/cli/options.h"
#include "workbench/clouds/drawing_clouds.h"
#include "workbench/clouds/moved_cloud.h"
#include "workbench/session/results.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench::cli {

enum class CloudMove {
  moved,
  /// Nobody asked for it.
  notAsked,
  /// Its group is a base: the cloud lies in the common system already.
  base,
  notRegistered,
  noGroup
};

/// A moved copy of a cloud's file.
struct CloudCopy {
  /// UTF-8.
  std::string path;
  MovedCloud counts;
};

struct CloudReport {
  /// UTF-8.
  std::string name;
  std::string source;
  CloudMove move = CloudMove::notAsked;
  /// From the file's coordinates to the drawing's, after the move.
  OdGeMatrix3d matrix;
  std::optional<CloudCopy> copy;
};

/// The file of each option, absolute; throws CommandError: (usage) for what isn't NAME=FILE or a
/// name twice, (file) for a file that isn't there.
std::vector<CloudOption> cloudsToAdd(const std::vector<std::string>& options, const std::string& option);

/// Adds the clouds. A cloud that is there with the same file is fine; with another file it throws
/// CommandError(refused). Inside a transaction.
void addClouds(OdDbDatabase& database, const std::vector<CloudOption>& clouds);

/// What would become of each cloud if the results were applied. Only `moved` ones are touched then.
std::vector<CloudReport> foreseenMoves(const OdDbDatabase& database, const SessionState& state, const Results& results);

/// Moves the clouds and updates the reports. Throws CommandError(refused) when one was moved before
/// and not `force`: the same motion twice is nearly always a mistake. Inside a transaction.
void applyMoves(const OdDbDatabase& database, ZOR::reg::iMultiRegistrator& session, std::vector<CloudReport>& clouds,
                bool force);

/// Where writeCopies puts the copy of a cloud that has a file. UTF-8.
std::string copyPath(const CloudReport& cloud, const std::string& folder);

/// Writes a moved copy of each cloud that has a file into the folder, under the file's own name. The
/// folder is made when it is missing.
/// Throws CommandError(file).
void writeCopies(std::vector<CloudReport>& clouds, const std::string& folder, bool force);

}  // namespace tiepoint::workbench::cli
