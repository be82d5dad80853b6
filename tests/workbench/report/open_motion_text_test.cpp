#include "workbench/report/open_motion_text.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

/// The targets stand at x = 0, 10, 20 and 30 on the x axis, but for T4, which is taken off it.
Registration undetermined(const analysis::OpenMotion& open, std::vector<analysis::ModeShare> moving) {
  Registration registration = adjustedHall();
  resultOf(registration).open = open;
  resultOf(registration).network.mode = std::move(moving);
  resultOf(registration).targets[3]->position = {30.0, 5.0, 0.0};
  registration.outcome = Undetermined();
  return registration;
}

analysis::OpenMotion turn(const Eigen::Vector3d& axis, const Eigen::Vector3d& place) {
  return {1, axis, true, place, false};
}

TEST(OpenMotionText, NamesTheLineOfAStationsTargets) {
  analysis::OpenMotion open = turn({1, 0, 0}, {5, 0, 0});
  open.isLineOfTargets = true;
  const Registration registration = undetermined(open, {{1, 1.0}});
  EXPECT_EQ(openMotionText(registration), "S2 turns about the line of its targets");
  EXPECT_EQ(openMotionRemedy(registration),
            "One more target off that line, seen by S2 and by another station, would hold it.");
}

TEST(OpenMotionText, NamesTheStationsThatTurnTogetherAndTheTargetsOfTheirHinge) {
  analysis::OpenMotion open = turn({1, 0, 0}, {5, 1e-5, 0});
  open.station = 2;
  // The line of its targets is the others' hinge, too.
  open.isLineOfTargets = true;
  const Registration registration = undetermined(open, {{2, 0.6}, {1, 0.4}});
  EXPECT_EQ(openMotionText(registration), "S2 and S3 turn about the line through T1, T2 and T3");
  EXPECT_EQ(openMotionRemedy(registration),
            "One more target off that line, seen by one of them and by one of the others, would hold them.");
}

TEST(OpenMotionText, HasTheAxisInNumbersWhereNoTwoTargetsLieOnIt) {
  EXPECT_EQ(openMotionText(undetermined(turn({0, 0.6, -0.8}, {5, -1e-9, 2.5}), {{1, 1.0}})),
            "S2 turns about an axis through 5.000, 0.000, 2.500 (direction 0.000, 0.600, -0.800)");
  EXPECT_EQ(openMotionText(undetermined(turn({0, 0, 1}, {10, 0, 2.5}), {{1, 1.0}})),
            "S2 turns about an axis through T2 (direction 0.000, 0.000, 1.000)");
}

TEST(OpenMotionText, HasTheDirectionOfAShift) {
  analysis::OpenMotion open;
  open.station = 2;
  open.turns = false;
  const Registration registration = undetermined(open, {{2, 1.0}});
  EXPECT_EQ(openMotionText(registration), "S3 is free to shift along the direction 0.000, 0.000, 1.000");
  EXPECT_EQ(openMotionRemedy(registration), "One more target, seen by S3 and by another station, would hold it.");
}

TEST(OpenMotionText, SaysThatControlDoesntHoldTheSurvey) {
  Registration registration = undetermined(turn({1, 0, 0}, {5, 0, 0}), {{1, 0.5}, {2, 0.5}});
  resultOf(registration).datum.kind = analysis::DatumKind::control;
  for (const std::size_t t : {0u, 1u}) registration.adjustment->network.targets[t].control.emplace();
  EXPECT_EQ(openMotionText(registration), "the whole survey turns about the line through T1, T2 and T3");
  EXPECT_EQ(openMotionRemedy(registration), "One more control target off that line would hold it.");
  // Control beside the axis holds the others.
  registration.adjustment->network.targets[3].control.emplace();
  EXPECT_EQ(openMotionText(registration), "S2 and S3 turn about the line through T1, T2 and T3");
}

TEST(OpenMotionText, AccusesNoStationOfWhatAWholeChainDoes) {
  const Registration registration = undetermined(turn({1, 0, 0}, {5, 0, 0}), {});
  EXPECT_EQ(openMotionText(registration), "the survey bends like a long chain, S2 most of all");
  EXPECT_EQ(openMotionRemedy(registration), "Hold it in more places by bases or control, or close it to a loop.");
}

TEST(OpenMotionText, IsGeneralWhereNothingIsKnown) {
  Registration registration = adjustedHall();
  EXPECT_EQ(openMotionText(registration), "a motion of some stations stays open");
  registration.adjustment.reset();
  EXPECT_EQ(openMotionText(registration), "a motion of some stations stays open");
  EXPECT_EQ(openMotionRemedy(registration), "Measure more targets in common.");
}

}  // namespace
}  // namespace tiepoint::workbench
