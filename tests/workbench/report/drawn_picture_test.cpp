// Where there is a library to draw with.
#include <gtest/gtest.h>

#include "workbench/report/survey_picture.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {
namespace {

TEST(StoredPicture, IsRefusedWhenNothingHasAPlace) {
  const ShownGroups none;
  const std::vector<const OdGiDrawable*> drawables;
  picture::Request request;
  try {
    storedPicture({}, {none, drawables}, "hall.tiepoint", LengthFormat(Unit::metre), request);
    FAIL();
  } catch (const Refused& refused) {
    EXPECT_EQ(refused.refusal().kind, RefusalKind::nothingToShow);
    EXPECT_EQ(refused.refusal().field, Field::picture);
    EXPECT_FALSE(refused.refusal().cause.empty());
  }
}

}  // namespace
}  // namespace tiepoint::workbench
