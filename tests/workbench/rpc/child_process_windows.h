// A program that runs beside the test, with pipes to its standard input and from its standard output.
#pragma once

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/windows_process.h"
#include "workbench/temporary_folder.h"

class ChildProcess {
 public:
  /// The program by its path, with its arguments.
  explicit ChildProcess(const std::vector<std::string>& command) {
    const Pipe in(keepWriter);
    const Pipe out(keepReader);
    {
      const tiepoint::testing::InheritedFile errorFile(folder.path() / "errors", GENERIC_WRITE, CREATE_ALWAYS);
      STARTUPINFOW streams{};
      streams.cb = sizeof streams;
      streams.dwFlags = STARTF_USESTDHANDLES;
      streams.hStdInput = in.reader;
      streams.hStdOutput = out.writer;
      streams.hStdError = errorFile.get();
      start(command, streams);
    }
    CloseHandle(in.reader);
    CloseHandle(out.writer);
    input = in.writer;
    output = out.reader;
  }
  ~ChildProcess() {
    closeInput();
    closeOutput();
    if (child) TerminateProcess(child, 1), wait();
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// False when the child no longer reads.
  bool send(const std::string& text) const {
    DWORD written = 0;
    return WriteFile(input, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) && written == text.size();
  }

  /// The next line without its end; what there is when the output ends.
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

  /// The exit status.
  int wait() { return tiepoint::testing::exitStatus(std::exchange(child, nullptr)); }
  /// What it has written on standard error so far.
  std::string errors() const { return withoutReturns(readBytes(folder.file("errors"))); }

 private:
  enum KeptEnd { keepReader, keepWriter };

  /// The kept end isn't inherited: the child would hold its own pipe open.
  struct Pipe {
    explicit Pipe(KeptEnd kept) {
      SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
      if (!CreatePipe(&reader, &writer, &inherited, 0)) throw std::runtime_error("no pipe");
      SetHandleInformation(kept == keepReader ? reader : writer, HANDLE_FLAG_INHERIT, 0);
    }
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
  };

  void start(const std::vector<std::string>& command, STARTUPINFOW& streams) {
    const std::filesystem::path file = std::filesystem::absolute(std::filesystem::u8path(command[0])).make_preferred();
    child = tiepoint::testing::startProcess(file, {command.begin() + 1, command.end()}, {}, streams);
    if (!child) throw std::runtime_error("the program can't be started");
  }

  bool readMore() {
    char bytes[65536];
    DWORD count = 0;
    if (!ReadFile(output, bytes, sizeof bytes, &count, nullptr) || count == 0) return false;
    buffered += withoutReturns(std::string(bytes, count));
    return true;
  }

  /// Lines end in both characters there, as standard output is in text mode.
  static std::string withoutReturns(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
  }

  static void closeOnce(HANDLE& handle) {
    if (handle) CloseHandle(handle);
    handle = nullptr;
  }

  TemporaryFolder folder;
  HANDLE child = nullptr;
  HANDLE input = nullptr;
  HANDLE output = nullptr;
  std::string buffered;
};
