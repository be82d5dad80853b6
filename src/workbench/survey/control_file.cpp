#include "workbench/survey/control_file.h"

#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <utility>

#include "workbench/survey/line_fields.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

namespace {

/// Below this smallest eigenvalue of its correlations a matrix is singular but for the roundings of its digits.
constexpr double singularCorrelation = 1e-12;

using Numbers = std::vector<double>;

/// The numbers behind the name; nothing where one of them is none.
std::optional<Numbers> numbersOf(const std::vector<std::string>& fields) {
  Numbers numbers;
  for (std::size_t i = 1; i < fields.size(); ++i) {
    const std::optional<double> number = numberOfText(fields[i]);
    if (!number) return std::nullopt;
    numbers.push_back(*number);
  }
  return numbers;
}

/// Of one sigma, three sigmas or six covariances.
Eigen::Matrix3d covarianceOf(const Numbers& given) {
  if (given.size() == 6) {
    Eigen::Matrix3d covariance;
    covariance << given[0], given[1], given[2], given[1], given[3], given[4], given[2], given[4], given[5];
    return covariance;
  }
  const Eigen::Vector3d sigmas(given.front(), given[given.size() / 2], given.back());
  return sigmas.cwiseAbs2().asDiagonal();
}

bool isDefinite(const Eigen::Matrix3d& covariance) {
  if (!covariance.allFinite() || (covariance.diagonal().array() <= 0.0).any()) return false;
  const Eigen::Vector3d scale = covariance.diagonal().cwiseSqrt().cwiseInverse();
  const Eigen::Matrix3d correlations = scale.asDiagonal() * covariance * scale.asDiagonal();
  const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> spectrum(correlations, Eigen::EigenvaluesOnly);
  return spectrum.eigenvalues().minCoeff() > singularCorrelation;
}

[[noreturn]] void refuseTarget(RefusalKind kind, const LineFile& file, const std::string& name, std::uint64_t number) {
  Refusal refusal{kind, file.field, file.path, name};
  refusal.count = number;
  throw Refused(std::move(refusal));
}

/// What may stand behind the place.
bool isSpread(const Numbers& given) {
  if (given.size() == 6) return true;
  const bool isNegative = std::any_of(given.begin(), given.end(), [](double sigma) { return sigma < 0.0; });
  return (given.empty() || given.size() == 1 || given.size() == 3) && !isNegative;
}

ControlTarget targetOfLine(const LineFile& file, const std::string& line, std::uint64_t number) {
  constexpr std::size_t names = 1;
  const auto fields = fieldsOfLine(line, names);
  if (!fields || fields->empty() || fields->front().empty()) file.refuse(number);
  const std::optional<Numbers> numbers = numbersOf(*fields);
  if (!numbers || numbers->size() < 3) file.refuse(number);
  const Numbers spread(numbers->begin() + 3, numbers->end());
  if (!isSpread(spread)) file.refuse(number);
  ControlTarget target{fields->front(), {{(*numbers)[0], (*numbers)[1], (*numbers)[2]}, std::nullopt}};
  const bool isHeld = std::all_of(spread.begin(), spread.end(), [](double value) { return value == 0.0; });
  if (!isHeld) target.control.covariance = covarianceOf(spread);
  if (!isHeld && !isDefinite(*target.control.covariance)) {
    refuseTarget(RefusalKind::controlNotDefinite, file, target.name, number);
  }
  return target;
}

bool isSame(const analysis::Control& a, const analysis::Control& b) {
  return a.place == b.place && a.covariance == b.covariance;
}

}  // namespace

std::vector<ControlTarget> readControlFile(const std::string& path) {
  const LineFile file{path, Field::controlFile, RefusalKind::controlLine};
  std::vector<ControlTarget> targets;
  std::unordered_map<std::string, std::size_t> index;
  forEachLine(file, Quotes::enclosing, [&](const std::string& line, std::uint64_t number) {
    ControlTarget target = targetOfLine(file, line, number);
    const auto [known, isNew] = index.try_emplace(sessionName(target.name), targets.size());
    if (isNew) {
      targets.push_back(std::move(target));
    } else if (!isSame(targets[known->second].control, target.control)) {
      refuseTarget(RefusalKind::controlTwice, file, target.name, number);
    }
  });
  return targets;
}

}  // namespace tiepoint::workbench
