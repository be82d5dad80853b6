#include "workbench/report/summary_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "workbench/geometry/rigid_motion.h"
#include "workbench/report/adjustment_names.h"
#include "workbench/report/adjustment_text.h"
#include "workbench/report/cloud_text.h"
#include "workbench/report/import_text.h"
#include "workbench/report/look_list.h"
#include "workbench/report/match_text.h"
#include "workbench/report/plain_text.h"
#include "workbench/report/reason_text.h"
#include "workbench/report/refused_text.h"
#include "workbench/report/registered_line.h"
#include "workbench/report/spread_text.h"
#include "workbench/report/worst_rows.h"

namespace tiepoint::workbench {

namespace {

constexpr auto left = TextTable::Side::left;
constexpr auto right = TextTable::Side::right;

/// How the loop of the iterative method ended.
std::string courseText(const Registration& registration, const LengthFormat& lengths) {
  if (!registration.iterations) return "";
  const IterationCourse& course = *registration.iterations;
  const char* const unit = lengths.positionUnit();
  if (course.converged()) {
    return fmt::format("Iteration {} of at most {} moved the merged targets by {:g}; the criterion is {:g} ({})\n",
                       course.iterations, course.limit, course.movement, course.criterion, unit);
  }
  const std::string text = fmt::format(
      "Not converged: stopped by the limit of {} iterations. The last pass still moved the merged targets by "
      "{:g}; the criterion is {:g} ({}). A small movement per pass doesn't mean a small error: along a chain of "
      "stations each pass moves the far stations only slightly; convergence can take tens of thousands of "
      "passes. Raise --max-iterations and lower --convergence, or register with --method pairwise, which "
      "doesn't have this problem.",
      course.limit, course.movement, course.criterion, unit);
  return wrapped(text, textWidth, 0) + "\n";
}

// --- Transformations.

std::vector<std::string> transformRow(const GroupOutcome& group, const LengthFormat& lengths) {
  const std::string name = printable(group.name);
  if (!group.toCommon) return {name, group.inBase ? "base" : "not registered"};
  const AxisAngleShift motion = axisAngleShift(*group.toCommon);
  const std::string angle = fmt::format("{:.6f}", motion.angleDegrees);
  // The axis of no turn is what rounding makes of it.
  const bool turns = angle != fmt::format("{:.6f}", 0.0);
  const auto axis = [&](std::size_t i) { return turns ? fmt::format("{:.9f}", motion.axis[i]) : "-"; };
  const auto shift = [&](std::size_t i) { return lengths.position(motion.shift[i]); };
  return {name, angle, axis(0), axis(1), axis(2), shift(0), shift(1), shift(2)};
}

std::string transformations(const Registration& registration, const LengthFormat& lengths, bool all) {
  TextTable table({left, right, right, right, right, right, right, right});
  table.add({"group", "angle", "axis x", "axis y", "axis z", "shift x", "shift y", "shift z"});
  std::vector<std::size_t> rows = rowsToShow(badnessOf(registration.groups), all);
  std::sort(rows.begin(), rows.end());
  for (const std::size_t i : rows) table.add(transformRow(registration.groups[i], lengths));
  const std::string head =
      fmt::format("Transformations to the common system: degrees about an axis through the origin, then a shift ({})",
                  lengths.positionUnit());
  return wrapped(head, textWidth, 2) + "\n" + table.text() + restLine(rows.size(), registration.groups.size(), "group");
}

/// Where all others see the point, where that is known.
std::string placeOfOthers(const Outlier& outlier, const LengthFormat& lengths) {
  if (!outlier.leftOut) return "";
  const OdGeVector3d& error = *outlier.leftOut;
  return fmt::format(": all others see the target {} {} beside it",
                     lengths.residual(std::hypot(error.x, error.y, error.z)), lengths.residualUnit());
}

std::string hint(const Registration& registration, const LengthFormat& lengths) {
  const auto& outlier = registration.registered()->outlier;
  if (!outlier) return "";
  const std::string text = fmt::format(
      "{} stands out{}. It may have been mismeasured or misnamed there: check it, and compare a run with --exclude {}",
      pointInGroup(registration, outlier->point), placeOfOthers(*outlier, lengths),
      pointChoice(registration, outlier->point));
  return wrapped(text, textWidth, 0) + "\n";
}

// --- Points that are out.

/// Names of the points that are out, for each group and reason.
using PointsOut = std::map<std::pair<std::size_t, Reason>, std::vector<std::string>>;

PointsOut pointsOutOf(const Registration& registration) {
  PointsOut out;
  for (const PointOutcome& point : registration.points) {
    if (point.reason) out[{point.group, *point.reason}].push_back(printable(point.name));
  }
  return out;
}

/// The columns that group and reason leave for the names.
std::size_t widthForNames(const Registration& registration, const PointsOut& out) {
  std::size_t group = 0, reason = 0;
  for (const auto& entry : out) {
    group = std::max(group, columnsOf(printable(registration.groups[entry.first.first].name)));
    reason = std::max(reason, columnsOf(reasonText(entry.first.second)));
  }
  const std::size_t taken = group + reason + 6;
  return taken < textWidth ? textWidth - taken : 0;
}

std::string pointsOut(const Registration& registration, bool all) {
  const PointsOut out = pointsOutOf(registration);
  if (out.empty()) return "";
  const std::size_t width = widthForNames(registration, out);
  const std::size_t shown = all || out.size() <= maxRows ? out.size() : worstRows;
  std::size_t count = 0, row = 0;
  TextTable table({left, left, left});
  for (const auto& [key, points] : out) {
    count += points.size();
    if (row++ >= shown) continue;
    const bool haveNames = key.second != Reason::unnamed;
    table.add({printable(registration.groups[key.first].name), reasonText(key.second),
               haveNames ? joinedWithin(points, width) : plural(points.size(), "point")});
  }
  return fmt::format("Not used: {} of {}\n{}{}", count, plural(registration.points.size(), "point"), table.text(),
                     restLine(shown, out.size(), "line"));
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

std::string written(const Registration& registration) {
  std::string text;
  if (!registration.clouds.empty()) text += "\n" + cloudMovesText(registration.clouds);
  if (!registration.files.commonPoints.empty() || !registration.storedGroup.empty()) text += "\n";
  if (!registration.files.commonPoints.empty()) {
    text += fmt::format("{} written to {}\n", plural(registration.registered()->targets.size(), "common point"),
                        registration.files.commonPoints);
  }
  if (!registration.storedGroup.empty()) {
    text += fmt::format("{} stored in the drawing as group {}\n",
                        plural(registration.registered()->targets.size(), "common point"),
                        printable(registration.storedGroup));
  }
  return text + writtenFiles(registration.files);
}

/// What stands at the top: how it was registered, and whether it went well.
std::string head(const Registration& registration, const LengthFormat& lengths, const TableOptions& options) {
  const std::string line = registeredLine(registration) + fmt::format(": {} of {} in use", activeCount(registration),
                                                                      plural(registration.points.size(), "point"));
  if (registration.method != RegistrationMethod::adjust || !registration.adjustment) {
    return line + "\n" + courseText(registration, lengths);
  }
  const analysis::Adjustment& result = registration.adjustment->result;
  const std::string numbers = fmt::format("; {} equations for {} unknowns, redundancy {}", result.observationCount,
                                          result.unknownCount, result.redundancy);
  return wrapped(line + numbers, textWidth, 2) + "\n" + adjustmentText(registration, lengths, options);
}

std::string registered(const Registration& registration, const LengthFormat& lengths, const TableOptions& options) {
  std::string text = head(registration, lengths, options) + "\n" +
                     transformations(registration, lengths, options.allRows) + "\n" +
                     discrepanciesByPoint(registration, lengths, options);
  const std::string out = pointsOut(registration, options.allRows);
  const std::string spread = spreadText(registration.registered()->spread, lengths);
  const std::string protocol = protocolText(registration, lengths);
  const std::string advice = hint(registration, lengths);
  if (!out.empty()) text += "\n" + out;
  text += "\n" + discrepanciesByGroup(registration, lengths, options);
  if (!protocol.empty()) text += "\n" + protocol;
  if (!spread.empty()) text += "\n" + spread;
  if (!advice.empty()) text += "\n" + advice;
  return text + written(registration);
}

}  // namespace

std::string summaryText(const Registration& registration, const LengthFormat& lengths, const TableOptions& options) {
  std::string text = importTable(registration.import, options.allRows);
  if (!text.empty()) text += "\n";
  if (registration.naming) text += matchText(registration, *registration.naming, lengths) + "\n";
  if (registration.registered()) return text + registered(registration, lengths, options);
  const std::string out = pointsOut(registration, options.allRows);
  const bool showsPoints = !out.empty() && !std::holds_alternative<NotNamed>(registration.outcome);
  return text + refusedText(registration) + (showsPoints ? "\n" + out : "");
}

}  // namespace tiepoint::workbench
