#include "workbench/survey/line_fields.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

#include "workbench/io/text_encoding.h"
#include "workbench/reading/fields.h"
#include "workbench/reading/text_lines.h"
#include "workbench/survey/file_survey.h"

namespace tiepoint::workbench {

namespace {

constexpr std::string_view separators = " \t,;\r";
constexpr char quote = '"';

bool isSeparator(char c) { return separators.find(c) != std::string_view::npos; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The first place from `at` on, outside quotation marks, whose character `isWanted`; else the end. Marks
/// enclose where a field begins with one, and two of them within are one.
template <class IsWanted>
std::size_t findOutside(const std::string& line, std::size_t at, IsWanted isWanted) {
  bool isEnclosed = false;
  for (; at < line.size(); ++at) {
    const bool isQuote = line[at] == quote;
    if (isEnclosed && isQuote && at + 1 < line.size() && line[at + 1] == quote) {
      ++at;
    } else if (isQuote && (isEnclosed || at == 0 || isSeparator(line[at - 1]))) {
      isEnclosed = !isEnclosed;
    } else if (!isEnclosed && isWanted(line[at])) {
      return at;
    }
  }
  return line.size();
}

void removeComment(std::string& line, Quotes quotes) {
  const auto isComment = [](char c) { return c == '#'; };
  line.erase(quotes == Quotes::enclosing ? findOutside(line, 0, isComment) : std::min(line.find('#'), line.size()));
}

void requireUtf8(const LineFile& file, const std::string& line, std::uint64_t number) {
  try {
    wideFromUtf8(line);
  } catch (const EncodingError& error) {
    Refusal refusal{file.badLine, file.field, file.path};
    refusal.count = number;
    refusal.cause = error.what();
    throw Refused(std::move(refusal));
  }
}

void readLines(const LineFile& file, Quotes quotes, const TakeLine& take) {
  surveyFile(file.path);
  TextLines lines(bytesOfFile(file.path), std::nullopt);
  for (std::string line; lines.next(line);) {
    removeComment(line, quotes);
    line.erase(line.find_last_not_of(separators) + 1);
    line.erase(0, line.find_first_not_of(separators));
    requireUtf8(file, line, lines.number());
    if (!line.empty()) take(line, lines.number());
  }
  if (!lines.isTooLong()) return;
  Refusal refusal{RefusalKind::lineTooLong, file.field, file.path};
  refusal.count = lines.number();
  throw Refused(std::move(refusal));
}

/// Behind the first `names` fields a comma stands alone between two digits, and other separators elsewhere.
bool hasDecimalCommas(const std::string& line, std::size_t names) {
  bool hasComma = false;
  bool hasOther = false;
  std::size_t fields = 0;
  for (std::size_t at = findOutside(line, 0, isSeparator); at < line.size(); at = findOutside(line, at, isSeparator)) {
    const std::size_t next = std::min(line.find_first_not_of(separators, at), line.size());
    const std::string between = line.substr(at, next - at);
    if (++fields > names) {
      hasComma = hasComma || (between == "," && isDigit(line[at - 1]) && isDigit(line[next]));
      hasOther = hasOther || between.find(',') == std::string::npos;
    }
    at = next;
  }
  return hasComma && hasOther;
}

}  // namespace

std::optional<double> numberOfText(const std::string& text) {
  const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
  const char* const end = text.data() + text.size();
  double number = 0.0;
  const auto [stop, error] = std::from_chars(text.data() + (hasPlus ? 1 : 0), end, number);
  if (error != std::errc{} || stop != end || !std::isfinite(number)) return std::nullopt;
  return number;
}

void LineFile::refuse(std::uint64_t number) const {
  Refusal refusal{badLine, field, path};
  refusal.count = number;
  throw Refused(std::move(refusal));
}

void forEachLine(const LineFile& file, Quotes quotes, const TakeLine& take) {
  try {
    readLines(file, quotes, take);
  } catch (const Refused& refused) {
    Refusal refusal = refused.refusal();
    refusal.field = file.field;
    throw Refused(std::move(refusal));
  }
}

std::string cutLastField(std::string& line) {
  line.erase(line.find_last_not_of(separators) + 1);
  const std::size_t before = line.find_last_of(separators);
  std::string field = before == std::string::npos ? line : line.substr(before + 1);
  line.erase(before == std::string::npos ? 0 : before);
  line.erase(line.find_last_not_of(separators) + 1);
  return field;
}

std::optional<std::vector<std::string>> fieldsOfLine(const std::string& line, std::size_t names) {
  FieldList list;
  if (splitFields(line, Separator::mixed, list) != QuoteTrouble::none) return std::nullopt;
  std::vector<std::string> fields;
  for (std::size_t i = 0; i < list.size(); ++i) {
    // Any run of separators is one.
    if (list[i].isQuoted || !list[i].text.empty()) fields.push_back(list[i].text);
  }
  if (hasDecimalCommas(line, names)) return std::nullopt;
  return fields;
}

}  // namespace tiepoint::workbench
