// A program that runs beside the test, with pipes to its standard input and from its standard output.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <string>
#include <vector>

#include "workbench/temporary_folder.h"

class ChildProcess {
 public:
  /// The program by its path, with its arguments.
  explicit ChildProcess(std::vector<std::string> command) {
    // A child that has gone shows as a failed write.
    std::signal(SIGPIPE, SIG_IGN);
    int in[2];
    int out[2];
    if (pipe(in) != 0 || pipe(out) != 0) throw std::runtime_error("no pipe");
    for (int end : {in[1], out[0]}) fcntl(end, F_SETFD, FD_CLOEXEC);
    child = fork();
    if (child == 0) become(std::move(command), in[0], out[1]);
    close(in[0]);
    close(out[1]);
    input = in[1];
    output = out[0];
  }
  ~ChildProcess() {
    closeInput();
    closeOutput();
    if (child > 0) kill(child, SIGKILL), waitpid(child, nullptr, 0);
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// False when the child no longer reads.
  bool send(const std::string& text) const {
    for (std::size_t sent = 0; sent < text.size();) {
      const ssize_t written = write(input, text.data() + sent, text.size() - sent);
      if (written <= 0) return false;
      sent += static_cast<std::size_t>(written);
    }
    return true;
  }

  /// The next line without its line feed; what there is when the output ends or nothing comes for
  /// ten seconds.
  std::string receiveLine() {
    while (buffered.find('\n') == std::string::npos && readMore()) {
    }
    const std::size_t end = buffered.find('\n');
    std::string line = buffered.substr(0, end);
    buffered.erase(0, end == std::string::npos ? end : end + 1);
    return line;
  }
  /// All that comes until the output ends.
  std::string receiveAll() {
    while (readMore()) {
    }
    return std::exchange(buffered, {});
  }

  void closeInput() { closeOnce(input); }
  void closeOutput() { closeOnce(output); }

  /// The exit status; minus the signal's number for a child that a signal has ended.
  int wait() {
    int status = 0;
    waitpid(child, &status, 0);
    child = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }
  /// What it has written on standard error so far.
  std::string errors() const { return readBytes(folder.file("errors")); }

 private:
  [[noreturn]] void become(std::vector<std::string> command, int in, int out) const {
    const int errorFile = open(folder.file("errors").c_str(), O_WRONLY | O_CREAT, 0600);
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(errorFile, STDERR_FILENO);
    for (int end : {in, out, errorFile}) close(end);
    std::signal(SIGPIPE, SIG_DFL);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& argument : command) arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    execv(arguments[0], arguments.data());
    _exit(127);
  }

  bool readMore() {
    constexpr int patienceMilliseconds = 10000;
    pollfd waiting{output, POLLIN, 0};
    if (poll(&waiting, 1, patienceMilliseconds) <= 0) return false;
    char bytes[65536];
    const ssize_t count = read(output, bytes, sizeof bytes);
    if (count <= 0) return false;
    buffered.append(bytes, static_cast<std::size_t>(count));
    return true;
  }

  static void closeOnce(int& end) {
    if (end >= 0) close(end);
    end = -1;
  }

  TemporaryFolder folder;
  pid_t child = -1;
  int input = -1;
  int output = -1;
  std::string buffered;
};
