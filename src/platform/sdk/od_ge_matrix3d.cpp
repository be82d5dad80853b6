#include "platform/sdk/od_ge_matrix3d.h"

namespace {

// The determinants of the 2x2 blocks that two rows form with each pair of columns.
struct RowPairMinors {
  RowPairMinors(const double (&a)[4], const double (&b)[4])
      : of01(a[0] * b[1] - a[1] * b[0]),
        of02(a[0] * b[2] - a[2] * b[0]),
        of03(a[0] * b[3] - a[3] * b[0]),
        of12(a[1] * b[2] - a[2] * b[1]),
        of13(a[1] * b[3] - a[3] * b[1]),
        of23(a[2] * b[3] - a[3] * b[2]) {}

  double of01, of02, of03, of12, of13, of23;
};

// The determinant by Laplace's expansion over the upper and the lower two rows.
double determinant(const RowPairMinors& upper, const RowPairMinors& lower) {
  return upper.of01 * lower.of23 - upper.of02 * lower.of13 + upper.of03 * lower.of12 + upper.of12 * lower.of03 -
         upper.of13 * lower.of02 + upper.of23 * lower.of01;
}

// One column of the adjugate: the cofactors of the row that stands in the same half as `row`, with
// the minors of the other half. The sign is that of the column.
void putColumn(OdGeMatrix3d& result, int column, double sign, const double (&row)[4], const RowPairMinors& minors) {
  result(0, column) = sign * (row[1] * minors.of23 - row[2] * minors.of13 + row[3] * minors.of12);
  result(1, column) = sign * (-row[0] * minors.of23 + row[2] * minors.of03 - row[3] * minors.of02);
  result(2, column) = sign * (row[0] * minors.of13 - row[1] * minors.of03 + row[3] * minors.of01);
  result(3, column) = sign * (-row[0] * minors.of12 + row[1] * minors.of02 - row[2] * minors.of01);
}

}  // namespace

OdGeMatrix3d& OdGeMatrix3d::setToIdentity() {
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) entry[row][column] = row == column ? 1.0 : 0.0;
  }
  return *this;
}

OdGeMatrix3d OdGeMatrix3d::inverse() const {
  const RowPairMinors upper(entry[0], entry[1]);
  const RowPairMinors lower(entry[2], entry[3]);
  OdGeMatrix3d result;
  putColumn(result, 0, 1.0, entry[1], lower);
  putColumn(result, 1, -1.0, entry[0], lower);
  putColumn(result, 2, 1.0, entry[3], upper);
  putColumn(result, 3, -1.0, entry[2], upper);
  // Of a singular matrix this is 0: every quotient is then infinite or not a number.
  const double divisor = determinant(upper, lower);
  for (auto& row : result.entry) {
    for (double& value : row) value /= divisor;
  }
  return result;
}

OdGeMatrix3d operator*(const OdGeMatrix3d& a, const OdGeMatrix3d& b) {
  OdGeMatrix3d product;
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      double sum = 0.0;
      for (int k = 0; k < 4; ++k) sum += a(row, k) * b(k, column);
      product(row, column) = sum;
    }
  }
  return product;
}

bool operator==(const OdGeMatrix3d& a, const OdGeMatrix3d& b) {
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      if (a(row, column) != b(row, column)) return false;
    }
  }
  return true;
}
