#include "workbench/report/suggestion.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>

namespace tiepoint::workbench {

namespace {

constexpr std::size_t maxNamesListed = 10;

/// A slip changes a byte or two of a short name, a third of a long one.
bool isTypo(std::size_t distance, const std::string& wanted) {
  return distance <= std::max<std::size_t>(2, wanted.size() / 3) && distance < wanted.size();
}

std::string listed(const std::vector<std::string>& names) {
  std::string text = "; there are: ";
  for (std::size_t i = 0; i < names.size() && i < maxNamesListed; ++i) text += (i == 0 ? "" : ", ") + names[i];
  return names.size() > maxNamesListed ? text + ", ..." : text;
}

}  // namespace

std::size_t editDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row[b.size()];
}

std::optional<std::string> nearestName(const std::string& wanted, const std::vector<std::string>& names) {
  const auto nearest = std::min_element(names.begin(), names.end(), [&](const std::string& a, const std::string& b) {
    return editDistance(wanted, a) < editDistance(wanted, b);
  });
  if (nearest == names.end() || !isTypo(editDistance(wanted, *nearest), wanted)) return std::nullopt;
  return *nearest;
}

std::string suggestion(const std::string& wanted, const std::vector<std::string>& names) {
  if (names.empty()) return {};
  if (const auto nearest = nearestName(wanted, names)) return fmt::format("; did you mean \"{}\"?", *nearest);
  return listed(names);
}

}  // namespace tiepoint::workbench
