#include "workbench/report/file_refusal_text.h"

#include <fmt/format.h>

#include "workbench/report/line_fault_text.h"
#include "workbench/report/plain_text.h"
#include "workbench/report/reading_refusal_text.h"

namespace tiepoint::workbench {

namespace {

/// Of a line of a file that gives numbers to groups, points and targets.
std::string lineText(const Refusal& r) {
  if (!r.cause.empty()) return fmt::format("{}, line {}: {}; save the file as UTF-8", r.given, r.count, r.cause);
  if (r.kind == RefusalKind::weightsLine) {
    return fmt::format("{}: line {} isn't \"GROUP POINT WEIGHT\" with a weight from 0 to 1", r.given, r.count);
  }
  const char* const form = r.kind == RefusalKind::sigmasLine ? "\"GROUP S\" or \"GROUP POINT S\" with S above 0"
                           : r.kind == RefusalKind::carryLine
                               ? "\"GROUP x y z\""
                               : "\"NAME x y z\", alone or with 1 or 3 sigmas or 6 covariances";
  return fmt::format(
      "{}, line {}: this isn't {}; write decimal points, and quotation marks around names of several words", r.given,
      r.count, form);
}

/// Of a target's line.
std::string controlText(const Refusal& r) {
  const std::string place = fmt::format("{}, line {}: ", r.given, r.count);
  if (r.kind == RefusalKind::controlTwice) {
    return fmt::format("{}{} stands there again with other numbers; keep one of its lines", place, r.name);
  }
  return fmt::format(
      "{}the covariances of {} aren't positive definite; give sigmas above 0, or xx xy xz yy yz zz of one place", place,
      r.name);
}

/// What is wrong with poses to start from.
std::string startProblem(const Refusal& r) {
  if (r.cause == "json") return "this isn't JSON";
  if (r.cause == "number") return "a number in it is too great";
  if (r.cause == "groups") return "there is no list \"groups\"";
  if (r.cause == "name") return fmt::format("entry {} of \"groups\" has no name", r.count);
  if (r.cause == "twice") return fmt::format("{} has two poses", r.name);
  if (r.cause == "registered") return fmt::format("{} doesn't say whether it is \"registered\"", r.name);
  if (r.cause == "improper") return fmt::format("the \"rotation\" of {} mirrors, or isn't a rotation to 1e-6", r.name);
  return fmt::format("the \"{}\" of {} isn't {} finite numbers", r.cause, r.name,
                     r.cause == "rotation" ? "three rows of three" : "three");
}

std::string startText(const Refusal& r, FieldNames nameOf) {
  const std::string line = r.cause == "json" ? fmt::format(", line {}", r.count) : "";
  return fmt::format("{}{}: {}; name a file that {} wrote", r.given, line, startProblem(r), nameOf(Field::transforms));
}

/// Of a file that is read.
std::string readFileText(const Refusal& r, FieldNames nameOf) {
  switch (r.kind) {
    case RefusalKind::pathNotUtf8:
      return printable(r.given) + ": the file's name isn't UTF-8 text; rename the file";
    case RefusalKind::fileMissing:
      return r.given + ": there is no such file";
    case RefusalKind::fileIsFolder:
      return r.given + ": this is a folder; name the files in it";
    case RefusalKind::fileUnreadable:
      return fmt::format("{}: the file can't be read: {}", r.given, r.cause.empty() ? "unknown error" : r.cause);
    case RefusalKind::fileNotPlain:
      return r.given + ": this isn't a plain file; save the points to one";
    case RefusalKind::fileCutShort:
      return r.given + ": the file can't be read to its end";
    case RefusalKind::fileEmpty:
      return r.given + ": the file is empty";
    case RefusalKind::fileChanged:
      return r.given + ": the file changed while it was read; nothing was taken in, try again";
    case RefusalKind::noPoints:
      return fmt::format("{}: no reference points found: line 1 {}", r.given, lineFaultText(*r.fault));
    case RefusalKind::fileAmbiguous:
    case RefusalKind::fileNotRead:
      return fmt::format("{}: {}", r.given, readingRefusalText(*r.reading, nameOf));
    case RefusalKind::lineTooLong:
      return fmt::format("{}: line {} is longer than {} bytes, so this isn't a survey file", r.given, r.count,
                         longestLine);
    case RefusalKind::pointsNotTaken:
      return r.given + ": the module didn't take all of its points; is the disk full?";
    case RefusalKind::weightsLine:
    case RefusalKind::sigmasLine:
    case RefusalKind::controlLine:
    case RefusalKind::carryLine:
      return lineText(r);
    case RefusalKind::controlNotDefinite:
    case RefusalKind::controlTwice:
      return controlText(r);
    case RefusalKind::startNotRead:
      return startText(r, nameOf);
    case RefusalKind::cloudFileMissing:
      return fmt::format("{}: there is no such file (cloud {})", r.given, r.name);
    default:
      return r.cause;
  }
}

/// The option and the path that it names.
std::string targetOf(const Refusal& r, FieldNames nameOf) { return fmt::format("{} {}", nameOf(r.field), r.given); }

/// Of a file that isn't to be replaced, or can't be.
std::string unusableTargetText(const Refusal& r, FieldNames nameOf) {
  const std::string target =
      fmt::format("{}: {}", r.name.empty() ? nameOf(r.field) : targetOf(r, nameOf), r.name.empty() ? r.given : r.name);
  switch (r.kind) {
    case RefusalKind::targetIsFolder:
      return target + ": this is a folder; name a file in it";
    case RefusalKind::targetNotOrdinary:
      return target + ": not an ordinary file; choose another path";
    case RefusalKind::targetIsRead:
      return target + ": this command reads that file; choose another path";
    default:
      return target + ": the file exists; --force replaces it";
  }
}

/// Of a file that the module hasn't written whole.
std::string moduleFileText(const Refusal& r) {
  switch (r.kind) {
    case RefusalKind::commonPointsNotOpened:
      return r.given + ": the common points can't be written";
    case RefusalKind::commonPointsCutShort:
      return r.given + ": the common points can't be written completely; is the disk full?";
    case RefusalKind::matrixCutShort:
      return r.given + ": the module didn't write this matrix, or not completely; is the disk full?";
    case RefusalKind::reportCutShort:
      return r.given + ": the module didn't write this report, or not completely; is the disk full?";
    default:
      return fmt::format("the folder for temporary files can't be used: {}; set TMPDIR", r.cause);
  }
}

std::string targetText(const Refusal& r, FieldNames nameOf) {
  switch (r.kind) {
    case RefusalKind::noFolder:
      return fmt::format("{}: there is no folder {}; create it first", targetOf(r, nameOf), r.other);
    case RefusalKind::folderNotMade:
      return fmt::format("{}: the folder can't be created: {}", targetOf(r, nameOf), r.cause);
    case RefusalKind::sameTarget:
      return fmt::format("{} and {}: both would write {}; give them different files", nameOf(r.field),
                         nameOf(r.otherField), r.given);
    case RefusalKind::nameNotPortable:
      return fmt::format("{}: \"{}\" isn't a valid file name on every system", targetOf(r, nameOf), r.name);
    case RefusalKind::groupNotPortable:
      return fmt::format("{}: no file can be named after the group {}; rename the group", targetOf(r, nameOf), r.name);
    case RefusalKind::copiesCollide:
      return r.given + ": two clouds have files of this name; rename one of them";
    case RefusalKind::notWritten:
      return fmt::format("{}: {}", nameOf(r.field), r.cause);
    default:
      return r.kind < RefusalKind::sameTarget ? unusableTargetText(r, nameOf) : moduleFileText(r);
  }
}

}  // namespace

std::string fileRefusalText(const Refusal& refusal, FieldNames nameOf) {
  return refusal.kind <= RefusalKind::cloudFile ? readFileText(refusal, nameOf) : targetText(refusal, nameOf);
}

}  // namespace tiepoint::workbench
