#include "workbench/report/survey_picture.h"

#include <gtest/gtest.h>

#include "workbench/report/registrations.h"
#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using Remarks = std::vector<std::string>;

const LengthFormat metres(Unit::metre);
const ShownGroups bothShown{{0, {5, 1}}, {1, {3, 3}}};

Registered& registeredOf(Registration& registration) { return std::get<Registered>(registration.outcome); }

picture::Content contentOf(const Registration& registration) {
  return registeredContent(registration, bothShown, metres);
}

TEST(RegisteredContent, IsTitledByTheDrawingsFileName) {
  Registration registration = twoStations();
  registration.document = "/surveys/hall.tiepoint";
  EXPECT_EQ(contentOf(registration).title, "hall.tiepoint");
  registration.document = "surveys\\hall 2.tiepoint";
  EXPECT_EQ(contentOf(registration).title, "hall 2.tiepoint");
  registration.document = "hall\x1b.tiepoint";
  EXPECT_EQ(contentOf(registration).title, "hall?.tiepoint");
}

TEST(RegisteredContent, OfADrawingInMemoryIsTitledByItsSize) {
  EXPECT_EQ(contentOf(twoStations()).title, "2 groups, 1 common target");
}

TEST(RegisteredContent, HasTheMethodTheBaseThePointsAndTheRmsBelowTheTitle) {
  EXPECT_EQ(contentOf(twoStations()).subtitle,
            "Registered pairwise with base Base; 3 of 4 points in use; RMS 1.414 mm");
}

TEST(RegisteredContent, SaysThatIterationsHaventConverged) {
  Registration registration = twoStations();
  registration.usesBase = false;
  registration.method = RegistrationMethod::iterative;
  registration.iterations = IterationCourse{100, 100, 0.5, 0.001};
  registeredOf(registration).discrepancies.reset();
  EXPECT_EQ(contentOf(registration).subtitle, "Registered iteratively, not converged; 3 of 4 points in use");
  registration.iterations->movement = 0.0001;
  EXPECT_EQ(contentOf(registration).subtitle, "Registered iteratively; 3 of 4 points in use");
}

TEST(RegisteredContent, HasALegendOfTheGroupsThatAreShown) {
  const picture::Content content = contentOf(twoStations());
  ASSERT_EQ(content.groups.size(), 2u);
  EXPECT_EQ(content.groups[0].name, "Base");
  EXPECT_EQ(content.groups[0].color, 5);
  EXPECT_EQ(content.groups[0].points, 1u);
  EXPECT_EQ(content.groups[0].residual, "base");
  EXPECT_EQ(content.groups[1].name, "A");
  EXPECT_EQ(content.groups[1].points, 3u);
  EXPECT_EQ(content.groups[1].residual, "1.414");
  EXPECT_EQ(content.residualHead, "RMS, mm");
  const picture::Content one = registeredContent(twoStations(), {{1, {3, 3}}}, metres);
  ASSERT_EQ(one.groups.size(), 1u);
  EXPECT_EQ(one.groups[0].name, "A");
}

TEST(RegisteredContent, NamesItsUnits) {
  const picture::Content content = contentOf(twoStations());
  EXPECT_EQ(content.lengthUnit, "m");
  EXPECT_EQ(content.residualUnit, "mm");
  EXPECT_EQ(content.residualUnitsPerLength, 1000.0);
  const picture::Content unknown = registeredContent(twoStations(), bothShown, LengthFormat(Unit::unknown));
  EXPECT_EQ(unknown.lengthUnit, "drawing units");
  EXPECT_EQ(unknown.residualUnitsPerLength, 1.0);
  EXPECT_EQ(unknown.residualHead, "RMS");
}

TEST(RegisteredContent, DrawsTheResidualsFromTheMergedTargetsThatAreSeen) {
  const picture::Content content = contentOf(twoStations());
  ASSERT_EQ(content.residuals.size(), 1u) << "T2 lies on its target, T3 has none";
  const picture::Residual& residual = content.residuals[0];
  EXPECT_EQ(residual.name, "T1");
  EXPECT_EQ(residual.color, 3);
  EXPECT_EQ(residual.registered, OdGePoint3d(10.25, 0, 0));
  EXPECT_DOUBLE_EQ(residual.target.x, 10.2488);
  EXPECT_DOUBLE_EQ(residual.target.y, 0.0016);
  EXPECT_EQ(residual.note, "");
}

TEST(RegisteredContent, DrawsTheResidualFromTheMergedTargetAlsoWhereAPointThatIsOutBearsItsName) {
  Registration registration = twoStations();
  // What is listed under the name is the point that is out.
  registeredOf(registration).targets[0].position = {12, 0, 0};
  EXPECT_DOUBLE_EQ(contentOf(registration).residuals.at(0).target.x, 10.2488);
}

TEST(RegisteredContent, DrawsNoResidualOfAGroupThatIsntShown) {
  EXPECT_TRUE(registeredContent(twoStations(), {{0, {5, 1}}}, metres).residuals.empty());
}

TEST(RegisteredContent, DrawsNoResidualThatIsRounding) {
  Registration registration = twoStations();
  registration.points[1].discrepancy = 4e-7;
  const picture::Content content = contentOf(registration);
  EXPECT_TRUE(content.residuals.empty());
  EXPECT_EQ(content.remarks.at(0), "All residuals are zero at this precision.");
}

TEST(RegisteredContent, TellsTheLargestResidual) {
  EXPECT_EQ(contentOf(twoStations()).remarks.at(0), "Largest residual: T1 in A, 2.000 mm.");
}

TEST(RegisteredContent, TellsThePointThatStandsOutBesideItsArrowToo) {
  Registration registration = twoStations();
  registeredOf(registration).outlier = Outlier{1, 22.84};
  const picture::Content content = contentOf(registration);
  EXPECT_EQ(content.remarks.at(0), "Stands out: T1 in A, 2.000 mm, 22.8 times the median.");
  EXPECT_EQ(content.residuals.at(0).note, "T1 in A: 2.000 mm");
}

TEST(RegisteredContent, SaysNothingOfResidualsWhereThereAreNone) {
  Registration registration = twoStations();
  registration.outcome = Registered();
  EXPECT_EQ(contentOf(registration).remarks, (Remarks{"No triangle for Base, A: the origin is far from the points."}));
}

TEST(RegisteredContent, NamesTheGroupsThatArentRegistered) {
  Registration registration = twoStations();
  registration.groups.emplace_back().name = "B";
  registration.groups.back().id = 2;
  EXPECT_EQ(contentOf(registration).remarks.at(1), "Not registered and not shown: B.");
}

TEST(RegisteredContent, HasATriangleAtTheOriginOfAStationThatStandsAmongItsPoints) {
  Registration registration = twoStations();
  registration.groups[1].originIsAmongPoints = true;
  const picture::Content content = contentOf(registration);
  ASSERT_EQ(content.stations.size(), 1u);
  EXPECT_EQ(content.stations[0].name, "A");
  EXPECT_EQ(content.stations[0].color, 3);
  EXPECT_EQ(content.stations[0].position, OdGePoint3d(10, -2.5, 0.125));
  EXPECT_EQ(content.remarks.at(1), "Triangles: stations, each at its system's origin.");
  EXPECT_EQ(content.remarks.at(2), "No triangle for Base: the origin is far from the points.");
}

TEST(RegisteredContent, HasATriangleOfTheBaseAtTheOrigin) {
  Registration registration = twoStations();
  registration.groups[0].originIsAmongPoints = true;
  EXPECT_EQ(contentOf(registration).stations.at(0).position, OdGePoint3d(0, 0, 0));
}

TEST(StoredContent, SaysThatNothingIsRegistered) {
  StateBuilder builder;
  builder.group("S1").points({"T1", "T2"}).group("S2\n").points({"T1"}).group("S3");
  const picture::Content content =
      storedContent(builder.state, {{0, {5, 2}}, {1, {3, 1}}}, "/surveys/hall.tiepoint", metres);
  EXPECT_EQ(content.title, "hall.tiepoint");
  EXPECT_EQ(content.subtitle, "3 points in 3 groups, not registered: each group in its own system");
  EXPECT_EQ(content.lengthUnit, "m");
  ASSERT_EQ(content.groups.size(), 2u);
  EXPECT_EQ(content.groups[0].name, "S1");
  EXPECT_EQ(content.groups[0].color, 5);
  EXPECT_EQ(content.groups[1].name, "S2?");
  EXPECT_EQ(content.groups[1].points, 1u);
  EXPECT_EQ(content.groups[1].residual, "");
  EXPECT_TRUE(content.remarks.empty());
}

}  // namespace
}  // namespace tiepoint::workbench
