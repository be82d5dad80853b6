// Pictures compared as a person would compare them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tiepoint::testing {

/// Red, green and blue of each pixel, row after row.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<unsigned char> values;
};

/// Throws std::runtime_error for bytes that are no PNG.
Pixels pixelsOf(const std::string& png);

/// Every block of `factor` x `factor` pixels becomes one of their mean colour.
Pixels reduced(const Pixels& pixels, int factor);

/// How far two pictures are apart, of 255.
struct Difference {
  double mean = 0.0;
  /// The share of pixels that a person could tell apart.
  double visibleShare = 0.0;
};
Difference differenceOf(const Pixels& a, const Pixels& b);

/// Nobody sees a difference between the picture, reduced by the factor, and the one that is kept under
/// that name. If one does, the new one is left in the build folder for a look.
::testing::AssertionResult looksAsExpected(const std::string& png, const std::string& name, int factor);

}  // namespace tiepoint::testing
