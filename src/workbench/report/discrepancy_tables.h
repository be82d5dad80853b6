// The tables of discrepancies, by points and by groups.
#pragma once

#include <string>
#include <vector>

#include "workbench/report/length_format.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// How tables are printed.
struct TableOptions {
  /// All rows of long tables, not only the worst.
  bool allRows = false;
  /// The discrepancies of the points along the axes of the common system, too.
  bool axes = false;
};

/// How badly each group fits, for the choice of rows. What has no figure for it is worth a look all the
/// same: the base, and what isn't registered.
std::vector<double> badnessOf(const std::vector<GroupOutcome>& groups);

/// Both are for a registered survey; lines have at most 100 columns, but for long names.
std::string discrepanciesByPoint(const Registration& registration, const LengthFormat& lengths,
                                 const TableOptions& options);
std::string discrepanciesByGroup(const Registration& registration, const LengthFormat& lengths,
                                 const TableOptions& options);

/// The figures that belong in a protocol of the registration, and the RMS at the base beside them; empty
/// without either.
std::string protocolText(const Registration& registration, const LengthFormat& lengths);

}  // namespace tiepoint::workbench
