#include "workbench/session/assigned_ids.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;

SessionPoint namedPoint(CommonPointId id, const std::string& name) {
  SessionPoint point;
  point.record.commonId = id;
  point.record.named = true;
  point.name = name;
  return point;
}

TEST(AssignedIds, OfANameThatWasThereIsItsOldId) {
  const AssignedIds ids({{1, "T1"}}, {namedPoint(7, "T1")}, {});
  const auto assigned = ids.of("T1");
  ASSERT_TRUE(assigned);
  EXPECT_EQ(assigned->id, 7u);
  EXPECT_FALSE(assigned->isNew);
  EXPECT_TRUE(assigned->isSure);
}

TEST(AssignedIds, OfANameThatTheMatchingMadeIsTheIdOfItsEntry) {
  const AssignedIds ids({{1, "auto4"}, {5, "auto4"}}, {namedPoint(0, "T1")}, {{4, "auto4"}});
  const auto assigned = ids.of("auto4");
  ASSERT_TRUE(assigned);
  EXPECT_EQ(assigned->id, 4u);
  EXPECT_TRUE(assigned->isNew);
  EXPECT_TRUE(assigned->isSure);
}

TEST(AssignedIds, OfANameThatWasNotAssignedIsNothing) {
  const AssignedIds ids({{1, "T1"}}, {namedPoint(7, "T1"), namedPoint(8, "T2")}, {{9, "auto9"}});
  EXPECT_FALSE(ids.of("T2"));
  EXPECT_FALSE(ids.of("auto9"));
  EXPECT_FALSE(ids.of(""));
}

TEST(AssignedIds, OfANameThatNobodyHadIsNothing) {
  const AssignedIds ids({{1, "T1"}}, {namedPoint(8, "T2")}, {{9, "auto9"}});
  EXPECT_FALSE(ids.of("T1"));
}

TEST(AssignedIds, OfAPointThatHadNoNameIsNothing) {
  SessionPoint unnamed = namedPoint(3, "?");
  unnamed.record.named = false;
  EXPECT_FALSE(AssignedIds({{1, "?"}}, {unnamed}, {}).of("?"));
}

TEST(AssignedIds, StaySureWhereSeveralPointsBearTheSameId) {
  const AssignedIds ids({{1, "T1"}}, {namedPoint(7, "T1"), namedPoint(7, "T1"), namedPoint(7, "T1")}, {});
  EXPECT_TRUE(ids.of("T1")->isSure);
}

TEST(AssignedIds, OfTwoOldIdsWithOneNameTheGreaterIsAGuess) {
  for (const bool greaterComesFirst : {false, true}) {
    const AssignedIds ids(
        {{1, "T1"}}, {namedPoint(greaterComesFirst ? 7 : 2, "T1"), namedPoint(greaterComesFirst ? 2 : 7, "T1")}, {});
    EXPECT_EQ(ids.of("T1")->id, 7u);
    EXPECT_FALSE(ids.of("T1")->isSure);
    EXPECT_FALSE(ids.of("T1")->isNew);
  }
}

TEST(AssignedIds, ANewIdGoesBeforeAnOldOneOfTheSameNameButIsAGuess) {
  const AssignedIds ids({{1, "auto5"}}, {namedPoint(9, "auto5")}, {{5, "auto5"}});
  EXPECT_EQ(ids.of("auto5")->id, 5u) << "though the old one is greater";
  EXPECT_TRUE(ids.of("auto5")->isNew);
  EXPECT_FALSE(ids.of("auto5")->isSure);
}

TEST(AssignedIds, AThirdPointOfTheFirstIdMakesAGuessNoSurer) {
  const AssignedIds ids({{1, "T1"}}, {namedPoint(7, "T1"), namedPoint(2, "T1"), namedPoint(7, "T1")}, {});
  EXPECT_EQ(ids.of("T1")->id, 7u);
  EXPECT_FALSE(ids.of("T1")->isSure);
}

}  // namespace
}  // namespace tiepoint::workbench
