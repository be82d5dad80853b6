#include "workbench/cli/naming/match_text.h"

#include <fmt/format.h>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

constexpr auto left = TextTable::Side::left;
constexpr auto right = TextTable::Side::right;

std::vector<std::string> namesOf(const SessionState& state, const GroupIdSet& groups) {
  std::vector<std::string> names;
  for (const GroupId group : groups) names.push_back(state.group(group).name);
  return names;
}

std::string printableNames(const SessionState& state, const GroupIdSet& groups) {
  std::vector<std::string> names;
  for (const std::string& name : namesOf(state, groups)) names.push_back(printable(name));
  return joined(names, 4);
}

std::string describe(const SessionState& state, const NamingStep& step) {
  if (step.kind == NamingKind::triangles) return "equal triangles of " + printableNames(state, step.groups);
  return step.kind == NamingKind::unite ? "two names on one spot" : "points on one spot";
}

/// Solves are left out: each step is followed by one.
std::vector<std::string> stepRow(const SessionState& state, std::size_t number, const NamingStep& step) {
  const bool byTriangles = step.kind == NamingKind::triangles;
  return {std::to_string(number), describe(state, step), fmt::format("{:g}", step.tolerance),
          byTriangles ? fmt::format("{:g}", step.minSideDifference) : "-", std::to_string(step.named)};
}

std::string stepTable(const SessionState& state, const MatchReport& report) {
  TextTable table({right, left, right, right, right});
  table.add({"step", "what", "within", "sides differ by", "named"});
  std::size_t number = 0;
  for (const NamingStep& step : report.steps) {
    if (step.kind != NamingKind::solve) table.add(stepRow(state, ++number, step));
  }
  return number == 0 ? "" : table.text();
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

Json jsonStep(const SessionState& state, const NamingStep& step) {
  const bool byTriangles = step.kind == NamingKind::triangles;
  const bool isSolve = step.kind == NamingKind::solve;
  return {{"kind", stepKey(step.kind)},
          {"groups", namesOf(state, step.groups)},
          {"tolerance", isSolve ? Json() : jsonNumber(step.tolerance)},
          {"minSideDifference", byTriangles ? jsonNumber(step.minSideDifference) : Json()},
          {"named", isSolve ? Json() : Json(step.named)}};
}

}  // namespace

std::string matchText(const SessionState& state, const MatchReport& report, const LengthFormat& lengths) {
  std::string text = fmt::format("Naming ({}): {} points have automatic names, {} have none", report.mode, report.named,
                                 report.unnamed);
  if (report.limits) {
    text += fmt::format("; no discrepancy may be above {:g} {}", report.limits->discrepancy, lengths.positionUnit());
  }
  text += "\n" + stepTable(state, report);
  for (const MatchReason& reason : report.reasons) text += "  " + wrapped("- " + printable(reason.text), 98, 4) + "\n";
  return text;
}

Json jsonMatch(const SessionState& state, const MatchReport& report) {
  Json steps = Json::array(), reasons = Json::array();
  for (const NamingStep& step : report.steps) steps.push_back(jsonStep(state, step));
  for (const MatchReason& reason : report.reasons) reasons.push_back({{"key", reason.key}, {"text", reason.text}});
  return {{"mode", report.mode},       {"limit", report.limits ? jsonNumber(report.limits->discrepancy) : Json()},
          {"named", report.named},     {"unnamed", report.unnamed},
          {"steps", std::move(steps)}, {"reasons", std::move(reasons)}};
}

}  // namespace tiepoint::workbench::cli
