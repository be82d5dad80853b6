#include "workbench/report/length_format.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

TEST(LengthFormat, AnUnknownUnitIsPrintedWithSixDecimals) {
  const LengthFormat lengths(Unit::unknown);
  EXPECT_EQ(lengths.residual(0.0505253), "0.050525");
  EXPECT_EQ(lengths.position(-1234567.125), "-1234567.125000");
  EXPECT_STREQ(lengths.residualUnit(), "drawing units");
}

TEST(LengthFormat, MetresHaveTheirResidualsInMillimetres) {
  const LengthFormat lengths(Unit::metre);
  EXPECT_EQ(lengths.residual(0.0505253), "50.525");
  EXPECT_STREQ(lengths.residualUnit(), "mm");
  EXPECT_EQ(lengths.position(1.5), "1.500000");
  EXPECT_STREQ(lengths.positionUnit(), "m");
}

TEST(LengthFormat, MillimetresStay) {
  const LengthFormat lengths(Unit::millimetre);
  EXPECT_EQ(lengths.residual(50.5253), "50.525");
  EXPECT_EQ(lengths.position(1.5), "1.500");
}

TEST(LengthFormat, TellsHowManyUnitsOfResidualsALengthHas) {
  EXPECT_EQ(LengthFormat(Unit::metre).residualsPerLength(), 1000.0);
  EXPECT_EQ(LengthFormat(Unit::millimetre).residualsPerLength(), 1.0);
  EXPECT_EQ(LengthFormat(Unit::unknown).residualsPerLength(), 1.0);
}

TEST(LengthFormat, MillimetresAreNamed) {
  EXPECT_STREQ(LengthFormat(Unit::millimetre).positionUnit(), "mm");
  EXPECT_STREQ(LengthFormat(Unit::millimetre).residualUnit(), "mm");
  EXPECT_STREQ(LengthFormat(Unit::unknown).positionUnit(), "drawing units");
}

TEST(LengthFormat, ResidualsKeepTheirSign) {
  EXPECT_EQ(LengthFormat(Unit::metre).residual(-0.0016), "-1.600");
  EXPECT_EQ(LengthFormat(Unit::metre).residual(-1e-9), "0.000");
  EXPECT_EQ(LengthFormat(Unit::unknown).residual(-0.0000015), "-0.000002");
}

TEST(LengthFormat, AZeroHasNoSign) { EXPECT_EQ(LengthFormat(Unit::unknown).position(-1e-9), "0.000000"); }

TEST(LengthFormat, WhatIsNoNumberIsPrintedAsSuch) {
  EXPECT_EQ(LengthFormat(Unit::unknown).position(-1.0 / 0.0), "-inf");
}

TEST(LengthFormat, TellsRotationsAtTenMetresOrTenUnits) {
  EXPECT_EQ(LengthFormat(Unit::metre).lever(), 10.0);
  EXPECT_EQ(LengthFormat(Unit::millimetre).lever(), 10000.0);
  EXPECT_STREQ(LengthFormat(Unit::millimetre).leverText(), "10 m");
  EXPECT_EQ(LengthFormat(Unit::unknown).lever(), 10.0);
  EXPECT_STREQ(LengthFormat(Unit::unknown).leverText(), "10 drawing units");
}

}  // namespace
}  // namespace tiepoint::workbench
