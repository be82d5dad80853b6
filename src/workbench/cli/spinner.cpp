#include "workbench/cli/spinner.h"

#include <fmt/format.h>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

#include <array>

namespace tiepoint::workbench::cli {

using namespace std::chrono_literals;

namespace {

/// What is done sooner needs no sign of life.
constexpr auto beforeFirst = 300ms;
constexpr auto betweenSteps = 150ms;
constexpr std::array<char, 4> marks{'|', '/', '-', '\\'};

bool isTerminal(std::FILE* stream) {
#ifdef _WIN32
  return _isatty(_fileno(stream)) != 0;
#else
  return isatty(fileno(stream)) != 0;
#endif
}

}  // namespace

std::string spinnerLine(std::size_t step, const std::string& words, std::chrono::seconds elapsed) {
  const auto seconds = elapsed.count();
  const std::string time =
      seconds < 60 ? fmt::format("{} s", seconds) : fmt::format("{} min {:02} s", seconds / 60, seconds % 60);
  return fmt::format("{} {}, {}", marks[step % marks.size()], words, time);
}

Spinner::Spinner(std::FILE* stream_, std::string words_, bool quiet) : stream(stream_), words(std::move(words_)) {
  if (!quiet && isTerminal(stream)) thread = std::thread([this] { turn(); });
}

Spinner::~Spinner() {
  if (!thread.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex);
    isOver = true;
  }
  ended.notify_one();
  thread.join();
}

void Spinner::turn() {
  if (!pauseFor(beforeFirst)) return;
  std::size_t step = 0;
  do {
    show(step++);
  } while (pauseFor(betweenSteps));
  clear();
}

bool Spinner::pauseFor(std::chrono::milliseconds time) {
  std::unique_lock<std::mutex> lock(mutex);
  return !ended.wait_for(lock, time, [this] { return isOver; });
}

void Spinner::show(std::size_t step) {
  const auto elapsed = std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start);
  const std::string line = spinnerLine(step, words, elapsed);
  shownLength = line.size();
  std::fputs(("\r" + line).c_str(), stream);
  std::fflush(stream);
}

void Spinner::clear() {
  std::fputs(("\r" + std::string(shownLength, ' ') + "\r").c_str(), stream);
  std::fflush(stream);
}

}  // namespace tiepoint::workbench::cli
