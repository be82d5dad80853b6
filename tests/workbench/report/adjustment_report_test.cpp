#include "workbench/report/adjustment_report.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

Registration hallWithTargets() {
  Registration registration = adjustedHall();
  std::get<Registered>(registration.outcome).targets = {{"T1", {0, 0, 0}, 1.0, "T1", 3},
                                                        {"T2", {10.5, 0, 0}, 1.0, "T2", 2}};
  registration.groups[1].toCommon = OdGeMatrix3d();
  (*registration.groups[1].toCommon)(0, 3) = -2.25;
  return registration;
}

TEST(AdjustmentReport, OfTheResultsTellsVerdictGroupsTargetsMatricesAndPoints) {
  const std::string html = adjustmentReport(hallWithTargets(), ReportKind::results, Unit::metre);
  EXPECT_EQ(html.find("<!DOCTYPE html>"), 0u);
  EXPECT_TRUE(has(html, "<h1>Adjusted with base S1"));
  EXPECT_TRUE(has(html,
                  "<p>No measurement is suspect: all 12 tests pass</p>\n<p>Global test passed: the residuals are 1.2 "
                  "times as large as the given sigmas suggest (chance allows 0.6 to 1.4)</p>\n"));
  EXPECT_TRUE(has(html, "<td>S1 (base)</td><td>4</td><td>4</td>"));
  EXPECT_TRUE(has(html, "<tr><td>T2</td><td>10.500000</td><td>0.000000</td><td>0.000000</td><td>2</td></tr>"));
  EXPECT_TRUE(has(html, "From the system of S2 to the common one"));
  EXPECT_TRUE(has(html, "<td>-2.250000</td>"));
  EXPECT_TRUE(has(html, "<td>2.000</td><td>0.000</td><td>0.000</td><td>2.000</td>")) << "a residual in millimetres";
  EXPECT_EQ(html.substr(html.size() - 8), "</html>\n");
}

TEST(AdjustmentReport, OfPointsOrGroupsTellsThoseAlone) {
  const std::string points = adjustmentReport(hallWithTargets(), ReportKind::points, Unit::metre);
  EXPECT_TRUE(has(points, "<caption>Points"));
  EXPECT_FALSE(has(points, "<caption>Groups"));
  const std::string groups = adjustmentReport(hallWithTargets(), ReportKind::groups, Unit::metre);
  EXPECT_TRUE(has(groups, "<caption>Groups"));
  EXPECT_FALSE(has(groups, "<caption>Points"));
  EXPECT_FALSE(has(groups, "Adjusted targets"));
}

TEST(AdjustmentReport, SaysWhyAPointIsOut) {
  Registration registration = hallWithTargets();
  registration.points[5].active = false;
  registration.points[5].reason = Reason::excluded;
  registration.points[5].residual.reset();
  registration.points[5].discrepancy.reset();
  const std::string html = adjustmentReport(registration, ReportKind::points, Unit::metre);
  EXPECT_TRUE(has(html, "<tr class=\"out\"><td>T2</td><td>S2</td>"));
  EXPECT_TRUE(has(html, "<td>-</td><td>-</td><td>-</td><td>-</td><td>excluded</td></tr>"));
}

TEST(AdjustmentReport, ANameIsNeverMarkup) {
  Registration registration = hallWithTargets();
  registration.groups[2].name = "<b>&S3";
  registration.points[4].name = "T<script>";
  const std::string html = adjustmentReport(registration, ReportKind::results, Unit::metre);
  EXPECT_TRUE(has(html, "&lt;b&gt;&amp;S3"));
  EXPECT_TRUE(has(html, "T&lt;script&gt;"));
  EXPECT_FALSE(has(html, "<b>"));
  EXPECT_FALSE(has(html, "<script>"));
}

}  // namespace
}  // namespace tiepoint::workbench
