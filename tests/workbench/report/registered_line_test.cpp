#include "workbench/report/registered_line.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"
#include "workbench/report/registrations.h"

namespace tiepoint::workbench {
namespace {

/// So many bases.
Registration withBases(int count) {
  Registration registration;
  registration.usesBase = true;
  for (int i = 1; i <= count; ++i) {
    GroupOutcome& group = registration.groups.emplace_back();
    group.name = "S" + std::to_string(i);
    group.inBase = true;
  }
  return registration;
}

TEST(RegisteredLine, NamesTheMethodAndTheBase) {
  Registration registration = twoStations();
  EXPECT_EQ(registeredLine(registration), "Registered pairwise with base Base");
  registration.method = RegistrationMethod::iterative;
  EXPECT_EQ(registeredLine(registration), "Registered iteratively with base Base");
  registration.usesBase = false;
  EXPECT_EQ(registeredLine(registration), "Registered iteratively");
}

TEST(RegisteredLine, NamesWhatHoldsAnAdjustment) {
  Registration registration = adjustedHall();
  EXPECT_EQ(registeredLine(registration), "Adjusted with base S1");
  for (const std::size_t t : {0u, 1u, 3u}) registration.adjustment->network.targets[t].control.emplace();
  // One that takes no part holds nothing.
  resultOf(registration).targets[3].reset();
  resultOf(registration).datum.kind = analysis::DatumKind::baseAndControl;
  EXPECT_EQ(registeredLine(registration), "Adjusted with base S1 and 2 control targets");
  registration.usesBase = false;
  resultOf(registration).datum.kind = analysis::DatumKind::control;
  EXPECT_EQ(registeredLine(registration), "Adjusted with 2 control targets");
}

TEST(RegisteredLine, NamesTheStationThatAFreeNetworkHasItsSystemFrom) {
  Registration registration = adjustedHall();
  registration.usesBase = false;
  resultOf(registration).datum.kind = analysis::DatumKind::free;
  EXPECT_EQ(registeredLine(registration), "Adjusted freely");
  resultOf(registration).datum.frame = 1;
  EXPECT_EQ(registeredLine(registration), "Adjusted freely, in the system of S2");
}

TEST(RegisteredLine, NeedsNoNumbersOfAnAdjustment) {
  Registration registration = adjustedHall();
  registration.adjustment.reset();
  EXPECT_EQ(registeredLine(registration), "Adjusted with base S1");
}

TEST(RegisteredLine, CountsTheBasesThatItLeavesOut) {
  EXPECT_EQ(registeredLine(withBases(14)),
            "Registered pairwise with base S1, S2, S3, S4, S5, S6, S7, S8, S9, S10, S11, S12 and 2 more");
  EXPECT_EQ(registeredLine(withBases(5), 3), "Registered pairwise with base S1, S2, S3 and 2 more");
}

TEST(BaseNames, AreThoseOfTheBasesAlone) { EXPECT_EQ(baseNames(twoStations()), "Base"); }

TEST(BaseNames, CantSteerTheTerminal) {
  Registration registration = withBases(1);
  registration.groups[0].name = "S\x1b";
  EXPECT_EQ(baseNames(registration), "S?");
}

TEST(ActiveCount, CountsThePointsInUse) { EXPECT_EQ(activeCount(twoStations()), 3u); }

}  // namespace
}  // namespace tiepoint::workbench
