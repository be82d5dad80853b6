#include "platform/sdk/od_cm_entity_color.h"

#include <gtest/gtest.h>

TEST(OdCmEntityColor, KeepsTheMethodInTheHighestByte) {
  OdCmEntityColor color;
  color.setColor(0);
  color.setColorMethod(OdCmEntityColor::kByColor);
  EXPECT_EQ(color.color(), 0xC2000000u);
  EXPECT_EQ(color.colorMethod(), OdCmEntityColor::kByColor);
}

TEST(OdCmEntityColor, ANewMethodLeavesTheValueBelowIt) {
  OdCmEntityColor color;
  color.setColor(0xC2123456u);
  color.setColorMethod(OdCmEntityColor::kByACI);
  EXPECT_EQ(color.color(), 0xC3123456u);
}
