// What came of reading files of reference points.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/file_reading.h"
#include "workbench/values/layouts.h"

namespace tiepoint::workbench {

/// Files of one layout; each layout is one run of the import command.
struct LayoutFiles {
  Layout layout = Layout::nxyz;
  /// UTF-8.
  std::vector<std::string> paths;
  /// The user has named the layout: a file that doesn't fit it isn't read in any other way.
  bool isNamed = false;
};

enum class LineFaultKind {
  utf16,
  zeroByte,
  blank,
  byteOrderMark,
  /// Begins, or ends, with a comma or a semicolon.
  leadingMark,
  trailingMark,
  comment,
  fieldCount,
  /// As the above, as numbers have a decimal comma.
  decimalComma,
  notANumber,
  /// No field is a number.
  header,
  other
};

/// Why a line can't be read.
struct LineFault {
  LineFaultKind kind = LineFaultKind::other;
  /// By which it was read.
  Layout layout = Layout::nxyz;
  /// Counted from 1.
  std::uint64_t line = 0;
  /// Fields that the line has, or the one at fault, counted from 1.
  std::size_t fields = 0;
  std::size_t column = 0;
  /// The text at fault, UTF-8, its beginning when it is long.
  std::string found;
  /// By which the line would read.
  std::optional<Layout> readsAs;
};

struct ImportedFile {
  std::string path;
  /// The group's name: the file's name without its last ending.
  std::string group;
  /// The same in the drawing, where a stand-in carries what windows-1251 lacks.
  std::wstring storedGroup;
  Layout layout = Layout::nxyz;
  std::uint64_t lines = 0;
  /// Points that the file gives.
  std::uint64_t points = 0;
  /// What the workbench read it as, when the module couldn't take it as it is.
  std::optional<FileReading> reading;
  /// Where the reading ended before the end.
  std::optional<LineFault> stop;
  /// False when the drawing had a group of that name already, which was left as it is.
  bool stored = true;
};

struct ImportReport {
  std::vector<ImportedFile> files;
  /// What the command printed, run after run.
  std::vector<std::string> messages;
};

}  // namespace tiepoint::workbench
