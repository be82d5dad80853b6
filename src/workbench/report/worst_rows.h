// Long tables, cut to the rows that need a look.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tiepoint::workbench {

/// A table of more rows than `maxRows` shows its `worstRows` worst: what nobody reads hides what
/// somebody should.
inline constexpr std::size_t maxRows = 200;
inline constexpr std::size_t worstRows = 40;

/// The rows to show, given how bad each one is: all in their order, or the worst of a long table, the
/// worst first and equal ones in their order. A value that is no number is the worst.
std::vector<std::size_t> rowsToShow(const std::vector<double>& badness, bool all);

/// A line on the rows that aren't shown, such as "  and 160 more points; --all-points shows them"; empty
/// when all are. `noun` is what one row stands for.
std::string restLine(std::size_t shown, std::size_t total, const char* noun);

}  // namespace tiepoint::workbench
