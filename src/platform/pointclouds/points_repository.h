// The reference points of one station in a drawing.
#pragma once

#include "platform/pointclouds/stored_point.h"
#include "platform/sdk/od_db_database.h"
#include "zor_point_clouds_export.h"

namespace ZOR {

/// One group of reference points: an entry of the drawing's registration-points dictionary, whose
/// key is the group's name.
class ZOR_POINT_CLOUDS_EXPORT RegistrationObjectPointsRepository : public OdDbObject {
 public:
  static const OdRxClass* desc();
  const OdRxClass* isA() const override;

  /// True when the drawing has the registration-points dictionary.
  static bool documentHasRegistrationPoints(const OdDbDatabase& database);
  /// The dictionary's id, null when there is none.
  static OdDbObjectId registrationPointsDictionary(const OdDbDatabase& database);
  /// The dictionary's id; makes it when it is missing.
  static OdDbObjectId createRegistrationPointsDictionary(OdDbDatabase& database);

  /// Fills the array with the stored points; false when the object has been erased.
  bool getData(StoredPointArray& points) const;
  /// Replaces the stored points. The object must be open for writing, else
  /// OdError(eNotOpenForWrite).
  bool setData(const StoredPointArray& points);

  /// The stored points, without a copy; for stores.
  const StoredPointArray& storedPoints() const { return points; }
  /// For loading: the points as a store kept them, no transaction needed.
  void restoreData(StoredPointArray kept);

 private:
  StoredPointArray points;
};
using RegistrationObjectPointsRepositoryPtr = OdSmartPtr<RegistrationObjectPointsRepository>;

}  // namespace ZOR
