#include "workbench/survey/import_files.h"

#include <boost/filesystem/path.hpp>
#include <map>

#include "platform/sdk/od_code_page.h"
#include "workbench/io/text_encoding.h"
#include "workbench/session/scratch_document.h"
#include "workbench/session/stored_groups.h"
#include "workbench/survey/file_survey.h"
#include "workbench/survey/line_faults.h"
#include "workbench/values/refusal.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

namespace {

constexpr const wchar_t* importCommand = L"TSL_REG_IMPORT_REFS";

std::wstring groupOf(const std::string& path) {
  try {
    return boost::filesystem::path(wideFromUtf8(path)).stem().wstring();
  } catch (const EncodingError&) {
    throw Refused({RefusalKind::pathNotUtf8, Field::files, path});
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

Finding findingOf(FindingKind kind, const ImportedFile& file) {
  Finding finding{kind};
  finding.groups = {file.group};
  finding.path = file.path;
  return finding;
}

bool hasMarkInName(Layout layout, const FileSurvey& survey) {
  return survey.mark == ByteOrderMark::utf8 && layoutInfo(layout).hasName;
}

/// What is likely to surprise later, although the module reads the file without a word. `alike` is how
/// many files have the same first name with a mark in it.
void findMarks(const ImportedFile& file, const FileSurvey& survey, std::size_t alike, Findings& findings) {
  if (hasMarkInName(file.layout, survey)) {
    Finding mark = findingOf(FindingKind::markInName, file);
    mark.count = alike;
    findings.add(std::move(mark));
  } else if (survey.isUtf8BeyondAscii && layoutInfo(file.layout).hasName) {
    findings.add(findingOf(FindingKind::namesInUtf8, file));
  }
  if (!odHasNarrowForm(groupOf(file.path))) findings.add(findingOf(FindingKind::groupNameBeyondNarrow, file));
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

  file.stop = lineFault(lineOfFile(path, points + 1), layout);
  file.stop->line = points + 1;
  if (points > 0) return file;
  Refusal refusal{RefusalKind::noPoints, Field::files, path};
  refusal.fault = file.stop;
  throw Refused(std::move(refusal));
}

void findStop(const ImportedFile& file, Findings& findings) {
  if (!file.stop) return;
  Finding stopped = findingOf(FindingKind::readingStopped, file);
  stopped.count = file.points;
  stopped.atLeast = file.lines;
  stopped.fault = file.stop;
  findings.add(std::move(stopped));
}

std::vector<FileSurvey> surveyAll(const std::vector<LayoutFiles>& runs) {
  std::vector<FileSurvey> surveys;
  for (const LayoutFiles& run : runs) {
    for (const std::string& path : run.paths) surveys.push_back(surveyFile(path));
  }
  return surveys;
}

/// After the command has run: a file that couldn't be opened, or that ends elsewhere than before, is
/// lost without a word.
void requireStored(Workbench& workbench, const ImportReport& import) {
  const auto counts = pointCounts(workbench);
  for (const ImportedFile& file : import.files) {
    const auto count = counts.find(groupOf(file.path));
    if (!file.stored || (count != counts.end() && count->second == file.points)) continue;
    throw Refused({RefusalKind::fileChanged, Field::files, file.path});
  }
}

}  // namespace

KnownNames storedNames(Workbench& workbench) {
  KnownNames names;
  HostDocument* const document = workbench.activeDocument();
  if (!document) return names;
  const OdDbDatabasePtr database = document->database();
  for (const StoredGroup& group : storedGroups(*database)) {
    std::vector<std::string>& points = names.pointsOf(sessionName(utf8FromWide(group.name)));
    for (const ZOR::_StoredPoint& point : group.points()) {
      points.push_back(sessionName(utf8FromWide(point.name.wideText())));
    }
  }
  return names;
}

std::vector<std::string> groupsOfFiles(const std::vector<LayoutFiles>& runs) {
  std::vector<std::string> groups;
  std::map<std::string, std::string> pathOf;
  for (const LayoutFiles& run : runs) {
    for (const std::string& path : run.paths) {
      if (path.empty()) throw Refused({RefusalKind::emptyPath, Field::files});
      const std::string group = utf8FromWide(groupOf(path));
      const auto [known, isNew] = pathOf.emplace(group, path);
      if (!isNew) {
        Refusal refusal{RefusalKind::groupTwice, Field::files, known->second, group};
        refusal.other = path;
        throw Refused(std::move(refusal));
      }
      groups.push_back(group);
    }
  }
  return groups;
}

namespace {

/// How many files begin with each name that a mark became part of.
class MarkedNames {
 public:
  MarkedNames(const std::vector<LayoutFiles>& runs, const std::vector<FileSurvey>& surveys, const KnownNames& names_)
      : names(names_) {
    auto survey = surveys.begin();
    for (const LayoutFiles& run : runs) {
      for (const std::string& path : run.paths) {
        if (hasMarkInName(run.layout, *survey++)) ++counts[firstOf(path)];
      }
    }
  }

  std::size_t alike(const std::string& path) const {
    const auto count = counts.find(firstOf(path));
    return count == counts.end() ? 0 : count->second;
  }

 private:
  std::string firstOf(const std::string& path) const {
    const std::vector<std::string>* const points = names.find(sessionName(utf8FromWide(groupOf(path))));
    return points && !points->empty() ? points->front() : "";
  }

  const KnownNames& names;
  std::map<std::string, std::size_t> counts;
};

}  // namespace

ImportRehearsal rehearseImport(Workbench& workbench, const std::vector<LayoutFiles>& runs, Findings& findings) {
  const std::vector<FileSurvey> surveys = surveyAll(runs);
  const ScratchDocument scratch(workbench);
  ImportRehearsal rehearsal;
  rehearsal.report.messages = runCommand(workbench, runs);
  rehearsal.names = storedNames(workbench);
  const auto counts = pointCounts(workbench);
  const MarkedNames marked(runs, surveys, rehearsal.names);
  auto survey = surveys.begin();
  for (const LayoutFiles& run : runs) {
    for (const std::string& path : run.paths) {
      const auto count = counts.find(groupOf(path));
      const std::uint64_t points = count == counts.end() ? 0 : count->second;
      rehearsal.report.files.push_back(describeFile(path, run.layout, *survey, points));
      findMarks(rehearsal.report.files.back(), *survey++, marked.alike(path), findings);
      findStop(rehearsal.report.files.back(), findings);
    }
  }
  return rehearsal;
}

void carryOutImport(Workbench& workbench, const std::vector<LayoutFiles>& runs, ImportReport& import,
                    Findings& findings) {
  const auto before = pointCounts(workbench);
  for (ImportedFile& file : import.files) file.stored = before.count(groupOf(file.path)) == 0;
  import.messages = runCommand(workbench, runs);
  try {
    requireStored(workbench, import);
  } catch (const Refused&) {
    undoImport(workbench, import);
    throw;
  }
  for (const ImportedFile& file : import.files) {
    if (!file.stored) findings.add(findingOf(FindingKind::groupThereAlready, file));
  }
}

void undoImport(Workbench& workbench, const ImportReport& import) {
  std::vector<std::wstring> groups;
  for (const ImportedFile& file : import.files) {
    if (file.stored) groups.push_back(groupOf(file.path));
  }
  const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
  workbench.inTransaction([&] { removeGroups(*database, groups); });
}

}  // namespace tiepoint::workbench
