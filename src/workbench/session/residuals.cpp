#include "workbench/session/residuals.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tiepoint::workbench {

namespace {

/// Drawing units: finer than any instrument, in millimetres too.
constexpr double finestDifference = 1e-9;
/// What the few operations from a measured point to its residual may lose, in units of the last place of
/// a coordinate.
constexpr double lostDigits = 64.0 * std::numeric_limits<double>::epsilon();

double largestCoordinate(const OdGePoint3d& p) { return std::max({std::abs(p.x), std::abs(p.y), std::abs(p.z)}); }

double lengthOf(const OdGeVector3d& v) { return std::hypot(v.x, v.y, v.z); }

}  // namespace

FittedTargets::FittedTargets(const std::vector<MergedTarget>& targets) {
  byName.reserve(targets.size());
  for (const MergedTarget& target : targets) byName.emplace(target.name, &target);
}

std::optional<OdGeVector3d> FittedTargets::residual(const std::string& name, const OdGePoint3d& registered,
                                                    double discrepancy) const {
  const double rounding = std::max(finestDifference, lostDigits * largestCoordinate(registered));
  const auto [begin, end] = byName.equal_range(name);
  for (auto entry = begin; entry != end; ++entry) {
    const OdGeVector3d residual = registered - entry->second->position;
    if (std::abs(lengthOf(residual) - discrepancy) <= rounding) return residual;
  }
  return std::nullopt;
}

}  // namespace tiepoint::workbench
