#include "workbench/values/registration.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tiepoint::workbench {
namespace {

GroupOutcome groupOf(ZOR::reg::GroupId id, const std::string& name) {
  GroupOutcome group;
  group.id = id;
  group.name = name;
  return group;
}

TEST(Registration, FindsAGroupByItsIdAlsoWhereIdsAreMissing) {
  Registration registration;
  registration.groups = {groupOf(1, "B"), groupOf(4, "E"), groupOf(9, "J")};
  EXPECT_EQ(registration.group(1).name, "B");
  EXPECT_EQ(registration.group(4).name, "E");
  EXPECT_EQ(registration.group(9).name, "J");
}

TEST(Registration, HasNoGroupOfAnyOtherId) {
  Registration registration;
  EXPECT_THROW(registration.group(0), std::out_of_range);
  registration.groups = {groupOf(1, "B"), groupOf(4, "E")};
  EXPECT_THROW(registration.group(0), std::out_of_range);
  EXPECT_THROW(registration.group(2), std::out_of_range);
  EXPECT_THROW(registration.group(5), std::out_of_range);
}

TEST(Registration, IsNotConnectedUntilItIsRegistered) {
  Registration registration;
  EXPECT_TRUE(std::holds_alternative<NotConnected>(registration.outcome));
  EXPECT_EQ(registration.registered(), nullptr);
}

TEST(Registration, GivesItsResultOfAnOutcomeThatHasOneOnly) {
  Registration registration;
  Registered result;
  result.largest = 3;
  registration.outcome = result;
  ASSERT_NE(registration.registered(), nullptr);
  EXPECT_EQ(registration.registered()->largest, 3u);
  registration.outcome = NotNamed();
  EXPECT_EQ(registration.registered(), nullptr);
  registration.outcome = BaseNotShared();
  EXPECT_EQ(registration.registered(), nullptr);
}

TEST(MotionOfAGroup, IsItsTransformation) {
  GroupOutcome group;
  group.toCommon.emplace();
  (*group.toCommon)(0, 3) = 7.0;
  ASSERT_TRUE(group.motion());
  EXPECT_EQ((*group.motion())(0, 3), 7.0);
}

TEST(MotionOfAGroup, IsNoneOfABase) {
  GroupOutcome group;
  group.inBase = true;
  EXPECT_EQ(group.motion(), OdGeMatrix3d());
}

TEST(MotionOfAGroup, OfABaseThatHasOneAllTheSameIsThatOne) {
  GroupOutcome group;
  group.inBase = true;
  group.toCommon.emplace();
  (*group.toCommon)(2, 3) = 5.0;
  EXPECT_EQ((*group.motion())(2, 3), 5.0);
}

TEST(MotionOfAGroup, IsUnknownWhereItTookNoPart) { EXPECT_FALSE(GroupOutcome().motion()); }

}  // namespace
}  // namespace tiepoint::workbench
