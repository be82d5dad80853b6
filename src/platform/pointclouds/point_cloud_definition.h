// A point cloud in a drawing.
#pragma once

#include "platform/sdk/od_db_database.h"
#include "platform/sdk/od_ge_matrix3d.h"
#include "platform/sdk/od_string.h"
#include "zor_point_clouds_export.h"

/// One cloud: an entry of the drawing's point-cloud dictionary, whose key is the cloud's name.
/// The points stay in their source file; the drawing keeps the transformation gathered so far.
class ZOR_POINT_CLOUDS_EXPORT hostDbPointCloudDefinition : public OdDbObject {
 public:
  static const OdRxClass* desc();
  const OdRxClass* isA() const override;

  static bool documentHasPointClouds(const OdDbDatabase& database);
  /// The dictionary's id, null when there is none.
  static OdDbObjectId pointCloudDictionary(const OdDbDatabase& database);
  /// The dictionary's id; makes it when it is missing.
  static OdDbObjectId createPointCloudDictionary(OdDbDatabase& database);

  /// The cloud's name, which also ties it to the group of that name.
  OdString getName() const { return name; }
  void setName(const OdString& newName);
  /// The path of the cloud's file; empty when there is none.
  OdString getSource() const { return source; }
  void setSource(const OdString& newSource);

  /// From the cloud file's coordinates to the drawing's.
  const OdGeMatrix3d& transformation() const { return matrix; }
  /// Moves the cloud: the new transformation is `motion` x the present one. The object must be
  /// open for writing, else OdError(eNotOpenForWrite).
  void transformBy(const OdGeMatrix3d& motion);

  /// For loading: the data as a store kept them, no transaction needed.
  void restore(const OdString& keptName, const OdString& keptSource, const OdGeMatrix3d& keptMatrix);

 private:
  template <class Value>
  void change(Value& member, const Value& newValue);

  OdString name;
  OdString source;
  OdGeMatrix3d matrix;
};
using hostDbPointCloudDefinitionPtr = OdSmartPtr<hostDbPointCloudDefinition>;
