// Files of results that a registration leaves: matrices, transformations, a report.
#pragma once

#include <string>
#include <vector>

#include "session/i_multi_registrator.h"
#include "workbench/cli/options.h"
#include "workbench/cli/output_targets.h"
#include "workbench/session/results.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench::cli {

/// Paths, UTF-8; empty for what wasn't asked for.
struct WrittenFiles {
  std::vector<std::string> matrices;
  std::string transforms;
  std::string report;
  std::string picture;
};

/// Every file appears whole or not at all. None replaces another unless forced, and none ever
/// replaces a file that the same command reads.
class ResultFiles {
 public:
  /// Throws CommandError: (usage) for a format or a kind that there isn't or that goes with nothing,
  /// (file) for a folder that isn't there or a file that would be replaced.
  explicit ResultFiles(const RegisterOptions& options, std::string pictureOption = "--picture");

  /// Before anything is written: throws CommandError(file) for a matrix file that would be replaced,
  /// or a group after which no file can be named.
  void requireFree(const SessionState& state, const Results& results) const;

  /// The same for the picture, whose bytes these are.
  void writePicture(const std::string& bytes, WrittenFiles& written) const;

  /// Throws CommandError(file) for the first file that can't be written.
  WrittenFiles write(ZOR::reg::iMultiRegistrator& session, const SessionState& state, const Results& results) const;

 private:
  struct MatrixFile {
    /// The group's place in the state.
    std::size_t place = 0;
    /// In the folder, UTF-8.
    std::string name;
    std::string path;
  };

  bool isPlain() const { return options.matrixFormat.empty() || options.matrixFormat == "plain"; }
  std::vector<MatrixFile> matrixFiles(const SessionState& state, const Results& results) const;
  void name(const std::string& option, const std::string& file);
  std::vector<std::string> writeMatrices(ZOR::reg::iMultiRegistrator& session, const SessionState& state,
                                         const Results& results) const;
  void writeReport(ZOR::reg::iMultiRegistrator& session, const SessionState& state) const;

  const RegisterOptions& options;
  /// By which the picture is asked for.
  std::string pictureOption;
  /// The files that an option names, unlike those of a folder.
  std::vector<OutputTarget> named;
};

}  // namespace tiepoint::workbench::cli
