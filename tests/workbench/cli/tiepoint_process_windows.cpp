#include <windows.h>

#include <algorithm>
#include <filesystem>

#include "support/windows_process.h"
#include "workbench/cli/tiepoint_process.h"
#include "workbench/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using tiepoint::testing::commandLine;
using tiepoint::testing::InheritedFile;

/// What was written in text mode, as text.
std::string textOf(const std::string& file) {
  std::string text = readBytes(file);
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  return text;
}

int runToItsEnd(std::wstring line, const fs::path& program, const fs::path& folder, STARTUPINFOW& streams) {
  PROCESS_INFORMATION child{};
  if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, folder.c_str(), &streams,
                      &child)) {
    return notStarted;
  }
  WaitForSingleObject(child.hProcess, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(child.hProcess, &status);
  CloseHandle(child.hThread);
  CloseHandle(child.hProcess);
  return static_cast<int>(status);
}

}  // namespace

ProcessResult runProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const ProcessSetup& setup) {
  ProcessResult result;
  if (setup.withoutRights) result.status = notStarted;
  if (!setup.smallDisk.empty()) result.status = noSmallDisk;
  if (result.status != -1) return result;

  const TemporaryFolder folder;
  writeBytes(folder.file("in"), setup.input);
  {
    const InheritedFile in(folder.path() / "in", GENERIC_READ, OPEN_EXISTING);
    const InheritedFile out(folder.path() / "out", GENERIC_WRITE, CREATE_ALWAYS);
    const InheritedFile err(folder.path() / "err", GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOW streams{};
    streams.cb = sizeof streams;
    streams.dwFlags = STARTF_USESTDHANDLES;
    streams.hStdInput = in.get();
    streams.hStdOutput = out.get();
    streams.hStdError = err.get();
    const fs::path file = fs::absolute(fs::u8path(program)).make_preferred();
    result.status = runToItsEnd(commandLine(file, arguments), file, fs::absolute(fs::u8path(setup.folder)), streams);
  }
  result.out = textOf(folder.file("out"));
  result.err = textOf(folder.file("err"));
  return result;
}

ProcessResult runTiepoint(const std::vector<std::string>& arguments, const ProcessSetup& setup) {
  return runProgram(TIEPOINT_PROGRAM, arguments, setup);
}
