#include "workbench/naming/match_run.h"

#include <gtest/gtest.h>

#include <cmath>

#include "workbench/report/finding_text.h"
#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

std::string keyOf(const Finding& finding) { return findingKey(finding.kind); }

/// As after a naming by auto with one step, and a solve.
struct Solved {
  StateBuilder survey;
  NamingReport report;

  explicit Solved(double discrepancy) {
    survey.group("A").points({"T1", "T2"});
    survey.state.discrepancies = {{0, 0.001}, {1, discrepancy}};
    report.limits.emplace().discrepancy = 0.02;
    report.steps.emplace_back();
  }
};

TEST(CheckDiscrepancies, RefusesANamingThatLeavesOneAboveTheLimit) {
  Solved solved(0.03);
  checkDiscrepancies(solved.survey.state, solved.report);
  EXPECT_TRUE(solved.report.isRefused);
  ASSERT_EQ(solved.report.reasons.size(), 1u);
  EXPECT_EQ(keyOf(solved.report.reasons[0]), "above-limit");
  EXPECT_EQ(findingText(solved.report.reasons[0]),
            "the solve leaves a discrepancy of 0.03, above the limit of 0.02 (--match-limit)");
}

TEST(CheckDiscrepancies, RefusesANamingThatLeavesOneWhichIsNoNumber) {
  Solved solved(std::nan(""));
  checkDiscrepancies(solved.survey.state, solved.report);
  EXPECT_TRUE(solved.report.isRefused);
}

TEST(CheckDiscrepancies, AcceptsANamingWithinTheLimit) {
  Solved solved(0.02);
  checkDiscrepancies(solved.survey.state, solved.report);
  EXPECT_FALSE(solved.report.isRefused);
  EXPECT_TRUE(solved.report.reasons.empty());
}

TEST(CheckDiscrepancies, HasNoSayWhereAutoNamedNothing) {
  Solved solved(0.03);
  solved.report.steps.clear();
  checkDiscrepancies(solved.survey.state, solved.report);
  Solved byTriangles(0.03);
  byTriangles.report.limits.reset();
  checkDiscrepancies(byTriangles.survey.state, byTriangles.report);
  EXPECT_FALSE(solved.report.isRefused);
  EXPECT_FALSE(byTriangles.report.isRefused);
}

}  // namespace
}  // namespace tiepoint::workbench
