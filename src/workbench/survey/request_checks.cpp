#include "workbench/survey/request_checks.h"

#include <cmath>

#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

namespace {

void requireBeside(bool isAlone, Field field, Field other) {
  if (!isAlone) return;
  Refusal refusal{RefusalKind::goesWith, field};
  refusal.otherField = other;
  throw Refused(std::move(refusal));
}

enum class Zero { forbidden, allowed };

void requireLength(const std::optional<double>& value, Field field, Zero zero = Zero::forbidden) {
  const bool zeroToo = zero == Zero::allowed;
  if (!value || (std::isfinite(*value) && (*value > 0.0 || (zeroToo && *value >= 0.0)))) return;
  Refusal refusal{zeroToo ? RefusalKind::notALength : RefusalKind::notAboveZero, field};
  refusal.value = value;
  throw Refused(std::move(refusal));
}

void checkIterativeLimits(const RegistrationRequest& request) {
  if (request.keepCluster) throw Refused({RefusalKind::keepClusterNeedsPairwise, Field::keepCluster});
  if (request.maxIterations == std::uint64_t{0}) {
    throw Refused({RefusalKind::notAboveZero, Field::maxIterations});
  }
  requireLength(request.convergence, Field::convergence);
}

void requireSigma(double sigma, const std::string& given) {
  if (isUsableSigma(sigma)) return;
  Refusal refusal{RefusalKind::notAboveZero, Field::sigma, given};
  refusal.value = sigma;
  throw Refused(std::move(refusal));
}

void requireShare(const std::optional<double>& share, Field field) {
  if (!share || (*share >= smallestShare && *share <= largestShare)) return;
  Refusal refusal{RefusalKind::notAShare, field};
  refusal.value = share;
  throw Refused(std::move(refusal));
}

/// What is asked of an adjustment goes with no other method.
void checkAdjustment(const AdjustmentRequest& adjustment, RegistrationMethod method) {
  const auto requireMethod = [&](bool isGiven, Field field) {
    requireBeside(isGiven && method != RegistrationMethod::adjust, field, Field::method);
  };
  requireMethod(adjustment.sigma || !adjustment.sigmas.empty(), Field::sigma);
  requireMethod(!adjustment.sigmasFile.empty(), Field::sigmasFile);
  requireMethod(!adjustment.controlFile.empty(), Field::controlFile);
  requireMethod(adjustment.allLevelled || !adjustment.levelled.empty(), Field::level);
  requireMethod(!adjustment.startFile.empty(), Field::startFile);
  requireMethod(adjustment.variance.has_value(), Field::variance);
  requireMethod(adjustment.alpha.has_value(), Field::alpha);
  requireMethod(adjustment.power.has_value(), Field::power);
  requireMethod(!adjustment.carryFile.empty(), Field::carryFile);
  requireMethod(!adjustment.trace.empty(), Field::trace);
  if (adjustment.sigma) requireSigma(*adjustment.sigma, {});
  for (const SigmaChoice& choice : adjustment.sigmas) requireSigma(choice.sigma, choice.points.given);
  requireShare(adjustment.alpha, Field::alpha);
  requireShare(adjustment.power, Field::power);
}

void checkMethod(const RegistrationRequest& request) {
  if (request.method == RegistrationMethod::iterative) return checkIterativeLimits(request);
  requireBeside(request.maxIterations.has_value(), Field::maxIterations, Field::method);
  requireBeside(request.convergence.has_value(), Field::convergence, Field::method);
}

void checkNaming(const NamingRequest& naming) {
  const bool isAutomatic = naming.how == Naming::automatic;
  const bool byTriangles = isAutomatic || naming.how == Naming::triangles;
  const bool byCloseness = isAutomatic || naming.how == Naming::closeness;
  requireBeside(naming.sideTolerance && !byTriangles, Field::sideTolerance, Field::naming);
  requireBeside(naming.minSideDifference && !byTriangles, Field::minSideDifference, Field::naming);
  requireBeside(naming.closeness && !byCloseness, Field::closeness, Field::naming);
  requireBeside(naming.limit && !isAutomatic, Field::namingLimit, Field::naming);
  requireLength(naming.sideTolerance, Field::sideTolerance);
  requireLength(naming.minSideDifference, Field::minSideDifference, Zero::allowed);
  requireLength(naming.closeness, Field::closeness);
  requireLength(naming.limit, Field::namingLimit);
}

void checkUnit(const RegistrationRequest& request) {
  if (!request.reading.unit) return;
  const std::string unit = lengthUnitName(*request.reading.unit);
  if (request.unit == Unit::millimetre) throw Refused({RefusalKind::inputUnitGivesMetres, Field::inputUnit, unit});
  // A cloud keeps its unit, and would move by a shift in metres.
  const bool movesClouds = request.changes.apply || !request.changes.clouds.empty();
  if (*request.reading.unit == LengthUnit::metre || !movesClouds) return;
  throw Refused({RefusalKind::inputUnitLeavesClouds, Field::inputUnit, unit});
}

void checkWeights(const RegistrationRequest& request) {
  for (const WeightChoice& choice : request.weights) {
    if (choice.weight >= 0.0 && choice.weight <= 1.0) continue;
    Refusal refusal{RefusalKind::weightOutOfRange, Field::weight, choice.points.given};
    refusal.value = choice.weight;
    throw Refused(std::move(refusal));
  }
}

}  // namespace

void checkRequest(const RegistrationRequest& request) {
  checkMethod(request);
  checkAdjustment(request.adjustment, request.method);
  checkNaming(request.naming);
  checkUnit(request);
  checkWeights(request);
  const OutputRequest& outputs = request.outputs;
  requireBeside(outputs.matrixFormat && outputs.matrices.empty(), Field::matrixFormat, Field::matrices);
  requireBeside(outputs.reportKind && outputs.report.empty(), Field::reportKind, Field::report);
}

}  // namespace tiepoint::workbench
