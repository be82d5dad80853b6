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
  checkNaming(request.naming);
  checkUnit(request);
  checkWeights(request);
  const OutputRequest& outputs = request.outputs;
  requireBeside(outputs.matrixFormat && outputs.matrices.empty(), Field::matrixFormat, Field::matrices);
  requireBeside(outputs.reportKind && outputs.report.empty(), Field::reportKind, Field::report);
}

}  // namespace tiepoint::workbench
