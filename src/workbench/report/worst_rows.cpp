#include "workbench/report/worst_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

double orderedValue(double badness) { return std::isnan(badness) ? std::numeric_limits<double>::infinity() : badness; }

}  // namespace

std::vector<std::size_t> rowsToShow(const std::vector<double>& badness, bool all) {
  std::vector<std::size_t> rows(badness.size());
  std::iota(rows.begin(), rows.end(), std::size_t{0});
  if (all || rows.size() <= maxRows) return rows;
  std::stable_sort(rows.begin(), rows.end(),
                   [&](std::size_t a, std::size_t b) { return orderedValue(badness[a]) > orderedValue(badness[b]); });
  rows.resize(worstRows);
  return rows;
}

std::string restLine(std::size_t shown, std::size_t total, const char* noun) {
  if (shown == total) return "";
  return fmt::format("  and {} more {}{}; --all-points shows them\n", total - shown, noun,
                     total - shown == 1 ? "" : "s");
}

}  // namespace tiepoint::workbench
