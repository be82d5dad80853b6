// Whole summaries; the tables' sizes stand in summary_tables_test.
#include "workbench/report/summary_text.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"
#include "workbench/report/registrations.h"

namespace tiepoint::workbench {
namespace {

const LengthFormat metres(Unit::metre);

Registered& registeredOf(Registration& registration) { return std::get<Registered>(registration.outcome); }

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(SummaryText, TellsOfARegisteredSurveyFromTransformationsToTheProtocol) {
  EXPECT_EQ(summaryText(twoStations(), metres),
            "Registered pairwise with base Base: 3 of 4 points in use\n"
            "\n"
            "Transformations to the common system: degrees about an axis through the origin, then a shift (m)\n"
            "  group     angle  axis x  axis y  axis z    shift x    shift y   shift z\n"
            "  Base       base\n"
            "  A      0.000000       -       -       -  10.000000  -2.500000  0.125000\n"
            "\n"
            "Discrepancies (mm): from the registered point to its merged target; at base: to the base's own\n"
            "  measurement\n"
            "  group  point  discrepancy  at base\n"
            "  A      T1           2.000    3.000  <- largest\n"
            "  A      T2           0.000        -\n"
            "\n"
            "Not used: 1 of 4 points\n"
            "  A  excluded  T3\n"
            "\n"
            "Discrepancies by group (mm)\n"
            "  group  points   mean    RMS  largest  at base  RMS at base\n"
            "  A           2  1.000  1.414    2.000        1        3.000\n"
            "  all         2  1.000  1.414    2.000        1        3.000\n"
            "\n"
            "For the protocol: mean 1.000 mm, RMS 1.414 mm, largest 2.000 mm over 2 points in 1 station\n"
            "RMS at the base: 3.000 mm over 1 point\n");
}

TEST(SummaryText, HasTheAxisOfAGroupThatIsTurned) {
  Registration registration = twoStations();
  OdGeMatrix3d& motion = *registration.groups[1].toCommon;
  // A quarter turn about Z.
  motion(0, 0) = motion(1, 1) = 0.0;
  motion(0, 1) = -1.0;
  motion(1, 0) = 1.0;
  EXPECT_TRUE(has(summaryText(registration, metres),
                  "  A      90.000000  0.000000000  0.000000000  1.000000000  10.000000  -2.500000  0.125000\n"));
}

TEST(SummaryText, SaysThatAGroupIsntRegistered) {
  Registration registration = twoStations();
  registration.groups.emplace_back().name = "B";
  EXPECT_TRUE(has(summaryText(registration, metres), "\n  B      not registered\n"));
}

TEST(SummaryText, BeginsWithTheFilesAndTheNaming) {
  Registration registration = twoStations();
  ImportedFile& file = registration.import.files.emplace_back();
  file.path = "A.txt";
  file.group = "A";
  registration.naming.emplace();
  registration.naming->how = Naming::closeness;
  const std::string text = summaryText(registration, metres);
  EXPECT_EQ(text.find("Reference points\n"), 0u);
  EXPECT_LT(text.find("\n\nNaming (distance): 0 points have automatic names, 0 have none\n\n"),
            text.find("\nRegistered pairwise"));
}

TEST(SummaryText, SaysHowIterationsConverged) {
  Registration registration = twoStations();
  registration.method = RegistrationMethod::iterative;
  registration.iterations = IterationCourse{17, 100, 0.0005, 0.001};
  EXPECT_TRUE(has(summaryText(registration, metres),
                  "Registered iteratively with base Base: 3 of 4 points in use\n"
                  "Iteration 17 of at most 100 moved the merged targets by 0.0005; the criterion is 0.001 (m)\n\n"));
}

TEST(SummaryText, SaysThatIterationsHaventConverged) {
  Registration registration = twoStations();
  registration.method = RegistrationMethod::iterative;
  registration.iterations = IterationCourse{100, 100, 0.5, 0.001};
  EXPECT_TRUE(
      has(summaryText(registration, metres),
          "Not converged: stopped by the limit of 100 iterations. The last pass still moved the merged targets\n"
          "by 0.5; the criterion is 0.001 (m). A small movement per pass doesn't mean a small error: along a\n"
          "chain of stations each pass moves the far stations only slightly; convergence can take tens of\n"
          "thousands of passes. Raise --max-iterations and lower --convergence, or register with --method\n"
          "pairwise, which doesn't have this problem.\n"));
}

TEST(SummaryText, AdvisesToLookAtThePointThatStandsOut) {
  Registration registration = twoStations();
  registeredOf(registration).outlier = Outlier{1, 22.84};
  EXPECT_TRUE(
      has(summaryText(registration, metres),
          "\nT1 in A stands out. It may have been mismeasured or misnamed there: check it, and compare a run with\n"
          "--exclude A:T1\n"));
}

TEST(SummaryText, CountsPointsWithoutANameInsteadOfListingThem) {
  Registration registration = twoStations();
  registration.points[3].reason = Reason::unnamed;
  registration.points[3].name = "?";
  EXPECT_TRUE(has(summaryText(registration, metres), "Not used: 1 of 4 points\n  A  no name yet (\"?\")  1 point\n"));
}

TEST(SummaryText, HasNoListOfPointsThatAreOutWhenNoneIs) {
  Registration registration = twoStations();
  registration.points.pop_back();
  EXPECT_FALSE(has(summaryText(registration, metres), "Not used:"));
}

TEST(SummaryText, ShowsTheAxesWhenTheyAreAskedFor) {
  EXPECT_FALSE(has(summaryText(twoStations(), metres), "dx"));
  EXPECT_TRUE(has(summaryText(twoStations(), metres, {false, true}), "  group  point  discrepancy     dx"));
}

TEST(SummaryText, EndsWithWhatWasWritten) {
  Registration registration = twoStations();
  registration.storedGroup = "all";
  registration.files = {"targets.txt", {"A.txt", "Base.txt"}, "all.json", "report.html", "hall.png"};
  const std::string text = summaryText(registration, metres);
  const std::string end =
      "\n"
      "1 common point written to targets.txt\n"
      "1 common point stored in the drawing as group all\n"
      "\n"
      "2 matrix files written: A.txt, Base.txt\n"
      "transformations written to all.json\n"
      "report written to report.html\n"
      "picture written to hall.png\n";
  ASSERT_GT(text.size(), end.size());
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST(SummaryText, TellsOfTheClouds) {
  Registration registration = twoStations();
  CloudReport& cloud = registration.clouds.emplace_back();
  cloud.name = "A";
  cloud.source = "A.xyz";
  EXPECT_TRUE(has(summaryText(registration, metres), "\n\nClouds\n  A  stays: --apply moves the clouds  A.xyz\n"));
}

TEST(SummaryText, OfASurveyThatIsntRegisteredSaysWhyAndWhatIsOut) {
  Registration registration = twoStations();
  registration.outcome = BaseNotShared();
  EXPECT_EQ(summaryText(registration, metres),
            "Not registered: the base (Base) shares fewer than 3 points with the other groups. To register them\n"
            "without it, in a system of their own, leave out --base.\n"
            "\n"
            "Not used: 1 of 4 points\n"
            "  A  excluded  T3\n");
}

TEST(SummaryText, OfASurveyThatIsntNamedListsNoPointsThatAreOut) {
  Registration registration = twoStations();
  registration.outcome = NotNamed();
  EXPECT_EQ(summaryText(registration, metres), "Not registered: the points can't be named with certainty.\n");
}

TEST(SummaryText, OfAnAdjustmentHasTheVerdictBeforeTheTransformations) {
  const std::string text = summaryText(adjustedHall(), metres);
  EXPECT_EQ(text.find("Adjusted with base S1: 12 of 12 points in use; 36 equations for 24 unknowns, redundancy 12\n"
                      "No measurement is suspect: all 12 tests pass\n"),
            0u);
  EXPECT_LT(text.find("\n\nStations (mm)"), text.find("\n\nTransformations to the common system"));
}

TEST(SummaryText, SaysWhereAllOthersSeeThePointThatStandsOut) {
  Registration registration = twoStations();
  registeredOf(registration).outlier = Outlier{1, 22.84, OdGeVector3d(0.0, 0.06, 0.0)};
  EXPECT_TRUE(
      has(summaryText(registration, metres),
          "\nT1 in A stands out: all others see the target 60.000 mm beside it. It may have been mismeasured or\n"
          "misnamed there: check it, and compare a run with --exclude A:T1\n"));
}

TEST(SummaryText, HasTheVerdictOfAnAdjustmentAlone) {
  Registration registration = adjustedHall();
  registration.method = RegistrationMethod::pairwise;
  EXPECT_FALSE(has(summaryText(registration, metres), "Global test"));
}

}  // namespace
}  // namespace tiepoint::workbench
