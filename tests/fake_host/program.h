// Programs that a test runs.
#pragma once

#include <string>
#include <vector>

namespace tiepoint::testing {

struct ProgramResult {
  int exitCode = -1;
  /// Standard output line by line.
  std::vector<std::string> lines;
};

/// Runs a program to its end; standard error goes where the test's own goes.
ProgramResult runProgram(const std::string& path, const std::vector<std::string>& arguments);

/// The path of a host program of the tests.
std::string fakeHostProgram(const std::string& name);
/// The path of a host library of the tests.
std::string fakeHostLibrary(const std::string& folder, const std::string& name);

}  // namespace tiepoint::testing
