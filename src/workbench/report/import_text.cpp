#include "workbench/report/import_text.h"

#include <fmt/format.h>

#include "workbench/report/line_fault_text.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

std::string noteOf(const ImportedFile& file) {
  if (!file.stored) return "not taken in: the drawing has this group already";
  if (file.stop) return fmt::format("stopped: line {} {}", file.stop->line, lineFaultText(*file.stop));
  return "";
}

}  // namespace

std::string importTable(const ImportReport& import) {
  if (import.files.empty()) return "";
  constexpr auto left = TextTable::Side::left;
  constexpr auto right = TextTable::Side::right;
  TextTable table({left, left, right, right, left, left});
  table.add({"file", "layout", "lines", "points", "group", ""});
  for (const ImportedFile& file : import.files) {
    table.add({printable(file.path), layoutInfo(file.layout).name, std::to_string(file.lines),
               std::to_string(file.points), printable(file.group), noteOf(file)});
  }
  return "Reference points\n" + table.text();
}

std::string importText(const ImportReport& import) {
  std::string text = importTable(import);
  for (const std::string& message : import.messages) text += "  " + printable(message) + "\n";
  return text;
}

}  // namespace tiepoint::workbench
