#include "workbench/reading/file_head.h"

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

}  // namespace

LookedAt lookAtHead(TextLines& lines) {
  LookedAt seen;
  std::size_t bytes = 0;
  bool isAboveData = true;
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
      if (isAboveData) seen.head.comment = NumberedLine{lines.number(), line};
    } else {
      bytes += line.size();
      isAboveData = isAboveData && kindOfLine(line, Separator::blank) == LineKind::comment;
      seen.head.lines.push_back({lines.number(), std::move(line)});
    }
  }
  return seen;
}

}  // namespace tiepoint::workbench
