// Registers three stations from arrays in memory, prints what is left over at each point, and meets a
// refusal.
#include <cstdio>

#include "workbench/survey/survey.h"

using namespace tiepoint::workbench;

namespace {

const std::vector<StationPoints> stations{
    {"hall", {{"T1", {0, 0, 0}}, {"T2", {10, 0, 0}}, {"T3", {0, 8, 0}}, {"T4", {0, 0, 3}}}},
    {"door", {{"T1", {5, 5, 0}}, {"T2", {5, 15, 0}}, {"T3", {-3, 5, 0}}, {"T4", {5, 5, 3.002}}}},
    {"roof", {{"T1", {1, 1, 1}}, {"T2", {11, 1, 1}}, {"T3", {1, 9, 1}}, {"T4", {1, 1, 4}}}}};

}  // namespace

int main() {
  SurveyHost host({"", MODULE});
  RegistrationRequest request;
  request.base = {"hall"};
  const Registration registration = host.registerStations(stations, request);
  if (!registration.registered()) return 1;
  for (const PointOutcome& point : registration.points) {
    const char* const group = registration.groups[point.group].name.c_str();
    if (point.discrepancy) std::printf("%s %s %.6f\n", group, point.name.c_str(), *point.discrepancy);
  }
  try {
    request.base = {"cellar"};
    host.registerStations(stations, request);
  } catch (const Refused& refused) {
    const Refusal& refusal = refused.refusal();
    std::printf("refused: %s, %s %s\n", refusalKey(refusal.kind), fieldKey(refusal.field), refusal.name.c_str());
  }
}
