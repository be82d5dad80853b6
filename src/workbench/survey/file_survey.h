// What a text file looks like from outside: its lines and its marks.
//
// The module stops silently at the first line that it can't read. Since every line before it gave
// one point, the number of points tells which line that was; this is the other half of the count.
#pragma once

#include <cstdint>
#include <string>

#include "workbench/reading/text_lines.h"

namespace tiepoint::workbench {

enum class ByteOrderMark { none, utf8, utf16 };

struct FileSurvey {
  /// Lines as the standard library's getline counts them: text after the last line feed is a line.
  std::uint64_t lines = 0;
  /// The last line that holds more than white space, counted from 1; 0 when there is none.
  std::uint64_t lastLineWithText = 0;
  ByteOrderMark mark = ByteOrderMark::none;
  /// The file holds bytes above 0x7F, and all of it is UTF-8.
  bool isUtf8BeyondAscii = false;
  /// The file holds bytes above 0x7F.
  bool isBeyondAscii = false;
  /// The file holds "_x", with which the stand-in of a character may begin.
  bool mayHoldStandIns = false;
  /// A line begins with "#".
  bool hasComments = false;
  bool hasQuotes = false;
  /// A comma stands between two digits, and other separators stand in the file too.
  bool mayHoldDecimalCommas = false;
  /// Two commas or semicolons follow one another.
  bool mayHoldEmptyFields = false;
};

/// Throws Refused as surveyFile does for what isn't the path of a plain file, without reading it.
void requirePlainFile(const std::string& path);

/// Reads the whole file in pieces. `path` is UTF-8. Throws Refused (of a class `file`) when
/// the path isn't UTF-8, or the file is missing, isn't a plain file, can't be read, is empty, or has a
/// line too long to be kept.
FileSurvey surveyFile(const std::string& path);

/// The bytes of such a file, which is opened at once and is read as it is asked for. Throws as above,
/// now or when it is asked.
ByteSource bytesOfFile(const std::string& path);

/// The line of that number (from 1), without its line feed; no more than the first 4096 bytes of
/// it. Empty when the file has no such line.
std::string lineOfFile(const std::string& path, std::uint64_t number);

}  // namespace tiepoint::workbench
