#include "workbench/session/session_mirror.h"

#include <gmock/gmock.h>

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;
using testing::ElementsAre;
using testing::IsEmpty;

using Flags = std::vector<bool>;
using Texts = std::vector<std::string>;

RefPoint record(RefPointId id, GroupId group, CommonPointId name, bool named = true) {
  RefPoint point;
  point.id = id;
  point.groupId = group;
  point.commonId = name;
  point.weight = 1.0;
  point.named = named;
  return point;
}

/// Two groups of two points with the names T1 and T2.
class MirrorOfTwoGroups : public testing::Test {
 protected:
  MirrorOfTwoGroups() {
    mirror.addGroupNames({{0, "A"}, {1, "B"}});
    mirror.setNames({{0, "T1"}, {1, "T2"}});
    mirror.addPoints({record(0, 0, 0), record(1, 0, 1), record(2, 1, 0), record(3, 1, 1)});
  }

  const SessionState& state() const { return mirror.state(); }
  const RefPoint& point(std::size_t i) const { return state().points[i].record; }

  template <class Value>
  std::vector<Value> each(Value RefPoint::*member) const {
    std::vector<Value> values;
    for (const SessionPoint& point : state().points) values.push_back(point.record.*member);
    return values;
  }
  Texts pointNames() const {
    Texts names;
    for (const SessionPoint& point : state().points) names.push_back(point.name);
    return names;
  }
  Texts names() const {
    Texts texts;
    for (const PointName& entry : state().names.entries()) texts.push_back(std::to_string(entry.id) + entry.name);
    return texts;
  }

  SessionMirror mirror;
};

// --- Membership.

TEST_F(MirrorOfTwoGroups, KeepsItsGroupsInAscendingIdInWhateverOrderTheyAreTold) {
  EXPECT_TRUE(mirror.addGroupNames({{9, "late"}}));
  EXPECT_TRUE(mirror.addGroupNames({{4, "between"}, {9, "late"}}));
  std::vector<GroupId> ids;
  for (const SessionGroup& group : state().groups) ids.push_back(group.id);
  EXPECT_THAT(ids, ElementsAre(0, 1, 4, 9));
}

TEST_F(MirrorOfTwoGroups, TellsThatNoGroupIsNew) {
  EXPECT_FALSE(mirror.addGroupNames({{0, "renamed"}, {1, "B"}}));
  EXPECT_FALSE(mirror.addGroupNames({}));
  EXPECT_EQ(state().groups[0].name, "renamed");
}

TEST_F(MirrorOfTwoGroups, HoldsNamesAsUtf8) {
  mirror.addGroupNames({{2, "\xD6\xE5\xF5"}});
  EXPECT_EQ(state().group(2).name, u8"Цех");
}

TEST_F(MirrorOfTwoGroups, KnowsAGroupFromItsPointsAlone) {
  mirror.addPoints({record(8, 5, 0)});
  EXPECT_TRUE(state().group(5).inSession);
  EXPECT_EQ(state().group(5).name, "");
}

TEST_F(MirrorOfTwoGroups, LosesAGroupWithItsLastPointOnly) {
  mirror.removePoints({2});
  EXPECT_TRUE(state().group(1).inSession);
  mirror.removePoints({3});
  EXPECT_FALSE(state().group(1).inSession);
  EXPECT_TRUE(state().group(0).inSession);
}

TEST_F(MirrorOfTwoGroups, FindsItsPointsAlsoAfterOthersWent) {
  mirror.removePoints({0, 99});
  EXPECT_FALSE(mirror.hasPoint(0));
  mirror.setWeight({3}, 0.25);
  EXPECT_THAT(each(&RefPoint::weight), ElementsAre(1.0, 1.0, 0.25));
}

TEST_F(MirrorOfTwoGroups, AGroupThatLeftIsNoBaseWhenItComesBack) {
  mirror.setBase({0, 1}, {0, 1, 2, 3});
  mirror.removePoints({2, 3});
  EXPECT_TRUE(state().group(0).inBase);
  EXPECT_FALSE(state().group(1).inBase);
  mirror.addPoints({record(2, 1, 0)});
  EXPECT_FALSE(state().group(1).inBase);
}

TEST_F(MirrorOfTwoGroups, KeepsNoUnsureNameOfAPointThatIsGone) {
  mirror.assignNames({{0, "nobody's"}, {2, "nobody's"}}, {{0, "T1"}, {1, "T2"}});
  ASSERT_THAT(state().unsureNames, ElementsAre(0, 2));
  mirror.removePoints({2});
  EXPECT_THAT(state().unsureNames, ElementsAre(0));
}

TEST_F(MirrorOfTwoGroups, ShowsAlsoGroupsThatItDoesNotKnow) {
  mirror.show({1, 42});
  EXPECT_THAT(state().visibleGroups, ElementsAre(1, 42));
  mirror.hide({1, 7});
  EXPECT_THAT(state().visibleGroups, ElementsAre(42));
}

// --- Switches.

TEST_F(MirrorOfTwoGroups, EverySetOfInactivePointsTakesThePlaceOfTheFormer) {
  mirror.setInactive({0, 2, 77});
  EXPECT_EQ(each(&RefPoint::active), (Flags{false, true, false, true}));
  mirror.setInactive({2, 3});
  EXPECT_EQ(each(&RefPoint::active), (Flags{true, true, false, false}));
}

TEST_F(MirrorOfTwoGroups, EverySetOfExcludedPointsTakesThePlaceOfTheFormer) {
  mirror.setExcluded({1});
  mirror.setExcluded({3});
  EXPECT_EQ(each(&RefPoint::included), (Flags{true, true, true, false}));
}

TEST_F(MirrorOfTwoGroups, APointThatWasSwitchedOffComesOnByTheNextSetThatLacksIt) {
  mirror.switchPoints({0, 1, 55}, false);
  EXPECT_EQ(each(&RefPoint::included), (Flags{false, false, true, true}));
  mirror.switchPoints({1}, true);
  EXPECT_EQ(each(&RefPoint::included), (Flags{false, true, true, true}));
  mirror.setExcluded({1, 2});
  EXPECT_EQ(each(&RefPoint::included), (Flags{true, false, false, true}));
}

TEST_F(MirrorOfTwoGroups, ABaseIsReplacedAsAWhole) {
  mirror.setBase({0}, {0, 1});
  EXPECT_EQ(each(&RefPoint::inBase), (Flags{true, true, false, false}));
  mirror.setBase({1}, {2, 3});
  EXPECT_EQ(each(&RefPoint::inBase), (Flags{false, false, true, true}));
  EXPECT_FALSE(state().group(0).inBase);
  EXPECT_TRUE(state().group(1).inBase);
  mirror.setBase({}, {});
  EXPECT_EQ(each(&RefPoint::inBase), (Flags{false, false, false, false}));
}

// --- Names.

TEST_F(MirrorOfTwoGroups, ANameThatThereIsKeepsItsIdWhenAPointTakesIt) {
  mirror.renamePoint(0, "T2");
  EXPECT_EQ(point(0).commonId, 1u);
  EXPECT_EQ(names(), (Texts{"0T1", "1T2"})) << "point 2 still has the first";
}

TEST_F(MirrorOfTwoGroups, ANameThatNobodyHasAnyMoreIsDropped) {
  mirror.renamePoint(0, "T2");
  mirror.renamePoint(2, "T2");
  EXPECT_EQ(names(), (Texts{"1T2"}));
}

TEST_F(MirrorOfTwoGroups, ANewNameComesInWindows1251AndIsHeldInUtf8) {
  mirror.renamePoint(0, "\xD6");
  EXPECT_EQ(pointNames(), (Texts{u8"Ц", "T2", "T1", "T2"}));
  EXPECT_EQ(point(0).commonId, 2u);
  EXPECT_EQ(names(), (Texts{"0T1", "1T2", u8"2Ц"}));
}

TEST_F(MirrorOfTwoGroups, APointIsUnnamedByItsNameAlone) {
  mirror.renamePoint(0, "?");
  EXPECT_FALSE(point(0).named);
  EXPECT_EQ(pointNames()[0], "?");
  mirror.renamePoint(0, "");
  EXPECT_TRUE(point(0).named) << "an empty name is one";
}

TEST_F(MirrorOfTwoGroups, NamesOfTheWholeListReachThePointsThatHadNone) {
  mirror.addPoints({record(4, 1, 7)});
  EXPECT_EQ(pointNames().back(), "");
  mirror.setNames({{0, "first"}, {1, "T2"}, {7, "T7"}});
  EXPECT_EQ(pointNames(), (Texts{"T1", "T2", "T1", "T2", "T7"})) << "a name that is shown stays";
}

TEST_F(MirrorOfTwoGroups, APointThatJoinsAnAutomaticNameStaysAutomatic) {
  mirror.addPoints({record(4, 1, 5, false), record(5, 0, 5, false)});
  mirror.assignNames({{4, "auto5"}}, {{0, "T1"}, {1, "T2"}, {5, "auto5"}});
  EXPECT_TRUE(point(4).autoNamed);
  mirror.assignNames({{5, "auto5"}}, {{0, "T1"}, {1, "T2"}, {5, "auto5"}});
  EXPECT_TRUE(point(5).autoNamed);
  EXPECT_TRUE(point(5).named);
  EXPECT_EQ(point(5).commonId, 5u);
  EXPECT_THAT(state().unsureNames, IsEmpty());
}

TEST_F(MirrorOfTwoGroups, APointThatJoinsANameOfTheUsersIsTheUsers) {
  mirror.addPoints({record(4, 1, 5, false)});
  mirror.assignNames({{4, "T1"}}, {{0, "T1"}, {1, "T2"}});
  EXPECT_EQ(point(4).commonId, 0u);
  EXPECT_FALSE(point(4).autoNamed);
}

TEST_F(MirrorOfTwoGroups, ANameThatAnotherMatchingMakesCertainIsUnsureNoMore) {
  mirror.assignNames({{0, "nobody's"}}, {{0, "T1"}, {1, "T2"}});
  ASSERT_THAT(state().unsureNames, ElementsAre(0));
  EXPECT_EQ(point(0).commonId, 0u) << "nothing is known better";
  mirror.assignNames({{0, "T2"}}, {{0, "T1"}, {1, "T2"}});
  EXPECT_THAT(state().unsureNames, IsEmpty());
}

TEST_F(MirrorOfTwoGroups, IdsThatItDoesNotHoldChangeNothing) {
  mirror.assignNames({{88, "T2"}}, {{0, "T1"}, {1, "T2"}});
  mirror.setWeight({88}, 0.5);
  mirror.setInactive({88});
  mirror.setBase({88}, {88});
  EXPECT_EQ(pointNames(), (Texts{"T1", "T2", "T1", "T2"}));
  EXPECT_THAT(each(&RefPoint::weight), ElementsAre(1.0, 1.0, 1.0, 1.0));
  EXPECT_EQ(each(&RefPoint::active), Flags(4, true));
  EXPECT_EQ(state().groups.size(), 2u);
}

// --- Results.

TEST_F(MirrorOfTwoGroups, AfterASolveTheGroupsThatMoveAreRegistered) {
  mirror.addPoints({record(4, 2, 0), record(5, 2, 1)});
  mirror.setBase({0}, {0, 1});
  mirror.setInactive({2, 3});
  mirror.setRegistered({{4, 0.5}});
  EXPECT_THAT(state().registeredGroups, ElementsAre(2)) << "the base stands still, and B takes no part";
  EXPECT_EQ(state().discrepancies, (PointDiscrepancies{{4, 0.5}}));
}

TEST_F(MirrorOfTwoGroups, ASolveThatWasRefusedKeepsTheTransformations) {
  mirror.setRegistered({{0, 0.5}});
  mirror.setRefused({});
  EXPECT_THAT(state().registeredGroups, ElementsAre(0, 1));
  EXPECT_THAT(state().discrepancies, IsEmpty());
}

TEST_F(MirrorOfTwoGroups, AnIterativeSolveOfOneGroupAloneFindsNothingToDo) {
  mirror.setInactive({2, 3});
  mirror.setRegisteredIteratively({});
  EXPECT_THAT(state().registeredGroups, IsEmpty());
}

TEST_F(MirrorOfTwoGroups, AnIterativeSolveOfOneGroupAgainstItsBaseRegistersIt) {
  mirror.setBase({0}, {0, 1});
  mirror.setRegisteredIteratively({{2, 0.1}});
  EXPECT_THAT(state().registeredGroups, ElementsAre(1));
}

TEST_F(MirrorOfTwoGroups, TwoBasesWithoutAnotherGroupAreNothingToDo) {
  mirror.setBase({0, 1}, {0, 1, 2, 3});
  mirror.setRegisteredIteratively({});
  EXPECT_THAT(state().registeredGroups, IsEmpty());
}

TEST_F(MirrorOfTwoGroups, ClearedResultsLeaveNothingOfThem) {
  mirror.setRegistered({{0, 0.5}});
  mirror.setClusters({{0, {0, 1}}});
  mirror.clearResults();
  EXPECT_THAT(state().discrepancies, IsEmpty());
  EXPECT_THAT(state().registeredGroups, IsEmpty());
  EXPECT_THAT(state().clusters, IsEmpty());
}

// --- What is told as it is.

TEST_F(MirrorOfTwoGroups, AListOfCloudsTakesThePlaceOfTheFormer) {
  mirror.setClouds({{0, "hall"}, {1, "\xD6\xE5\xF5"}});
  ASSERT_EQ(state().clouds.size(), 2u);
  EXPECT_EQ(state().clouds[1].name, u8"Цех");
  EXPECT_EQ(state().clouds[1].number, 1u);
  mirror.setClouds({{0, "yard"}});
  ASSERT_EQ(state().clouds.size(), 1u);
  EXPECT_EQ(state().clouds[0].name, "yard");
}

TEST_F(MirrorOfTwoGroups, HoldsEachNumberInItsPlace) {
  mirror.setIterationLimits(18446744073709551615u, 0.5);
  mirror.setTolerances(1.0, 2.0, 3.0);
  EXPECT_EQ(state().maxIterations, 18446744073709551615u);
  EXPECT_EQ(state().convergenceCriteria, 0.5);
  EXPECT_EQ(state().matchDistanceTolerance, 1.0);
  EXPECT_EQ(state().triangleSideTolerance, 2.0);
  EXPECT_EQ(state().triangleMinSideDifference, 3.0);
}

}  // namespace
}  // namespace tiepoint::workbench
