#include "workbench/cli/import_files.h"

#include <fmt/format.h>

#include <boost/filesystem/path.hpp>
#include <map>
#include <set>

#include "platform/sdk/od_code_page.h"
#include "workbench/cli/exit_status.h"
#include "workbench/cli/file_survey.h"
#include "workbench/cli/layouts.h"
#include "workbench/cli/line_complaint.h"
#include "workbench/io/text_encoding.h"
#include "workbench/report/plain_text.h"
#include "workbench/session/scratch_document.h"
#include "workbench/session/stored_groups.h"

namespace tiepoint::workbench::cli {

namespace {

constexpr const wchar_t* importCommand = L"TSL_REG_IMPORT_REFS";

std::wstring groupOf(const std::string& path) {
  try {
    return boost::filesystem::path(wideFromUtf8(path)).stem().wstring();
  } catch (const EncodingError&) {
    throw CommandError(ExitStatus::file, printable(path) + ": the file's name isn't UTF-8 text; rename the file");
  }
}

/// How many points each group of the drawing holds, by the group's name.
std::map<std::wstring, std::uint64_t> pointCounts(Workbench& workbench) {
  std::map<std::wstring, std::uint64_t> counts;
  const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
  for (const StoredGroup& group : storedGroups(*database)) counts.emplace(group.name, group.points().size());
  return counts;
}

std::vector<std::string> runCommand(Workbench& workbench, const std::vector<LayoutFiles>& runs) {
  std::vector<std::string> messages;
  for (const LayoutFiles& run : runs) {
    DialogAnswer answer;
    answer.layout = run.layout;
    answer.paths = run.paths;
    for (const std::wstring& message : workbench.runCommand(importCommand, answer)) {
      messages.push_back(utf8FromWide(message));
    }
  }
  return messages;
}

/// What is likely to surprise later, although the module reads the file without a word.
void warnOfMarks(const ImportedFile& file, const FileSurvey& survey, Warnings& warnings) {
  if (survey.mark == ByteOrderMark::utf8 && layoutInfo(file.layout).hasName) {
    warnings.add(
        fmt::format("{}: a byte-order mark became part of the first point's name, which joins nothing now; "
                    "save the file without it",
                    file.path));
  } else if (survey.isUtf8BeyondAscii && layoutInfo(file.layout).hasName) {
    warnings.add(
        fmt::format("{}: names are taken as windows-1251, but the file is UTF-8: they join all the same, and "
                    "are shown wrongly; save the file as windows-1251",
                    file.path));
  }
  if (!odHasNarrowForm(groupOf(file.path))) {
    warnings.add(
        fmt::format("{}: the group's name has characters outside windows-1251, which the module shows as "
                    "\"?\"; rename the file",
                    file.path));
  }
}

/// One file as it came out of an import into an empty drawing. Throws when it gave no point.
ImportedFile describeFile(const std::string& path, Layout layout, const FileSurvey& survey, std::uint64_t points) {
  ImportedFile file;
  file.path = path;
  file.group = utf8FromWide(groupOf(path));
  file.layout = layout;
  file.lines = survey.lines;
  file.points = points;
  if (points >= survey.lastLineWithText && points > 0) return file;

  const LineStop stop{points + 1, lineComplaint(lineOfFile(path, points + 1), layout)};
  if (points == 0) {
    throw CommandError(ExitStatus::file, fmt::format("{}: no reference points found: line 1 {}", path, stop.complaint));
  }
  file.stop = stop;
  return file;
}

void warnOfStop(const ImportedFile& file, Warnings& warnings) {
  if (!file.stop) return;
  warnings.add(fmt::format("{}: reading stopped after {} point{}: line {} of {} {}", file.path, file.points,
                           file.points == 1 ? "" : "s", file.stop->line, file.lines, file.stop->complaint));
}

std::vector<FileSurvey> surveyAll(const std::vector<LayoutFiles>& runs) {
  std::vector<FileSurvey> surveys;
  for (const LayoutFiles& run : runs) {
    for (const std::string& path : run.paths) surveys.push_back(surveyFile(path));
  }
  return surveys;
}

}  // namespace

std::vector<std::string> groupsOfFiles(const std::vector<LayoutFiles>& runs) {
  std::vector<std::string> groups;
  std::map<std::string, std::string> pathOf;
  for (const LayoutFiles& run : runs) {
    for (const std::string& path : run.paths) {
      const std::string group = utf8FromWide(groupOf(path));
      const auto [known, isNew] = pathOf.emplace(group, path);
      if (!isNew) {
        throw CommandError(ExitStatus::usage, fmt::format("{} and {} both give the group \"{}\"; rename one of them",
                                                          known->second, path, group));
      }
      groups.push_back(group);
    }
  }
  return groups;
}

Import rehearseImport(Workbench& workbench, const std::vector<LayoutFiles>& runs, Warnings& warnings) {
  const std::vector<FileSurvey> surveys = surveyAll(runs);
  const ScratchDocument scratch(workbench);
  Import import;
  import.messages = runCommand(workbench, runs);
  const auto counts = pointCounts(workbench);
  auto survey = surveys.begin();
  for (const LayoutFiles& run : runs) {
    for (const std::string& path : run.paths) {
      const auto count = counts.find(groupOf(path));
      const std::uint64_t points = count == counts.end() ? 0 : count->second;
      import.files.push_back(describeFile(path, run.layout, *survey, points));
      warnOfMarks(import.files.back(), *survey++, warnings);
      warnOfStop(import.files.back(), warnings);
    }
  }
  return import;
}

void carryOutImport(Workbench& workbench, const std::vector<LayoutFiles>& runs, Import& import, Warnings& warnings) {
  const auto before = pointCounts(workbench);
  import.messages = runCommand(workbench, runs);
  for (ImportedFile& file : import.files) {
    file.stored = before.count(groupOf(file.path)) == 0;
    if (!file.stored) {
      warnings.add(
          fmt::format("{}: the drawing has a group \"{}\" already; the file was not taken in", file.path, file.group));
    }
  }
}

}  // namespace tiepoint::workbench::cli
