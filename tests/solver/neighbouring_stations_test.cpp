// Two neighbouring stations of a laser scanner and the eighteen features that both see, in metres:
// table 2 of H. Zeng, G. Chang, H. He, K. Li, "WTLS iterative algorithm of 3D similarity coordinate
// transformation based on Gibbs vectors", Earth, Planets and Space 72:53 (2020),
// doi 10.1186/s40623-020-01179-1, CC BY 4.0.
#include <gmock/gmock.h>

#include <cmath>

#include "solver/builders.h"
#include "solver/pairwise.h"
#include "solver/solve_input.h"

namespace tiepoint::testing {
namespace {

const std::vector<OdGePoint3d> reference{
    {-91.406, 53.344, 8.320},   {-91.297, 53.222, 0.916},   {-60.158, 24.280, 8.948},   {-60.135, 24.278, 1.521},
    {-56.298, -19.186, 5.700},  {-13.269, -2.677, -1.444},  {-4.666, 17.245, -1.605},   {-49.939, 14.297, 27.119},
    {-52.769, 11.523, 25.906},  {-72.929, -8.630, 27.146},  {-46.500, -30.291, 23.078}, {-52.581, -22.934, 5.676},
    {-58.972, -17.511, 18.862}, {-55.429, -26.155, 23.077}, {-55.313, -26.131, 23.039}, {-63.467, 27.962, 26.981},
    {-57.673, 22.069, 25.782},  {-49.687, 14.083, -3.666}};

const std::vector<OdGePoint3d> unregistered{
    {-49.007, 54.453, 0.978},   {-47.365, 54.435, -6.242},  {-36.514, 13.733, 3.642},   {-34.881, 13.859, -3.608},
    {-53.378, -25.872, -4.187}, {-7.324, -32.695, -1.389},  {9.587, -19.650, 2.449},    {-36.532, -0.319, 21.980},
    {-39.932, -1.307, 19.965},  {-67.051, -8.834, 15.017},  {-54.124, -40.688, 13.216}, {-51.943, -30.962, -3.965},
    {-57.712, -23.376, 8.397},  {-59.650, -32.625, 12.037}, {-59.512, -32.705, 12.071}, {-41.466, 18.246, 21.085},
    {-39.133, 10.234, 20.247},  {-29.781, -0.026, -8.062}};

/// Half of the last digit below, in metres.
constexpr double lastDigit = 5e-10;

struct Registration : SolveMembers {
  Registration() {
    RefPointList session;
    for (std::size_t i = 0; i < reference.size(); ++i) session.push_back(inBase(measured(i, 0, i, reference[i])));
    for (std::size_t i = 0; i < unregistered.size(); ++i) session.push_back(measured(18 + i, 1, i, unregistered[i]));
    RefPointList workingPoints;
    prepareSolvePoints(session, workingPoints, pointDiscrepancies);
    solvePairwise(workingPoints, {{0, 1}}, session, *this, pointDiscrepancies);
  }
};

double squaredLength(const OdGeVector3d& v) { return v.x * v.x + v.y * v.y + v.z * v.z; }

TEST(NeighbouringStations, MissTheReferenceByFiftyMillimetresInTheRootMeanSquare) {
  // Over the 18 features, of the distance between the reference's point and the registered one.
  Registration registration;
  const RigidTransform& toReference = registration.groupTransforms.at(1);
  double sum = 0.0;
  for (std::size_t i = 0; i < reference.size(); ++i) {
    sum += squaredLength(reference[i] - apply(toReference, unregistered[i]));
  }
  EXPECT_NEAR(std::sqrt(sum / 18.0), 0.050525305, lastDigit);
}

TEST(NeighbouringStations, MissTheModelByHalfAsMuchSinceItLiesMidwayBetweenThem) {
  const Registration registration;
  ASSERT_EQ(registration.pointDiscrepancies.size(), 18U) << "the reference is the base and has none";
  double sum = 0.0;
  for (const auto& entry : registration.pointDiscrepancies) sum += entry.second * entry.second;
  EXPECT_NEAR(std::sqrt(sum / 18.0), 0.025262653, lastDigit);
  EXPECT_NEAR(registration.pointDiscrepancies.at(18 + 13), 0.048853, 5e-7) << "P14 is the worst";
}

TEST(NeighbouringStations, AreJoinedByThisMotion) {
  const Registration registration;
  const RigidTransform& toReference = registration.groupTransforms.at(1);
  const std::array<double, 9> rotation{0.8504164824, -0.4945070945, 0.1795954899,  0.4793809210, 0.8689811908,
                                       0.1227420983, -0.2167619411, -0.0182872522, 0.9760531939};
  const std::array<double, 3> translation{-22.978004385, 29.387250647, -2.259070701};
  for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(toReference.rotation[i], rotation[i], lastDigit) << i;
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(toReference.translation[i], translation[i], lastDigit) << i;
}

}  // namespace
}  // namespace tiepoint::testing
