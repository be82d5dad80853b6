// The rigid bodies of a survey, as the certificate counts them.
#pragma once

#include <optional>
#include <vector>

#include "workbench/analysis/survey.h"

namespace tiepoint::workbench::analysis {

struct Body {
  /// Of the survey; none for the body of all that is held, which stands at the identity.
  std::optional<std::size_t> station;
  /// Its third column is the vertical, which levelled stations and the held body have in common.
  bool sharesVertical = false;
  /// One body's shift is fixed.
  bool hasShift = true;

  int ownColumns() const { return sharesVertical ? 2 : 3; }
};

struct Bodies {
  explicit Bodies(const Survey& survey);

  std::vector<Body> rows;
  /// Of each station of the survey.
  std::vector<std::size_t> ofStation;
  std::optional<std::size_t> held;
  bool hasVertical = false;
};

}  // namespace tiepoint::workbench::analysis
