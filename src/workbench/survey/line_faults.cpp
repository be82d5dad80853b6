#include "workbench/survey/line_faults.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/sdk/od_code_page.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

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

/// As UTF-8; its beginning when it is long.
std::string excerpt(const std::string& bytes) {
  return utf8FromWide(odToWide(bytes.substr(0, longestQuote))) + (bytes.size() > longestQuote ? "..." : "");
}

/// What bytes alone tell.
std::optional<LineFaultKind> faultOfBytes(const std::string& line, const LayoutInfo& layout) {
  if (line.compare(0, 2, "\xFF\xFE") == 0 || line.compare(0, 2, "\xFE\xFF") == 0) return LineFaultKind::utf16;
  if (line.find('\0') != std::string::npos) return LineFaultKind::zeroByte;
  if (std::all_of(line.begin(), line.end(), isSpace)) return LineFaultKind::blank;
  if (!layout.hasName && line.compare(0, 3, "\xEF\xBB\xBF") == 0) return LineFaultKind::byteOrderMark;
  return std::nullopt;
}

/// The layout that the line would have, to be proposed.
std::optional<Layout> layoutOf(const std::vector<std::string>& fields) {
  const auto other =
      std::find_if(allLayouts.begin(), allLayouts.end(), [&](const LayoutInfo& info) { return fits(fields, info); });
  return other == allLayouts.end() ? std::nullopt : std::optional(other->layout);
}

/// A number such as 12,5 between blanks.
bool hasDecimalComma(const std::string& line) {
  bool comma = false;
  for (std::size_t i = 1; i + 1 < line.size(); ++i) {
    comma = comma || (line[i] == ',' && isDigit(line[i - 1]) && isDigit(line[i + 1]));
  }
  return comma && std::any_of(line.begin(), line.end(), [](char c) { return isSpace(c) || c == ';'; });
}

void describeFieldFault(LineFault& fault, const std::string& line, const LayoutInfo& layout) {
  const std::vector<std::string> fields = fieldsOf(line);
  fault.fields = fields.size();
  if (fields.size() != layout.fieldCount) {
    const bool isComma = hasDecimalComma(line) && fields.size() > layout.fieldCount;
    fault.kind = isComma ? LineFaultKind::decimalComma : LineFaultKind::fieldCount;
    if (!isComma) fault.readsAs = layoutOf(fields);
    return;
  }
  const auto odd = std::find_if_not(fields.begin() + (layout.hasName ? 1 : 0), fields.end(), isNumber);
  if (odd == fields.end()) return;
  const bool isHeader = std::none_of(fields.begin(), fields.end(), isNumber);
  fault.kind = isHeader ? LineFaultKind::header : LineFaultKind::notANumber;
  fault.column = static_cast<std::size_t>(odd - fields.begin()) + 1;
  fault.found = excerpt(*odd);
  if (!isHeader) fault.readsAs = layoutOf(fields);
}

}  // namespace

LineFault lineFault(const std::string& line, Layout layout) {
  LineFault fault;
  fault.layout = layout;
  const LayoutInfo& info = layoutInfo(layout);
  if (const auto kind = faultOfBytes(line, info)) {
    fault.kind = *kind;
    return fault;
  }
  const auto first = std::find_if_not(line.begin(), line.end(), isSpace);
  const auto last = std::find_if_not(line.rbegin(), line.rend(), isSpace);
  if (isMark(*first)) {
    fault.kind = LineFaultKind::leadingMark;
    fault.found = *first;
  } else if (*first == '#') {
    fault.kind = LineFaultKind::comment;
  } else if (isMark(*last)) {
    fault.kind = LineFaultKind::trailingMark;
    fault.found = *last;
  } else {
    describeFieldFault(fault, line, info);
  }
  return fault;
}

}  // namespace tiepoint::workbench
