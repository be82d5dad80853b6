// An adjustment of a survey, beside the names that its numbers belong to.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/adjustment_network.h"
#include "workbench/values/adjustment_request.h"
#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench {

/// The stations of the network are the registration's groups, in the same order.
struct AdjustedSurvey {
  analysis::Network network;
  analysis::Adjustment result;
  /// UTF-8, of each target of the network.
  std::vector<std::string> targetNames;
  /// Of each observation of the network: its point among the outcomes.
  std::vector<std::size_t> pointOf;
  /// Of each point among the outcomes: its observation; none for a point that is out from the first.
  std::vector<std::optional<std::size_t>> observationOf;
  /// Of control targets that no station measured.
  std::vector<ControlTarget> unseenControl;
  /// Of each observation of the network: whether it takes part.
  std::vector<bool> used;
  /// It was asked for a start, which was judged and not replaced.
  bool startWasGiven = false;

  bool usesPoint(std::size_t point) const {
    const std::optional<std::size_t>& observation = observationOf[point];
    return observation && used[*observation];
  }

  /// What is told of a point of the outcomes; nothing when it takes no part.
  const analysis::AdjustedObservation* ofPoint(std::size_t point) const {
    const std::optional<std::size_t>& observation = observationOf[point];
    if (!observation || !result.observations[*observation]) return nullptr;
    return &*result.observations[*observation];
  }
};

}  // namespace tiepoint::workbench
