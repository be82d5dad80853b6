// What a session holds after memory ran out in the middle of an operation.
#include <gtest/gtest.h>

#include <new>

#include "platform/sdk/od_alloc.h"
#include "support/session_builder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

/// Runs the action with one allocation failing after so many others. True when it threw.
template <class Action>
bool failsAfter(std::uint64_t successes, Action action) {
  odrxFailAllocationsAfter(successes, 1);
  bool hasThrown = false;
  try {
    action();
  } catch (const std::bad_alloc&) {
    hasThrown = true;
  }
  odrxStopFailingAllocations();
  return hasThrown;
}

TEST(ExhaustedMemory, LeavesNoGroupHalfRead) {
  const std::string longName = "a target with a name that is longer than short texts are";
  bool hasThrown = true;
  std::uint64_t failures = 0;
  for (; hasThrown; ++failures) {
    Session session;
    session.document().storeGroup("A", {{"T1", 0, 0, 0}, {longName, 1, 0, 0}, {"T3", 0, 1, 0}});
    session.document().storeGroup("B", {{longName, 0, 0, 0}, {"T3", 1, 0, 0}});
    std::map<GroupId, std::string> available;
    hasThrown = failsAfter(failures, [&] { session->getAvailableGroups(available); });
    ASSERT_TRUE(session->getAvailableGroups(available)) << failures;
    ASSERT_EQ(available.size(), 2u) << failures;
    std::list<RefPoint> added;
    Outputs out;
    ASSERT_TRUE(session->addGroups({0, 1}, added, out.inactiveGroups, out.inactivePoints)) << failures;
    std::vector<RefPointId> ids;
    for (const RefPoint& point : added) ids.push_back(point.id);
    EXPECT_EQ(ids, (std::vector<RefPointId>{0, 1, 2, 3, 4})) << failures;
    EXPECT_EQ(session.commonNames(), (std::vector<std::string>{"0:T1", "1:" + longName, "2:T3"})) << failures;
  }
  EXPECT_GT(failures, 10u);
}

TEST(ExhaustedMemory, GivesNoPointAnIdWithoutItsName) {
  const std::string first = "the-first-name-that-is-longer-than-short-texts-are";
  const std::string second = "the-second-name-that-is-longer-than-short-texts-are";
  bool hasThrown = true;
  std::uint64_t failures = 0;
  for (; hasThrown; ++failures) {
    Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
    Outputs out;
    GroupId group = 0;
    hasThrown =
        failsAfter(failures, [&] { session->renamePoint(0, first, group, out.inactiveGroups, out.inactivePoints); });
    ASSERT_TRUE(session->renamePoint(3, second, group, out.inactiveGroups, out.inactivePoints)) << failures;
    // Were the first point left with an id that no name has, the second name would have taken it over.
    const std::wstring report = session->getPointsReport({0});
    EXPECT_EQ(report.find(L"the-second"), std::wstring::npos) << failures;
    EXPECT_TRUE(report.find(L"the-first") != std::wstring::npos || report.find(L"T1") != std::wstring::npos)
        << failures;
  }
  EXPECT_GT(failures, 5u);
}

}  // namespace
