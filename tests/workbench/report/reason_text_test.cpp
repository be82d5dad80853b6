#include "workbench/report/reason_text.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

TEST(ReasonText, TellsEachReasonForWhichAPointIsOut) {
  EXPECT_STREQ(reasonText(Reason::excluded), "excluded");
  EXPECT_STREQ(reasonText(Reason::weightZero), "weight 0");
  EXPECT_STREQ(reasonText(Reason::unnamed), "no name yet (\"?\")");
  EXPECT_STREQ(reasonText(Reason::loneName), "no other group has this name");
  EXPECT_STREQ(reasonText(Reason::partnersOut), "the other groups with this name aren't used");
  EXPECT_STREQ(reasonText(Reason::thinGroup), "the group has fewer than 3 shared points left");
  EXPECT_STREQ(reasonText(Reason::baseNotShared), "base point that no other group has");
  EXPECT_STREQ(reasonText(Reason::thinBase), "the base has fewer than 3 shared points left");
  EXPECT_STREQ(reasonText(Reason::nothingToJoin), "no second group to join it with");
}

}  // namespace
}  // namespace tiepoint::workbench
