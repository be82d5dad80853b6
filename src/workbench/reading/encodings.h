// Names from the bytes of a file.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/values/file_reading.h"

namespace tiepoint::workbench {

bool isAscii(std::string_view bytes);

/// The bytes as UTF-8, or nothing when they are no text of that encoding. Text of UTF-16 has become
/// UTF-8 already.
std::optional<std::string> decodedText(std::string_view bytes, TextEncoding encoding);

/// The same for a text to be shown: what is none is U+FFFD.
std::string shownText(std::string_view bytes, TextEncoding encoding);

/// What the names beyond ASCII tell of the encoding. One reading of the bytes is left, or several.
class NameEvidence {
 public:
  void take(std::string_view name);
  /// UTF-8 when all names are; else the one of windows-1251 and windows-1252 in which each word keeps
  /// to one script. Ascending; ascii alone when no name has a byte above 0x7F.
  std::vector<TextEncoding> possible() const;

 private:
  void takeSingleBytes(std::string_view name);

  bool beyondAscii = false;
  /// Some name can be nothing but UTF-8.
  bool certainUtf8 = false;
  bool someNotUtf8 = false;
  bool fits1251 = true;
  bool fits1252 = true;
  /// Some name reads differently in the two.
  bool differs = false;
};

}  // namespace tiepoint::workbench
