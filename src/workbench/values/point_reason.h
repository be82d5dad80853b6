// Why a point takes no part.
#pragma once

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
  nothingToJoin,
  /// The group has another point of that name further down, which is used.
  nameAgain,
  /// An adjustment has no use for it.
  negativeWeight
};

/// For programs, such as "lone-name".
const char* reasonKey(Reason reason);

}  // namespace tiepoint::workbench
