// The tables of the summary at every size.
#include <gtest/gtest.h>

#include <sstream>

#include "workbench/report/summary_text.h"

namespace tiepoint::workbench {
namespace {

/// A registration of so many groups with one point each, the k-th of which is k mm off.
Registration registrationOf(std::size_t groups) {
  Registration registration;
  Registered registered;
  registered.largest = groups - 1;
  for (std::size_t k = 0; k < groups; ++k) {
    GroupOutcome group;
    group.name = "S" + std::to_string(k);
    group.points = group.active = 1;
    group.toCommon = OdGeMatrix3d();
    const double discrepancy = static_cast<double>(k) / 1000.0;
    group.discrepancies = Rms{1, discrepancy, discrepancy};
    registration.groups.push_back(group);
    PointOutcome point;
    point.group = k;
    point.name = "T" + std::to_string(k);
    point.active = point.named = true;
    point.discrepancy = discrepancy;
    registration.points.push_back(point);
  }
  registration.outcome = registered;
  return registration;
}

std::size_t countOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

const LengthFormat metres(Unit::metre);
const TableOptions allRows{true, false};

TEST(SummaryTables, ShowEveryRowUpToTwoHundred) {
  const std::string text = summaryText(registrationOf(200), metres);
  EXPECT_EQ(text.find("--all-points"), std::string::npos);
  EXPECT_EQ(countOf(text, "\n  S0 "), 3u);
  EXPECT_EQ(countOf(text, "\n  S199 "), 3u);
}

TEST(SummaryTables, ShowTheWorstRowsOfMoreAndCountTheRest) {
  const std::string text = summaryText(registrationOf(201), metres);
  EXPECT_EQ(countOf(text, "  and 161 more groups; --all-points shows them\n"), 2u);
  EXPECT_EQ(countOf(text, "  and 161 more points; --all-points shows them\n"), 1u);
  EXPECT_EQ(countOf(text, "\n  S200 "), 3u);
  EXPECT_EQ(countOf(text, "\n  S161 "), 3u);
  EXPECT_EQ(countOf(text, "\n  S160 "), 0u);
  // The worst point first; the transformations in the groups' order.
  EXPECT_LT(text.find("  S200   T200"), text.find("  S199   T199"));
  EXPECT_LT(text.find("\n  S161 "), text.find("\n  S200 "));
}

TEST(SummaryTables, ShowAllWhenAllAreAskedFor) {
  const std::string text = summaryText(registrationOf(201), metres, allRows);
  EXPECT_EQ(text.find("--all-points"), std::string::npos);
  EXPECT_EQ(countOf(text, "\n  S0 "), 3u);
}

TEST(SummaryTables, ShowFortyOfMoreThanTwoHundredLinesOfPointsThatAreOut) {
  Registration registration = registrationOf(201);
  for (std::size_t k = 0; k < 201; ++k) {
    PointOutcome out;
    out.group = k;
    out.name = "lone";
    out.reason = Reason::loneName;
    registration.points.push_back(out);
  }
  const std::string text = summaryText(registration, metres);
  EXPECT_NE(text.find("Not used: 201 of 402 points\n"), std::string::npos);
  EXPECT_EQ(countOf(text, "  lone\n"), 40u);
  EXPECT_NE(text.find("  and 161 more lines; --all-points shows them\n"), std::string::npos);
  EXPECT_EQ(countOf(summaryText(registration, metres, allRows), "  lone\n"), 201u);
}

TEST(SummaryTables, ShowTheFilesOfWhichSomethingIsToBeSaidFirst) {
  Registration registration = registrationOf(3);
  for (std::size_t k = 0; k < 201; ++k) {
    ImportedFile file;
    file.path = "file" + std::to_string(k) + ".txt";
    file.stored = k != 200;
    registration.import.files.push_back(file);
  }
  const std::string text = summaryText(registration, metres);
  EXPECT_EQ(countOf(text, ".txt  "), 40u);
  EXPECT_LT(text.find("  file200.txt"), text.find("  file0.txt"));
  EXPECT_NE(text.find("  and 161 more files; --all-points shows them\n"), std::string::npos);
}

TEST(SummaryTables, AreNoWiderThanAHundredColumns) {
  Registration registration = registrationOf(3);
  registration.method = RegistrationMethod::iterative;
  registration.iterations = IterationCourse{100, 100, 0.5, 0.001};
  Registered& registered = std::get<Registered>(registration.outcome);
  registered.outlier = Outlier{2, 12.5};
  registered.atBase = Rms{1, 0.001, 0.001};
  for (int i = 0; i < 20; ++i) {
    PointOutcome out;
    out.name = "a target of " + std::to_string(i);
    out.reason = Reason::loneName;
    registration.points.push_back(out);
  }
  std::istringstream text(summaryText(registration, metres));
  for (std::string line; std::getline(text, line);) EXPECT_LE(line.size(), 100u) << line;
}

}  // namespace
}  // namespace tiepoint::workbench
