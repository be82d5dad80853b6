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
  /// What has come so far.
  std::string seen() {
    char bytes[4096];
    for (ssize_t length = 0; (length = ::read(keeper, bytes, sizeof bytes)) > 0;) {
      text.append(bytes, static_cast<std::size_t>(length));
    }
    return text;
  }
  /// The same once it ends so. What is written comes when the system gets round to it.
  std::string seenUntil(const std::string& end) {
    const auto patience = std::chrono::steady_clock::now() + 20s;
    const auto isThere = [&] {
      seen();
      return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
    };
    while (!isThere() && std::chrono::steady_clock::now() < patience) std::this_thread::sleep_for(10ms);
    return text;
  }

  std::string text;
  int keeper = -1;
  std::FILE* stream = nullptr;
};

TEST_F(Terminal, ShowsTheSpinnerAndAnEmptyLineAfterIt) {
  {
    const Spinner spinner(stream, "turning", false);
    EXPECT_THAT(seenUntil(" s"), StartsWith("\r| turning, "));
  }
  const std::string emptyLine = "\r              \r";
  EXPECT_THAT(seenUntil(emptyLine), EndsWith(emptyLine));
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
