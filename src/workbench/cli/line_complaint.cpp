#include "workbench/cli/line_complaint.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/sdk/od_code_page.h"
#include "workbench/cli/layouts.h"
#include "workbench/io/text_encoding.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench::cli {

namespace {

constexpr std::size_t longestQuote = 40;

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isMark(char c) { return c == ',' || c == ';'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The fields of a line: what stands between runs of white space, commas and semicolons.
std::vector<std::string> fieldsOf(const std::string& line) {
  std::vector<std::string> fields;
  bool inField = false;
  for (const char c : line) {
    if (isSpace(c) || isMark(c)) {
      inField = false;
    } else {
      if (!inField) fields.emplace_back();
      inField = true;
      fields.back() += c;
    }
  }
  return fields;
}

std::string lowerCase(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

bool isNumberWord(const std::string& word) {
  if (word == "inf" || word == "infinity" || word == "nan") return true;
  return word.rfind("nan(", 0) == 0 && word.back() == ')';
}

std::size_t skipDigits(const std::string& text, std::size_t& i) {
  const std::size_t start = i;
  while (i < text.size() && isDigit(text[i])) ++i;
  return i - start;
}

/// Sign, digits with a point, exponent; or one of the words for what isn't a number.
bool isNumber(const std::string& field) {
  std::size_t i = !field.empty() && (field[0] == '+' || field[0] == '-') ? 1 : 0;
  if (isNumberWord(lowerCase(field.substr(i)))) return true;
  std::size_t digits = skipDigits(field, i);
  if (i < field.size() && field[i] == '.') digits += skipDigits(field, ++i);
  if (digits == 0) return false;
  if (i == field.size()) return true;
  if (field[i] != 'e' && field[i] != 'E') return false;
  ++i;
  if (i < field.size() && (field[i] == '+' || field[i] == '-')) ++i;
  return skipDigits(field, i) > 0 && i == field.size();
}

bool fits(const std::vector<std::string>& fields, const LayoutInfo& layout) {
  return fields.size() == layout.fieldCount &&
         std::all_of(fields.begin() + (layout.hasName ? 1 : 0), fields.end(), isNumber);
}

std::string quoted(const std::string& bytes) {
  std::string text = utf8FromWide(odToWide(bytes.substr(0, longestQuote)));
  return "\"" + printable(text) + (bytes.size() > longestQuote ? "...\"" : "\"");
}

/// What bytes alone tell.
std::optional<std::string> complaintOfBytes(const std::string& line, const LayoutInfo& layout) {
  if (line.compare(0, 2, "\xFF\xFE") == 0 || line.compare(0, 2, "\xFE\xFF") == 0) {
    return "is UTF-16 text; save the file as plain (ANSI) text";
  }
  if (line.find('\0') != std::string::npos) return "holds a zero byte, so the file isn't plain text";
  if (std::all_of(line.begin(), line.end(), isSpace)) return "is blank; take it out";
  if (!layout.hasName && line.compare(0, 3, "\xEF\xBB\xBF") == 0) {
    return "begins with a byte-order mark; save the file without it";
  }
  return std::nullopt;
}

/// The layout that the line would have, to be proposed.
std::string proposal(const std::vector<std::string>& fields) {
  for (const LayoutInfo& other : allLayouts) {
    if (fits(fields, other)) return fmt::format("; it reads as {} ({})", other.name, other.fields);
  }
  return {};
}

/// A number such as 12,5 between blanks.
bool hasDecimalComma(const std::string& line) {
  bool comma = false;
  for (std::size_t i = 1; i + 1 < line.size(); ++i) {
    comma = comma || (line[i] == ',' && isDigit(line[i - 1]) && isDigit(line[i + 1]));
  }
  return comma && std::any_of(line.begin(), line.end(), [](char c) { return isSpace(c) || c == ';'; });
}

std::string complaintOfFields(const std::string& line, const LayoutInfo& layout) {
  const std::vector<std::string> fields = fieldsOf(line);
  if (fields.size() != layout.fieldCount) {
    const std::string hint = hasDecimalComma(line) && fields.size() > layout.fieldCount
                                 ? "; numbers take a decimal point, not a comma"
                                 : proposal(fields);
    return fmt::format("has {} field{} where {} has {} ({}){}", fields.size(), fields.size() == 1 ? "" : "s",
                       layout.name, layout.fieldCount, layout.fields, hint);
  }
  for (std::size_t i = layout.hasName ? 1 : 0; i < fields.size(); ++i) {
    if (isNumber(fields[i])) continue;
    const bool isHeader = std::none_of(fields.begin(), fields.end(), isNumber);
    return fmt::format("holds {}, which isn't a number{}", quoted(fields[i]),
                       isHeader ? "; these files have no header, take it out" : proposal(fields));
  }
  return fmt::format("can't be read as {} ({})", layout.name, layout.fields);
}

}  // namespace

std::string lineComplaint(const std::string& line, Layout layout) {
  const LayoutInfo& info = layoutInfo(layout);
  if (const auto complaint = complaintOfBytes(line, info)) return *complaint;
  const auto first = std::find_if_not(line.begin(), line.end(), isSpace);
  const auto last = std::find_if_not(line.rbegin(), line.rend(), isSpace);
  if (isMark(*first)) return fmt::format("begins with \"{}\"; a field must come first", *first);
  if (*first == '#') return "begins with \"#\", but these files know no comments; take it out";
  if (isMark(*last)) return fmt::format("ends with \"{}\"; take it off the end of the lines", *last);
  return complaintOfFields(line, info);
}

}  // namespace tiepoint::workbench::cli
