#include "fake_host/program.h"

#include <array>
#include <cstdio>
#include <sstream>
#include <stdexcept>

#ifdef _WIN32
#include "support/windows_process.h"
#else
#include <sys/wait.h>
#endif

namespace tiepoint::testing {
namespace {

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

}  // namespace

#ifdef _WIN32

ProgramResult runProgram(const std::string& path, const std::vector<std::string>& arguments) {
  const FinishedProcess finished = runProcess(path, arguments);
  if (!finished.started) throw std::runtime_error("cannot run " + path);
  std::fputs(finished.err.c_str(), stderr);
  return {finished.status, linesOf(finished.out)};
}

#else

ProgramResult runProgram(const std::string& path, const std::vector<std::string>& arguments) {
  std::string command = "\"" + path + "\"";
  for (const std::string& argument : arguments) command += " \"" + argument + "\"";
  std::FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) throw std::runtime_error("cannot run " + path);
  ProgramResult result;
  std::string text;
  std::array<char, 4096> block{};
  while (const std::size_t length = std::fread(block.data(), 1, block.size(), pipe)) text.append(block.data(), length);
  result.lines = linesOf(text);
  const int status = pclose(pipe);
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

#endif

std::string fakeHostProgram(const std::string& name) {
  return std::string(FAKE_HOST_PROGRAMS) + "/" + name + FAKE_HOST_PROGRAM_SUFFIX;
}

std::string fakeHostLibrary(const std::string& folder, const std::string& name) {
  return std::string(FAKE_HOST_LIBRARIES) + "/" + folder + "/" + name + FAKE_HOST_LIBRARY_SUFFIX;
}

}  // namespace tiepoint::testing
