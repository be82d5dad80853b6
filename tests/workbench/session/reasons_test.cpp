#include "workbench/session/reasons.h"

#include <gtest/gtest.h>

#include <limits>

#include "workbench/report/reason_text.h"
#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using Reasons = std::vector<std::optional<Reason>>;

TEST(ReasonsOut, ActivePointsHaveNone) {
  StateBuilder b;
  b.group("A").points({"P1", "P2", "P3"}).group("B").points({"P1", "P2", "P3"});
  EXPECT_EQ(reasonsOut(b.state), Reasons(6, std::nullopt));
}

TEST(ReasonsOut, TheUsersOwnSwitchesComeFirst) {
  StateBuilder b;
  b.group("A").point("P1").inactive().last().included = false;
  b.point("P2").inactive().last().weight = 0.0;
  b.point("?").inactive();
  b.group("B").points({"P1", "P2"});
  const Reasons reasons = reasonsOut(b.state);
  EXPECT_EQ(reasons[0], Reason::excluded);
  EXPECT_EQ(reasons[1], Reason::weightZero);
  EXPECT_EQ(reasons[2], Reason::unnamed);
}

TEST(ReasonsOut, AWeightThatIsNoNumberCountsAsZero) {
  StateBuilder b;
  b.group("A").point("P1").inactive().last().weight = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(reasonsOut(b.state)[0], Reason::weightZero);
}

TEST(ReasonsOut, ANameThatNobodyElseHasIsLone) {
  StateBuilder b;
  b.group("A").points({"P1", "P2", "P3"}).point("Q").inactive();
  b.group("B").points({"P1", "P2", "P3"});
  EXPECT_EQ(reasonsOut(b.state)[3], Reason::loneName);
}

TEST(ReasonsOut, ANameThatOnlyAnExcludedPointSharesIsLone) {
  StateBuilder b;
  b.group("A").points({"P1", "P2", "P3"}).point("Q").inactive();
  b.group("B").points({"P1", "P2", "P3"}).point("Q").inactive().last().included = false;
  EXPECT_EQ(reasonsOut(b.state)[3], Reason::loneName);
}

TEST(ReasonsOut, SharedPointsOfAGroupThatIsOutAsAWholeBlameTheGroup) {
  StateBuilder b;
  b.group("A").points({"P1", "P2"}).point("Q");
  b.group("B").points({"P1", "P2"}).point("R");
  b.allInactive();
  const Reasons reasons = reasonsOut(b.state);
  EXPECT_EQ(reasons[0], Reason::thinGroup);
  EXPECT_EQ(reasons[2], Reason::loneName);
}

TEST(ReasonsOut, ANameWhoseOtherHoldersFellOutSaysSo) {
  StateBuilder b;
  b.group("A").points({"P1", "P2", "P3"}).point("Q").inactive();
  b.group("B").points({"P1", "P2", "P3"});
  b.group("C").point("Q").inactive().point("P1").inactive();
  const Reasons reasons = reasonsOut(b.state);
  EXPECT_EQ(reasons[3], Reason::partnersOut);
  EXPECT_EQ(reasons[7], Reason::thinGroup);
}

TEST(ReasonsOut, ABasePointThatNoOtherGroupHasIsNotShared) {
  StateBuilder b;
  b.group("Base", true).points({"P1", "P2", "P3"}).point("Q").inactive();
  b.group("A").points({"P1", "P2", "P3"});
  EXPECT_EQ(reasonsOut(b.state)[3], Reason::baseNotShared);
}

TEST(ReasonsOut, ABaseOfTwoSharedPointsIsThinWhileTheOthersGoOn) {
  StateBuilder b;
  b.group("Base", true).point("P1").inactive().point("P2").inactive();
  b.group("A").points({"P1", "P2", "P3"}).group("B").points({"P1", "P2", "P3"});
  const Reasons reasons = reasonsOut(b.state);
  EXPECT_EQ(reasons[0], Reason::thinBase);
  EXPECT_EQ(reasons[1], Reason::thinBase);
}

TEST(ReasonsOut, ASingleGroupHasNothingToJoin) {
  StateBuilder b;
  b.group("A").points({"P1", "P2", "P3"}).allInactive();
  EXPECT_EQ(reasonsOut(b.state), Reasons(3, Reason::nothingToJoin));
}

TEST(ReasonsOut, EveryReasonHasWordsAndAKey) {
  EXPECT_STREQ(reasonText(Reason::thinGroup), "the group has fewer than 3 shared points left");
  EXPECT_STREQ(reasonKey(Reason::thinGroup), "thin-group");
  EXPECT_STREQ(reasonText(Reason::weightZero), "weight 0");
  EXPECT_STREQ(reasonKey(Reason::nothingToJoin), "nothing-to-join");
}

}  // namespace
}  // namespace tiepoint::workbench
