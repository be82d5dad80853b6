#include "workbench/io/line_ends.h"

#include <gtest/gtest.h>

#include "support/platform.h"

namespace tiepoint::workbench {
namespace {

using tiepoint::testing::inTextMode;
using tiepoint::testing::onWindows;

TEST(LineEnds, AreThoseOfAStreamInTextMode) {
  EXPECT_EQ(withSystemLineEnds("a\nb\n\nc"), inTextMode("a\nb\n\nc"));
  EXPECT_EQ(withSystemLineEnds(""), "");
}

TEST(LineEnds, OfWindowsAreTwoCharacters) { EXPECT_EQ(withSystemLineEnds("\n").size(), onWindows ? 2u : 1u); }

}  // namespace
}  // namespace tiepoint::workbench
