#include "workbench/reading/units.h"

#include <gtest/gtest.h>

namespace {

using namespace tiepoint::workbench;

TEST(Units, AreMetres) {
  EXPECT_EQ(metresOf(1.5, LengthUnit::metre), 1.5);
  EXPECT_EQ(metresOf(1500.0, LengthUnit::millimetre), 1.5);
  EXPECT_EQ(metresOf(1.0, LengthUnit::foot), 0.3048);
  EXPECT_EQ(metresOf(3937.0, LengthUnit::usSurveyFoot), 1200.0);
}

// Multiplied by 0.001 each of these would be the double beside.
TEST(Units, OfMillimetresAreTheNearestDouble) {
  EXPECT_EQ(metresOf(9.0, LengthUnit::millimetre), 0.009);
  EXPECT_EQ(metresOf(1009.0, LengthUnit::millimetre), 1.009);
  EXPECT_EQ(metresOf(5000123.0, LengthUnit::millimetre), 5000.123);
}

TEST(Units, OfFeetAreTwoMillimetresInAThousandMetresApart) {
  const double thousandMetres = 3280.8398950131235;
  EXPECT_NEAR(metresOf(thousandMetres, LengthUnit::usSurveyFoot) - metresOf(thousandMetres, LengthUnit::foot), 0.002,
              1e-8);
}

TEST(Units, KeepTheSign) {
  EXPECT_EQ(metresOf(-2.0, LengthUnit::foot), -0.6096);
  EXPECT_EQ(metresOf(-1.0, LengthUnit::millimetre), -0.001);
}

}  // namespace
