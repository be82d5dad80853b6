// Files of lines that give numbers to groups, points and targets.
//
// Fields stand between blanks, tabs, commas and semicolons; blank lines, and what follows a "#", are
// skipped. Such a file is UTF-8 or UTF-16, with a byte-order mark or without.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

/// The whole of the text as a finite number; it may bear a plus.
std::optional<double> numberOfText(const std::string& text);

/// Whether quotation marks enclose a name, which may then hold separators and "#".
enum class Quotes { ordinary, enclosing };

/// A file of lines, and how a bad line of it is refused.
struct LineFile {
  /// UTF-8.
  std::string path;
  Field field = Field::none;
  RefusalKind badLine = RefusalKind::weightsLine;

  /// Throws Refused for the line of that number, from 1.
  [[noreturn]] void refuse(std::uint64_t number) const;
};

using TakeLine = std::function<void(const std::string& line, std::uint64_t number)>;

/// Calls `take` with each line that holds anything, without its comment and without separators at its ends.
/// Throws Refused for a line that isn't UTF-8, with the offending byte as its cause, and what a file that
/// can't be read throws, for the file's field.
void forEachLine(const LineFile& file, Quotes quotes, const TakeLine& take);

/// Cuts the last field off the line, and the separators before it; empty when there is none.
std::string cutLastField(std::string& line);

/// The fields of such a line. A name in quotation marks loses them, and two of them within stand for one.
/// Nothing where a mark isn't closed, or something else than a separator follows it.
///
/// Nothing either where behind the first `names` fields one comma stands alone between two digits, and other
/// separators elsewhere: in "T1 1,5 2 3" a decimal comma would silently become two numbers.
std::optional<std::vector<std::string>> fieldsOfLine(const std::string& line, std::size_t names);

}  // namespace tiepoint::workbench
