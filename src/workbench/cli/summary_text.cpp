#include "workbench/cli/summary_text.h"

#include <fmt/format.h>

#include <map>

#include "workbench/cli/cloud_text.h"
#include "workbench/cli/import_text.h"
#include "workbench/cli/naming/match_text.h"
#include "workbench/cli/spread_text.h"
#include "workbench/geometry/rigid_motion.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

constexpr auto left = TextTable::Side::left;
constexpr auto right = TextTable::Side::right;

std::string plural(std::size_t count, const char* noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string groupNames(const SessionState& state, const std::vector<GroupId>& ids) {
  std::vector<std::string> names;
  names.reserve(ids.size());
  for (const GroupId id : ids) names.push_back(printable(state.group(id).name));
  return joined(names);
}

std::string baseNames(const SessionState& state) {
  std::vector<GroupId> ids;
  for (const SessionGroup& group : state.groups) {
    if (group.inBase) ids.push_back(group.id);
  }
  return groupNames(state, ids);
}

std::size_t activeCount(const SessionState& state) {
  std::size_t count = 0;
  for (const SessionPoint& point : state.points) count += point.record.active ? 1 : 0;
  return count;
}

std::string methodLine(const Road& road) {
  const std::string base = road.usesBase ? " with base " + baseNames(road.state) : "";
  return fmt::format("Registered {}{}: {} of {} in use\n", road.isIterative ? "iteratively" : "pairwise", base,
                     activeCount(road.state), plural(road.state.points.size(), "point"));
}

/// How the loop of the iterative method ended.
std::string courseText(const Road& road, const LengthFormat& lengths) {
  if (!road.iterations) return "";
  const IterationCourse& course = *road.iterations;
  const char* const unit = lengths.positionUnit();
  if (course.converged()) {
    return fmt::format("Iteration {} of at most {} moved the merged targets by {:g}; the criterion is {:g} ({})\n",
                       course.iterations, course.limit, course.movement, course.criterion, unit);
  }
  return fmt::format(
      "Not converged: the limit of {} iterations ended the run. The last pass still moved the merged targets by\n"
      "{:g}; the criterion is {:g} ({}). A small movement in a pass isn't a small error: along a chain of\n"
      "stations the passes creep, tens of thousands of them. Raise --max-iterations and lower --convergence, or\n"
      "register with --method pairwise, which doesn't suffer from this.\n",
      course.limit, course.movement, course.criterion, unit);
}

// --- Transformations.

std::vector<std::string> transformRow(const SessionGroup& group, const GroupResult& result,
                                      const LengthFormat& lengths) {
  const std::string name = printable(group.name);
  if (!result.toCommon) return {name, group.inBase ? "base" : "not registered"};
  const AxisAngleShift motion = axisAngleShift(*result.toCommon);
  const std::string angle = fmt::format("{:.6f}", motion.angleDegrees);
  // The axis of no turn is what rounding makes of it.
  const bool turns = angle != fmt::format("{:.6f}", 0.0);
  const auto axis = [&](std::size_t i) { return turns ? fmt::format("{:.9f}", motion.axis[i]) : "-"; };
  const auto shift = [&](std::size_t i) { return lengths.position(motion.shift[i]); };
  return {name, angle, axis(0), axis(1), axis(2), shift(0), shift(1), shift(2)};
}

std::string transformations(const Road& road, const LengthFormat& lengths) {
  TextTable table({left, right, right, right, right, right, right, right});
  table.add({"group", "angle", "axis x", "axis y", "axis z", "shift x", "shift y", "shift z"});
  for (std::size_t i = 0; i < road.state.groups.size(); ++i) {
    table.add(transformRow(road.state.groups[i], road.results.groups[i], lengths));
  }
  return fmt::format(
      "Transformations to the common system: degrees about an axis through the origin, then a shift ({})\n{}",
      lengths.positionUnit(), table.text());
}

// --- Discrepancies.

/// What is left of rounding in a survey without noise is no discrepancy to speak of.
bool printsAsZero(const Results& results, std::size_t point, const LengthFormat& lengths) {
  return lengths.residual(*results.points[point].discrepancy) == lengths.residual(0.0);
}

std::string markOf(const Results& results, std::size_t point, const LengthFormat& lengths) {
  if (!results.largest || *results.largest != point) return "";
  if (printsAsZero(results, point, lengths)) return "";
  if (!results.standOut) return "<- largest";
  return fmt::format("<- largest, {:.1f} times the median", results.standOut->timesMedian);
}

std::string discrepancies(const Road& road, const LengthFormat& lengths) {
  const bool atBase = road.results.atBase.has_value();
  TextTable table({left, left, right, atBase ? right : left, left});
  const auto add = [&](const std::string& group, const std::string& point, const std::string& discrepancy,
                       const std::string& base, const std::string& mark) {
    if (atBase) {
      table.add({group, point, discrepancy, base, mark});
    } else {
      table.add({group, point, discrepancy, mark});
    }
  };
  add("group", "point", "discrepancy", "at base", "");
  for (std::size_t i = 0; i < road.state.points.size(); ++i) {
    const PointResult& result = road.results.points[i];
    if (!result.discrepancy) continue;
    const SessionPoint& point = road.state.points[i];
    add(printable(road.state.group(point.record.groupId).name), printable(point.name),
        lengths.residual(*result.discrepancy), result.atBase ? lengths.residual(*result.atBase) : "-",
        markOf(road.results, i, lengths));
  }
  return fmt::format("Discrepancies ({}): from the registered point to its merged target{}\n{}", lengths.residualUnit(),
                     atBase ? "; at base: to the base's own measurement" : "", table.text());
}

std::string hint(const Road& road, const LengthFormat& lengths) {
  if (!road.results.standOut || printsAsZero(road.results, road.results.standOut->point, lengths)) return "";
  const SessionPoint& point = road.state.points[road.results.standOut->point];
  const std::string group = printable(road.state.group(point.record.groupId).name);
  const std::string name = printable(point.name);
  return fmt::format(
      "{} in {} stands out. It may have been measured or named wrongly there: look at it, and compare a run "
      "with\n--exclude {}:{}\n",
      name, group, group, name);
}

// --- RMS.

void addRms(TextTable& table, const std::string& name, const GroupResult& result, bool atBase,
            const LengthFormat& lengths) {
  if (!result.discrepancies) return;
  std::vector<std::string> row{name, std::to_string(result.discrepancies->count),
                               lengths.residual(result.discrepancies->value),
                               lengths.residual(result.discrepancies->largest)};
  if (atBase) {
    row.push_back(result.atBase ? std::to_string(result.atBase->count) : "-");
    row.push_back(result.atBase ? lengths.residual(result.atBase->value) : "-");
  }
  table.add(std::move(row));
}

std::string rms(const Road& road, const LengthFormat& lengths) {
  const bool atBase = road.results.atBase.has_value();
  TextTable table({left, right, right, right, right, right});
  std::vector<std::string> head{"group", "points", "RMS", "largest"};
  if (atBase) head.insert(head.end(), {"at base", "RMS at base"});
  table.add(std::move(head));
  for (std::size_t i = 0; i < road.state.groups.size(); ++i) {
    addRms(table, printable(road.state.groups[i].name), road.results.groups[i], atBase, lengths);
  }
  addRms(table, "all", {std::nullopt, road.results.discrepancies, road.results.atBase}, atBase, lengths);
  std::string text = fmt::format("RMS of the discrepancies ({})\n{}", lengths.residualUnit(), table.text());
  if (atBase) {
    text += fmt::format("\nRMS at the base: {} {} over {}\n", lengths.residual(road.results.atBase->value),
                        lengths.residualUnit(), plural(road.results.atBase->count, "point"));
  }
  return text;
}

// --- Points that are out.

std::string pointsOut(const Road& road) {
  std::map<std::pair<GroupId, Reason>, std::vector<std::string>> names;
  std::size_t count = 0;
  for (std::size_t i = 0; i < road.state.points.size(); ++i) {
    if (!road.reasons[i]) continue;
    ++count;
    const SessionPoint& point = road.state.points[i];
    names[{point.record.groupId, *road.reasons[i]}].push_back(printable(point.name));
  }
  if (count == 0) return "";
  TextTable table({left, left, left});
  for (const auto& [key, points] : names) {
    const bool haveNames = key.second != Reason::unnamed;
    table.add({printable(road.state.group(key.first).name), reasonText(key.second),
               haveNames ? joined(points) : plural(points.size(), "point")});
  }
  return fmt::format("Out: {} of {}\n{}", count, plural(road.state.points.size(), "point"), table.text());
}

// --- Groups that don't hang together.

std::string partName(const Road& road, const Part& part) {
  const std::string groups = groupNames(road.state, part.groups);
  return part.cluster ? fmt::format("cluster {} ({})", *part.cluster, groups) : groups;
}

std::string parts(const Road& road) {
  TextTable table({left, left});
  for (const Part& part : road.links.parts) {
    table.add(
        {part.cluster ? fmt::format("cluster {}", *part.cluster) : "in none", groupNames(road.state, part.groups)});
  }
  return table.text();
}

std::string links(const Road& road) {
  TextTable table({left, left, left});
  for (const Link& link : road.links.links) {
    std::vector<std::string> names;
    for (const std::string& name : link.names) names.push_back(printable(name));
    const std::size_t lacking = names.size() < namesThatLink ? namesThatLink - names.size() : 0;
    table.add({partName(road, road.links.parts[link.first]) + " and " + partName(road, road.links.parts[link.second]),
               fmt::format("{} ({})", plural(names.size(), "common name"), joined(names)),
               lacking == 0 ? "" : fmt::format("{} more needed", lacking)});
  }
  return table.isEmpty() ? "  No two of them share a name.\n" : table.text();
}

std::string notLinked(const Road& road) {
  if (road.links.parts.empty()) return "Not registered: no group has a point that could take part.\n";
  if (road.links.parts.size() == 1 && !road.links.parts.front().cluster) {
    return fmt::format("Not registered: {} is alone; there is no second group to join it with.\n",
                       partName(road, road.links.parts.front()));
  }
  std::string text = fmt::format(
      "Not registered: the groups don't hang together. Two link when they share {} names, and "
      "linked ones count as one.\n",
      namesThatLink);
  text += parts(road) + "\nWhat they share\n" + links(road);
  if (road.links.parts.front().cluster) text += "\nTo go on with one cluster alone: --keep-cluster NUMBER\n";
  return text;
}

std::string baseLost(const Road& road) {
  return fmt::format(
      "Not registered: of the base ({}) fewer than 3 points are shared with the other groups. Without it\n"
      "they would lie in a system of their own; leave out --base to have that.\n",
      baseNames(road.state));
}

// --- What was written.

std::string writtenFiles(const WrittenFiles& files) {
  std::string text;
  if (!files.matrices.empty()) {
    text += fmt::format("{} written: {}\n", plural(files.matrices.size(), "matrix file"), joined(files.matrices));
  }
  if (!files.transforms.empty()) text += fmt::format("transformations written to {}\n", files.transforms);
  if (!files.report.empty()) text += fmt::format("report written to {}\n", files.report);
  if (!files.picture.empty()) text += fmt::format("picture written to {}\n", files.picture);
  return text.empty() ? text : "\n" + text;
}

std::string written(const Road& road) {
  std::string text;
  if (!road.clouds.empty()) text += "\n" + cloudMovesText(road.clouds);
  if (!road.commonPointsFile.empty() || !road.storedGroup.empty()) text += "\n";
  if (!road.commonPointsFile.empty()) {
    text += fmt::format("{} written to {}\n", plural(road.targets.size(), "common point"), road.commonPointsFile);
  }
  if (!road.storedGroup.empty()) {
    text += fmt::format("{} stored in the drawing as group {}\n", plural(road.targets.size(), "common point"),
                        printable(road.storedGroup));
  }
  return text + writtenFiles(road.files);
}

std::string registered(const Road& road, const LengthFormat& lengths) {
  std::string text = methodLine(road) + courseText(road, lengths) + "\n" + transformations(road, lengths) + "\n" +
                     discrepancies(road, lengths);
  const std::string out = pointsOut(road);
  const std::string spread = spreadText(road.results.spread, lengths);
  const std::string advice = hint(road, lengths);
  if (!out.empty()) text += "\n" + out;
  text += "\n" + rms(road, lengths);
  if (!spread.empty()) text += "\n" + spread;
  if (!advice.empty()) text += "\n" + advice;
  return text + written(road);
}

std::string refused(const Road& road) {
  const std::string out = pointsOut(road);
  if (road.outcome == Outcome::notNamed) return "Not registered: the points can't be named so that it is certain.\n";
  return (road.outcome == Outcome::baseLost ? baseLost(road) : notLinked(road)) + (out.empty() ? "" : "\n" + out);
}

}  // namespace

std::string summaryText(const Road& road, const LengthFormat& lengths) {
  std::string text = importTable(road.import);
  if (!text.empty()) text += "\n";
  if (road.match) text += matchText(road.state, *road.match, lengths) + "\n";
  return text + (road.outcome == Outcome::registered ? registered(road, lengths) : refused(road));
}

}  // namespace tiepoint::workbench::cli
