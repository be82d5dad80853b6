#include "workbench/session/module_outputs.h"

#include <algorithm>

#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"
#include "workbench/session/common_points_text.h"
#include "workbench/session/staging_folder.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// The module's numbers of its formats.
constexpr std::uint64_t trfFormat = 0;
constexpr std::uint64_t fourByFourFormat = 1;
constexpr std::uint64_t htmlFormat = 1;
/// Both of the module's formats have as many.
constexpr std::ptrdiff_t linesOfModuleMatrix = 6;
constexpr const char* reportEnd = "</html>\n";

/// With or without carriage returns, as the platform has it.
bool endsWithLine(std::string content, const std::string& line) {
  content.erase(std::remove(content.begin(), content.end(), '\r'), content.end());
  return content.size() >= line.size() && content.compare(content.size() - line.size(), line.size(), line) == 0;
}

std::size_t lineFeeds(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

/// The line feeds of the whole file: one ends each target's line, and a name may hold some. The last
/// stands at the end, so that a file that was cut short has fewer.
std::size_t lineFeedsOf(const std::vector<MergedTarget>& targets) {
  std::size_t all = targets.size();
  for (const MergedTarget& target : targets) all += lineFeeds(target.moduleName);
  return all;
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

[[noreturn]] void refuse(RefusalKind kind, Field field, const std::string& path) { throw Refused({kind, field, path}); }

}  // namespace

std::string commonPointsContent(iMultiRegistrator& session, const std::string& name, const std::string& path,
                                const std::vector<MergedTarget>& targets) {
  const StagingFolder staging;
  const bool isOpened = session.saveCommonPointsFile(name, staging.path());
  std::string content = staging.content(utf8FromName(name) + ".txt");
  if (!isOpened) refuse(RefusalKind::commonPointsNotOpened, Field::commonPoints, path);
  if (lineFeeds(content) != lineFeedsOf(targets)) {
    refuse(RefusalKind::commonPointsCutShort, Field::commonPoints, path);
  }
  return commonPointsText(content);
}

std::map<std::string, std::string> matrixContents(iMultiRegistrator& session, MatrixFormat format,
                                                  const std::vector<std::string>& groups) {
  const StagingFolder staging;
  session.saveAllMatrices(staging.path(), format == MatrixFormat::trf ? trfFormat : fourByFourFormat);
  std::map<std::string, std::string> contents;
  for (const std::string& group : groups) contents.emplace(group, staging.content(standInGroupName(group) + ".txt"));
  return contents;
}

bool isWholeMatrix(const std::string& content) {
  return std::count(content.begin(), content.end(), '\n') == linesOfModuleMatrix && endsWithLine(content, "\n");
}

std::string reportContent(iMultiRegistrator& session, ReportKind kind, const SessionState& state,
                          const std::string& path) {
  if (kind == ReportKind::points) {
    session.getPointsReport(allPoints(state));
  } else if (kind == ReportKind::groups) {
    session.getGroupsReport(allGroups(state));
  } else {
    session.getResultsReport();
  }
  const StagingFolder staging;
  session.saveReport(staging.file("report.html"), htmlFormat);
  std::string content = staging.content("report.html");
  if (!endsWithLine(content, reportEnd)) refuse(RefusalKind::reportCutShort, Field::report, path);
  return nameOfStandIn(content);
}

}  // namespace tiepoint::workbench
