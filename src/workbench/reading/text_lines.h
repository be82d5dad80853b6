// The lines of a file, whatever its line ends and the width of its characters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "workbench/values/file_reading.h"
#include "workbench/values/reading_fault.h"

namespace tiepoint::workbench {

/// Writes up to `size` bytes to `into` and gives how many; 0 at the end. May throw.
using ByteSource = std::function<std::size_t(char* into, std::size_t size)>;

/// Reads lines one after the other; keeps no more than one line and one piece of the file. A line
/// ends at CR, LF or CR LF, in any mixture. A 0x1A at the end of the file, which DOS wrote there,
/// is no text.
class TextLines {
 public:
  /// `said` is the encoding that the user named.
  TextLines(ByteSource source, std::optional<TextEncoding> said);

  /// The next line. UTF-16 becomes UTF-8, in which 0xFF stands for what is no character; else the
  /// file's own bytes. False at the end, and at a line that is too long.
  bool next(std::string& line);

  /// Of the line that `next` gave last, from 1.
  std::uint64_t number() const { return lineNumber; }
  bool isTooLong() const { return tooLong; }
  bool hasMark() const { return markFound; }
  /// The file had no byte at all.
  bool isEmpty() const { return empty; }
  /// The encoding that was named isn't that of the mark.
  bool contradictsMark() const { return contradiction; }
  /// As named, marked, or seen from the bytes' pattern; none where single bytes or UTF-8 are still
  /// to be told apart.
  std::optional<TextEncoding> encoding() const { return known; }

 private:
  void beginFile();
  bool refill();
  void takePiece(const char* bytes, std::size_t size);
  void takeUnit(unsigned unit);
  void endOfUnits();
  void finishLast(std::string& line);

  ByteSource source;
  std::optional<TextEncoding> known;
  /// Text that isn't given out yet.
  std::string text;
  std::size_t at = 0;
  std::uint64_t lineNumber = 0;
  bool begun = false;
  bool ended = false;
  bool empty = false;
  bool tooLong = false;
  bool markFound = false;
  bool contradiction = false;
  bool afterCarriageReturn = false;
  /// The first half of a unit of UTF-16, and of a pair of units.
  std::optional<unsigned char> halfUnit;
  unsigned highSurrogate = 0;
};

}  // namespace tiepoint::workbench
