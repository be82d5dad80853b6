#include "workbench/reading/file_head.h"

#include <algorithm>
#include <array>
#include <utility>

#include "workbench/reading/point_line.h"

namespace tiepoint::workbench {

namespace {

struct SeparatorLine {
  const char* text;
  Separator separator;
};
/// What spreadsheets write and read as the first line.
constexpr std::array<SeparatorLine, 3> separatorLines{
    {{"sep=;", Separator::semicolon}, {"sep=,", Separator::comma}, {"sep=\t", Separator::tab}}};

std::optional<Separator> saidSeparator(const std::string& line) {
  for (const SeparatorLine& known : separatorLines) {
    if (line == known.text || line == '"' + std::string(known.text) + '"') return known.separator;
  }
  return std::nullopt;
}

std::string withoutMark(const std::string& comment) {
  const auto isMark = [](char c) { return isWhite(c) || c == '#' || c == '/' || c == '%' || c == '!'; };
  return std::string(std::find_if_not(comment.begin(), comment.end(), isMark), comment.end());
}

}  // namespace

LookedAt lookAtHead(TextLines& lines) {
  LookedAt seen;
  std::size_t bytes = 0;
  std::string line;
  while (seen.head.lines.size() < mostHeadLines && bytes < mostHeadBytes && lines.next(line)) {
    if (lines.number() == 1) {
      seen.head.saidSeparator = saidSeparator(line);
      if (seen.head.saidSeparator) continue;
    }
    // A line that semicolons alone would keep from being a comment may be data.
    const LineKind kind = kindOfLine(line, Separator::semicolon);
    if (kind == LineKind::blank) {
      ++seen.blankCount;
    } else if (kind == LineKind::comment) {
      ++seen.commentCount;
      if (seen.head.lines.empty()) seen.head.commentBefore = withoutMark(line);
    } else {
      bytes += line.size();
      seen.head.lines.push_back({lines.number(), std::move(line)});
    }
  }
  return seen;
}

}  // namespace tiepoint::workbench
