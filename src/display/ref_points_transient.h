// The temporary drawing of the reference points in the views.
#pragma once

#include <cstdint>
#include <memory>

#include "host_access/registration_settings.h"
#include "platform/host/application.h"
#include "platform/sdk/od_cm_entity_color.h"
#include "platform/sdk/od_gi_drawable.h"
#include "records/display_group.h"

class HostTransientService;

namespace ZOR::reg {

/// Draws a cross for every point of the visible groups, of the same size on the screen at any
/// zoom, and beside it the point's name. It follows the documents: it shows in the one that came
/// in last. A plain member of its session, so it isn't counted.
///
/// A host may draw as soon as the drawable comes or goes, when what it shows isn't made yet or is
/// gone already. So it draws only between beginDrawing and endDrawing.
class RefPointsTransient : public OdGiDrawable, public HostApDocManagerReactor {
 public:
  /// Shows itself in the active document, or in the first one that comes in when there is none.
  /// `shown` is read at every draw. Throws what the host throws; the host then knows nothing of this
  /// object any more.
  explicit RefPointsTransient(const DisplayGroups* shown);
  ~RefPointsTransient() override;
  RefPointsTransient(const RefPointsTransient&) = delete;
  RefPointsTransient& operator=(const RefPointsTransient&) = delete;

  /// From now on `shown` can be read.
  void beginDrawing() { isDrawing = true; }
  /// From now on it can't.
  void endDrawing() { isDrawing = false; }

  const OdCmEntityColor& entityColor() const { return color; }

  void addRef() override {}
  void release() override {}
  int drawableType() const override { return 0; }
  bool isPersistent() const override { return false; }
  OdDbObjectId id() const override { return {}; }
  void setGsNode(OdGsCache* newNode) override { node = newNode; }
  OdGsCache* gsNode() const override { return node; }

  void documentAdded(HostDocument* document) override;
  void documentToBeRemoved(HostDocument* document) override;

 protected:
  std::uint32_t subSetAttributes(OdGiDrawableTraits*) const override { return 0; }
  /// False: the size of a marker depends on the view.
  bool subWorldDraw(OdGiWorldDraw*) const override { return false; }
  void subViewportDraw(OdGiViewportDraw* draw) const override;

 private:
  void enterHost();
  void leaveHost() noexcept;
  void show();
  void hide() noexcept;
  void readSizes();

  OdGsCache* node = nullptr;
  HostTransientService* transientManager;
  OdCmEntityColor color;
  const DisplayGroups* display;
  /// Pixels.
  std::uint64_t markerSize = 0;
  /// Pixels.
  std::uint64_t labelHeight = 0;
  bool labelsVisible = false;
  std::unique_ptr<RegistrationSettings> settings;
  bool isDrawing = false;
};

}  // namespace ZOR::reg
