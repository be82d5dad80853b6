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

double fromArrow(const PagePoint& letter, const PagePoint& end) {
  double nearest = 1e9;
  for (double share = 0.0; share <= 1.0; share += 0.01) {
    nearest = std::min(nearest, std::hypot(letter.x - share * end.x, letter.y - share * end.y));
  }
  return nearest;
}

TEST(AxisLetters, StandBeyondTheEndsOfArrowsThatAreApart) {
  const auto points = letterPositions({{22, 0}, {0, -11}});
  EXPECT_NEAR(points[0].x, 29.0, rounding);
  EXPECT_NEAR(points[0].y, 0.0, rounding);
  EXPECT_NEAR(points[1].x, 0.0, rounding);
  EXPECT_NEAR(points[1].y, -18.0, rounding);
}

TEST(AxisLetters, AShortArrowsLetterStandsBesideALongOne) {
  const auto points = letterPositions({{5, 0.5}, {22, 0}});
  EXPECT_GE(fromArrow(points[0], {22, 0}), touching);
  EXPECT_NEAR(points[1].x, 29.0, rounding);
}

TEST(AxisLetters, ArrowsThatPointTheSameWayHaveTheirLettersOnEitherSide) {
  const auto points = letterPositions({{20, 1}, {20, -1}});
  EXPECT_GT(points[0].y, 0.0);
  EXPECT_LT(points[1].y, 0.0);
  EXPECT_GE(std::hypot(points[0].x - points[1].x, points[0].y - points[1].y), 2 * touching);
}

TEST(AxisLetters, StayOffEachOtherAndOffTheArrowsFromWhereverTheAxesAreSeen) {
  for (int turn = 0; turn < 360; turn += 3) {
    for (int rise = -90; rise <= 90; rise += 3) {
      const double a = turn * 0.017453292519943295, b = rise * 0.017453292519943295;
      std::vector<PagePoint> ends;
      for (const PagePoint& end :
           {PagePoint{22 * std::cos(a), 22 * std::sin(a) * std::sin(b)},
            PagePoint{-22 * std::sin(a), 22 * std::cos(a) * std::sin(b)}, PagePoint{0, -22 * std::cos(b)}}) {
        if (std::hypot(end.x, end.y) > 2.64) ends.push_back(end);
      }
      const auto points = letterPositions(ends);
      for (std::size_t i = 0; i < points.size(); ++i) {
        for (std::size_t j = 0; j < points.size(); ++j) {
          if (i == j) continue;
          EXPECT_GE(fromArrow(points[i], ends[j]), touching) << turn << ' ' << rise;
          EXPECT_GE(std::hypot(points[i].x - points[j].x, points[i].y - points[j].y), 2 * touching)
              << turn << ' ' << rise;
        }
      }
    }
  }
}

}  // namespace
}  // namespace tiepoint::workbench::picture
