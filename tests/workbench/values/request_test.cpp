// What a request, a point and a result are before anybody says otherwise.
#include "workbench/values/registration_request.h"

#include <gtest/gtest.h>

#include "workbench/values/cloud_report.h"
#include "workbench/values/naming_report.h"
#include "workbench/values/output_file.h"
#include "workbench/values/registration.h"
#include "workbench/values/session_state.h"
#include "workbench/values/shown_group.h"
#include "workbench/values/station_points.h"

namespace tiepoint::workbench {
namespace {

TEST(ARequest, AdjustsInADrawingInMemoryUntilToldOtherwise) {
  const RegistrationRequest request;
  EXPECT_EQ(request.method, RegistrationMethod::adjust);
  EXPECT_EQ(request.document, "");
  EXPECT_EQ(request.unit, Unit::unknown);
  EXPECT_FALSE(request.keepCluster);
  EXPECT_TRUE(request.base.empty());
}

TEST(ARequest, LeavesTheLimitsOfTheIterationToTheProfile) {
  EXPECT_FALSE(RegistrationRequest().maxIterations);
  EXPECT_FALSE(RegistrationRequest().convergence);
}

TEST(ARequest, NamesNothingByItself) {
  const NamingRequest naming;
  EXPECT_EQ(naming.how, Naming::none);
  EXPECT_FALSE(naming.limit);
  EXPECT_FALSE(naming.sideTolerance);
  EXPECT_FALSE(naming.minSideDifference);
  EXPECT_FALSE(naming.closeness);
}

TEST(ARequest, ChangesNothingInTheDrawingAndReplacesNoFile) {
  const RegistrationRequest request;
  EXPECT_TRUE(request.changes.clouds.empty());
  EXPECT_FALSE(request.changes.apply);
  EXPECT_EQ(request.changes.store, "");
  EXPECT_FALSE(request.outputs.force);
  EXPECT_EQ(request.outputs.picture, "");
  EXPECT_EQ(request.outputs.matrices, "");
  EXPECT_FALSE(request.outputs.matrixFormat);
  EXPECT_FALSE(request.outputs.reportKind);
}

TEST(AMeasuredPoint, CountsFullyUntilItIsWeighed) {
  EXPECT_EQ(MeasuredPoint().weight, 1.0);
  EXPECT_EQ(WeightChoice().weight, 1.0);
  EXPECT_EQ(PointOutcome().weight, 1.0);
}

TEST(APointReference, MeansTheWholeGroupWithoutAPoint) {
  const PointRef whole{"A"}, unnamed{"A", ""};
  EXPECT_FALSE(whole.point);
  ASSERT_TRUE(unnamed.point);
  EXPECT_EQ(*unnamed.point, "");
}

TEST(AnOutputTarget, HoldsItsFieldItsPathAndWhatWasGiven) {
  const OutputTarget plain(Field::picture, "/survey/hall.png");
  EXPECT_EQ(plain.field, Field::picture);
  EXPECT_EQ(plain.path, "/survey/hall.png");
  EXPECT_EQ(plain.given, "") << "the path itself";
  EXPECT_EQ(OutputTarget(Field::matrices, "/survey/m/A.txt", "/survey/m").given, "/survey/m");
}

TEST(AnOutputFile, IsMadeWhenItsTurnHasComeAndAsOftenAsItIsAsked) {
  int made = 0;
  const OutputFile file{{Field::report, "report.html"}, [&] { return std::to_string(++made); }};
  EXPECT_EQ(made, 0);
  EXPECT_EQ(file.content(), "1");
  EXPECT_EQ(file.content(), "2");
}

TEST(AResult, IsNothingUntilItIsFound) {
  EXPECT_EQ(CloudReport().move, CloudMove::notAsked);
  EXPECT_FALSE(CloudReport().copy);
  EXPECT_EQ(CloudReport().matrix, OdGeMatrix3d());
  EXPECT_FALSE(NamingReport().isRefused);
  EXPECT_FALSE(NamingReport().limits);
  EXPECT_FALSE(PointOutcome().reason);
  EXPECT_FALSE(PointOutcome().registered);
  EXPECT_FALSE(GroupOutcome().originIsAmongPoints);
}

TEST(ASession, ShowsNothingAndHasNoReportAtBirth) {
  const SessionState state;
  EXPECT_EQ(state.lastReport, LastReport::none);
  EXPECT_TRUE(state.visibleGroups.empty());
  EXPECT_TRUE(state.unsureNames.empty());
  EXPECT_EQ(ShownGroup().color, 7u) << "the palette's own";
}

}  // namespace
}  // namespace tiepoint::workbench
