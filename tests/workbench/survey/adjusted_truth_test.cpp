// Adjusted surveys held against what is known of them: other ways to the optimum, and errors that were made.
#include <gtest/gtest.h>

#include <Eigen/Geometry>
#include <map>
#include <random>

#include "workbench/analysis/random_networks.h"
#include "workbench/geometry/pose_matrix.h"
#include "workbench/survey/drawn_stations.h"
#include "workbench/survey/register_survey.h"

namespace tiepoint::workbench {
namespace {

using analysis::testing::normal;
using analysis::testing::uniform;
using Eigen::Vector3d;

class TruthOfSurveys : public DrawnStations {
 protected:
  const Registration& registered(RegistrationMethod method) {
    request.method = method;
    survey = registerSurvey(workbench, resolved, findings, progress);
    EXPECT_TRUE(survey->registration.registered());
    return survey->registration;
  }

  ResolvedRequest resolved;
  RegistrationRequest& request = resolved.request;
  Findings findings;
  ToldProgress progress;
  std::unique_ptr<OpenSurvey> survey;
};

// ---- Two stations: the fit of one onto the other ----

using Places = std::vector<Vector3d>;

StationPoints stationOf(const std::string& name, const Places& places) {
  StationPoints station{name, {}};
  for (const Vector3d& p : places) {
    station.points.push_back({"P" + std::to_string(station.points.size()), {p.x(), p.y(), p.z()}});
  }
  return station;
}

Eigen::Matrix3Xd columnsOf(const Places& places) {
  Eigen::Matrix3Xd columns(3, static_cast<Eigen::Index>(places.size()));
  for (std::size_t i = 0; i < places.size(); ++i) columns.col(static_cast<Eigen::Index>(i)) = places[i];
  return columns;
}

double sumOfSquares(const Eigen::Matrix4d& motion, const Places& from, const Places& to) {
  double sum = 0.0;
  for (std::size_t i = 0; i < from.size(); ++i)
    sum += ((motion * from[i].homogeneous()).head<3>() - to[i]).squaredNorm();
  return sum;
}

Eigen::Matrix4d motionOf(const GroupOutcome& group) {
  const analysis::Pose pose = poseOf(group.motion().value());
  Eigen::Matrix4d motion = Eigen::Matrix4d::Identity();
  motion.topLeftCorner<3, 3>() = pose.rotation;
  motion.topRightCorner<3, 1>() = pose.shift;
  return motion;
}

struct Pairs {
  std::string name;
  Places from, to;
};

/// Targets along a straight road, in coordinates of a country.
Pairs alongARoad() {
  std::mt19937_64 random(5);
  Pairs pairs{"nine targets along a road", {}, {}};
  const Eigen::AngleAxisd turn(2.1, Vector3d(0.02, -0.01, 1.0).normalized());
  for (int i = 0; i < 9; ++i) {
    const Vector3d place(75.0 * i, uniform(random, -4.0, 4.0), uniform(random, 0.0, 2.0));
    pairs.from.emplace_back(place);
    const Vector3d noise(normal(random), normal(random), normal(random));
    pairs.to.emplace_back(turn * place + Vector3d(2683410.0, 1247120.0, 430.0) + 0.01 * noise);
  }
  return pairs;
}

std::vector<Pairs> knownToBeHard() {
  return {{"four corners of a near rectangle",
           {{-1196.980, -714.234, -462.745},
            {-1189.511, -1432.834, -466.560},
            {1093.892, -1431.045, -469.854},
            {1099.111, -711.013, -467.206}},
           {{3039.947, 117.745, -499.787},
            {3040.068, 837.800, -499.773},
            {760.000, 837.800, -499.787},
            {759.928, 117.900, -499.773}}},
          {"four nearly flat points",
           {{0, 0, 0}, {10.1918, 32.7471, 0}, {98.4476, 0, 0}, {22.2453, -40.236, 0.0519957}},
           {{0, 0, 0},
            {34.220131234538, 0, 0},
            {29.143768215774, 93.921515518778, 0},
            {-31.892554477142, 33.146439000266, 0.357561727645}}},
          alongARoad()};
}

/// Pairs of points on which fits of other programs have failed.
class HardPairs : public TruthOfSurveys, public testing::WithParamInterface<std::size_t> {};

TEST_P(HardPairs, AreFittedAsTheSingularValuesHaveIt) {
  const Pairs pairs = knownToBeHard()[GetParam()];
  SCOPED_TRACE(pairs.name);
  store({stationOf("A", pairs.to), stationOf("B", pairs.from)});
  request.base = {"A"};
  const Eigen::Matrix4d best = Eigen::umeyama(columnsOf(pairs.from), columnsOf(pairs.to), false);
  const double least = sumOfSquares(best, pairs.from, pairs.to);
  const Eigen::Matrix4d found = motionOf(registered(RegistrationMethod::adjust).groups[1]);
  EXPECT_NEAR(sumOfSquares(found, pairs.from, pairs.to), least, 1e-6 * least);
  const Eigen::Matrix3d apart = (found - best).topLeftCorner<3, 3>();
  EXPECT_LT(apart.cwiseAbs().maxCoeff(), 1e-8);
}

INSTANTIATE_TEST_SUITE_P(Published, HardPairs, testing::Range<std::size_t>(0, 3));

// ---- Against the other methods ----

/// The least sum of squares that these poses allow: every target where its measurements have their mean.
double leastSum(const Registration& registration) {
  std::map<std::string, Places> places;
  for (const PointOutcome& point : registration.points) {
    if (!point.active) continue;
    const OdGePoint3d p = point.registered.value_or(point.position);
    places[point.name].emplace_back(p.x, p.y, p.z);
  }
  double sum = 0.0;
  for (const auto& [name, seen] : places) {
    Vector3d mean = Vector3d::Zero();
    for (const Vector3d& p : seen) mean += p / static_cast<double>(seen.size());
    for (const Vector3d& p : seen) sum += (p - mean).squaredNorm();
  }
  return sum;
}

class NoisySurvey : public TruthOfSurveys, public testing::WithParamInterface<int> {
 protected:
  /// Stations of a hall that each see most of its targets, with errors of some millimetres.
  void storeHall(std::uint64_t seed) {
    analysis::testing::Kind kind;
    kind.noise = 0.003;
    const auto hall = analysis::testing::randomNetwork(kind, seed);
    std::vector<StationPoints> stations(hall.network.stations.size());
    for (std::size_t s = 0; s < stations.size(); ++s) stations[s].name = "S" + std::to_string(s);
    for (const analysis::Observation& o : hall.network.observations) {
      const Vector3d& p = o.place;
      stations[o.station].points.push_back({"T" + std::to_string(o.target), {p.x(), p.y(), p.z()}});
    }
    store(stations);
    request.base = {"S0"};
  }
};

TEST_P(NoisySurvey, HasNoLowerSumByAnyMethod) {
  storeHall(static_cast<std::uint64_t>(GetParam()));
  const double adjusted = leastSum(registered(RegistrationMethod::adjust));
  EXPECT_NEAR(survey->registration.adjustment->result.sumOfSquares, adjusted, 1e-9 * adjusted);
  EXPECT_GE(leastSum(registered(RegistrationMethod::pairwise)), adjusted);
  request.maxIterations = 5000;
  request.convergence = 1e-9;
  EXPECT_GE(leastSum(registered(RegistrationMethod::iterative)), adjusted * (1.0 - 1e-9));
}

INSTANTIATE_TEST_SUITE_P(Seeds, NoisySurvey, testing::Range(1, 11));

// ---- Errors that were made ----

class WrongSurvey : public NoisySurvey {};

TEST_F(WrongSurvey, ControlThatContradictsTheStationsByMetresFailsTheGlobalTest) {
  storeHall(3);
  request.base.clear();
  request.adjustment.sigma = 0.003;
  const Registration& free = registered(RegistrationMethod::adjust);
  EXPECT_TRUE(free.adjustment->result.globalTest->passed);
  const std::vector<MergedTarget> targets = free.registered()->targets;
  for (std::size_t t = 0; t < 4; ++t) {
    const OdGePoint3d& p = targets[t].position;
    const double error = t == 0 ? 3.0 : 0.0;
    const Eigen::Matrix3d covariance = Eigen::Vector3d::Constant(1e-6).asDiagonal();
    resolved.control.push_back({targets[t].name, {{p.x + error, p.y, p.z}, covariance}});
  }
  const analysis::Adjustment& found = registered(RegistrationMethod::adjust).adjustment->result;
  EXPECT_EQ(found.datum.kind, analysis::DatumKind::control);
  EXPECT_FALSE(found.globalTest->passed);
  ASSERT_TRUE(found.suspect);
  EXPECT_TRUE(found.suspect->isControl);
  EXPECT_EQ(survey->registration.adjustment->targetNames[found.suspect->index], targets[0].name);
}

/// A level that was out by a degree.
TEST_F(WrongSurvey, ALevelledStationThatIsTiltedFailsTheGlobalTest) {
  Places hall;
  std::mt19937_64 random(4);
  for (int i = 0; i < 9; ++i) hall.emplace_back(uniform(random, 0, 30), uniform(random, 0, 20), uniform(random, 0, 8));
  std::vector<StationPoints> stations;
  for (int s = 0; s < 3; ++s) {
    const Eigen::AngleAxisd turn(0.7 * s, Vector3d::UnitZ());
    const Eigen::AngleAxisd tilt(s == 2 ? 0.017453 : 0.0, Vector3d::UnitX());
    Places seen;
    for (const Vector3d& target : hall) {
      const Vector3d noise(normal(random), normal(random), normal(random));
      seen.emplace_back(tilt * (turn * target) + 0.002 * noise);
    }
    stations.push_back(stationOf("S" + std::to_string(s), seen));
  }
  store(stations);
  request.adjustment.sigma = 0.002;
  EXPECT_TRUE(registered(RegistrationMethod::adjust).adjustment->result.globalTest->passed);
  request.adjustment.allLevelled = true;
  const analysis::Adjustment& found = registered(RegistrationMethod::adjust).adjustment->result;
  EXPECT_FALSE(found.globalTest->passed);
  EXPECT_TRUE(found.stations[2]->levelled);
}

/// Columns that were exchanged in one station: no poses bring it onto the others.
TEST_F(WrongSurvey, AMirrorImageIsNotCertifiedThoughOtherStartsAreTried) {
  std::mt19937_64 random(6);
  Places hall;
  for (int i = 0; i < 8; ++i) hall.emplace_back(uniform(random, 0, 30), uniform(random, 0, 20), uniform(random, 0, 8));
  Places exchanged;
  for (const Vector3d& place : hall) exchanged.emplace_back(place.y(), place.x(), place.z());
  store({stationOf("A", hall), stationOf("B", exchanged), stationOf("C", hall)});
  const analysis::Adjustment& found = registered(RegistrationMethod::adjust).adjustment->result;
  ASSERT_TRUE(found.certificate);
  EXPECT_FALSE(found.certificate->certified);
  EXPECT_GT(found.certificate->gap, 0.01 * found.sumOfSquares);
  EXPECT_TRUE(found.converged);
}

}  // namespace
}  // namespace tiepoint::workbench
