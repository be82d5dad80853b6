#include "workbench/report/import_text.h"

#include <fmt/format.h>

#include "workbench/report/line_fault_text.h"
#include "workbench/report/plain_text.h"
#include "workbench/report/reading_text.h"
#include "workbench/report/worst_rows.h"

namespace tiepoint::workbench {

namespace {

std::string noteOf(const ImportedFile& file) {
  if (!file.stored) return "not taken in: the drawing has this group already";
  if (file.stop) return fmt::format("stopped: line {} {}", file.stop->line, lineFaultText(*file.stop));
  return "";
}

/// How the files were read that aren't in one of the module's layouts.
std::string readingLines(const ImportReport& import, const std::vector<std::size_t>& rows) {
  std::string text;
  for (const std::size_t i : rows) {
    const ImportedFile& file = import.files[i];
    if (!file.reading) continue;
    const std::string line = fmt::format("{}: {}", printable(file.path), readingLine(*file.reading));
    text += "  " + wrapped(line, textWidth - 2, 4) + "\n";
  }
  return text;
}

}  // namespace

std::string importTable(const ImportReport& import, bool all) {
  if (import.files.empty()) return "";
  constexpr auto left = TextTable::Side::left;
  constexpr auto right = TextTable::Side::right;
  TextTable table({left, left, right, right, left, left});
  table.add({"file", "layout", "lines", "points", "group", ""});
  // Of many files those are worth a line that something came of.
  std::vector<double> badness;
  for (const ImportedFile& file : import.files) badness.push_back(file.stored && !file.stop ? 0.0 : 1.0);
  const std::vector<std::size_t> rows = rowsToShow(badness, all);
  for (const std::size_t i : rows) {
    const ImportedFile& file = import.files[i];
    table.add({printable(file.path), file.reading ? "converted" : layoutInfo(file.layout).name,
               std::to_string(file.lines), std::to_string(file.points), printable(file.group), noteOf(file)});
  }
  return "Reference points\n" + table.text() + restLine(rows.size(), import.files.size(), "file") +
         readingLines(import, rows);
}

std::string importText(const ImportReport& import) {
  std::string text = importTable(import, true);
  for (const std::string& message : import.messages) text += "  " + printable(message) + "\n";
  return text;
}

}  // namespace tiepoint::workbench
