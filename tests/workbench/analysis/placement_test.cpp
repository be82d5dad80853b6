#include "workbench/analysis/placement.h"

#include <gtest/gtest.h>
#include <Eigen/Geometry>

namespace tiepoint::workbench::analysis {
namespace {

using Eigen::Vector3d;

TEST(PointRows, AreTheDerivativesOfACarriedPoint) {
  const Placement placement{rotationBy({0.3, -1.1, 0.6}), {4.0, -7.0, 2.0}};
  const Vector3d local(3.0, 5.0, -2.0);
  const Vector3d place = placement.carry(local);
  constexpr double step = 1e-6;
  for (const bool levelled : {false, true}) {
    const Placement start = levelled ? Placement{rotationBy({0.0, 0.0, 0.6}), placement.centre} : placement;
    const Vector3d from = levelled ? start.carry(local) : place;
    const PointRows rows = pointRows(from - start.centre, levelled);
    for (Eigen::Index c = 0; c < rows.cols(); ++c) {
      const StationVector motion = step * StationVector(Eigen::VectorXd::Unit(rows.cols(), c));
      const Vector3d forth = moved(start, motion).carry(local), back = moved(start, -motion).carry(local);
      EXPECT_LT(((forth - back) / (2.0 * step) - rows.col(c)).norm(), 1e-8) << c;
    }
  }
}

TEST(Moved, KeepsALevelledStationLevelToTheLastBit) {
  Placement placement;
  for (int k = 0; k < 1000; ++k) placement = moved(placement, StationVector(Eigen::Vector4d(0.7, 1.0, 0.0, 0.0)));
  EXPECT_EQ(placement.rotation(2, 2), 1.0);
  EXPECT_EQ(placement.rotation(0, 2), 0.0);
  const double determinant = placement.rotation.topLeftCorner<2, 2>().determinant();
  EXPECT_NEAR(determinant, 1.0, 1e-15);
}

TEST(Moved, KeepsARotationThroughManySteps) {
  Placement placement;
  StationVector motion(6);
  motion << 0.5, -0.2, 0.9, 0.0, 0.0, 0.0;
  for (int k = 0; k < 10000; ++k) placement = moved(placement, motion);
  EXPECT_LT((placement.rotation.transpose() * placement.rotation - Eigen::Matrix3d::Identity()).norm(), 1e-14);
}

TEST(Moved, KeepsWhatADoubleOfAFarCentreCantHold) {
  Placement placement;
  placement.centre.x() = 1e9;
  StationVector motion = StationVector::Zero(6);
  motion(3) = 1e-9;
  for (int k = 0; k < 1000; ++k) placement = moved(placement, motion);
  EXPECT_NEAR((placement.centre.x() - 1e9) + placement.remainder.x(), 1e-6, 1e-15);
}

TEST(NearestRotation, OfAReflectionIsStillARotation) {
  Eigen::Matrix3d reflection = Eigen::Vector3d(1.0, 0.9, -0.8).asDiagonal();
  EXPECT_NEAR(nearestRotation(reflection).determinant(), 1.0, 1e-12);
}

TEST(Pose, AndPlacementLeadToOneAnother) {
  Survey survey;
  SurveyStation station;
  station.middle = {4e6, 5e6, 300.0};
  survey.origin = {4e6, 5e6, 310.0};
  survey.stations.push_back(station);
  const Placement placement{rotationBy({0.0, 0.0, 0.25}), {12.5, -3.0, 1.0}};
  const Placement back = placementOf(survey, 0, poseOf(survey, 0, placement));
  EXPECT_LT((back.centre - placement.centre).norm(), 1e-8);
  EXPECT_EQ(back.rotation, placement.rotation);
}

}  // namespace
}  // namespace tiepoint::workbench::analysis
