#include "workbench/geometry/doubled_names.h"

#include <gmock/gmock.h>

#include <limits>

#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// Names that begin with "auto" are automatic.
SessionState withAutomaticNames(SessionState state) {
  for (SessionPoint& point : state.points) point.record.autoNamed = point.name.rfind("auto", 0) == 0;
  return state;
}

PointPairs doubled(const StateBuilder& builder, const std::map<ZOR::reg::GroupId, OdGeMatrix3d>& toCommon = {}) {
  return doubledNames(withAutomaticNames(builder.state), {0, 1, 2, 3}, toCommon, 0.02);
}

TEST(DoubledNames, AnAutomaticNameGivesWayToTheFilesOnItsSpotWithAllItsPoints) {
  StateBuilder survey;
  survey.group("A").point("auto0", {1, 2, 3}).group("B").point("auto0", {1.005, 2, 3});
  survey.group("C").point("T7", {1, 2.01, 3});
  EXPECT_THAT(doubled(survey), ElementsAre(Pair(0, 2), Pair(1, 2)));
}

TEST(DoubledNames, OfTwoAutomaticOnesTheOlderStays) {
  StateBuilder survey;
  survey.group("A").point("auto0", {1, 2, 3}).group("B").point("auto1", {1, 2, 3});
  EXPECT_THAT(doubled(survey), ElementsAre(Pair(1, 0)));
}

TEST(DoubledNames, TheSpotIsThatInTheCommonSystem) {
  StateBuilder survey;
  survey.group("A").point("T7", {1, 2, 3}).group("B").point("auto0", {1, 2, 3}).point("auto1", {-9, 2, 3});
  OdGeMatrix3d motion;
  motion(0, 3) = 10.0;
  EXPECT_THAT(doubled(survey, {{1, motion}}), ElementsAre(Pair(2, 0)));
}

TEST(DoubledNames, ApartByTheReachIsOneSpotAndFartherIsnt) {
  StateBuilder at, beyond;
  at.group("A").point("T7", {0, 0, 0}).group("B").point("auto0", {0.02, 0, 0});
  beyond.group("A").point("T7", {0, 0, 0}).group("B").point("auto0", {0.0201, 0, 0});
  EXPECT_THAT(doubled(at), ElementsAre(Pair(1, 0)));
  EXPECT_THAT(doubled(beyond), IsEmpty());
}

TEST(DoubledNames, EveryPointOfTheNameMustBeNear) {
  StateBuilder survey;
  survey.group("A").point("T7", {0, 0, 0}).group("B").point("auto0", {0.015, 0, 0});
  survey.group("C").point("auto0", {0.025, 0, 0});
  EXPECT_THAT(doubled(survey), IsEmpty());
}

TEST(DoubledNames, NamesThatAGroupHasBothAreTwoTargets) {
  StateBuilder survey;
  survey.group("A").point("T7", {0, 0, 0}).point("auto0", {0.01, 0, 0}).group("B").point("auto0", {0.01, 0, 0});
  EXPECT_THAT(doubled(survey), IsEmpty());
}

TEST(DoubledNames, WhereTheFilesHaveTwoNamesNoneGivesWay) {
  StateBuilder survey;
  survey.group("A").point("T7", {0, 0, 0}).group("B").point("T8", {0, 0, 0}).group("C").point("auto0", {0, 0, 0});
  EXPECT_THAT(doubled(survey), IsEmpty());
}

TEST(DoubledNames, ANameIsTakenByOneOtherAtATime) {
  StateBuilder survey;
  survey.group("A").point("T7", {0, 0, 0}).group("B").point("auto0", {0.001, 0, 0});
  survey.group("C").point("auto1", {0.002, 0, 0});
  EXPECT_THAT(doubled(survey), ElementsAre(Pair(1, 0)));
}

TEST(DoubledNames, ExcludedPointsUnnamedOnesAndOtherGroupsDontCount) {
  StateBuilder survey;
  survey.group("A").point("T7", {0, 0, 0});
  survey.group("B").point("auto0", {0, 0, 0});
  survey.last().included = false;
  survey.group("C").point("?", {0, 0, 0});
  survey.group("D").group("E").point("auto1", {0, 0, 0});
  EXPECT_THAT(doubled(survey), IsEmpty());
}

TEST(DoubledNames, APointThatIsNowhereHasNoSpot) {
  constexpr double lost = std::numeric_limits<double>::quiet_NaN();
  StateBuilder survey;
  survey.group("A").point("T7", {lost, 0, 0}).group("B").point("auto0", {lost, 0, 0}).point("auto1", {0, lost, 0});
  EXPECT_THAT(doubled(survey), IsEmpty());
}

TEST(DoubledNames, PointsThatAreNowhereHideNoOthers) {
  constexpr double lost = std::numeric_limits<double>::quiet_NaN();
  StateBuilder survey;
  survey.group("A").point("T1", {lost, 0, 0}).point("T2", {9, 0, 0}).point("T3", {1, 0, 0});
  survey.group("B").point("auto0", {1.001, 0, 0}).point("auto1", {9.001, 0, 0});
  EXPECT_THAT(doubled(survey), ElementsAre(Pair(3, 2), Pair(4, 1)));
}

TEST(DoubledNames, AnAutomaticNameThatAFileBearsSomewhereIsTheFiles) {
  StateBuilder survey;
  survey.group("A").point("auto0", {0, 0, 0}).group("B").point("auto1", {0, 0, 0}).group("C").point("auto1", {0, 0, 0});
  SessionState state = withAutomaticNames(survey.state);
  state.points[1].record.autoNamed = false;
  EXPECT_THAT(doubledNames(state, {0, 1, 2}, {}, 0.02), ElementsAre(Pair(0, 1)));
}

TEST(DoubledNames, AreFoundAmongManyTargetsAtOneX) {
  StateBuilder survey;
  survey.group("A");
  for (int i = 0; i < 20; ++i) survey.point("T" + std::to_string(i), {5, static_cast<double>(i), 0});
  survey.group("B").point("auto0", {5, 13.01, 0});
  EXPECT_THAT(doubled(survey), ElementsAre(Pair(20, 13)));
}

TEST(DoubledNames, OfNothingAreNone) { EXPECT_THAT(doubledNames({}, {}, {}, 0.02), IsEmpty()); }

}  // namespace
}  // namespace tiepoint::workbench
