// How lengths are printed.
#pragma once

#include <string>

#include "workbench/values/registration_request.h"

namespace tiepoint::workbench {

/// Lengths are in drawing units, whatever those are. Told what they are, residuals are printed in
/// millimetres.
class LengthFormat {
 public:
  explicit LengthFormat(Unit unit);

  /// A coordinate or a shift: 6 decimals, 3 in millimetres.
  std::string position(double length) const;
  /// A discrepancy: 6 decimals of an unknown unit, or millimetres with 3.
  std::string residual(double length) const;
  /// The unit of positions and of residuals, such as "drawing units".
  const char* positionUnit() const { return positions; }
  const char* residualUnit() const { return residuals; }
  /// How many units of residuals are one drawing unit.
  double residualsPerLength() const { return residualFactor; }
  /// The lever at which a small rotation is told as a length, in drawing units: 10 m, or 10 of an unknown unit.
  double lever() const { return leverLength; }
  /// Such as "10 m".
  const char* leverText() const { return leverName; }

 private:
  const char* positions = "drawing units";
  const char* residuals = "drawing units";
  int positionDecimals = 6;
  int residualDecimals = 6;
  double residualFactor = 1.0;
  double leverLength = 10.0;
  const char* leverName = "10 drawing units";
};

}  // namespace tiepoint::workbench
