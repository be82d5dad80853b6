// The measurements of an adjustment that somebody should look at.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/report/discrepancy_tables.h"
#include "workbench/report/length_format.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Why, the gravest reason first.
enum class LookReason { suspect, rejected, uncontrolled, hardlyControlled };

/// A station's measurement of a target, or the given place of a control target.
struct LookedAt {
  LookReason reason = LookReason::suspect;
  /// Among the outcomes; none for control.
  std::optional<std::size_t> point;
  /// Of the network.
  std::size_t target = 0;
  const analysis::AdjustedObservation* told = nullptr;
};

/// Of a measurement's least redundancy, which is the share of an error that shows in its residual: below this
/// it is controlled in name only.
inline constexpr double weakControl = 0.1;
/// Below this nothing shows.
inline constexpr double noControl = 1e-9;

/// All residuals are the rounding of numbers: what the tests say of them means nothing.
bool isWithoutNoise(const Registration& registration);

/// The one measurement to take out first; nothing where nothing is worth it.
std::optional<LookedAt> suspectOf(const Registration& registration);

/// Such as "T13 in S4", or "the given place of T04".
std::string nameOf(const Registration& registration, const LookedAt& measurement);

/// What alone tells against a suspect: a station, or "its given place". An error of one of two measurements of a
/// target can't be told from the opposite error of the other one. Nothing where more tell against it.
std::optional<std::string> rivalOf(const Registration& registration, const LookedAt& suspect);

/// The worst first; empty where nothing is redundant. There must be an adjustment.
std::vector<LookedAt> measurementsToLookAt(const Registration& registration);

/// The table of them; empty without one. Only the worst are shown, unless all rows are asked for.
std::string lookTable(const Registration& registration, const LengthFormat& lengths, const TableOptions& options);

}  // namespace tiepoint::workbench
