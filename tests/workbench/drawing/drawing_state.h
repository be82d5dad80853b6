// What a drawing holds, to be compared bit by bit; and short ways to change it.
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "platform/pointclouds/stored_point.h"
#include "platform/sdk/od_db_database.h"
#include "platform/sdk/od_ge_matrix3d.h"

struct PointState {
  std::wstring name;
  /// The bits of x, y, z and w.
  std::array<std::uint64_t, 4> bits{};
};

struct GroupState {
  std::wstring name;
  std::vector<PointState> points;
};

struct CloudState {
  std::wstring name;
  std::wstring source;
  std::array<std::uint64_t, 16> bits{};
};

/// Groups and clouds in the order of their dictionaries.
struct DrawingState {
  std::vector<GroupState> groups;
  std::vector<CloudState> clouds;
};

bool operator==(const PointState& a, const PointState& b);
bool operator==(const GroupState& a, const GroupState& b);
bool operator==(const CloudState& a, const CloudState& b);
bool operator==(const DrawingState& a, const DrawingState& b);
std::ostream& operator<<(std::ostream& stream, const DrawingState& state);

PointState stateOf(const ZOR::_StoredPoint& point);
std::array<std::uint64_t, 16> bitsOf(const OdGeMatrix3d& matrix);
DrawingState stateOf(const OdDbDatabase& database);

ZOR::_StoredPoint pointAt(const OdString& name, double x, double y, double z, double w = 1.0);
/// `count` points named "1", "2", ... along x.
ZOR::StoredPointArray pointsAlongX(int count);
OdGeMatrix3d shiftAlongX(double distance);

// Each of these is to be called inside a transaction when the database is kept in a file.
void storeGroup(OdDbDatabase& database, const OdString& name, const ZOR::StoredPointArray& points);
void replacePoints(OdDbDatabase& database, const OdString& name, const ZOR::StoredPointArray& points);
bool removeGroup(OdDbDatabase& database, const OdString& name);
void addCloud(OdDbDatabase& database, const OdString& name, const OdString& source);
void moveCloud(OdDbDatabase& database, const OdString& name, const OdGeMatrix3d& motion);
bool removeCloud(OdDbDatabase& database, const OdString& name);

/// Runs the change in a transaction of its own.
template <class Change>
void inTransaction(OdDbDatabase& database, Change change) {
  database.startTransaction();
  change();
  database.endTransaction();
}
