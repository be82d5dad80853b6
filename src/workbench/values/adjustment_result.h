// What an adjustment tells: plain data, one field for each figure.
//
// Lengths are in drawing units, angles in radians, vectors and matrices in the axes of the common system.
#pragma once

#include <Eigen/Core>
#include <optional>
#include <utility>
#include <vector>

#include "workbench/values/adjustment_options.h"

namespace tiepoint::workbench::analysis {

using Matrix6d = Eigen::Matrix<double, 6, 6>;

// ---- Of one measurement ----

/// How far one station moves.
struct StationShift {
  /// In the network.
  std::size_t station = 0;
  double shift = 0.0;
  double rotation = 0.0;
};

struct LeftOut {
  /// Measured less what all other measurements predict.
  Eigen::Vector3d error = Eigen::Vector3d::Zero();
  /// The measurement's own station; of a held station's measurement and of control the one that moves most
  /// of those that measured the target.
  StationShift moved;
  /// The farthest that one of that station's adjusted targets moves with it.
  double displacement = 0.0;
};

struct AdjustedObservation {
  /// Of a coordinate; none for control.
  std::optional<double> sigma;
  Eigen::Vector3d residual = Eigen::Vector3d::Zero();
  Eigen::Vector3d redundancy = Eigen::Vector3d::Zero();
  double leastRedundancy = 0.0;
  /// Baarda's per axis, or Pope's with the estimated variance. None where an axis isn't controlled.
  std::optional<Eigen::Vector3d> w;
  std::optional<Eigen::Vector3d> detectablePerAxis;
  /// What follows is none where the measurement isn't controlled, and the tests also where there is no
  /// redundancy to test with.
  std::optional<double> statistic;
  std::optional<double> p;
  std::optional<bool> rejected;
  std::optional<double> detectable;
  std::optional<double> biasToNoise;
  std::optional<StationShift> effect;
  std::optional<LeftOut> leftOut;
};

struct TracedStation {
  std::size_t station = 0;
  StationShift effect;
  StationShift leftOut;
  double displacement = 0.0;
};

struct Trace {
  std::size_t observation = 0;
  /// Empty where the observation takes no part or isn't controlled.
  std::vector<TracedStation> stations;
};

// ---- Of one station or target ----

struct NamingMargin {
  /// Sum of squares of the next best way of naming, less that of the given one. Negative: it fits better.
  double margin = 0.0;
  /// Targets: what was measured as the first would be the second.
  std::vector<std::pair<std::size_t, std::size_t>> exchanged;
  /// False when the search was cut off: no better way was found, but there may be one.
  bool complete = true;
};

struct AdjustedStation {
  bool levelled = false;
  Eigen::Vector3d centre = Eigen::Vector3d::Zero();
  /// Of (omega, tau) about the centre; zero rows where the station doesn't turn.
  Matrix6d covariance = Matrix6d::Zero();
  /// Of the station's own origin.
  Eigen::Vector3d position = Eigen::Vector3d::Zero();
  Eigen::Matrix3d positionCovariance = Eigen::Matrix3d::Zero();
  double positionSigma = 0.0;
  double rotationSigma = 0.0;
  /// Unit length, sign free.
  Eigen::Vector3d rotationAxis = Eigen::Vector3d::UnitZ();
  double largestPointSigma = 0.0;
  double redundancy = 0.0;
  double geometry = 0.0;
  /// None when the next best way is far off.
  std::optional<NamingMargin> naming;
};

struct AdjustedTarget {
  Eigen::Vector3d position = Eigen::Vector3d::Zero();
  /// By stations, held ones as well.
  std::size_t sightings = 0;
  Eigen::Matrix3d covariance = Eigen::Matrix3d::Zero();
};

// ---- Of the whole ----

struct Datum {
  DatumKind kind = DatumKind::free;
  /// Held ones that take part.
  std::vector<std::size_t> stations;
  /// Of a free network.
  std::optional<std::size_t> frame;
  int defect = 0;
};

struct GlobalTest {
  /// Of the sum of squares.
  double lower = 0.0, upper = 0.0;
  bool passed = false;
};

struct TestLevels {
  double alpha = 0.0, power = 0.0;
  /// Of |w| and of the statistic. With the estimated variance they need a redundancy above 1 and above 3.
  std::optional<double> criticalAxis, criticalPoint;
  double noncentralityAxis = 0.0, noncentralityPoint = 0.0;
  std::size_t tests = 0;
  std::optional<double> familyAlpha;
};

/// An observation, or the control of a target.
struct Suspect {
  bool isControl = false;
  /// Of the observation or of the target in the network.
  std::size_t index = 0;
  double p = 1.0;
};

struct ModeShare {
  std::size_t station = 0;
  double share = 0.0;
};

struct Stiffness {
  double stiffness = 0.0;
  /// Stations with at least 0.05 of the softest mode's square, largest first.
  std::vector<ModeShare> mode;
};

struct Certificate {
  double eigenvalue = 0.0;
  std::size_t columns = 0;
  bool certified = false;
  bool unique = false;
  double gap = 0.0;
  double lowerBound = 0.0;
};

struct CarriedPosition {
  CarriedPoint point;
  Eigen::Vector3d position = Eigen::Vector3d::Zero();
  Eigen::Matrix3d covariance = Eigen::Matrix3d::Zero();
};

/// A motion that no measurement opposes.
struct OpenMotion {
  /// The one that moves most.
  std::size_t station = 0;
  /// Unit length; the station turns about it, or is shifted along it.
  Eigen::Vector3d axis = Eigen::Vector3d::UnitZ();
  bool turns = true;
  /// On the axis, the nearest to the station's centre.
  Eigen::Vector3d place = Eigen::Vector3d::Zero();
  /// All of the station's targets lie on the axis to within the rounding that makes the motion open.
  bool isLineOfTargets = false;
};

enum class AdjustmentOutcome {
  adjusted,
  /// A motion is open; nothing but poses, targets, datum and numbers is told.
  undetermined,
  /// No station with enough targets is left.
  nothingToAdjust
};

/// Rows stand parallel to those of the network; none for what takes no part.
struct Adjustment {
  AdjustmentOutcome outcome = AdjustmentOutcome::nothingToAdjust;
  std::optional<OpenMotion> open;

  std::vector<std::optional<Pose>> poses;
  /// None for held stations.
  std::vector<std::optional<AdjustedStation>> stations;
  std::vector<std::optional<AdjustedTarget>> targets;
  std::vector<std::optional<AdjustedObservation>> observations;
  /// Parallel to the targets: of those whose control has a covariance.
  std::vector<std::optional<AdjustedObservation>> control;

  Datum datum;
  /// Numbers of equations; redundancy = observationCount - unknownCount.
  std::size_t observationCount = 0, unknownCount = 0, redundancy = 0;
  double sumOfSquares = 0.0;
  /// None without redundancy.
  std::optional<double> varianceFactor;
  VarianceScale scale = VarianceScale::aPriori;
  int iterations = 0;
  bool converged = false;
  std::optional<GlobalTest> globalTest;
  TestLevels levels;
  std::optional<Suspect> suspect;
  Stiffness network;
  /// None when a control target has a covariance with a direction.
  std::optional<Certificate> certificate;
  /// Another start led lower than the first one.
  bool otherStartWon = false;
  std::vector<CarriedPosition> carried;
  std::vector<Trace> traces;
};

}  // namespace tiepoint::workbench::analysis
