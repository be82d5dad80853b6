#include "workbench/report/doubtful_names.h"

#include <Eigen/Geometry>
#include <algorithm>

#include "workbench/report/adjustment_names.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

/// Of sums of squares in units of the variance: a margin of 2 ln 1000 makes the given names a thousand times as
/// likely as the others.
constexpr double surelyNamed = 13.8;
/// The least standard deviation of a coordinate, drawing units: an estimated one that is smaller is rounding.
constexpr double finestSigma = 1e-9;
/// Of two exchanged names each pulls at the station and so adds to the other's error, along the line between the
/// two: it is that line by direction (the sine of the angle) and by size, and the two errors are opposite.
constexpr double largestSine = 0.3;
constexpr double leastShare = 0.6, largestShare = 3.0;
constexpr double likeness = 0.25;
constexpr std::size_t maxPairs = 3;

double varianceUnit(const analysis::Adjustment& result) {
  if (result.scale == analysis::VarianceScale::aPriori) return 1.0;
  return std::max(result.varianceFactor.value_or(1.0), finestSigma * finestSigma);
}

bool isAlong(const Eigen::Vector3d& error, const Eigen::Vector3d& apart) {
  const double length = error.norm(), distance = apart.norm();
  return error.dot(apart) > 0.0 && error.cross(apart).norm() <= largestSine * length * distance &&
         length >= leastShare * distance && length <= largestShare * distance;
}

bool areAlike(const Eigen::Vector3d& a, const Eigen::Vector3d& b) { return (a - b).norm() <= likeness * a.norm(); }

}  // namespace

std::optional<DoubtfulNames> doubtfulNames(const Registration& registration, std::size_t station) {
  const analysis::Adjustment& result = registration.adjustment->result;
  const auto& told = result.stations[station];
  if (!told || !told->naming || told->naming->exchanged.empty()) return std::nullopt;
  const double margin = told->naming->margin / varianceUnit(result);
  if (margin > surelyNamed) return std::nullopt;
  DoubtfulNames names;
  names.fitsBetter = margin < 0.0;
  for (const auto& [measured, takenFor] : told->naming->exchanged) {
    names.exchanged.emplace_back(targetName(registration, measured), targetName(registration, takenFor));
  }
  return names;
}

std::string exchangeText(const DoubtfulNames& names) {
  if (names.exchanged.size() == 2) return names.exchanged[0].first + " and " + names.exchanged[1].first;
  std::vector<std::string> pairs;
  for (const auto& [measured, takenFor] : names.exchanged) pairs.push_back(measured + " for " + takenFor);
  return joined(pairs, maxPairs);
}

std::optional<std::size_t> exchangedWith(const Registration& registration, const LookedAt& suspect) {
  if (!suspect.point || !suspect.told->leftOut) return std::nullopt;
  const PointOutcome& one = registration.points[*suspect.point];
  const Eigen::Vector3d& error = suspect.told->leftOut->error;
  for (std::size_t i = 0; i < registration.points.size(); ++i) {
    const PointOutcome& other = registration.points[i];
    const analysis::AdjustedObservation* told = registration.adjustment->ofPoint(i);
    if (i == *suspect.point || other.group != one.group || !told || !told->leftOut) continue;
    if (!one.registered || !other.registered) continue;
    const OdGeVector3d apart = *one.registered - *other.registered;
    if (isAlong(error, {apart.x, apart.y, apart.z}) && areAlike(error, -told->leftOut->error)) return i;
  }
  return std::nullopt;
}

}  // namespace tiepoint::workbench
