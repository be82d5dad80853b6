// One draw of the reference points in a view, beside the same calls made from one flat array.
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "display/ref_points_transient.h"
#include "platform/sdk/od_gi_viewport_draw.h"
#include "support/session_host.h"

namespace {

using namespace ZOR::reg;

/// Takes every call and draws nothing, so that what is measured is the drawable's own work.
class SilentDraw : public OdGsViewImpl, public OdGiViewportGeometry, public OdGiSubEntityTraits {
 public:
  double sum = 0.0;

  void addRef() override {}
  void release() override {}
  OdGiViewportGeometry& geometry() override { return *this; }
  OdGiSubEntityTraits& subEntityTraits() override { return *this; }
  OdGeMatrix3d worldToEyeMatrix() const override { return {}; }
  OdGeMatrix3d worldToDeviceMatrix() const override { return {}; }
  void setColor(std::uint16_t color) override { sum += color; }
  void setFillType(OdGiFillType) override {}
  void worldLine(const OdGePoint3d points[2]) override { sum += points[0].x - points[1].y; }
  void text(const OdGePoint3d& position, const OdGeVector3d&, const OdGeVector3d&, double height, double, double,
            const OdString& message) override {
    sum += position.x + height + message.getLength();
  }
};

constexpr std::size_t pointsPerGroup = 500;

std::size_t groupsFor(std::size_t count) { return (count + pointsPerGroup - 1) / pointsPerGroup; }

DisplayPoint anyPoint(std::mt19937_64& random, std::size_t number) {
  std::uniform_real_distribution<double> place(0.0, 100.0);
  return {{place(random), place(random), place(random)}, OdString("T" + std::to_string(number)), RefPointId(number)};
}

/// Points of stations in a cube of 100 units, station by station, as a session puts them in.
DisplayGroups pointsInOrder(std::size_t count) {
  std::mt19937_64 random(20261);
  DisplayGroups groups;
  for (std::size_t i = 0; i < count; ++i) {
    DisplayGroup& group = groups[i / pointsPerGroup];
    group.color = static_cast<std::uint16_t>(i / pointsPerGroup % 240);
    group.points.push_back(anyPoint(random, i));
  }
  return groups;
}

/// The same, one point of each station after the other, so that neighbours in a list lie far apart
/// in memory: the worst that a heap can do.
DisplayGroups pointsInTurns(std::size_t count) {
  std::mt19937_64 random(20261);
  DisplayGroups groups;
  for (std::size_t i = 0; i < count; ++i) {
    DisplayGroup& group = groups[i % groupsFor(count)];
    group.color = static_cast<std::uint16_t>(i % groupsFor(count) % 240);
    group.points.push_back(anyPoint(random, i));
  }
  return groups;
}

void measureDraw(benchmark::State& state, const DisplayGroups& groups) {
  tiepoint::testing::SessionHost host;
  RefPointsTransient transient(&groups);
  transient.beginDrawing();
  SilentDraw draw;
  for (auto _ : state) transient.viewportDraw(&draw);
  benchmark::DoNotOptimize(draw.sum);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// As a session shows them: a copy of its groups, made group by group.
void drawInOrder(benchmark::State& state) {
  const DisplayGroups all = pointsInOrder(static_cast<std::size_t>(state.range(0)));
  const DisplayGroups shown = all;
  measureDraw(state, shown);
}
BENCHMARK(drawInOrder)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void drawInTurns(benchmark::State& state) {
  measureDraw(state, pointsInTurns(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(drawInTurns)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The same calls, as bare as they can be: one array of places and one of names, no groups.
void plainDraw(benchmark::State& state) {
  std::vector<OdGePoint3d> places;
  std::vector<OdString> names;
  for (const auto& [id, group] : pointsInOrder(static_cast<std::size_t>(state.range(0)))) {
    for (const DisplayPoint& point : group.points) {
      places.push_back(point.position);
      names.push_back(point.name);
    }
  }
  SilentDraw draw;
  OdGiViewportGeometry& geometry = draw.geometry();
  benchmark::DoNotOptimize(&geometry);
  constexpr double reach = 10.0;
  for (auto _ : state) {
    for (const OdGePoint3d& p : places) {
      const OdGePoint3d lines[3][2] = {{{p.x + reach, p.y, p.z}, {p.x - reach, p.y, p.z}},
                                       {{p.x, p.y + reach, p.z}, {p.x, p.y - reach, p.z}},
                                       {{p.x, p.y, p.z + reach}, {p.x, p.y, p.z - reach}}};
      for (const auto& line : lines) geometry.worldLine(line);
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
      geometry.text(places[i], {0, 0, 1}, {1, 0, 0}, reach, 0.0, 0.0, names[i]);
    }
  }
  benchmark::DoNotOptimize(draw.sum);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(plainDraw)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
