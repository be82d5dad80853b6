// Why a point takes no part.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

enum class Reason {
  excluded,
  weightZero,
  unnamed,
  /// No other group has an eligible point of that name.
  loneName,
  /// Others have the name, but they are out themselves.
  partnersOut,
  /// The group is left with fewer than three shared points.
  thinGroup,
  /// A base point whose name no other group has.
  baseNotShared,
  /// The base is left with fewer than three shared points.
  thinBase,
  /// There is one group only and no base.
  nothingToJoin
};

/// For each point of the state, in its order, why it is out; nothing for an active one. The session
/// says only that a point is out: the reason follows from which other points are eligible and in.
std::vector<std::optional<Reason>> reasonsOut(const SessionState& state);

/// A clause for people, such as `no other group has this name`.
const char* reasonText(Reason reason);
/// A key for programs, such as "lone-name".
const char* reasonKey(Reason reason);

}  // namespace tiepoint::workbench
