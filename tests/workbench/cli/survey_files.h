// Small surveys for the tests of the program.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/platform.h"
#include "workbench/cli/tiepoint_process.h"
#include "workbench/temporary_folder.h"

/// Four targets that lie on no plane, as the base has them.
inline constexpr const char* baseLines = "P1 0 0 0\nP2 10 0 0\nP3 0 10 0\nP4 0 0 10\n";
/// The same targets from a station that is shifted by (100, 200, 300).
inline constexpr const char* shiftedLines = "P1 100 200 300\nP2 110 200 300\nP3 100 210 300\nP4 100 200 310\n";

/// A file in a folder, as the program joins the two.
inline std::string pathIn(const std::string& folder, const std::string& file) {
  return (std::filesystem::path(folder) / file).string();
}

/// A folder with `base.txt` and `shifted.txt`, in which the program runs.
class SurveyFiles : public testing::Test {
 protected:
  SurveyFiles() {
    write("base.txt", baseLines);
    write("shifted.txt", shiftedLines);
  }

  void write(const std::string& name, const std::string& bytes) { writeBytes(folder.file(name), bytes); }
  std::string read(const std::string& name) const { return readBytes(folder.file(name)); }
  /// Of a file that was written in text mode.
  std::string readText(const std::string& name) const {
    std::string text = read(name);
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
  }
  bool exists(const std::string& name) const {
    return std::filesystem::exists(std::filesystem::u8path(folder.file(name)));
  }

  ProcessResult run(const std::vector<std::string>& arguments, ProcessSetup setup = {}) const {
    setup.folder = folder.path().string();
    return runTiepoint(arguments, setup);
  }
  /// The result of a run with --json.
  nlohmann::json runJson(std::vector<std::string> arguments, int status = 0) const {
    arguments.push_back("--json");
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, status) << result.err;
    return nlohmann::json::parse(result.out);
  }

  TemporaryFolder folder;
};
