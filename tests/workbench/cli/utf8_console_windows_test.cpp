#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>

#include "workbench/cli/utf8_console.h"

namespace tiepoint::workbench::cli {
namespace {

TEST(Utf8Console, IsUtf8WhileItStandsAndWhatItWasAfterwards) {
  // Whoever runs this in a console says so, lest it be skipped unnoticed.
  if (GetConsoleOutputCP() == 0) {
    ASSERT_EQ(std::getenv("TIEPOINT_TEST_HAS_CONSOLE"), nullptr);
    GTEST_SKIP() << "no console";
  }
  constexpr UINT codePageOfOldConsoles = 437;
  ASSERT_TRUE(SetConsoleOutputCP(codePageOfOldConsoles));
  {
    const Utf8Console console;
    EXPECT_EQ(GetConsoleOutputCP(), static_cast<UINT>(CP_UTF8));
  }
  EXPECT_EQ(GetConsoleOutputCP(), codePageOfOldConsoles);
}

}  // namespace
}  // namespace tiepoint::workbench::cli
