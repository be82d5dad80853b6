#include "workbench/cli/spinner.h"

#include <gmock/gmock.h>

#ifndef _WIN32
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>
#endif

namespace tiepoint::workbench::cli {
namespace {

using namespace std::chrono_literals;
using testing::EndsWith;
using testing::StartsWith;

TEST(SpinnerLine, TellsTheTimeInSecondsThenInMinutes) {
  EXPECT_EQ(spinnerLine(0, "turning", 3s), "| turning, 3 s");
  EXPECT_EQ(spinnerLine(1, "turning", 59s), "/ turning, 59 s");
  EXPECT_EQ(spinnerLine(2, "turning", 125s), "- turning, 2 min 05 s");
  EXPECT_EQ(spinnerLine(3, "turning", 0s), "\\ turning, 0 s");
  EXPECT_EQ(spinnerLine(4, "turning", 0s), "| turning, 0 s");
}

/// Longer than the moment before the first line.
constexpr auto longEnough = 450ms;

TEST(SpinnerWithoutATerminal, WritesNothing) {
  std::FILE* const file = std::tmpfile();
  ASSERT_NE(file, nullptr);
  {
    const Spinner spinner(file, "turning", false);
    std::this_thread::sleep_for(longEnough);
  }
  EXPECT_EQ(std::ftell(file), 0);
  std::fclose(file);
}

#ifndef _WIN32

/// A terminal that nobody sits at.
class Terminal : public testing::Test {
 protected:
  void SetUp() override {
    keeper = posix_openpt(O_RDWR | O_NOCTTY);
    if (keeper < 0 || grantpt(keeper) != 0 || unlockpt(keeper) != 0) GTEST_SKIP() << "no terminal to be had";
    const int user = open(ptsname(keeper), O_RDWR | O_NOCTTY);
    ASSERT_GE(user, 0);
    stream = fdopen(user, "w");
    fcntl(keeper, F_SETFL, O_NONBLOCK);
  }
  void TearDown() override {
    if (stream) std::fclose(stream);
    if (keeper >= 0) close(keeper);
  }
  std::string seen() const {
    std::string text(4096, '\0');
    const ssize_t length = ::read(keeper, text.data(), text.size());
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return text;
  }

  int keeper = -1;
  std::FILE* stream = nullptr;
};

TEST_F(Terminal, ShowsTheSpinnerAndAnEmptyLineAfterIt) {
  {
    const Spinner spinner(stream, "turning", false);
    std::this_thread::sleep_for(longEnough);
  }
  const std::string text = seen();
  EXPECT_THAT(text, StartsWith("\r| turning, 0 s"));
  EXPECT_THAT(text, EndsWith("\r              \r"));
}

TEST_F(Terminal, StaysEmptyWhenToldToBeQuiet) {
  {
    const Spinner spinner(stream, "turning", true);
    std::this_thread::sleep_for(longEnough);
  }
  EXPECT_EQ(seen(), "");
}

TEST_F(Terminal, StaysEmptyWhenTheWorkIsDoneAtOnce) {
  { const Spinner spinner(stream, "turning", false); }
  EXPECT_EQ(seen(), "");
}

#endif

}  // namespace
}  // namespace tiepoint::workbench::cli
