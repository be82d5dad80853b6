#include "workbench/report/adjustment_text.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

const LengthFormat metres(Unit::metre);

TEST(AdjustmentText, OfAFineSurveyIsTheVerdictAndTheStations) {
  EXPECT_EQ(adjustmentText(adjustedHall(), metres, {}),
            "No measurement is suspect: all 12 tests pass\n"
            "Global test passed: the residuals are 1.2 times as large as the given sigmas suggest (chance allows\n"
            "  0.6 to 1.4)\n"
            "No other poses fit as well as these\n"
            "Least sure: S2, whose origin has a standard deviation of 1.500 mm\n"
            "Softest: S3 and S2 (stiffness 0.012; 1 is firm)\n"
            "\n"
            "Stations (mm): standard deviations of the origin, of the rotation at 10 m and of the least certain\n"
            "  target; the detectable error of the least controlled target; redundant coordinates\n"
            "  group  origin  rotation  target  detectable  in  redundant\n"
            "  S1       base\n"
            "  S2      1.500     1.000   2.000       6.000  T1  6.0 of 12\n"
            "  S3      1.500     1.000   2.000       6.000  T1  6.0 of 12\n");
}

TEST(AdjustmentText, GoesOnWithWhatNeedsALookThenAdviceThenWhatWasAskedFor) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  resultOf(registration).carried.emplace_back();
  resultOf(registration).traces.emplace_back();
  const std::string text = adjustmentText(registration, metres, {});
  const std::size_t stations = text.find("\n\nStations (mm)");
  const std::size_t look = text.find("\n\nMeasurements that need a look");
  const std::size_t advice = text.find("\n\nMeasure T3 in S2 again");
  const std::size_t carried = text.find("\n\nCarried points");
  const std::size_t traces = text.find("\n\nEffect of T1 in S1");
  EXPECT_LT(stations, look);
  EXPECT_LT(look, advice);
  EXPECT_LT(advice, carried);
  EXPECT_LT(carried, traces);
  EXPECT_NE(traces, std::string::npos);
}

}  // namespace
}  // namespace tiepoint::workbench
