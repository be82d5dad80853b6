// The road of one registration: from files to a drawing, through a session, to moved clouds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/cli/cloud_moves.h"
#include "workbench/cli/import_files.h"
#include "workbench/cli/naming/match_run.h"
#include "workbench/cli/options.h"
#include "workbench/cli/output.h"
#include "workbench/cli/result_files.h"
#include "workbench/geometry/links.h"
#include "workbench/host/workbench.h"
#include "workbench/session/driven_session.h"
#include "workbench/session/iteration_course.h"
#include "workbench/session/reasons.h"
#include "workbench/session/results.h"

namespace tiepoint::workbench::cli {

enum class Outcome {
  registered,
  /// The groups don't hang together, or none is left.
  notLinked,
  /// A base was asked for, and none of its points is in use.
  baseLost,
  /// Points without names can't be named so that it is certain.
  notNamed
};

/// All that a registration has to tell.
struct Road {
  /// UTF-8; empty for a drawing in memory.
  std::string document;
  Import import;
  SessionState state;
  /// As the state's points, in the same order.
  std::vector<std::optional<Reason>> reasons;
  Outcome outcome = Outcome::notLinked;
  bool usesBase = false;
  bool isIterative = false;
  /// After the iterative method, unless its report doesn't tell.
  std::optional<IterationCourse> iterations;
  std::optional<std::uint64_t> keptCluster;
  /// When points were to be named.
  std::optional<MatchReport> match;
  /// When not registered, or registered iteratively although the groups don't hang together.
  LinkReport links;
  /// When registered.
  Results results;
  std::vector<MergedTarget> targets;
  std::vector<CloudReport> clouds;
  /// What was written; empty when not asked for.
  std::string commonPointsFile;
  std::string storedGroup;
  WrittenFiles files;
};

/// Goes all the way. When the groups can't be registered, nothing is moved, stored or written, and
/// the outcome says why. Throws CommandError, and what the host throws.
Road travel(Workbench& workbench, const RegisterOptions& options, Warnings& warnings);

}  // namespace tiepoint::workbench::cli
