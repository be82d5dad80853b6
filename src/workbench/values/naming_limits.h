// How far a search for names may go.
#pragma once

namespace tiepoint::workbench {

/// Lengths in drawing units.
struct NamingLimits {
  /// The largest discrepancy that a naming may leave.
  double discrepancy = 0.0;
  /// The widest tolerance that is tried for the sides of equal triangles.
  double side = 0.0;
  /// How much any two sides of a usable triangle differ at least.
  double minSideDifference = 0.0;
  /// The largest distance between points of one target.
  double closeness = 0.0;

  /// Two measurements of a target whose discrepancies are within the limit lie no farther apart.
  double reach() const { return 2.0 * discrepancy; }
};

}  // namespace tiepoint::workbench
