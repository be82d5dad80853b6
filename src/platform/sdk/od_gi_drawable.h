// What the SDK can draw.
#pragma once

#include <cstdint>

#include "platform/sdk/od_db_object_id.h"
#include "platform/sdk/od_ge_point3d.h"
#include "platform/sdk/od_rx_object.h"

class OdGiDrawableTraits;
class OdGiViewportDraw;
class OdGiWorldDraw;

/// A node that the graphics system hangs on a drawable.
class DRAWING_SDK_EXPORT OdGsCache {
 public:
  virtual ~OdGsCache();
  /// The drawable that this node belongs to is gone.
  virtual void setDrawableNull() = 0;
};

/// An axis-aligned box, in drawing units.
struct OdGeExtents3d {
  OdGePoint3d minPoint;
  OdGePoint3d maxPoint;
};

class DRAWING_SDK_EXPORT OdGiDrawable : public OdRxObject {
 public:
  static const OdRxClass* desc();

  OdRxObject* queryX(const OdRxClass* type) const override;
  const OdRxClass* isA() const override;

  /// What kind of drawable it is; 0 is the general one.
  virtual int drawableType() const;
  /// Calls subSetAttributes.
  virtual std::uint32_t setAttributes(OdGiDrawableTraits* traits) const;
  /// Draws what looks the same in every view. False asks for viewportDraw.
  virtual bool worldDraw(OdGiWorldDraw* draw) const;
  /// Draws for one view.
  virtual void viewportDraw(OdGiViewportDraw* draw) const;
  virtual bool isPersistent() const = 0;
  virtual OdDbObjectId id() const = 0;
  virtual void setGsNode(OdGsCache* node) = 0;
  virtual OdGsCache* gsNode() const = 0;
  virtual std::uint32_t viewportDrawLogicalFlags(OdGiViewportDraw* draw) const;
  /// False when the drawable has no extents of its own.
  virtual bool getGeomExtents(OdGeExtents3d& extents) const;
  virtual std::uint32_t regenSupportFlags() const;

 protected:
  OdGiDrawable() = default;

  virtual std::uint32_t subSetAttributes(OdGiDrawableTraits* traits) const = 0;
  virtual bool subWorldDraw(OdGiWorldDraw* draw) const = 0;
  virtual void subViewportDraw(OdGiViewportDraw* draw) const = 0;
  virtual std::uint32_t subViewportDrawLogicalFlags(OdGiViewportDraw* draw) const;
  virtual std::uint32_t subRegenSupportFlags() const;
};
