#include "workbench/picture/axis_letters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace tiepoint::workbench::picture {
namespace {

/// Half a letter and the half width of an arrow's head.
constexpr double touching = 5.0;
/// Of a sine.
constexpr double rounding = 1e-12;

double fromArrow(const Spot& letter, const Spot& end) {
  double nearest = 1e9;
  for (double share = 0.0; share <= 1.0; share += 0.01) {
    nearest = std::min(nearest, std::hypot(letter.x - share * end.x, letter.y - share * end.y));
  }
  return nearest;
}

TEST(AxisLetters, StandBeyondTheEndsOfArrowsThatAreApart) {
  const auto spots = letterSpots({{22, 0}, {0, -11}});
  EXPECT_NEAR(spots[0].x, 29.0, rounding);
  EXPECT_NEAR(spots[0].y, 0.0, rounding);
  EXPECT_NEAR(spots[1].x, 0.0, rounding);
  EXPECT_NEAR(spots[1].y, -18.0, rounding);
}

TEST(AxisLetters, AShortArrowsLetterStandsBesideALongOne) {
  const auto spots = letterSpots({{5, 0.5}, {22, 0}});
  EXPECT_GE(fromArrow(spots[0], {22, 0}), touching);
  EXPECT_NEAR(spots[1].x, 29.0, rounding);
}

TEST(AxisLetters, ArrowsThatPointTheSameWayHaveTheirLettersOnEitherSide) {
  const auto spots = letterSpots({{20, 1}, {20, -1}});
  EXPECT_GT(spots[0].y, 0.0);
  EXPECT_LT(spots[1].y, 0.0);
  EXPECT_GE(std::hypot(spots[0].x - spots[1].x, spots[0].y - spots[1].y), 2 * touching);
}

TEST(AxisLetters, StayOffEachOtherAndOffTheArrowsFromWhereverTheAxesAreSeen) {
  for (int turn = 0; turn < 360; turn += 3) {
    for (int rise = -90; rise <= 90; rise += 3) {
      const double a = turn * 0.017453292519943295, b = rise * 0.017453292519943295;
      std::vector<Spot> ends;
      for (const Spot& end : {Spot{22 * std::cos(a), 22 * std::sin(a) * std::sin(b)},
                              Spot{-22 * std::sin(a), 22 * std::cos(a) * std::sin(b)}, Spot{0, -22 * std::cos(b)}}) {
        if (std::hypot(end.x, end.y) > 2.64) ends.push_back(end);
      }
      const auto spots = letterSpots(ends);
      for (std::size_t i = 0; i < spots.size(); ++i) {
        for (std::size_t j = 0; j < spots.size(); ++j) {
          if (i == j) continue;
          EXPECT_GE(fromArrow(spots[i], ends[j]), touching) << turn << ' ' << rise;
          EXPECT_GE(std::hypot(spots[i].x - spots[j].x, spots[i].y - spots[j].y), 2 * touching) << turn << ' ' << rise;
        }
      }
    }
  }
}

}  // namespace
}  // namespace tiepoint::workbench::picture
