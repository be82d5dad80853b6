#include "workbench/report/adjustment_verdict.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

const LengthFormat metres(Unit::metre);

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// With no sigmas given, all of them 1.
void estimateSigma(Registration& registration) {
  for (analysis::Observation& observation : registration.adjustment->network.observations) observation.sigma = 1.0;
  resultOf(registration).scale = analysis::VarianceScale::aPosteriori;
  resultOf(registration).varianceFactor = 1.44e-6;
  resultOf(registration).globalTest.reset();
}

TEST(AdjustmentVerdict, OfAFineSurveyIsFiveLines) {
  EXPECT_EQ(verdictText(adjustedHall(), metres),
            "No measurement is suspect: all 12 tests pass\n"
            "Global test passed: the residuals are 1.2 times as large as the given sigmas suggest (chance allows\n"
            "  0.6 to 1.4)\n"
            "No other poses fit as well as these\n"
            "Least sure: S2, whose origin has a standard deviation of 1.500 mm\n"
            "Softest: S3 and S2 (stiffness 0.012; 1 is firm)\n");
}

TEST(AdjustmentVerdict, NamesTheStationWhoseOriginIsTheLeastCertain) {
  Registration registration = adjustedHall();
  resultOf(registration).stations[2]->positionSigma = 0.0151;
  EXPECT_TRUE(
      has(verdictText(registration, metres), "\nLeast sure: S3, whose origin has a standard deviation of 15.100 mm\n"));
}

TEST(AdjustmentVerdict, BeginsWithTheSuspect) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  EXPECT_EQ(
      verdictText(registration, metres)
          .find("Suspect: T3 in S2 lies 60.000 mm beside where all others see it (far beyond chance); its discrepancy\n"
                "  shows 40.000 mm\n"),
      0u);
}

TEST(AdjustmentVerdict, TellsTheChanceOfASuspectThatIsNotSoClear) {
  Registration registration = adjustedHall();
  makeControlSuspect(registration);
  EXPECT_TRUE(has(verdictText(registration, metres),
                  "Suspect: the given place of T2 lies 35.000 mm beside where all others see it (p = 0.00021); its\n"
                  "  discrepancy shows 20.000 mm\n"));
}

TEST(AdjustmentVerdict, DoesntAccuseOneOfTwo) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  resultOf(registration).observations[2].reset();
  EXPECT_TRUE(has(verdictText(registration, metres), "; only S3 tells against it, so either may be wrong\n"));
}

TEST(AdjustmentVerdict, CountsTheTestsThatFailWithoutASuspect) {
  Registration registration = adjustedHall();
  observationOf(registration, 3).rejected = true;
  EXPECT_TRUE(has(verdictText(registration, metres),
                  "No measurement is suspect: 1 of 12 tests fails, 0.012 would by chance\n"));
  observationOf(registration, 4).rejected = true;
  EXPECT_TRUE(has(verdictText(registration, metres), "2 of 12 tests fail, 0.012 would by chance\n"));
}

TEST(AdjustmentVerdict, SaysThatNothingIsTestedWithTooLittleRedundancyForAnEstimatedSigma) {
  Registration registration = adjustedHall();
  resultOf(registration).redundancy = 3;
  resultOf(registration).levels.criticalPoint.reset();
  EXPECT_TRUE(has(verdictText(registration, metres),
                  "No measurement is tested: a redundancy of 3 is too small without given sigmas (--sigma)\n"));
}

TEST(AdjustmentVerdict, SaysThatTheSigmasAreTooSmallOnlyWithoutASuspect) {
  Registration registration = adjustedHall();
  resultOf(registration).sumOfSquares = 63.48;
  resultOf(registration).varianceFactor = 5.29;
  resultOf(registration).globalTest->passed = false;
  EXPECT_TRUE(
      has(verdictText(registration, metres),
          "Global test failed: the residuals are 2.3 times as large as the given sigmas suggest (chance allows\n"
          "  0.6 to 1.4); the sigmas are too small, or several measurements are off\n"));
  makeSuspect(registration);
  EXPECT_TRUE(has(verdictText(registration, metres), "(chance allows\n  0.6 to 1.4)\n"));
}

TEST(AdjustmentVerdict, SaysThatTheSigmasAreTooLarge) {
  Registration registration = adjustedHall();
  resultOf(registration).sumOfSquares = 1.08;
  resultOf(registration).varianceFactor = 0.09;
  resultOf(registration).globalTest->passed = false;
  EXPECT_TRUE(has(verdictText(registration, metres),
                  "Global test failed: the residuals are only 0.3 times as large as the given sigmas suggest (chance\n"
                  "  allows 0.6 to 1.4); the measurements are better than the sigmas, or not independent\n"));
}

TEST(AdjustmentVerdict, HasALargeFactorInFull) {
  Registration registration = adjustedHall();
  resultOf(registration).varianceFactor = 1.5e8;
  EXPECT_TRUE(has(verdictText(registration, metres), "the residuals are 12247 times as large"));
}

TEST(AdjustmentVerdict, HasTheEstimatedSigmaWhereNoneIsGiven) {
  Registration registration = adjustedHall();
  estimateSigma(registration);
  EXPECT_TRUE(has(verdictText(registration, metres),
                  "\nEstimated sigma of a coordinate: 1.200 mm; nothing tests it unless sigmas are given (--sigma)\n"));
  registration.adjustment->network.observations[5].weight = 0.5;
  EXPECT_TRUE(has(verdictText(registration, metres), "\nEstimated sigma of a coordinate of weight 1: 1.200 mm;"));
}

TEST(AdjustmentVerdict, HasTheFactorOfGivenSigmasThatAreScaled) {
  Registration registration = adjustedHall();
  resultOf(registration).globalTest.reset();
  EXPECT_TRUE(has(verdictText(registration, metres),
                  "The residuals are 1.2 times as large as the given sigmas suggest; all figures are scaled by it\n"));
}

TEST(AdjustmentVerdict, JudgesNothingThatIsRounding) {
  Registration registration = adjustedHall();
  std::get<Registered>(registration.outcome).largest.reset();
  EXPECT_EQ(verdictText(registration, metres),
            "All residuals are the rounding of numbers: measurements without any noise can't be tested\n"
            "No other poses fit as well as these\n"
            "Least sure: S2, whose origin has a standard deviation of 1.500 mm\n"
            "Softest: S3 and S2 (stiffness 0.012; 1 is firm)\n");
}

TEST(AdjustmentVerdict, SaysThatOtherPosesMayFitAsWell) {
  Registration registration = adjustedHall();
  resultOf(registration).certificate->unique = false;
  EXPECT_TRUE(has(verdictText(registration, metres), "\nNo other poses fit better than these\n"));
}

TEST(AdjustmentVerdict, SaysThatTheFirstStartLedElsewhere) {
  Registration registration = adjustedHall();
  resultOf(registration).otherStartWon = true;
  EXPECT_TRUE(has(verdictText(registration, metres),
                  "\nNo other poses fit as well as these; the first start would have led to a worse fit\n"));
}

TEST(AdjustmentVerdict, BoundsWhatOtherPosesCouldGain) {
  Registration registration = adjustedHall();
  resultOf(registration).certificate = analysis::Certificate{-0.1, 9, false, false, 0.1728, 17.1072};
  EXPECT_TRUE(
      has(verdictText(registration, metres),
          "\nNo better poses are known; any would lower the sum of squares by at most 1 %. (The bound can't tell\n"
          "  a station whose targets lie in one plane from its mirror image.)\n"));
  resultOf(registration).certificate->gap = 1e-7;
  EXPECT_TRUE(has(verdictText(registration, metres), "by less than 0.0001 %."));
}

TEST(AdjustmentVerdict, WarnsOfPosesThatFitBetter) {
  Registration registration = adjustedHall();
  resultOf(registration).certificate = analysis::Certificate{-0.1, 9, false, false, 0.174, 17.106};
  resultOf(registration).certificate->lowerBound = 4.32;
  EXPECT_TRUE(
      has(verdictText(registration, metres),
          "\nIn all likelihood other poses fit better: the sum of squares could be as low as 25 % of what it is.\n"
          "  Look for a wrong name, or start from better poses with --start.\n"));
  registration.adjustment->startWasGiven = true;
  EXPECT_TRUE(has(verdictText(registration, metres),
                  "  The given start is judged, not replaced: compare a run without --start.\n"));
}

TEST(AdjustmentVerdict, DoesntTakeTheGapThatASuspectMakesForBetterPoses) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  resultOf(registration).certificate = analysis::Certificate{-0.1, 9, false, false, 17.28, 0.0};
  EXPECT_TRUE(has(verdictText(registration, metres),
                  "\nWhether other poses fit better can't be told while the suspect is in\n"));
  // A bad start may have made the suspect.
  registration.adjustment->startWasGiven = true;
  EXPECT_TRUE(has(verdictText(registration, metres), "\nIn all likelihood other poses fit better"));
}

TEST(AdjustmentVerdict, SaysNothingOfABoundThatIsntKnownOrMeansNothing) {
  Registration registration = adjustedHall();
  resultOf(registration).certificate->certified = false;
  resultOf(registration).certificate->gap = 1e-20;
  std::get<Registered>(registration.outcome).largest.reset();
  EXPECT_FALSE(has(verdictText(registration, metres), "poses"));
  registration = adjustedHall();
  resultOf(registration).certificate.reset();
  EXPECT_FALSE(has(verdictText(registration, metres), "poses"));
}

TEST(AdjustmentVerdict, NamesAtMostTheTwoSoftestStations) {
  Registration registration = adjustedHall();
  resultOf(registration).network = {2.5e-7, {{1, 0.9}}};
  EXPECT_TRUE(has(verdictText(registration, metres), "\nSoftest: S2 (stiffness 2.5e-07; 1 is firm)\n"));
  resultOf(registration).network.mode.clear();
  EXPECT_TRUE(has(verdictText(registration, metres), "\nStiffness 2.5e-07; 1 is firm\n"));
}

TEST(AdjustmentVerdict, SaysFirstThatTheSearchHasntConverged) {
  Registration registration = adjustedHall();
  resultOf(registration).converged = false;
  resultOf(registration).iterations = 200;
  EXPECT_EQ(
      verdictText(registration, metres)
          .find("Not converged: after 200 iterations the sum of squares still falls, and all figures are those of\n"
                "  where the search was ended. Look for a wrong name, or start from better poses with --start.\n"),
      0u);
}

TEST(AdjustmentVerdict, WithoutRedundancySaysThatZeroResidualsMeanNothing) {
  Registration registration = adjustedHall();
  resultOf(registration).redundancy = 0;
  resultOf(registration).varianceFactor.reset();
  resultOf(registration).globalTest.reset();
  EXPECT_EQ(verdictText(registration, metres),
            "Nothing is checked: no measurement is redundant, so the zero residuals say nothing about the\n"
            "  quality. Measure more targets in common.\n");
}

}  // namespace
}  // namespace tiepoint::workbench
