// Measurements of one station that may bear one another's names.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "workbench/report/look_list.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Another way of giving a station's names to its measurements that fits as well, or nearly so.
struct DoubtfulNames {
  /// Names of targets: what was measured as the first would be the second.
  std::vector<std::pair<std::string, std::string>> exchanged;
  bool fitsBetter = false;
};

/// Nothing where the given names are a thousand times as likely, or more. There must be an adjustment.
std::optional<DoubtfulNames> doubtfulNames(const Registration& registration, std::size_t station);

/// Such as "T12 and T13", or "T1 for T2, T2 for T3, T3 for T1".
std::string exchangeText(const DoubtfulNames& names);

/// The point of the suspect's station that was measured where all others see the suspect, while the suspect was
/// measured where they see that point; an index among the outcomes. Seen in their errors, which may be of any
/// size; the other ways of naming are only known where they fit.
std::optional<std::size_t> exchangedWith(const Registration& registration, const LookedAt& suspect);

}  // namespace tiepoint::workbench
