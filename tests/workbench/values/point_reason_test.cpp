#include "workbench/values/point_reason.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

TEST(KeysOfReasons, AreThoseThatProgramsKnow) {
  EXPECT_STREQ(reasonKey(Reason::excluded), "excluded");
  EXPECT_STREQ(reasonKey(Reason::weightZero), "weight-zero");
  EXPECT_STREQ(reasonKey(Reason::unnamed), "unnamed");
  EXPECT_STREQ(reasonKey(Reason::loneName), "lone-name");
  EXPECT_STREQ(reasonKey(Reason::partnersOut), "partners-out");
  EXPECT_STREQ(reasonKey(Reason::thinGroup), "thin-group");
  EXPECT_STREQ(reasonKey(Reason::baseNotShared), "base-not-shared");
  EXPECT_STREQ(reasonKey(Reason::thinBase), "thin-base");
  EXPECT_STREQ(reasonKey(Reason::nothingToJoin), "nothing-to-join");
}

}  // namespace
}  // namespace tiepoint::workbench
