#include "files/polyworks_formats.h"

#include <iomanip>
#include <locale>
#include <sstream>

#include "files/transposed_matrix.h"

namespace ZOR::reg {

namespace {

constexpr int matrixPrecision = 8;
constexpr int matrixColumnWidth = 16;
constexpr int anglePrecision = 6;

}  // namespace

std::string PW_TRF_TransMatFileFormat::description() const { return "PolyWorks TRF Matrix Files (*.txt)"; }

std::string PW_TRF_TransMatFileFormat::formatMatrix(const RigidTransform& transform) const {
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << std::setprecision(anglePrecision) << std::fixed << std::showpos;
  const std::array<double, 3> angles = zxzAngles(transform);
  const std::array<double, 3>& shift = transform.translation;
  out << "ROT_X:\t\t" << angles[0] << '\n';
  out << "ROT_Y:\t\t" << angles[1] << '\n';
  out << "ROT_Z:\t\t" << angles[2] << '\n';
  out << "SHIFT_X:\t" << shift[0] << '\n';
  out << "SHIFT_Y:\t" << shift[1] << '\n';
  out << "SHIFT_Z:\t" << shift[2] << '\n';
  return out.str();
}

std::string PW_4x4_TransMatFileFormat::description() const { return "PolyWorks 4x4 Matrix Files (*.txt)"; }

std::string PW_4x4_TransMatFileFormat::formatMatrix(const RigidTransform& transform) const {
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << "VERSION\t=\t1\n"
      << "MATRIX\t=\n";
  out << std::setprecision(matrixPrecision) << std::setfill(' ') << std::scientific << std::right;
  for (const auto& row : transposedMatrix(transform)) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      out << std::setw(matrixColumnWidth) << row[column] << (column + 1 < row.size() ? "  " : "\n");
    }
  }
  return out.str();
}

}  // namespace ZOR::reg
