#include "workbench/survey/sigmas_file.h"

#include <optional>

#include "workbench/survey/line_fields.h"

namespace tiepoint::workbench {

namespace {

/// Nothing for a line that isn't one of a sigma. More words than three could be divided into a group and a
/// point in several ways.
std::optional<SigmaChoice> sigmaOfLine(const std::string& line) {
  constexpr std::size_t noNames = 0;
  const auto fields = fieldsOfLine(line, noNames);
  if (!fields || fields->size() < 2 || fields->size() > 3) return std::nullopt;
  const std::optional<double> sigma = numberOfText(fields->back());
  const bool hasPoint = fields->size() == 3;
  if (!sigma || !isUsableSigma(*sigma) || fields->front().empty() || (hasPoint && (*fields)[1].empty()))
    return std::nullopt;
  SigmaChoice choice{{{PointRef{fields->front()}}, fields->front()}, *sigma};
  if (hasPoint) {
    choice.points.readings.front().point = (*fields)[1];
    choice.points.given += ":" + (*fields)[1];
  }
  return choice;
}

}  // namespace

std::vector<SigmaChoice> readSigmasFile(const std::string& path) {
  const LineFile file{path, Field::sigmasFile, RefusalKind::sigmasLine};
  std::vector<SigmaChoice> sigmas;
  forEachLine(file, Quotes::enclosing, [&](const std::string& line, std::uint64_t number) {
    std::optional<SigmaChoice> sigma = sigmaOfLine(line);
    if (!sigma) file.refuse(number);
    sigmas.push_back(std::move(*sigma));
  });
  return sigmas;
}

}  // namespace tiepoint::workbench
