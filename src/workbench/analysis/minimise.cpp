#include "workbench/analysis/minimise.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tiepoint::workbench::analysis {

namespace {

constexpr int maxIterations = 500;
/// Gauss and Newton's steps shrink by the residuals' share of the arms. Where that is much, as with exchanged
/// names, they creep; from here on the second derivative is used wherever it has a minimum.
constexpr int stepsOfDesign = 12;
/// Of the survey's extent: rounding, not a chosen accuracy.
constexpr double negligibleStep = 1e-12;
/// What rounding adds to a residual, as a share of the largest distance from a station to its targets.
constexpr double residualRounding = 1e-15;
/// A factor serves for further steps as long as each is that much shorter than the one before it, and as long
/// as the stations have moved by no more than so much of the extent since it was made.
constexpr double shrinkThatKeepsFactor = 0.1;
constexpr double motionThatKeepsFactor = 1e-6;
/// Of the diagonal; and the factor from one trial to the next.
constexpr double firstDamping = 1e-8, dampingGrowth = 10.0, maxDamping = 1e12;
/// Below it a pivot is rounding, and the step along it would be anything.
constexpr double leastPivot = 1e-14;
/// So many undamped steps in a row that lower no sum, and none of which is shorter than all before it, are
/// rounding: in a long chain that is more than the negligible step.
constexpr int idleSteps = 4;

class Search {
 public:
  Search(const Survey& survey_, Placements start, NormalEquations& equations_, SparseFactor& factor_)
      : survey(survey_), equations(equations_), factor(factor_) {
    minimum.placements = std::move(start);
    minimum.elimination = eliminateTargets(survey, minimum.placements);
    for (const Sighting& seen : survey.sightings) {
      information += seen.information;
      reach = std::max(reach, seen.local.norm());
    }
  }

  Minimum run() {
    bool keepsFactor = false;
    double lastLength = 0.0, shortest = HUGE_VAL;
    int idle = 0;
    while (minimum.iterations < maxIterations && !minimum.converged) {
      ++minimum.iterations;
      build(minimum.iterations > stepsOfDesign ? Curvature::whole : Curvature::ofDesign);
      const double sumBefore = minimum.elimination.sumOfSquares;
      const double length = step(keepsFactor);
      const bool falls = minimum.elimination.sumOfSquares < sumBefore - roundingOf(sumBefore);
      idle = falls || damping > 0.0 || length < shortest ? 0 : idle + 1;
      shortest = std::min(shortest, length);
      minimum.converged = !falls && (length <= negligibleStep || idle >= idleSteps);
      const bool shrinks = lastLength > 0.0 && length <= shrinkThatKeepsFactor * lastLength;
      keepsFactor = factorDamping == 0.0 && damping == 0.0 && (shrinks || movedSinceFactor <= motionThatKeepsFactor);
      lastLength = length;
    }
    return std::move(minimum);
  }

 private:
  /// Moves the stations and returns by how much of the extent; 0 when no step lowers the sum.
  double step(bool keepsFactor) {
    if (!keepsFactor && !factorizeAnyhow()) raiseDamping();
    while (damping <= maxDamping) {
      const Eigen::VectorXd motion = -factor.solve(equations.gradient());
      if (tryMotion(motion)) {
        damping = damping <= firstDamping ? 0.0 : damping / dampingGrowth;
        const double length = lengthOf(motion);
        movedSinceFactor += length;
        return length;
      }
      if (!std::exchange(keepsFactor, false) || !factorizeAnyhow()) raiseDamping();
    }
    return 0.0;
  }

  void build(Curvature wanted) {
    curvature = wanted;
    equations.build(minimum.placements, minimum.elimination, wanted);
  }

  /// Where the second derivative isn't positive there is no minimum to step to.
  bool factorizeAnyhow() {
    if (factorize()) return true;
    if (curvature == Curvature::ofDesign) return false;
    build(Curvature::ofDesign);
    return factorize();
  }

  bool factorize() {
    BlockMatrix damped = equations.matrix();
    movedSinceFactor = 0.0;
    factorDamping = damping;
    if (damping > 0.0) damped.addDiagonal(damping * damped.diagonal());
    return factor.factorize(damped) && factor.leastPivotShare() > leastPivot;
  }

  void raiseDamping() {
    do {
      damping = damping == 0.0 ? firstDamping : damping * dampingGrowth;
    } while (damping <= maxDamping && !factorize());
  }

  /// False, and everything as it was, when the sum would rise by more than rounding.
  bool tryMotion(const Eigen::VectorXd& motion) {
    if (!motion.allFinite()) return false;
    Placements next = minimum.placements;
    for (const std::size_t s : equations.stationOfNode()) next[s] = moved(next[s], equations.partOf(motion, s));
    Elimination there = eliminateTargets(survey, next);
    const double sum = minimum.elimination.sumOfSquares;
    if (!(there.sumOfSquares <= sum + roundingOf(sum))) return false;
    minimum.placements = std::move(next);
    minimum.elimination = std::move(there);
    return true;
  }

  /// The farthest that a point of a station goes, as a share of the extent.
  double lengthOf(const Eigen::VectorXd& motion) const {
    double farthest = 0.0;
    for (const std::size_t s : equations.stationOfNode()) {
      const StationVector part = equations.partOf(motion, s);
      farthest = std::max(farthest, shiftOf(part).norm() + survey.stations[s].lever * turnOf(part).norm());
    }
    const double extent = extentOf(minimum.elimination);
    return extent > 0.0 ? farthest / extent : farthest;
  }

  /// How far the sum is known: all residuals off by their rounding, in the worst direction.
  double roundingOf(double sum) const {
    const double error = residualRounding * reach;
    const double least = information * error * error;
    return 2.0 * std::sqrt(sum * least) + least;
  }

  const Survey& survey;
  NormalEquations& equations;
  SparseFactor& factor;
  Minimum minimum;
  Curvature curvature = Curvature::ofDesign;
  double information = 0.0, reach = 0.0;
  double damping = 0.0, factorDamping = 0.0, movedSinceFactor = 0.0;
};

}  // namespace

Minimum minimise(const Survey& survey, Placements start, NormalEquations& equations, SparseFactor& factor) {
  return Search(survey, std::move(start), equations, factor).run();
}

}  // namespace tiepoint::workbench::analysis
