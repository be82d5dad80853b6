#include "workbench/survey/choices.h"

#include <algorithm>

#include "workbench/naming/match_run.h"
#include "workbench/survey/point_choice.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

void chooseBase(DrivenSession& session, const RegistrationRequest& request) {
  GroupIdSet base;
  for (const std::string& name : request.base) base.insert(chosenGroup(session.state(), name, Field::base));
  session.setBase(base);
}

/// Exclusions and weights, in that order.
class PointChoices {
 public:
  PointChoices(std::vector<PointChoice> exclude_, std::vector<WeightChoice> weights_)
      : exclude(std::move(exclude_)), weights(std::move(weights_)) {}

  /// Applies those whose points are known already; a matching may name the others.
  void applyKnown(DrivenSession& session) {
    const auto isOpen = [&](const PointChoice& choice) { return !findPoints(session.state(), choice); };
    const auto isOpenWeight = [&](const WeightChoice& choice) { return isOpen(choice.points); };
    const auto firstKnown = std::stable_partition(exclude.begin(), exclude.end(), isOpen);
    const auto firstKnownWeight = std::stable_partition(weights.begin(), weights.end(), isOpenWeight);
    const PointChoices known({firstKnown, exclude.end()}, {firstKnownWeight, weights.end()});
    exclude.erase(firstKnown, exclude.end());
    weights.erase(firstKnownWeight, weights.end());
    known.apply(session);
  }

  /// Throws Refused for unknown points.
  void apply(DrivenSession& session) const {
    for (const PointChoice& excluded : exclude) {
      const ChosenPoints chosen = chosenPoints(session.state(), excluded, Field::exclude);
      if (chosen.wholeGroup) {
        session.excludeGroups({chosen.group});
      } else {
        session.excludePoints(chosen.points);
      }
    }
    for (const WeightChoice& choice : weights) {
      session.setWeight(chosenPoints(session.state(), choice.points, Field::weight).points, choice.weight);
    }
  }

 private:
  std::vector<PointChoice> exclude;
  std::vector<WeightChoice> weights;
};

}  // namespace

/// The base comes after the names: the operation that looks for coincident points sees no base points.
std::optional<NamingReport> applyChoices(Workbench& workbench, DrivenSession& session, const ResolvedRequest& resolved,
                                         Progress& progress) {
  const RegistrationRequest& request = resolved.request;
  PointChoices choices(request.exclude, resolved.weights);
  std::optional<NamingReport> report;
  if (request.naming.how != Naming::none) {
    choices.applyKnown(session);
    report = namePoints(workbench, session, request.naming, request.unit, progress);
  }
  choices.apply(session);
  chooseBase(session, request);
  return report;
}

}  // namespace tiepoint::workbench
