// A sign of life while something takes its time.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <string>
#include <thread>

namespace tiepoint::workbench::cli {

/// Turns on a terminal, with the time that has gone by, from a moment after it was made until it is
/// gone; then its line is empty again. Does nothing on a stream that is no terminal.
class Spinner {
 public:
  /// `quiet` keeps it from turning. `words` say what is being done.
  Spinner(std::FILE* stream, std::string words, bool quiet);
  ~Spinner();
  Spinner(const Spinner&) = delete;
  Spinner& operator=(const Spinner&) = delete;

 private:
  void turn();
  /// False when the work is done.
  bool pauseFor(std::chrono::milliseconds time);
  void show(std::size_t step);
  void clear();

  std::FILE* stream;
  std::string words;
  std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
  std::size_t shownLength = 0;
  std::mutex mutex;
  std::condition_variable ended;
  bool isOver = false;
  std::thread thread;
};

/// The line of one step, such as `| turning, 3 s` or `/ turning, 2 min 05 s`.
std::string spinnerLine(std::size_t step, const std::string& words, std::chrono::seconds elapsed);

}  // namespace tiepoint::workbench::cli
