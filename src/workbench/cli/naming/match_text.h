// What a matching did, for the summary.
#pragma once

#include <string>

#include "workbench/cli/json_parts.h"
#include "workbench/cli/length_format.h"
#include "workbench/cli/naming/match_run.h"

namespace tiepoint::workbench::cli {

/// The steps with how many points each named, and the reasons for what wasn't.
std::string matchText(const SessionState& state, const MatchReport& report, const LengthFormat& lengths);

Json jsonMatch(const SessionState& state, const MatchReport& report);

}  // namespace tiepoint::workbench::cli
