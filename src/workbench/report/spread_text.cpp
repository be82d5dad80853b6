#include "workbench/report/spread_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

constexpr std::uint64_t longestBar = 40;

/// One mark a distance as long as they fit, else in proportion; a bin that holds something shows.
std::string barOf(std::uint64_t count, std::uint64_t highest) {
  if (highest <= longestBar) return std::string(count, '#');
  const double share = static_cast<double>(count) / static_cast<double>(highest);
  const auto marks = static_cast<std::size_t>(share * static_cast<double>(longestBar));
  return std::string(count > 0 ? std::max<std::size_t>(marks, 1) : 0, '#');
}

}  // namespace

std::string spreadText(const PointSpread& spread, const LengthFormat& lengths) {
  if (!spread.largest || spread.counts.empty()) return "";
  TextTable table({TextTable::Side::right, TextTable::Side::right, TextTable::Side::right});
  table.add({"from", "to", "distances"});
  const std::uint64_t highest = *std::max_element(spread.counts.begin(), spread.counts.end());
  for (std::size_t bin = 0; bin < spread.counts.size(); ++bin) {
    const std::uint64_t count = spread.counts[bin];
    table.add({lengths.residual(spread.edges[bin]), lengths.residual(spread.edges[bin + 1]), std::to_string(count),
               barOf(count, highest)});
  }
  return fmt::format("Spread ({}): distances between registered points of the same name; largest {}\n{}",
                     lengths.residualUnit(), lengths.residual(*spread.largest), table.text());
}

}  // namespace tiepoint::workbench
