// How a survey file is read: the values that all steps of the reading share.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tiepoint::workbench {

enum class TextEncoding { ascii, utf8, utf16LittleEndian, utf16BigEndian, windows1251, windows1252 };

/// utf-8, utf-16le, utf-16be, windows-1251, windows-1252, in any case; "iso-8859-1" and "latin1" are
/// windows-1252, which holds them, and "cp" may stand for "windows-".
std::optional<TextEncoding> encodingByName(const std::string& name);
const char* encodingName(TextEncoding encoding);

/// What stands between two fields. `blank` is a run of white space, `mixed` a run of white space
/// with a comma or a semicolon in it or without; of the others each single one divides, so that a field may be empty.
enum class Separator { semicolon, tab, comma, blank, mixed };

enum class DecimalMark { point, comma };

enum class ColumnRole { name, x, y, z, weight, skipped };

/// What the fields of a line hold, in order.
struct Columns {
  std::vector<ColumnRole> roles;
  /// Any number of further fields may follow, which are skipped.
  bool openEnded = false;
};

inline bool operator==(const Columns& a, const Columns& b) { return a.roles == b.roles && a.openEnded == b.openEnded; }

bool hasColumn(const Columns& columns, ColumnRole role);

/// The unit of the coordinates in the file; they come out in metres.
enum class LengthUnit { metre, millimetre, foot, usSurveyFoot };

/// By its short name: m, mm, ft (the international foot, 0.3048 m) or usft (the US survey foot,
/// 1200/3937 m).
std::optional<LengthUnit> lengthUnitByName(const std::string& name);
const char* lengthUnitName(LengthUnit unit);

/// How the lines of a file are divided and read.
struct LineReading {
  Separator separator = Separator::blank;
  DecimalMark decimal = DecimalMark::point;
  Columns columns;
};

/// What a file was read as.
struct FileReading {
  TextEncoding encoding = TextEncoding::ascii;
  bool hasMark = false;
  LineReading lines;
  /// The words of the header, UTF-8; empty without one.
  std::vector<std::string> header;
  /// The header stands in a comment.
  bool headerIsComment = false;
  LengthUnit unit = LengthUnit::metre;
  std::uint64_t lineCount = 0;
  std::uint64_t pointCount = 0;
  std::uint64_t commentCount = 0;
  std::uint64_t blankCount = 0;
};

}  // namespace tiepoint::workbench
