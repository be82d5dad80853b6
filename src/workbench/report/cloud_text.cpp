#include "workbench/report/cloud_text.h"

#include <fmt/format.h>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

const char* moveText(CloudMove move) {
  switch (move) {
    case CloudMove::moved:
      return "moved";
    case CloudMove::notAsked:
      return "stays: --apply moves the clouds";
    case CloudMove::base:
      return "stays: its group is the base";
    case CloudMove::notRegistered:
      return "stays: its group isn't registered";
    case CloudMove::noGroup:
      return "stays: no group has its name";
  }
  return "";
}

std::string copyText(const CloudReport& cloud) {
  if (!cloud.copy) return "";
  const CloudCopy& copy = *cloud.copy;
  const std::string others =
      copy.otherLines == 0 ? "" : fmt::format(", {} other lines copied unchanged", copy.otherLines);
  return fmt::format("{}: {} points written to {}{}\n", printable(cloud.name), copy.points, printable(copy.path),
                     others);
}

}  // namespace

std::string matrixText(const OdGeMatrix3d& matrix) {
  TextTable table(std::vector<TextTable::Side>(4, TextTable::Side::right));
  for (int row = 0; row < 4; ++row) {
    std::vector<std::string> cells;
    cells.reserve(4);
    for (int column = 0; column < 4; ++column) cells.push_back(fmt::format("{}", matrix(row, column)));
    table.add(std::move(cells));
  }
  return table.text();
}

std::string cloudMovesText(const std::vector<CloudReport>& clouds) {
  TextTable table({TextTable::Side::left, TextTable::Side::left, TextTable::Side::left});
  std::string matrices;
  std::string copies;
  for (const CloudReport& cloud : clouds) {
    table.add({printable(cloud.name), moveText(cloud.move), printable(cloud.source)});
    if (cloud.move == CloudMove::moved) {
      matrices += fmt::format("\n{}: from its file to the common system, row by row\n{}", printable(cloud.name),
                              matrixText(cloud.matrix));
    }
    copies += copyText(cloud);
  }
  return "Clouds\n" + table.text() + matrices + (copies.empty() ? "" : "\n" + copies);
}

}  // namespace tiepoint::workbench
