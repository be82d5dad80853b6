#include "workbench/report/match_text.h"

#include <fmt/format.h>

#include "workbench/report/finding_text.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

constexpr auto left = TextTable::Side::left;
constexpr auto right = TextTable::Side::right;

std::vector<std::string> namesOf(const Registration& registration, const GroupIdSet& groups) {
  std::vector<std::string> names;
  for (const GroupId group : groups) names.push_back(registration.group(group).name);
  return names;
}

std::string printableNames(const Registration& registration, const GroupIdSet& groups) {
  std::vector<std::string> names;
  for (const std::string& name : namesOf(registration, groups)) names.push_back(printable(name));
  return joined(names, 4);
}

std::string describe(const Registration& registration, const NamingStep& step) {
  if (step.kind == NamingKind::triangles) return "congruent triangles of " + printableNames(registration, step.groups);
  return step.kind == NamingKind::unite ? "two names of one target" : "coincident points";
}

/// Solves are left out: each step is followed by one.
std::vector<std::string> stepRow(const Registration& registration, std::size_t number, const NamingStep& step) {
  const bool byTriangles = step.kind == NamingKind::triangles;
  return {std::to_string(number), describe(registration, step), fmt::format("{:g}", step.tolerance),
          byTriangles ? fmt::format("{:g}", step.minSideDifference) : "-", std::to_string(step.named)};
}

std::string stepTable(const Registration& registration, const NamingReport& report) {
  TextTable table({right, left, right, right, right});
  table.add({"step", "what", "within", "sides differ by", "named"});
  std::size_t number = 0;
  for (const NamingStep& step : report.steps) {
    if (step.kind != NamingKind::solve) table.add(stepRow(registration, ++number, step));
  }
  return number == 0 ? "" : table.text();
}

const char* namingKey(Naming how) {
  switch (how) {
    case Naming::automatic:
      return "auto";
    case Naming::triangles:
      return "triangles";
    case Naming::closeness:
      return "distance";
    case Naming::none:
      break;
  }
  return "";
}

const char* stepKey(NamingKind kind) {
  switch (kind) {
    case NamingKind::triangles:
      return "triangles";
    case NamingKind::solve:
      return "solve";
    case NamingKind::closeness:
      return "closeness";
    case NamingKind::unite:
      return "unite";
  }
  return "";
}

OrderedJson jsonStep(const Registration& registration, const NamingStep& step) {
  const bool byTriangles = step.kind == NamingKind::triangles;
  const bool isSolve = step.kind == NamingKind::solve;
  return {{"kind", stepKey(step.kind)},
          {"groups", namesOf(registration, step.groups)},
          {"tolerance", isSolve ? OrderedJson() : jsonNumber(step.tolerance)},
          {"minSideDifference", byTriangles ? jsonNumber(step.minSideDifference) : OrderedJson()},
          {"named", isSolve ? OrderedJson() : OrderedJson(step.named)}};
}

}  // namespace

std::string matchText(const Registration& registration, const NamingReport& report, const LengthFormat& lengths) {
  std::string text = fmt::format("Naming ({}): {} points have automatic names, {} have none", namingKey(report.how),
                                 report.named, report.unnamed);
  if (report.limits) {
    text += fmt::format("; largest discrepancy allowed: {:g} {}", report.limits->discrepancy, lengths.positionUnit());
  }
  text += "\n" + stepTable(registration, report);
  for (const Finding& reason : report.reasons) {
    text += "  " + wrapped("- " + printable(findingText(reason)), textWidth - 2, 4) + "\n";
  }
  return text;
}

OrderedJson jsonMatch(const Registration& registration, const NamingReport& report) {
  OrderedJson steps = OrderedJson::array(), reasons = OrderedJson::array();
  for (const NamingStep& step : report.steps) steps.push_back(jsonStep(registration, step));
  for (const Finding& reason : report.reasons) {
    reasons.push_back({{"key", findingKey(reason.kind)}, {"text", findingText(reason)}});
  }
  return {{"mode", namingKey(report.how)},
          {"limit", report.limits ? jsonNumber(report.limits->discrepancy) : OrderedJson()},
          {"named", report.named},
          {"unnamed", report.unnamed},
          {"steps", std::move(steps)},
          {"reasons", std::move(reasons)}};
}

}  // namespace tiepoint::workbench
