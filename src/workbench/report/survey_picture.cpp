#include "workbench/report/survey_picture.h"

#include <fmt/format.h>

#include "workbench/report/plain_text.h"
#include "workbench/report/registered_line.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

namespace {

[[noreturn]] void refuse(RefusalKind kind, const char* cause) {
  Refusal refusal{kind, Field::picture};
  refusal.cause = cause;
  throw Refused(std::move(refusal));
}

std::string draw(const picture::Request& request, const picture::Content& content, const ShownPoints& shown) {
  try {
    return picture::drawPicture(request, content, shown.drawables).bytes;
  } catch (const picture::NothingToShow& nothing) {
    refuse(RefusalKind::nothingToShow, nothing.what());
  } catch (const std::runtime_error& error) {
    refuse(RefusalKind::pictureFailed, error.what());
  }
}

void setUnits(picture::Content& content, const LengthFormat& lengths) {
  content.lengthUnit = lengths.positionUnit();
  content.residualUnit = lengths.residualUnit();
  content.residualUnitsPerLength = lengths.residualsPerLength();
}

std::string fileName(const std::string& path) {
  const std::size_t slash = path.find_last_of("/\\");
  return printable(slash == std::string::npos ? path : path.substr(slash + 1));
}

// --- Registered groups.

std::string pointName(const Registration& registration, const PointOutcome& point) {
  return fmt::format("{} in {}", printable(point.name), printable(registration.groups[point.group].name));
}

std::string residualText(double residual, const LengthFormat& lengths) {
  return fmt::format("{} {}", lengths.residual(residual), lengths.residualUnit());
}

std::string counted(const Registration& registration) {
  return plural(registration.groups.size(), "group") + ", " +
         plural(registration.registered()->targets.size(), "common target");
}

std::string subtitle(const Registration& registration, const LengthFormat& lengths) {
  std::string text = registeredLine(registration, 3);
  if (registration.iterations && !registration.iterations->converged()) text += ", not converged";
  text += fmt::format("; {} of {} in use", activeCount(registration), plural(registration.points.size(), "point"));
  const auto& discrepancies = registration.registered()->discrepancies;
  if (discrepancies) text += "; RMS " + residualText(discrepancies->value, lengths);
  return text;
}

void addGroups(picture::Content& content, const Registration& registration, const ShownGroups& shown,
               const LengthFormat& lengths) {
  for (const GroupOutcome& group : registration.groups) {
    const auto found = shown.find(group.id);
    if (found == shown.end()) continue;
    content.groups.push_back({printable(group.name), found->second.color, found->second.points,
                              group.discrepancies ? lengths.residual(group.discrepancies->value)
                              : group.inBase      ? "base"
                                                  : ""});
  }
  content.residualHead = fmt::format("RMS, {}", lengths.residualUnit());
  if (content.residualUnit == std::string("drawing units")) content.residualHead = "RMS";
}

/// A residual that is printed as zero is the rounding of the numbers.
bool isSeen(const std::optional<double>& residual, const LengthFormat& lengths) {
  return residual && lengths.residual(*residual) != lengths.residual(0.0);
}

/// The merged target that a registered point lies beside.
OdGePoint3d targetOf(const PointOutcome& point) {
  const OdGeVector3d& r = *point.residual;
  return *point.registered + OdGeVector3d(-r.x, -r.y, -r.z);
}

void addResiduals(picture::Content& content, const Registration& registration, const ShownGroups& shown,
                  const LengthFormat& lengths) {
  const auto& outlier = registration.registered()->outlier;
  for (std::size_t i = 0; i < registration.points.size(); ++i) {
    const PointOutcome& point = registration.points[i];
    if (!isSeen(point.discrepancy, lengths) || !point.registered || !point.residual) continue;
    const auto group = shown.find(registration.groups[point.group].id);
    if (group == shown.end()) continue;
    const bool standsOut = outlier && outlier->point == i;
    content.residuals.push_back(
        {targetOf(point), *point.registered, group->second.color, printable(point.name),
         standsOut ? fmt::format("{}: {}", pointName(registration, point), residualText(*point.discrepancy, lengths))
                   : ""});
  }
}

void addStations(picture::Content& content, const Registration& registration, const ShownGroups& shown) {
  std::vector<std::string> unknown;
  for (const GroupOutcome& group : registration.groups) {
    const auto found = shown.find(group.id);
    if (found == shown.end()) continue;
    if (!group.originIsAmongPoints) {
      unknown.push_back(printable(group.name));
      continue;
    }
    OdGePoint3d position;
    position.p_transform(*group.motion());
    content.stations.push_back({printable(group.name), found->second.color, position});
  }
  if (!content.stations.empty()) content.remarks.push_back("Triangles: stations, each at its system's origin.");
  if (!unknown.empty()) {
    content.remarks.push_back(
        fmt::format("No triangle for {}: the origin is far from the points.", joined(unknown, 4)));
  }
}

std::string describedPoint(const Registration& registration, std::size_t index, const LengthFormat& lengths) {
  const PointOutcome& point = registration.points[index];
  return fmt::format("{}, {}", pointName(registration, point), residualText(*point.discrepancy, lengths));
}

std::string outlierRemark(const Registration& registration, const Outlier& outlier, const LengthFormat& lengths) {
  const std::string text = "Stands out: " + describedPoint(registration, outlier.point, lengths);
  return outlier.timesMedian ? fmt::format("{}, {:.1f} times the median.", text, *outlier.timesMedian) : text + ".";
}

void addWorst(picture::Content& content, const Registration& registration, const LengthFormat& lengths) {
  const Registered& registered = *registration.registered();
  if (!registered.discrepancies) return;
  if (!registered.largest || !isSeen(registration.points[*registered.largest].discrepancy, lengths)) {
    content.remarks.push_back("All residuals are zero at this precision.");
  } else if (registered.outlier) {
    content.remarks.push_back(outlierRemark(registration, *registered.outlier, lengths));
  } else {
    content.remarks.push_back("Largest residual: " + describedPoint(registration, *registered.largest, lengths) + ".");
  }
}

void addUnregistered(picture::Content& content, const Registration& registration) {
  std::vector<std::string> names;
  for (const GroupOutcome& group : registration.groups) {
    if (!group.motion()) names.push_back(printable(group.name));
  }
  if (names.empty()) return;
  content.remarks.push_back(fmt::format("Not registered and not shown: {}.", joined(names, 4)));
}

}  // namespace

picture::Content storedContent(const SessionState& state, const ShownGroups& shown, const std::string& title,
                               const LengthFormat& lengths) {
  picture::Content content;
  content.title = fileName(title);
  content.subtitle = fmt::format("{} in {}, not registered: each group in its own system",
                                 plural(state.points.size(), "point"), plural(state.groups.size(), "group"));
  setUnits(content, lengths);
  for (const SessionGroup& group : state.groups) {
    const auto found = shown.find(group.id);
    if (found == shown.end()) continue;
    content.groups.push_back({printable(group.name), found->second.color, found->second.points, ""});
  }
  return content;
}

picture::Content registeredContent(const Registration& registration, const ShownGroups& shown,
                                   const LengthFormat& lengths) {
  picture::Content content;
  content.title = registration.document.empty() ? counted(registration) : fileName(registration.document);
  content.subtitle = subtitle(registration, lengths);
  setUnits(content, lengths);
  addGroups(content, registration, shown, lengths);
  addResiduals(content, registration, shown, lengths);
  addWorst(content, registration, lengths);
  addUnregistered(content, registration);
  addStations(content, registration, shown);
  return content;
}

std::string storedPicture(const SessionState& state, const ShownPoints& shown, const std::string& title,
                          const LengthFormat& lengths, const picture::Request& request) {
  return draw(request, storedContent(state, shown.groups, title, lengths), shown);
}

std::string registeredPicture(const Registration& registration, const ShownPoints& shown, const LengthFormat& lengths,
                              const picture::Request& request) {
  return draw(request, registeredContent(registration, shown.groups, lengths), shown);
}

}  // namespace tiepoint::workbench
