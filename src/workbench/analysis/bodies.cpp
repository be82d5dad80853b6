#include "workbench/analysis/bodies.h"

#include <algorithm>

namespace tiepoint::workbench::analysis {

Bodies::Bodies(const Survey& survey) : ofStation(survey.stations.size(), 0) {
  hasVertical = std::any_of(survey.stations.begin(), survey.stations.end(), [](const auto& s) { return s.levelled; });
  if (survey.datum != DatumKind::free) {
    held = rows.size();
    rows.push_back({std::nullopt, hasVertical, false});
  }
  for (std::size_t s = 0; s < survey.stations.size(); ++s) {
    if (survey.stations[s].held) {
      ofStation[s] = *held;
      continue;
    }
    ofStation[s] = rows.size();
    rows.push_back({s, survey.stations[s].levelled, !rows.empty()});
  }
}

}  // namespace tiepoint::workbench::analysis
