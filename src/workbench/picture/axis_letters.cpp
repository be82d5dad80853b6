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

double distance(const Spot& a, const Spot& b) { return std::hypot(a.x - b.x, a.y - b.y); }

double distanceToArrow(const Spot& spot, const Spot& end) {
  const double share = (spot.x * end.x + spot.y * end.y) / (end.x * end.x + end.y * end.y);
  const double nearest = std::clamp(share, 0.0, 1.0);
  return distance(spot, {end.x * nearest, end.y * nearest});
}

/// How far a letter at this spot is from touching anything; below zero it touches.
double clearance(const Spot& spot, const std::vector<Spot>& ends, const std::vector<Spot>& letters) {
  double room = std::numeric_limits<double>::infinity();
  for (const Spot& end : ends) room = std::min(room, distanceToArrow(spot, end) - letterReach);
  for (const Spot& letter : letters) room = std::min(room, distance(spot, letter) - 2.0 * letterReach);
  return room;
}

/// The first spot that touches nothing, going out from straight ahead to both sides; else the clearest.
Spot letterSpot(const Spot& end, const std::vector<Spot>& ends, const std::vector<Spot>& letters) {
  const double ahead = std::atan2(end.y, end.x);
  Spot clearest;
  double most = -std::numeric_limits<double>::infinity();
  for (int step = 0; step < stepsAround; ++step) {
    const int side = step % 2 == 0 ? 1 : -1;
    const double angle = ahead + side * ((step + 1) / 2) * fullTurn / stepsAround;
    const Spot spot{end.x + beyondTheEnd * std::cos(angle), end.y + beyondTheEnd * std::sin(angle)};
    const double room = clearance(spot, ends, letters);
    if (room > most) {
      most = room;
      clearest = spot;
    }
    if (room >= 0.0) break;
  }
  return clearest;
}

}  // namespace

std::vector<Spot> letterSpots(const std::vector<Spot>& ends) {
  std::vector<Spot> spots;
  for (const Spot& end : ends) spots.push_back(letterSpot(end, ends, spots));
  return spots;
}

}  // namespace tiepoint::workbench::picture
