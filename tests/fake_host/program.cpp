#include "fake_host/program.h"

#include <array>
#include <cstdio>
#include <sstream>
#include <stdexcept>

#ifdef _WIN32
#define OPEN_PIPE _popen
#define CLOSE_PIPE _pclose
#else
#include <sys/wait.h>
#define OPEN_PIPE popen
#define CLOSE_PIPE pclose
#endif

namespace tiepoint::testing {
namespace {

int exitCodeOf(int status) {
#ifdef _WIN32
  return status;
#else
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
}

std::string readAll(std::FILE* pipe) {
  std::string text;
  std::array<char, 4096> block{};
  while (const std::size_t length = std::fread(block.data(), 1, block.size(), pipe)) text.append(block.data(), length);
  return text;
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

}  // namespace

ProgramResult runProgram(const std::string& path, const std::vector<std::string>& arguments) {
  std::string command = "\"" + path + "\"";
  for (const std::string& argument : arguments) command += " \"" + argument + "\"";
#ifdef _WIN32
  // The command processor takes away one pair of quotation marks around the whole.
  command = "\"" + command + "\"";
#endif
  std::FILE* pipe = OPEN_PIPE(command.c_str(), "r");
  if (!pipe) throw std::runtime_error("cannot run " + path);
  ProgramResult result;
  result.lines = linesOf(readAll(pipe));
  result.exitCode = exitCodeOf(CLOSE_PIPE(pipe));
  return result;
}

std::string fakeHostProgram(const std::string& name) {
  return std::string(FAKE_HOST_PROGRAMS) + "/" + name + FAKE_HOST_PROGRAM_SUFFIX;
}

std::string fakeHostLibrary(const std::string& folder, const std::string& name) {
  return std::string(FAKE_HOST_LIBRARIES) + "/" + folder + "/" + name + FAKE_HOST_LIBRARY_SUFFIX;
}

}  // namespace tiepoint::testing
