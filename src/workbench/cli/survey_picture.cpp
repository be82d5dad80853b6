#include "workbench/cli/survey_picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/group_matrices.h"
#include "workbench/geometry/station_places.h"
#include "workbench/io/text_encoding.h"
#include "workbench/report/plain_text.h"
#include "workbench/session/stored_groups.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

/// Half the length of a cross that is offered to the module: so much of the distance that each point
/// would have from the next if they were spread evenly, within these bounds.
constexpr double reachShare = 1.0 / 3.0;
constexpr double smallestReach = 2.0;
constexpr double largestReach = 10.0;
/// The share of a picture that points spread over, and the unit in which a plain picture is measured.
constexpr double drawingShare = 0.5;
constexpr double plainArea = 960.0 * 640.0;

std::vector<const OdGiDrawable*> drawablesOf(Workbench& workbench) {
  std::vector<const OdGiDrawable*> drawables;
  for (const TransientEntry& entry : workbench.requireActiveDocument().transient().drawables()) {
    drawables.push_back(entry.drawable);
  }
  return drawables;
}

std::string draw(Workbench& workbench, const picture::Request& request, const picture::Content& content) {
  try {
    return picture::drawPicture(request, content, drawablesOf(workbench)).bytes;
  } catch (const picture::NothingToShow& nothing) {
    throw CommandError(ExitStatus::refused, nothing.what());
  } catch (const std::runtime_error& error) {
    throw CommandError(ExitStatus::file, error.what());
  }
}

std::string plural(std::size_t count, const char* one) {
  return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

/// The groups that the module draws, with their colours: it draws those that are shown and have points,
/// in ascending id, three lines a point.
class ShownGroups {
 public:
  ShownGroups(Workbench& workbench, const SessionState& state, const GroupIdSet& hidden) {
    for (const SessionPoint& point : state.points) ++pointCounts[point.record.groupId];
    RecordingDraw draw{View()};
    for (const OdGiDrawable* drawable : drawablesOf(workbench)) draw.draw(*drawable);
    std::size_t line = 0;
    for (const SessionGroup& group : state.groups) {
      if (hidden.count(group.id) != 0 || line >= draw.lines().size()) continue;
      if (pointCounts[group.id] == 0) continue;
      colors[group.id] = draw.lines()[line].color;
      line += 3 * pointCounts[group.id];
    }
  }

  bool isShown(GroupId group) const { return colors.count(group) != 0; }
  std::uint16_t color(GroupId group) const { return colors.at(group); }
  std::size_t points(GroupId group) const { return pointCounts.at(group); }

 private:
  std::unordered_map<GroupId, std::size_t> pointCounts;
  std::unordered_map<GroupId, std::uint16_t> colors;
};

void tellUnits(picture::Content& content, const LengthFormat& lengths) {
  content.lengthUnit = lengths.positionUnit();
  content.residualUnit = lengths.residualUnit();
  content.residualUnitsPerLength = lengths.residualsPerLength();
}

std::string fileName(const std::string& path) {
  const std::size_t slash = path.find_last_of("/\\");
  return printable(slash == std::string::npos ? path : path.substr(slash + 1));
}

// --- Registered groups.

std::string pointName(const SessionState& state, std::size_t point) {
  const SessionPoint& found = state.points[point];
  return fmt::format("{} in {}", printable(found.name), printable(state.group(found.record.groupId).name));
}

std::string residualText(double residual, const LengthFormat& lengths) {
  return fmt::format("{} {}", lengths.residual(residual), lengths.residualUnit());
}

GroupIdSet unregisteredGroups(const Road& road) {
  GroupIdSet groups;
  for (std::size_t i = 0; i < road.state.groups.size(); ++i) {
    if (!motionOf(road.state, road.results, i)) groups.insert(road.state.groups[i].id);
  }
  return groups;
}

std::string counted(const Road& road) {
  return plural(road.state.groups.size(), "group") + ", " + plural(road.targets.size(), "common target");
}

std::string subtitle(const Road& road, const LengthFormat& lengths) {
  std::vector<std::string> bases;
  std::size_t active = 0;
  for (const SessionGroup& group : road.state.groups) {
    if (group.inBase) bases.push_back(printable(group.name));
  }
  for (const SessionPoint& point : road.state.points) active += point.record.active ? 1 : 0;
  std::string text = fmt::format("Registered {}{}", road.isIterative ? "iteratively" : "pairwise",
                                 road.usesBase ? " with base " + joined(bases, 3) : "");
  if (road.iterations && !road.iterations->converged()) text += ", not converged";
  text += fmt::format("; {} of {} in use", active, plural(road.state.points.size(), "point"));
  if (road.results.discrepancies) text += "; RMS " + residualText(road.results.discrepancies->value, lengths);
  return text;
}

void addGroups(picture::Content& content, const Road& road, const ShownGroups& shown, const LengthFormat& lengths) {
  for (std::size_t i = 0; i < road.state.groups.size(); ++i) {
    const SessionGroup& group = road.state.groups[i];
    if (!shown.isShown(group.id)) continue;
    const auto& rms = road.results.groups[i].discrepancies;
    content.groups.push_back({printable(group.name), shown.color(group.id), shown.points(group.id),
                              rms            ? lengths.residual(rms->value)
                              : group.inBase ? "base"
                                             : ""});
  }
  content.residualHead = fmt::format("RMS, {}", lengths.residualUnit());
  if (content.residualUnit == std::string("drawing units")) content.residualHead = "RMS";
}

/// A residual that is printed as zero is the rounding of the numbers.
bool isSeen(const std::optional<double>& residual, const LengthFormat& lengths) {
  return residual && lengths.residual(*residual) != lengths.residual(0.0);
}

void addResiduals(picture::Content& content, const Road& road, const ShownGroups& shown, const LengthFormat& lengths) {
  std::unordered_map<std::string, OdGePoint3d> targets;
  for (const MergedTarget& target : road.targets) targets.emplace(target.name, target.position);
  for (std::size_t i = 0; i < road.state.points.size(); ++i) {
    const PointResult& result = road.results.points[i];
    const SessionPoint& point = road.state.points[i];
    const auto target = targets.find(point.name);
    if (!isSeen(result.discrepancy, lengths) || !result.registered || target == targets.end()) continue;
    if (!shown.isShown(point.record.groupId)) continue;
    const bool standsOut = road.results.standOut && road.results.standOut->point == i;
    content.residuals.push_back(
        {target->second, *result.registered, shown.color(point.record.groupId), printable(point.name),
         standsOut ? fmt::format("{}: {}", pointName(road.state, i), residualText(*result.discrepancy, lengths)) : ""});
  }
}

void addStations(picture::Content& content, const Road& road, const ShownGroups& shown) {
  std::vector<std::string> unknown;
  for (std::size_t i = 0; i < road.state.groups.size(); ++i) {
    const SessionGroup& group = road.state.groups[i];
    if (!shown.isShown(group.id)) continue;
    if (!originIsAmongItsPoints(road.state, group.id)) {
      unknown.push_back(printable(group.name));
      continue;
    }
    OdGePoint3d place;
    place.p_transform(*motionOf(road.state, road.results, i));
    content.stations.push_back({printable(group.name), shown.color(group.id), place});
  }
  if (!content.stations.empty()) content.remarks.push_back("Triangles: stations, each at its system's origin.");
  if (!unknown.empty()) {
    content.remarks.push_back(fmt::format("No triangle for {}: the origins lie far off.", joined(unknown, 4)));
  }
}

void addWorst(picture::Content& content, const Road& road, const LengthFormat& lengths) {
  if (!road.results.largest) return;
  const std::size_t point = *road.results.largest;
  if (!isSeen(road.results.points[point].discrepancy, lengths)) {
    content.remarks.push_back("No residual is large enough to be told.");
    return;
  }
  const std::string text = fmt::format("{}, {}", pointName(road.state, point),
                                       residualText(*road.results.points[point].discrepancy, lengths));
  if (road.results.standOut) {
    content.remarks.push_back(
        fmt::format("Stands out: {}, {:.1f} times the median.", text, road.results.standOut->timesMedian));
  } else {
    content.remarks.push_back(fmt::format("Largest residual: {}.", text));
  }
}

void addUnregistered(picture::Content& content, const Road& road, const GroupIdSet& hidden) {
  if (hidden.empty()) return;
  std::vector<std::string> names;
  for (const GroupId group : hidden) names.push_back(printable(road.state.group(group).name));
  content.remarks.push_back(fmt::format("Not registered and not shown: {}.", joined(names, 4)));
}

}  // namespace

void suitMarkers(Workbench& workbench, const picture::Size& size) {
  std::size_t count = 0;
  const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
  for (const StoredGroup& group : storedGroups(*database)) count += group.points().size();
  if (count == 0) return;
  // Larger pictures are larger all over, not finer.
  const double area = std::min(plainArea, static_cast<double>(size.width) * size.height) * drawingShare;
  const double reach = reachShare * std::sqrt(area / static_cast<double>(count));
  workbench.profile().offer(registrationSection, "SizeLabel",
                            static_cast<int>(std::clamp(reach, smallestReach, largestReach)));
}

std::string storedPicture(Workbench& workbench, const DrivenSession& session, const std::string& title,
                          const LengthFormat& lengths, const picture::Request& request) {
  const SessionState& state = session.state();
  const ShownGroups shown(workbench, state, {});
  picture::Content content;
  content.title = fileName(title);
  content.subtitle = fmt::format("{} in {}, not registered: each group in a system of its own",
                                 plural(state.points.size(), "point"), plural(state.groups.size(), "group"));
  tellUnits(content, lengths);
  for (const SessionGroup& group : state.groups) {
    if (shown.isShown(group.id)) {
      content.groups.push_back({printable(group.name), shown.color(group.id), shown.points(group.id), ""});
    }
  }
  return draw(workbench, request, content);
}

std::string registeredPicture(Workbench& workbench, DrivenSession& session, const Road& road,
                              const LengthFormat& lengths, const picture::Request& request) {
  const GroupIdSet hidden = unregisteredGroups(road);
  session.operations().setGroupsVisible(hidden, false);
  const ShownGroups shown(workbench, road.state, hidden);
  picture::Content content;
  content.title = road.document.empty() ? counted(road) : fileName(road.document);
  content.subtitle = subtitle(road, lengths);
  tellUnits(content, lengths);
  addGroups(content, road, shown, lengths);
  addResiduals(content, road, shown, lengths);
  addWorst(content, road, lengths);
  addUnregistered(content, road, hidden);
  addStations(content, road, shown);
  std::string bytes = draw(workbench, request, content);
  session.operations().setGroupsVisible(hidden, true);
  return bytes;
}

}  // namespace tiepoint::workbench::cli
