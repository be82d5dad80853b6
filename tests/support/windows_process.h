// What starting a process takes on Windows.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "workbench/temporary_folder.h"

namespace tiepoint::testing {

/// A file that the child inherits as one of its standard streams.
class InheritedFile {
 public:
  InheritedFile(const std::filesystem::path& path, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    handle = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) throw std::runtime_error("no file for a standard stream: " + path.u8string());
  }
  ~InheritedFile() { CloseHandle(handle); }
  InheritedFile(const InheritedFile&) = delete;
  InheritedFile& operator=(const InheritedFile&) = delete;

  HANDLE get() const { return handle; }

 private:
  HANDLE handle;
};

/// As the C library of the child takes it apart: backslashes count only before quotation marks.
inline std::wstring quoted(const std::wstring& argument) {
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t character : argument) {
    if (character == L'"') text.append(backslashes + 1, L'\\');
    backslashes = character == L'\\' ? backslashes + 1 : 0;
    text += character;
  }
  return text.append(backslashes, L'\\') + L'"';
}

inline std::wstring commandLine(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
  std::wstring line = quoted(program.wstring());
  for (const std::string& argument : arguments) line += L' ' + quoted(std::filesystem::u8path(argument).wstring());
  return line;
}

struct FinishedProcess {
  bool started = false;
  int status = -1;
  /// Without the carriage returns of text mode.
  std::string out;
  std::string err;
};

inline std::string textModeFile(const std::string& file) {
  std::string text = readBytes(file);
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  return text;
}

/// Null when the process can't be started. On a busy machine wine now and then fails to, so that a
/// failure is the last of several.
inline HANDLE startProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                           const std::filesystem::path& folder, STARTUPINFOW& streams) {
  constexpr int attempts = 5;
  constexpr DWORD pauseMilliseconds = 200;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    std::wstring line = commandLine(program, arguments);
    PROCESS_INFORMATION process{};
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                       folder.empty() ? nullptr : folder.c_str(), &streams, &process)) {
      CloseHandle(process.hThread);
      return process.hProcess;
    }
    std::fprintf(stderr, "%s: error %lu at its start\n", program.u8string().c_str(), GetLastError());
    Sleep(pauseMilliseconds);
  }
  return nullptr;
}

/// Waits for the end.
inline int exitStatus(HANDLE process) {
  WaitForSingleObject(process, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(process, &status);
  CloseHandle(process);
  return static_cast<int>(status);
}

/// Runs a program to its end, with `input` on its standard input.
inline FinishedProcess runProcess(const std::string& program, const std::vector<std::string>& arguments,
                                  const std::string& input = {}, const std::string& folder = ".") {
  const TemporaryFolder files;
  writeBytes(files.file("in"), input);
  FinishedProcess finished;
  {
    const InheritedFile in(files.path() / "in", GENERIC_READ, OPEN_EXISTING);
    const InheritedFile out(files.path() / "out", GENERIC_WRITE, CREATE_ALWAYS);
    const InheritedFile err(files.path() / "err", GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOW streams{};
    streams.cb = sizeof streams;
    streams.dwFlags = STARTF_USESTDHANDLES;
    streams.hStdInput = in.get();
    streams.hStdOutput = out.get();
    streams.hStdError = err.get();
    const std::filesystem::path file = std::filesystem::absolute(std::filesystem::u8path(program)).make_preferred();
    const HANDLE process =
        startProcess(file, arguments, std::filesystem::absolute(std::filesystem::u8path(folder)), streams);
    finished.started = process != nullptr;
    if (process) finished.status = exitStatus(process);
  }
  finished.out = textModeFile(files.file("out"));
  finished.err = textModeFile(files.file("err"));
  return finished;
}

}  // namespace tiepoint::testing
