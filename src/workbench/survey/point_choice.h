// Groups and points that a request names.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/survey/known_names.h"
#include "workbench/values/refusal.h"
#include "workbench/values/registration_request.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// What a choice stands for in a session.
struct ChosenPoints {
  ZOR::reg::GroupId group = 0;
  bool wholeGroup = false;
  /// The points of that name in the group, or all of the group's.
  ZOR::reg::RefPointIdSet points;
};

/// The group of that name. Throws Refused (noSuchGroup).
ZOR::reg::GroupId chosenGroup(const SessionState& state, const std::string& name, Field field);

/// The first reading that names existing points.
std::optional<ChosenPoints> findPoints(const SessionState& state, const PointChoice& choice);
/// The same, but throws Refused (noSuchGroup, noSuchPoint).
ChosenPoints chosenPoints(const SessionState& state, const PointChoice& choice, Field field);

/// Whether points of a group may still get names.
enum class NamesToCome { none, some };

/// Throws Refused where `names` don't hold what the choice asks for, unless its point may yet get its name.
void requireKnown(const KnownNames& names, const PointChoice& choice, Field field, NamesToCome toCome);
void requireGroup(const KnownNames& names, const std::string& group, const std::string& given, Field field);

}  // namespace tiepoint::workbench
