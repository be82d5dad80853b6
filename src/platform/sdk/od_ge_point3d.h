// Points and vectors of the drawing SDK, in drawing units.
#pragma once

class OdGeMatrix3d;

class OdGeVector3d {
 public:
  constexpr OdGeVector3d() = default;
  constexpr OdGeVector3d(double x_, double y_, double z_) : x(x_), y(y_), z(z_) {}

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  friend constexpr bool operator==(const OdGeVector3d& a, const OdGeVector3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
  }
  friend constexpr bool operator!=(const OdGeVector3d& a, const OdGeVector3d& b) { return !(a == b); }
};

class OdGePoint3d {
 public:
  constexpr OdGePoint3d() = default;
  constexpr OdGePoint3d(double x_, double y_, double z_) : x(x_), y(y_), z(z_) {}

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  /// Takes this point through the matrix, in place. The matrix is affine.
  inline OdGePoint3d& p_transform(const OdGeMatrix3d& matrix);

  friend constexpr bool operator==(const OdGePoint3d& a, const OdGePoint3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
  }
  friend constexpr bool operator!=(const OdGePoint3d& a, const OdGePoint3d& b) { return !(a == b); }
  friend constexpr OdGePoint3d operator+(const OdGePoint3d& p, const OdGeVector3d& v) {
    return {p.x + v.x, p.y + v.y, p.z + v.z};
  }
  friend constexpr OdGeVector3d operator-(const OdGePoint3d& a, const OdGePoint3d& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
  }
};
