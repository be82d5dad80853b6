// Pieces of a test that run in a process of their own.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>

/// A child that runs `body` and exits with its result. Ended when the object goes.
class ChildProcess {
 public:
  explicit ChildProcess(const std::function<int()>& body) : id(fork()) {
    if (id == 0) _exit(runIn(body));
  }
  ~ChildProcess() {
    if (id > 0) kill();
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  void kill() {
    ::kill(id, SIGKILL);
    wait();
  }
  /// What `body` has returned; -1 when the child was killed.
  int wait() {
    int status = 0;
    waitpid(id, &status, 0);
    id = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  static int runIn(const std::function<int()>& body) {
    int result = exceptionThrown;
    try {
      result = body();
    } catch (const std::exception& error) {
      std::fprintf(stderr, "in the child: %s\n", error.what());
    }
    std::fflush(nullptr);
    return result;
  }

  static constexpr int exceptionThrown = 99;
  pid_t id;
};

/// The child's result when it can't do what the test is about on this machine.
constexpr int notPossibleHere = 77;

/// Runs the expectations of `body` in a child; false when they aren't possible here.
inline bool holdsInChild(const std::function<int()>& body) {
  ChildProcess child([&] {
    const int result = body();
    return testing::Test::HasFailure() ? 1 : result;
  });
  const int result = child.wait();
  EXPECT_TRUE(result == 0 || result == notPossibleHere) << "the child has ended with " << result;
  return result != notPossibleHere;
}

/// Bytes from a child to its parent.
class Pipe {
 public:
  Pipe() {
    if (pipe(ends) != 0) throw std::runtime_error("pipe");
  }
  ~Pipe() {
    close(ends[0]);
    closeForWriting();
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  void send() const {
    if (write(ends[1], "x", 1) != 1) _exit(1);
  }
  /// Waits for one byte.
  void receive() const {
    char byte = 0;
    if (read(ends[0], &byte, 1) != 1) throw std::runtime_error("the child has sent nothing");
  }
  void closeForWriting() {
    if (ends[1] >= 0) close(ends[1]);
    ends[1] = -1;
  }
  /// How many bytes have come until the last writer closed the pipe.
  int countToTheEnd() {
    closeForWriting();
    int count = 0;
    char byte = 0;
    while (read(ends[0], &byte, 1) == 1) ++count;
    return count;
  }

 private:
  int ends[2] = {-1, -1};
};
