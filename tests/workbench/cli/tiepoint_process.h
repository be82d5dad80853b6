// The program, run as a user runs it.
#pragma once

#include <string>
#include <vector>

struct ProcessResult {
  int status = -1;
  std::string out;
  std::string err;
};

struct ProcessSetup {
  /// The working folder.
  std::string folder = ".";
  /// What stands on standard input.
  std::string input;
  /// A file for standard output instead of what `out` shows.
  std::string outFile;
  /// Runs as a user without rights when the test runs as root.
  bool withoutRights = false;
  /// The largest file that may be written, bytes; 0: any.
  unsigned long largestFile = 0;
  /// A folder on which a small file system is mounted, for this process alone, bytes; needs rights.
  std::string smallDisk;
  unsigned long smallDiskSize = 0;
};

/// The exit status when the program can't be started, and when the small disk can't be had.
inline constexpr int notStarted = 126;
inline constexpr int noSmallDisk = 125;

/// Runs the program to its end. A status above 128 is 128 and the number of the signal that ended it.
ProcessResult runTiepoint(const std::vector<std::string>& arguments, const ProcessSetup& setup = {});

/// Runs any program, by its path.
ProcessResult runProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const ProcessSetup& setup = {});
