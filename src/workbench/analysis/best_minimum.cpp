#include "workbench/analysis/best_minimum.h"

#include <stdexcept>
#include <utility>

#include "workbench/analysis/certificate.h"
#include "workbench/analysis/own_start.h"
#include "workbench/analysis/spectral_start.h"

namespace tiepoint::workbench::analysis {

namespace {

/// Of the sum of squares: a gap within it isn't worth another search.
constexpr double wideGap = 0.01;
/// Of the sum of squares: less than that another minimum isn't lower but the same.
constexpr double sameSum = 1e-9;

Placements startFrom(const Network& network, const Survey& survey, const std::vector<Pose>& poses) {
  Network started = network;
  for (std::size_t s = 0; s < poses.size(); ++s) started.stations[s].start = poses[s];
  return startOf(started, survey);
}

class StartTrials {
 public:
  StartTrials(const Survey& survey_, NormalEquations& equations_, SparseFactor& factor_)
      : survey(survey_), equations(equations_), factor(factor_) {}

  void first(const Placements& start) { best.minimum = minimise(survey, start, equations, factor); }

  void certifyFirst() {
    form = RotationForm::of(survey);
    judge();
  }

  /// Without a certificate nothing says that there could be a lower minimum.
  bool mayBeLower() const {
    return best.certificate && !best.certificate->certified &&
           best.certificate->gap > wideGap * best.minimum.elimination.sumOfSquares;
  }

  void tryStart(const Placements& start) {
    if (!mayBeLower()) return;
    Minimum other = minimise(survey, start, equations, factor);
    const double least = best.minimum.elimination.sumOfSquares;
    if (!(other.elimination.sumOfSquares < least * (1.0 - sameSum))) return;
    best.minimum = std::move(other);
    best.otherStartWon = true;
    judge();
  }

  void trySpectral() {
    if (mayBeLower()) tryStart(spectralStart(survey, *form));
  }

  BestMinimum take() { return std::move(best); }

 private:
  void judge() {
    if (form) best.certificate = certify(*form, best.minimum.placements, best.minimum.elimination);
  }

  const Survey& survey;
  NormalEquations& equations;
  SparseFactor& factor;
  std::optional<RotationForm> form;
  BestMinimum best;
};

}  // namespace

BestMinimum bestMinimum(const Network& network, const Survey& survey, const AdjustmentOptions& options,
                        NormalEquations& equations, SparseFactor& factor) {
  StartTrials trials(survey, equations, factor);
  trials.first(startOf(network, survey));
  if (options.measurementsAlone) return trials.take();
  trials.certifyFirst();
  if (!options.triesOtherStarts) return trials.take();
  trials.trySpectral();
  if (!trials.mayBeLower() || !options.otherStarts) return trials.take();
  for (const std::vector<Pose>& start : options.otherStarts()) {
    if (start.size() != network.stations.size()) throw std::invalid_argument("a start isn't one for every station");
    trials.tryStart(startFrom(network, survey, start));
  }
  return trials.take();
}

}  // namespace tiepoint::workbench::analysis
