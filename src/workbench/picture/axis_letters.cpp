#include "workbench/picture/axis_letters.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tiepoint::workbench::picture {

namespace {

/// From an arrow's end to the middle of its letter, and what a letter needs to other arrows and, twice
/// as much, to other letters.
constexpr double beyondTheEnd = 7.0;
constexpr double letterReach = 6.5;
/// Where else a letter may stand: around the end of its arrow, counted from straight ahead.
constexpr double fullTurn = 6.283185307179586;
constexpr int stepsAround = 24;

double distance(const PagePoint& a, const PagePoint& b) { return std::hypot(a.x - b.x, a.y - b.y); }

double distanceToArrow(const PagePoint& point, const PagePoint& end) {
  const double share = (point.x * end.x + point.y * end.y) / (end.x * end.x + end.y * end.y);
  const double nearest = std::clamp(share, 0.0, 1.0);
  return distance(point, {end.x * nearest, end.y * nearest});
}

/// How far a letter at this point is from touching anything; below zero it touches.
double clearance(const PagePoint& point, const std::vector<PagePoint>& ends, const std::vector<PagePoint>& letters) {
  double room = std::numeric_limits<double>::infinity();
  for (const PagePoint& end : ends) room = std::min(room, distanceToArrow(point, end) - letterReach);
  for (const PagePoint& letter : letters) room = std::min(room, distance(point, letter) - 2.0 * letterReach);
  return room;
}

/// The first point that touches nothing, going out from straight ahead to both sides; else the clearest.
PagePoint letterPosition(const PagePoint& end, const std::vector<PagePoint>& ends,
                         const std::vector<PagePoint>& letters) {
  const double ahead = std::atan2(end.y, end.x);
  PagePoint clearest;
  double most = -std::numeric_limits<double>::infinity();
  for (int step = 0; step < stepsAround; ++step) {
    const int side = step % 2 == 0 ? 1 : -1;
    const double angle = ahead + side * ((step + 1) / 2) * fullTurn / stepsAround;
    const PagePoint point{end.x + beyondTheEnd * std::cos(angle), end.y + beyondTheEnd * std::sin(angle)};
    const double room = clearance(point, ends, letters);
    if (room > most) {
      most = room;
      clearest = point;
    }
    if (room >= 0.0) break;
  }
  return clearest;
}

}  // namespace

std::vector<PagePoint> letterPositions(const std::vector<PagePoint>& ends) {
  std::vector<PagePoint> points;
  for (const PagePoint& end : ends) points.push_back(letterPosition(end, ends, points));
  return points;
}

}  // namespace tiepoint::workbench::picture
