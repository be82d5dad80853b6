#include "workbench/analysis/levels.h"

#include <algorithm>
#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/non_central_chi_squared.hpp>
#include <boost/math/special_functions/beta.hpp>
#include <cmath>

namespace tiepoint::workbench::analysis {

namespace {

namespace bm = boost::math;

constexpr double axesOfPoint = 3.0;
constexpr long double familyLevel = 0.05L;
constexpr double globalLevel = 0.025;

double chiSquareQuantile(double degrees, double upperTail) {
  return bm::quantile(bm::complement(bm::chi_squared(degrees), upperTail));
}

/// Of f times a beta variable: the part that some axes have in the sum of all.
double betaQuantile(double axes, double redundancy, double upperTail) {
  return redundancy * bm::ibetac_inv(axes / 2.0, (redundancy - axes) / 2.0, upperTail);
}

}  // namespace

double noncentrality(double degrees, double alpha, double power) {
  const double critical = chiSquareQuantile(degrees, alpha);
  // With a power no larger than alpha there is nothing to be found.
  if (power <= alpha) return 0.0;
  return bm::non_central_chi_squared::find_non_centrality(degrees, critical, 1.0 - power);
}

TestLevels testLevels(double alpha, double power, VarianceScale scale, std::size_t redundancy) {
  TestLevels levels;
  levels.alpha = alpha;
  levels.power = power;
  levels.noncentralityAxis = noncentrality(1.0, alpha, power);
  levels.noncentralityPoint = noncentrality(axesOfPoint, alpha, power);
  if (redundancy == 0) return levels;
  const double f = static_cast<double>(redundancy);
  if (scale == VarianceScale::aPriori) {
    levels.criticalAxis = std::sqrt(chiSquareQuantile(1.0, alpha));
    levels.criticalPoint = chiSquareQuantile(axesOfPoint, alpha);
    return levels;
  }
  if (f > 1.0) levels.criticalAxis = std::sqrt(betaQuantile(1.0, f, alpha));
  if (f > axesOfPoint) levels.criticalPoint = betaQuantile(axesOfPoint, f, alpha);
  return levels;
}

/// Systems differ in the last digit of these functions; rounded from more digits the result is the same.
double familyAlpha(std::size_t tests) {
  return static_cast<double>(-std::expm1(std::log1p(-familyLevel) / static_cast<long double>(tests)));
}

std::optional<double> probabilityOf(double statistic, VarianceScale scale, std::size_t redundancy) {
  if (scale == VarianceScale::aPriori) {
    return bm::cdf(bm::complement(bm::chi_squared(axesOfPoint), std::max(0.0, statistic)));
  }
  const double f = static_cast<double>(redundancy);
  if (f <= axesOfPoint) return std::nullopt;
  const double share = std::clamp(statistic / f, 0.0, 1.0);
  return bm::ibetac(axesOfPoint / 2.0, (f - axesOfPoint) / 2.0, share);
}

GlobalTest globalTest(double sumOfSquares, std::size_t redundancy) {
  GlobalTest test;
  const double f = static_cast<double>(redundancy);
  test.lower = chiSquareQuantile(f, 1.0 - globalLevel);
  test.upper = chiSquareQuantile(f, globalLevel);
  test.passed = test.lower <= sumOfSquares && sumOfSquares <= test.upper;
  return test;
}

}  // namespace tiepoint::workbench::analysis
