#include "workbench/survey/import_files.h"

#include <algorithm>
#include <boost/filesystem/path.hpp>
#include <map>

#include "platform/sdk/od_code_page.h"
#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"
#include "workbench/session/scratch_document.h"
#include "workbench/session/stored_groups.h"
#include "workbench/survey/file_survey.h"
#include "workbench/survey/line_faults.h"
#include "workbench/survey/staged_file.h"
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

using PointCounts = std::map<std::wstring, std::uint64_t>;

/// How many points each group of the drawing holds, by the group's name.
PointCounts pointCounts(Workbench& workbench) {
  PointCounts counts;
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
      messages.push_back(nameOfStandIn(utf8FromWide(message)));
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
  file.storedGroup = groupOf(path);
  file.group = utf8FromWide(file.storedGroup);
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
  const PointCounts counts = pointCounts(workbench);
  for (const ImportedFile& file : import.files) {
    const auto count = counts.find(file.storedGroup);
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
    std::vector<std::string>& points = names.pointsOf(sessionNameOfStored(group.name));
    for (const ZOR::_StoredPoint& point : group.points()) {
      points.push_back(sessionNameOfStored(point.name.wideText()));
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
  explicit MarkedNames(const KnownNames& names_) : names(names_) {}

  void add(const std::string& path) { ++counts[firstOf(path)]; }

  std::size_t alike(const std::string& path) const {
    const auto count = counts.find(firstOf(path));
    return count == counts.end() ? 0 : count->second;
  }

 private:
  std::string firstOf(const std::string& path) const {
    const std::vector<std::string>* const points = names.find(sessionNameOfStored(groupOf(path)));
    return points && !points->empty() ? points->front() : "";
  }

  const KnownNames& names;
  std::map<std::string, std::size_t> counts;
};

/// What a file gave when the module read it as it is.
struct PlainReading {
  FileSurvey survey;
  std::uint64_t points = 0;
};

/// Decides for each file what the module is to read, and describes what it gives.
class Rehearsal {
 public:
  explicit Rehearsal(const ReadingRequest& request_) : request(request_) {}

  void take(const LayoutFiles& run, const std::string& path, const PlainReading& plain) {
    SurveyFile file{path, utf8FromWide(groupOf(path)), run.layout, run.isNamed, false, plain.survey};
    file.moduleReadsAll = plain.points > 0 && plain.points >= plain.survey.lastLineWithText;
    if (const auto staged = stageSurvey(file, request, result.files.folder)) return takeStaged(path, *staged);
    plainFiles.push_back({result.report.files.size(), plain.survey});
    result.report.files.push_back(describeFile(path, run.layout, plain.survey, plain.points));
    addToRun(run.layout, path);
  }

  /// What is worth a word of the files that the module reads as they are. `names` are those that it read.
  void describePlainFiles(const KnownNames& names, Findings& findings) const {
    MarkedNames marked(names);
    for (const PlainFile& plain : plainFiles) {
      const ImportedFile& file = result.report.files[plain.index];
      if (hasMarkInName(file.layout, plain.survey)) marked.add(file.path);
    }
    for (const PlainFile& plain : plainFiles) {
      const ImportedFile& file = result.report.files[plain.index];
      findMarks(file, plain.survey, marked.alike(file.path), findings);
      findStop(file, findings);
    }
  }

  ImportRehearsal finish() { return std::move(result); }

 private:
  void takeStaged(const std::string& path, const StagedFile& staged) {
    ImportedFile file;
    file.path = path;
    file.group = utf8FromWide(groupOf(path));
    file.storedGroup = groupOf(staged.path);
    file.layout = staged.layout;
    file.lines = staged.reading.lineCount;
    file.points = staged.reading.pointCount;
    file.reading = staged.reading;
    result.report.files.push_back(std::move(file));
    addToRun(staged.layout, staged.path);
  }

  void addToRun(Layout layout, const std::string& path) {
    std::vector<LayoutFiles>& runs = result.files.runs;
    auto run = std::find_if(runs.begin(), runs.end(), [&](const LayoutFiles& r) { return r.layout == layout; });
    if (run == runs.end()) run = runs.insert(runs.end(), LayoutFiles{layout, {}, true});
    run->paths.push_back(path);
  }

  struct PlainFile {
    /// Among the report's files.
    std::size_t index = 0;
    FileSurvey survey;
  };

  const ReadingRequest& request;
  std::vector<PlainFile> plainFiles;
  ImportRehearsal result;
};

/// What an empty drawing holds once it has taken the files in.
struct Trial {
  std::vector<std::string> messages;
  KnownNames names;
  PointCounts counts;
};

Trial tryImport(Workbench& workbench, const std::vector<LayoutFiles>& runs) {
  const ScratchDocument scratch(workbench);
  std::vector<std::string> messages = runCommand(workbench, runs);
  return {std::move(messages), storedNames(workbench), pointCounts(workbench)};
}

/// The module has read every point of the files that were made for it.
void requirePoints(const PointCounts& counts, const ImportReport& import) {
  for (const ImportedFile& file : import.files) {
    const auto count = counts.find(file.storedGroup);
    if (!file.reading || (count != counts.end() && count->second == file.points)) continue;
    throw Refused({RefusalKind::pointsNotTaken, Field::files, file.path});
  }
}

}  // namespace

ImportRehearsal rehearseImport(Workbench& workbench, const std::vector<LayoutFiles>& runs,
                               const ReadingRequest& request, Findings& findings) {
  const std::vector<FileSurvey> surveys = surveyAll(runs);
  Trial plain = tryImport(workbench, runs);
  Rehearsal rehearsal(request);
  auto survey = surveys.begin();
  for (const LayoutFiles& run : runs) {
    for (const std::string& path : run.paths) {
      const auto count = plain.counts.find(groupOf(path));
      rehearsal.take(run, path, {*survey++, count == plain.counts.end() ? 0 : count->second});
    }
  }
  rehearsal.describePlainFiles(plain.names, findings);
  ImportRehearsal result = rehearsal.finish();
  if (result.files.folder) {
    plain = tryImport(workbench, result.files.runs);
    requirePoints(plain.counts, result.report);
  }
  result.report.messages = std::move(plain.messages);
  result.names = std::move(plain.names);
  return result;
}

void carryOutImport(Workbench& workbench, const ModuleFiles& files, ImportReport& import, Findings& findings) {
  const PointCounts before = pointCounts(workbench);
  for (ImportedFile& file : import.files) file.stored = before.count(file.storedGroup) == 0;
  import.messages = runCommand(workbench, files.runs);
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
    if (file.stored) groups.push_back(file.storedGroup);
  }
  const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
  workbench.inTransaction([&] { removeGroups(*database, groups); });
}

}  // namespace tiepoint::workbench
