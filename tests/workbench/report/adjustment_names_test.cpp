#include "workbench/report/adjustment_names.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

TEST(AdjustmentNames, ArePrintable) {
  Registration registration = adjustedHall();
  registration.groups[1].name = "S\x1b";
  registration.points[4].name = "T\n";
  registration.adjustment->targetNames[0] = "T\t";
  EXPECT_EQ(pointInGroup(registration, 4), "T? in S?");
  EXPECT_EQ(pointChoice(registration, 4), "S?:T?");
  EXPECT_EQ(stationName(registration, 1), "S?");
  EXPECT_EQ(targetName(registration, 0), "T?");
}

TEST(AdjustmentNames, AreListedAsInASentence) {
  EXPECT_EQ(listed({}), "");
  EXPECT_EQ(listed({"T1"}), "T1");
  EXPECT_EQ(listed({"T1", "T2"}), "T1 and T2");
  EXPECT_EQ(listed({"T1", "T2", "T3"}), "T1, T2 and T3");
  EXPECT_EQ(listed({"T1", "T2", "T3"}, 2), "T1, T2 and 1 more");
}

}  // namespace
}  // namespace tiepoint::workbench
