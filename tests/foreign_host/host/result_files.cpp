#include "result_files.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace foreign {

namespace {

/// The value with as many digits as "%.8e" has.
double withNineDigits(double value) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.8e", value);
  return std::strtod(text.data(), nullptr);
}

bool matrixFileHolds(const std::filesystem::path& file, const OdGeMatrix3d& matrix) {
  std::ifstream in(file);
  std::string firstLine, secondLine, number;
  std::getline(in, firstLine);
  std::getline(in, secondLine);
  if (firstLine != "VERSION\t=\t1" || secondLine != "MATRIX\t=") return false;
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      const bool isRotation = row < 3 && column < 3;
      const double expected = isRotation ? matrix(column, row) : matrix(row, column);
      if (!(in >> number) || std::strtod(number.c_str(), nullptr) != withNineDigits(expected)) return false;
    }
  }
  return !(in >> number);
}

std::string lineOf(const ZOR::_StoredPoint& point) {
  std::array<char, 256> text{};
  std::snprintf(text.data(), text.size(), "%s %.6f %.6f %.6f %.2f", point.name.narrow().c_str(), point.x, point.y,
                point.z, point.w);
  return text.data();
}

}  // namespace

bool matrixFilesHold(const std::filesystem::path& folder, const Findings& findings) {
  for (const auto& [group, name] : findings.groups) {
    const std::filesystem::path file = folder / (name + ".txt");
    const auto motion = findings.transforms.find(group);
    const bool holds =
        motion == findings.transforms.end() ? !std::filesystem::exists(file) : matrixFileHolds(file, motion->second);
    if (!holds) return false;
  }
  return true;
}

bool commonPointsFileHolds(const std::filesystem::path& file, const Findings& findings) {
  std::ifstream in(file);
  std::string line;
  for (const ZOR::_StoredPoint& point : findings.commonPoints) {
    if (!std::getline(in, line) || line != lineOf(point)) return false;
  }
  return !findings.commonPoints.isEmpty() && !std::getline(in, line);
}

bool reportFileHolds(const std::filesystem::path& file, const std::wstring& report) {
  std::ifstream in(file);
  const std::string content{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  return !report.empty() && std::wstring(content.begin(), content.end()) == report;
}

}  // namespace foreign
