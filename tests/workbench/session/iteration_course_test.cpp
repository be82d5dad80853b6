#include "workbench/session/iteration_course.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tiepoint::workbench {
namespace {

std::wstring report(const std::wstring& iterations, const std::wstring& discrepancy) {
  return L"<body><p><h4>Method of registration</h4></p><p>Iterative</p><hr><p>Registration settings</p>"
         L"<p>actual/preset number iterations: " +
         iterations + L"</p><p>actual/preset maximum discrepancy: " + discrepancy +
         L"</p><p><h4>Common reference points</h4></p>";
}

TEST(IterationCourseOfAReport, HoldsTheFourNumbers) {
  const auto course = iterationCourse(report(L"12 / 100", L"0.000987654 / 0.001"));
  ASSERT_TRUE(course);
  EXPECT_EQ(course->iterations, 12u);
  EXPECT_EQ(course->limit, 100u);
  EXPECT_EQ(course->movement, 0.000987654);
  EXPECT_EQ(course->criterion, 0.001);
}

TEST(IterationCourseOfAReport, ReadsExponents) {
  const auto course = iterationCourse(report(L"0 / 18446744073709551615", L"1.5e-17 / 1e-16"));
  ASSERT_TRUE(course);
  EXPECT_EQ(course->limit, 18446744073709551615u);
  EXPECT_EQ(course->movement, 1.5e-17);
}

TEST(IterationCourseOfAReport, AMovementThatEqualsTheCriterionMeetsIt) {
  EXPECT_TRUE(iterationCourse(report(L"100 / 100", L"0.001 / 0.001"))->converged());
  EXPECT_FALSE(iterationCourse(report(L"100 / 100", L"0.00100001 / 0.001"))->converged());
}

TEST(IterationCourseOfAReport, AMovementThatIsNoNumberIsNotConverged) {
  const auto course = iterationCourse(report(L"100 / 100", L"nan / 0.001"));
  ASSERT_TRUE(course);
  EXPECT_TRUE(std::isnan(course->movement));
  EXPECT_FALSE(course->converged());
}

TEST(IterationCourseOfAReport, IsNothingAfterAnotherMethod) {
  EXPECT_FALSE(iterationCourse(L"<p><h4>Method of registration</h4></p><p>Pairwise</p><hr>"));
  EXPECT_FALSE(iterationCourse(L""));
}

TEST(IterationCourseOfAReport, IsNothingInAnyOtherForm) {
  EXPECT_FALSE(iterationCourse(report(L"12 of 100", L"0.1 / 0.001")));
  EXPECT_FALSE(iterationCourse(report(L"-1 / 100", L"0.1 / 0.001")));
  EXPECT_FALSE(iterationCourse(report(L"1.5 / 100", L"0.1 / 0.001")));
  EXPECT_FALSE(iterationCourse(report(L" 12 / 100", L"0.1 / 0.001")));
  EXPECT_FALSE(iterationCourse(report(L"12 / 100", L"0,1 / 0.001")));
  EXPECT_FALSE(iterationCourse(report(L"12 / 100", L" / 0.001")));
  EXPECT_FALSE(iterationCourse(report(L"12 / 100", L"0.1 / ")));
  EXPECT_FALSE(iterationCourse(report(L"1\u0132 / 100", L"0.1 / 0.001"))) << "no digit, though its low byte is one";
}

TEST(IterationCourseOfAReport, APointThatIsCalledLikeTheSettingsComesTooLate) {
  const std::wstring text = report(L"12 / 100", L"0.1 / 0.001");
  const auto course =
      iterationCourse(text + L"<td><p>Registration settings</p><p>actual/preset number iterations: 1 / 1");
  ASSERT_TRUE(course);
  EXPECT_EQ(course->iterations, 12u);
}

}  // namespace
}  // namespace tiepoint::workbench
