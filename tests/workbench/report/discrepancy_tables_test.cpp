#include "workbench/report/discrepancy_tables.h"

#include <gtest/gtest.h>

#include <sstream>

#include "workbench/report/registrations.h"

namespace tiepoint::workbench {
namespace {

const LengthFormat metres(Unit::metre);
const TableOptions plain;
const TableOptions withAxes{false, true};

Registered& registeredOf(Registration& registration) { return std::get<Registered>(registration.outcome); }

TEST(DiscrepanciesByPoint, ListThePointsThatHaveOne) {
  EXPECT_EQ(discrepanciesByPoint(twoStations(), metres, plain),
            "Discrepancies (mm): from the registered point to its merged target; at base: to the base's own\n"
            "  measurement\n"
            "  group  point  discrepancy  at base\n"
            "  A      T1           2.000    3.000  <- largest\n"
            "  A      T2           0.000        -\n");
}

TEST(DiscrepanciesByPoint, ShowTheAxesBesideTheLength) {
  EXPECT_EQ(discrepanciesByPoint(twoStations(), metres, withAxes),
            "Discrepancies (mm): from the registered point to its merged target; dx, dy, dz: the point minus the\n"
            "  target, in the common system; at base: to the base's own measurement\n"
            "  group  point  discrepancy     dx      dy     dz  at base\n"
            "  A      T1           2.000  1.200  -1.600  0.000    3.000  <- largest\n"
            "  A      T2           0.000  0.000   0.000  0.000        -\n");
}

TEST(DiscrepanciesByPoint, ShowNoAxesOfAPointWhoseTargetIsntTold) {
  Registration registration = twoStations();
  registration.points[1].residual.reset();
  registeredOf(registration).atBase.reset();
  EXPECT_EQ(discrepanciesByPoint(registration, LengthFormat(Unit::unknown), withAxes),
            "Discrepancies (drawing units): from the registered point to its merged target; dx, dy, dz: the point\n"
            "  minus the target, in the common system\n"
            "  group  point  discrepancy        dx        dy        dz\n"
            "  A      T1        0.002000         -         -         -  <- largest\n"
            "  A      T2        0.000000  0.000000  0.000000  0.000000\n");
}

TEST(DiscrepanciesByPoint, OfAnAdjustmentAlwaysShowTheAxes) {
  Registration registration = twoStations();
  registration.method = RegistrationMethod::adjust;
  EXPECT_EQ(discrepanciesByPoint(registration, metres, plain),
            "Discrepancies (mm): from the registered point to its adjusted target; dx, dy, dz: the point minus\n"
            "  the target, in the common system; at base: to the base's own measurement\n"
            "  group  point  discrepancy     dx      dy     dz  at base\n"
            "  A      T1           2.000  1.200  -1.600  0.000    3.000  <- largest\n"
            "  A      T2           0.000  0.000   0.000  0.000        -\n");
}

TEST(DiscrepanciesByPoint, SayHowFarTheLargestIsBeyondTheMedian) {
  Registration registration = twoStations();
  registeredOf(registration).outlier = Outlier{1, 22.84};
  EXPECT_NE(discrepanciesByPoint(registration, metres, plain).find("  <- largest, 22.8 times the median\n"),
            std::string::npos);
  // The axes take the room.
  EXPECT_NE(discrepanciesByPoint(registration, metres, withAxes).find("  <- largest\n"), std::string::npos);
}

TEST(DiscrepanciesByPoint, HaveNoMarkWhereAllAreRounding) {
  Registration registration = twoStations();
  registeredOf(registration).largest.reset();
  EXPECT_EQ(discrepanciesByPoint(registration, metres, plain).find("<-"), std::string::npos);
}

TEST(DiscrepanciesByPoint, PrintNoControlCharacterOfAName) {
  Registration registration = twoStations();
  registration.points[1].name = "T\x1b[2J";
  registration.groups[1].name = "A\n";
  EXPECT_NE(discrepanciesByPoint(registration, metres, plain).find("  A?     T?[2J        2.000"), std::string::npos);
}

/// So many points, kilometres off in every direction, of names of eight characters.
Registration badlyOff(std::size_t count) {
  Registration registration = twoStations();
  registration.groups[1].name = "station1";
  for (std::size_t i = 0; i < count; ++i) {
    PointOutcome point = registration.points[1];
    point.name = "target" + std::to_string(100 + i).substr(1);
    point.discrepancy = 2000.5 + static_cast<double>(i);
    point.residual = OdGeVector3d(-1200.25, -1600.75, -1200.125);
    point.atBase = 4000.5;
    registration.points.push_back(point);
  }
  registeredOf(registration).largest = registration.points.size() - 1;
  registeredOf(registration).outlier = Outlier{registration.points.size() - 1, 123456.7};
  return registration;
}

TEST(DiscrepanciesByPoint, FitIntoAHundredColumnsWithTheAxesToo) {
  for (const Unit unit : {Unit::metre, Unit::millimetre, Unit::unknown}) {
    for (const std::size_t count : {3u, 250u}) {
      std::istringstream text(discrepanciesByPoint(badlyOff(count), LengthFormat(unit), withAxes));
      for (std::string line; std::getline(text, line);) EXPECT_LE(line.size(), 100u) << line;
    }
  }
}

TEST(DiscrepanciesByPoint, ShowTheFortyWorstOfMoreThanTwoHundredWithTheirAxes) {
  const std::string text = discrepanciesByPoint(badlyOff(199), metres, withAxes);
  EXPECT_NE(text.find("\n  station1  target98  2198500.000  -1200250.000  -1600750.000  -1200125.000  4000500.000  "
                      "<- largest\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("\n  and 161 more points; --all-points shows them\n"), std::string::npos);
  const std::string all = discrepanciesByPoint(badlyOff(199), metres, {true, true});
  EXPECT_EQ(all.find("--all-points"), std::string::npos);
  // The best of them.
  EXPECT_EQ(text.find("  T2  "), std::string::npos);
  EXPECT_NE(all.find("  T2  "), std::string::npos);
}

TEST(DiscrepanciesByGroup, HaveMeanRmsAndLargest) {
  EXPECT_EQ(discrepanciesByGroup(twoStations(), metres, plain),
            "Discrepancies by group (mm)\n"
            "  group  points   mean    RMS  largest  at base  RMS at base\n"
            "  A           2  1.000  1.414    2.000        1        3.000\n"
            "  all         2  1.000  1.414    2.000        1        3.000\n");
}

TEST(DiscrepanciesByGroup, HaveNoColumnsOfABaseThatShareNothing) {
  Registration registration = twoStations();
  registeredOf(registration).atBase.reset();
  EXPECT_EQ(discrepanciesByGroup(registration, LengthFormat(Unit::unknown), plain),
            "Discrepancies by group (drawing units)\n"
            "  group  points      mean       RMS   largest\n"
            "  A           2  0.001000  0.001414  0.002000\n"
            "  all         2  0.001000  0.001414  0.002000\n");
}

TEST(DiscrepanciesByGroup, HaveADashForAGroupThatTheBaseSharesNothingWith) {
  Registration registration = twoStations();
  registration.groups[1].atBase.reset();
  EXPECT_NE(discrepanciesByGroup(registration, metres, plain)
                .find("\n  A           2  1.000  1.414    2.000        -            -\n"),
            std::string::npos);
}

TEST(ProtocolText, NamesTheFiguresAndWhatTheyAreOver) {
  EXPECT_EQ(protocolText(twoStations(), metres),
            "For the protocol: mean 1.000 mm, RMS 1.414 mm, largest 2.000 mm over 2 points in 1 station\n"
            "RMS at the base: 3.000 mm over 1 point\n");
}

TEST(ProtocolText, IsInDrawingUnitsWhenTheUnitIsUnknown) {
  Registration registration = twoStations();
  registeredOf(registration).atBase.reset();
  registeredOf(registration).protocol = ProtocolFigures{Rms{57, 0.0024, 0.005, 0.0021}, 6};
  EXPECT_EQ(protocolText(registration, LengthFormat(Unit::unknown)),
            "For the protocol: mean 0.002100 drawing units, RMS 0.002400 drawing units, largest 0.005000 drawing\n"
            "  units over 57 points in 6 stations\n");
}

TEST(ProtocolText, QuotesNothingOfIterationsThatHaventConverged) {
  Registration registration = twoStations();
  registeredOf(registration).protocol.reset();
  registeredOf(registration).atBase.reset();
  EXPECT_EQ(protocolText(registration, metres), "For the protocol: no figures, as the iterations haven't converged\n");
}

TEST(ProtocolText, IsEmptyWithoutDiscrepancies) {
  Registration registration = twoStations();
  registration.outcome = Registered();
  EXPECT_EQ(protocolText(registration, metres), "");
}

TEST(BadnessOf, TakesGroupsWithoutAFigureForTheWorst) {
  const std::vector<double> badness = badnessOf(twoStations().groups);
  ASSERT_EQ(badness.size(), 2u);
  EXPECT_GT(badness[0], 1e300);
  EXPECT_EQ(badness[1], 0.0014142);
}

}  // namespace
}  // namespace tiepoint::workbench
