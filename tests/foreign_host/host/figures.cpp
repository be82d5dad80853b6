#include "figures.h"

#include <array>
#include <charconv>
#include <cmath>
#include <sstream>

namespace foreign {

using namespace ZOR::reg;

namespace {

std::string text(double value) {
  std::array<char, 32> digits{};
  const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  return std::string(digits.data(), end.ptr);
}
std::string text(const std::optional<double>& value) { return value ? text(*value) : "null"; }
std::string text(bool value) { return value ? "true" : "false"; }

double distance(const OdGePoint3d& a, const OdGePoint3d& b) { return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z); }

/// Of the values that are there.
class RootMeanSquare {
 public:
  void add(const std::optional<double>& value) {
    if (!value) return;
    ++count;
    squares += *value * *value;
    largest = std::max(largest, *value);
  }
  void print(std::ostream& out, const std::string& path) const {
    if (count == 0) {
      out << path << " null\n";
      return;
    }
    out << path << ".points " << count << '\n'
        << path << ".rms " << text(std::sqrt(squares / static_cast<double>(count))) << '\n'
        << path << ".largest " << text(largest) << '\n';
  }

 private:
  std::size_t count = 0;
  double squares = 0.0;
  double largest = 0.0;
};

struct PointFigures {
  std::optional<OdGePoint3d> registered;
  std::optional<double> discrepancy;
  std::optional<double> atBase;
};

class Printer {
 public:
  explicit Printer(const Findings& found) : findings(found) {
    for (const NamedId& named : findings.names) nameOf.emplace(named.id, named.name);
    for (const RefPoint& point : findings.points) {
      if (isBase(point.groupId) && isActive(point)) baseTargets.emplace(point.commonId, point.position);
    }
  }

  std::string print() {
    printMessages();
    printPoints();
    printGroups();
    allDiscrepancies.print(out, "discrepancies");
    allAtBase.print(out, "atBase");
    printSpread();
    printCommonPoints();
    return out.str();
  }

 private:
  bool isBase(GroupId group) const { return findings.baseGroups.count(group) != 0; }
  bool isActive(const RefPoint& point) const { return findings.inactivePoints.count(point.id) == 0; }

  PointFigures figuresOfPoint(const RefPoint& point) const {
    PointFigures figures;
    if (const auto known = findings.discrepancies.find(point.id); known != findings.discrepancies.end()) {
      figures.discrepancy = known->second;
    }
    const auto motion = findings.transforms.find(point.groupId);
    if (motion == findings.transforms.end()) return figures;
    figures.registered = point.position;
    figures.registered->p_transform(motion->second);
    const auto target = baseTargets.find(point.commonId);
    if (isActive(point) && target != baseTargets.end()) {
      figures.atBase = distance(*figures.registered, target->second);
    }
    return figures;
  }

  void printMessages() {
    for (std::size_t i = 0; i < findings.messages.size(); ++i) {
      const std::wstring& message = findings.messages[i];
      out << "import.messages." << i << ' ' << std::string(message.begin(), message.end()) << '\n';
    }
  }

  void printPlace(const std::string& path, const OdGePoint3d& place) {
    out << path << ".0 " << text(place.x) << '\n' << path << ".1 " << text(place.y) << '\n';
    out << path << ".2 " << text(place.z) << '\n';
  }

  void printPoints() {
    std::size_t i = 0;
    for (const RefPoint& point : findings.points) {
      const std::string path = "points." + std::to_string(i++);
      const PointFigures figures = figuresOfPoint(point);
      out << path << ".group " << findings.groups.at(point.groupId) << '\n'
          << path << ".name " << nameOf[point.commonId] << '\n'
          << path << ".weight " << text(point.weight) << '\n'
          << path << ".active " << text(isActive(point)) << '\n'
          << path << ".discrepancy " << text(figures.discrepancy) << '\n'
          << path << ".atBase " << text(figures.atBase) << '\n';
      printPlace(path + ".position", point.position);
      if (figures.registered) {
        printPlace(path + ".registered", *figures.registered);
      } else {
        out << path << ".registered null\n";
      }
      count(point, figures);
    }
  }

  void count(const RefPoint& point, const PointFigures& figures) {
    pointCounts[point.groupId] += 1;
    activeCounts[point.groupId] += isActive(point) ? 1 : 0;
    for (RootMeanSquare* sum : {&allDiscrepancies, &discrepanciesOf[point.groupId]}) sum->add(figures.discrepancy);
    for (RootMeanSquare* sum : {&allAtBase, &atBaseOf[point.groupId]}) sum->add(figures.atBase);
  }

  void printTransform(const std::string& path, GroupId group) {
    const auto motion = findings.transforms.find(group);
    if (motion == findings.transforms.end()) {
      out << path << " null\n";
      return;
    }
    for (int row = 0; row < 4; ++row) {
      for (int column = 0; column < 4; ++column) {
        out << path << ".matrix." << row << '.' << column << ' ' << text(motion->second(row, column)) << '\n';
      }
    }
  }

  void printGroups() {
    std::size_t i = 0;
    for (const auto& [group, name] : findings.groups) {
      const std::string path = "groups." + std::to_string(i++);
      out << path << ".name " << name << '\n'
          << path << ".base " << text(isBase(group)) << '\n'
          << path << ".points " << pointCounts[group] << '\n'
          << path << ".active " << activeCounts[group] << '\n';
      printTransform(path + ".transform", group);
      discrepanciesOf[group].print(out, path + ".discrepancies");
      atBaseOf[group].print(out, path + ".atBase");
    }
  }

  void printSpread() {
    out << "spread.largest " << text(findings.maxSpread) << '\n';
    if (findings.spreadCounts.empty()) out << "spread.histogram []\n";
    for (std::size_t i = 0; i < findings.spreadCounts.size(); ++i) {
      const std::string path = "spread.histogram." + std::to_string(i);
      out << path << ".from " << text(findings.spreadEdges[i]) << '\n'
          << path << ".to " << text(findings.spreadEdges[i + 1]) << '\n'
          << path << ".distances " << findings.spreadCounts[i] << '\n';
    }
  }

  void printCommonPoints() {
    std::size_t i = 0;
    for (const ZOR::_StoredPoint& point : findings.commonPoints) {
      const std::string path = "commonPoints." + std::to_string(i++);
      out << path << ".name " << point.name.narrow() << '\n' << path << ".weight " << text(point.w) << '\n';
      printPlace(path + ".position", {point.x, point.y, point.z});
    }
  }

  const Findings& findings;
  std::ostringstream out;
  std::map<CommonPointId, std::string> nameOf;
  std::map<CommonPointId, OdGePoint3d> baseTargets;
  std::map<GroupId, std::size_t> pointCounts;
  std::map<GroupId, std::size_t> activeCounts;
  std::map<GroupId, RootMeanSquare> discrepanciesOf;
  std::map<GroupId, RootMeanSquare> atBaseOf;
  RootMeanSquare allDiscrepancies;
  RootMeanSquare allAtBase;
};

}  // namespace

std::string figuresOf(const Findings& findings) { return Printer(findings).print(); }

}  // namespace foreign
