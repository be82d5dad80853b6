#include "workbench/cli/result_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <boost/filesystem.hpp>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/group_matrices.h"
#include "workbench/cli/road_checks.h"
#include "workbench/cli/staging_folder.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;
namespace fs = boost::filesystem;

namespace {

/// The module's numbers of its formats.
constexpr std::uint64_t trfFormat = 0;
constexpr std::uint64_t fourByFourFormat = 1;
constexpr std::uint64_t htmlFormat = 1;
/// Both of the module's formats have as many.
constexpr std::ptrdiff_t linesOfModuleMatrix = 6;
constexpr const char* reportEnd = "</html>\n";

fs::path pathOf(const std::string& utf8) { return fs::path(wideFromUtf8(utf8)); }

void checkChoice(const std::string& value, const std::vector<std::string>& choices, const std::string& option) {
  if (value.empty() || std::find(choices.begin(), choices.end(), value) != choices.end()) return;
  throw CommandError(ExitStatus::usage,
                     fmt::format("{} {}: choose {}, {} or {}", option, value, choices[0], choices[1], choices[2]));
}

void checkGoesWith(const std::string& value, const std::string& option, const std::string& file,
                   const std::string& fileOption) {
  if (value.empty() || !file.empty()) return;
  throw CommandError(ExitStatus::usage, fmt::format("{} goes with {}", option, fileOption));
}

void makeFolder(const std::string& folder) {
  boost::system::error_code error, ignored;
  fs::create_directories(pathOf(folder), error);
  if (fs::is_directory(pathOf(folder), ignored)) return;
  throw CommandError(ExitStatus::file,
                     fmt::format("--matrices {}: the folder can't be made: {}", folder, error.message()));
}

/// With or without carriage returns, as the platform has it.
bool endsWithLine(std::string content, const std::string& line) {
  content.erase(std::remove(content.begin(), content.end(), '\r'), content.end());
  return content.size() >= line.size() && content.compare(content.size() - line.size(), line.size(), line) == 0;
}

bool isWholeMatrix(const std::string& content) {
  return std::count(content.begin(), content.end(), '\n') == linesOfModuleMatrix && endsWithLine(content, "\n");
}

GroupIdSet allGroups(const SessionState& state) {
  GroupIdSet groups;
  for (const SessionGroup& group : state.groups) groups.insert(group.id);
  return groups;
}

RefPointIdSet allPoints(const SessionState& state) {
  RefPointIdSet points;
  for (const SessionPoint& point : state.points) points.insert(point.record.id);
  return points;
}

}  // namespace

ResultFiles::ResultFiles(const RegisterOptions& options_, std::string pictureOption_)
    : options(options_), pictureOption(std::move(pictureOption_)) {
  checkChoice(options.matrixFormat, {"plain", "4x4", "trf"}, "--matrix-format");
  checkChoice(options.reportKind, {"results", "points", "groups"}, "--report-kind");
  checkGoesWith(options.matrixFormat, "--matrix-format", options.matrices, "--matrices FOLDER");
  checkGoesWith(options.reportKind, "--report-kind", options.report, "--report FILE");
  if (!options.commonPoints.empty()) named.push_back({"--common-points", commonPointsTarget(options).path});
  name("--transforms", options.transforms);
  name("--report", options.report);
  name(pictureOption, options.picture.file);
  requireDifferent(named);
}

void ResultFiles::name(const std::string& option, const std::string& file) {
  if (file.empty()) return;
  named.push_back({option, file});
  requireFolder(named.back());
  requireReplaceable(options, named.back());
}

std::vector<ResultFiles::MatrixFile> ResultFiles::matrixFiles(const SessionState& state, const Results& results) const {
  std::vector<MatrixFile> files;
  if (options.matrices.empty()) return files;
  for (std::size_t place = 0; place < state.groups.size(); ++place) {
    // The module has no transformation of a base.
    const bool isExpected =
        isPlain() ? motionOf(state, results, place).has_value() : results.groups[place].toCommon.has_value();
    if (!isExpected) continue;
    const std::string& group = state.groups[place].name;
    if (!fs::windows_name(nameFromUtf8(group))) {
      throw CommandError(
          ExitStatus::file,
          fmt::format("--matrices {}: no file can be named after the group {}; rename it", options.matrices, group));
    }
    const std::string name = group + ".txt";
    files.push_back({place, name, (pathOf(options.matrices) / pathOf(name)).string()});
  }
  return files;
}

void ResultFiles::requireFree(const SessionState& state, const Results& results) const {
  std::vector<OutputTarget> all = named;
  for (const MatrixFile& file : matrixFiles(state, results)) {
    all.push_back({"--matrices", file.path});
    requireReplaceable(options, all.back());
  }
  requireDifferent(all);
}

std::vector<std::string> ResultFiles::writeMatrices(iMultiRegistrator& session, const SessionState& state,
                                                    const Results& results) const {
  const std::vector<MatrixFile> files = matrixFiles(state, results);
  const StagingFolder staging;
  if (!isPlain()) {
    session.saveAllMatrices(staging.path(), options.matrixFormat == "trf" ? trfFormat : fourByFourFormat);
  }
  makeFolder(options.matrices);
  std::vector<std::string> written;
  for (const MatrixFile& file : files) {
    const std::string content =
        isPlain() ? plainMatrixText(*motionOf(state, results, file.place)) : staging.content(file.name);
    if (!isPlain() && !isWholeMatrix(content)) {
      throw CommandError(
          ExitStatus::file,
          fmt::format("{}: the module hasn't written this matrix, or not to its end; is the disk full?", file.path));
    }
    putFile(options, {"--matrices", file.path}, content);
    written.push_back(file.path);
  }
  return written;
}

void ResultFiles::writeReport(iMultiRegistrator& session, const SessionState& state) const {
  if (options.reportKind == "points") {
    session.getPointsReport(allPoints(state));
  } else if (options.reportKind == "groups") {
    session.getGroupsReport(allGroups(state));
  } else {
    session.getResultsReport();
  }
  const StagingFolder staging;
  session.saveReport(staging.file("report.html"), htmlFormat);
  const std::string content = staging.content("report.html");
  if (!endsWithLine(content, reportEnd)) {
    throw CommandError(
        ExitStatus::file,
        fmt::format("{}: the module hasn't written this report, or not to its end; is the disk full?", options.report));
  }
  putFile(options, {"--report", options.report}, content);
}

void ResultFiles::writePicture(const std::string& bytes, WrittenFiles& written) const {
  putFile(options, {pictureOption, options.picture.file}, bytes);
  written.picture = options.picture.file;
}

WrittenFiles ResultFiles::write(iMultiRegistrator& session, const SessionState& state, const Results& results) const {
  WrittenFiles written;
  if (!options.matrices.empty()) written.matrices = writeMatrices(session, state, results);
  if (!options.transforms.empty()) {
    putFile(options, {"--transforms", options.transforms},
            transformsJson({options.method, options.unit}, state, results));
    written.transforms = options.transforms;
  }
  if (!options.report.empty()) {
    writeReport(session, state);
    written.report = options.report;
  }
  return written;
}

}  // namespace tiepoint::workbench::cli
