// A drawable whose drawing is given by the test.
#pragma once

#include <functional>
#include <utility>

#include "platform/sdk/od_gi_drawable.h"
#include "platform/sdk/od_gi_viewport_draw.h"

/// Keeps its node, and tells it when it goes.
class TestDrawable : public OdGiDrawable {
 public:
  using Drawing = std::function<void(OdGiViewportDraw&)>;

  TestDrawable() = default;
  explicit TestDrawable(Drawing whatToDraw) : drawing(std::move(whatToDraw)) {}
  TestDrawable(const TestDrawable&) = delete;
  TestDrawable& operator=(const TestDrawable&) = delete;
  ~TestDrawable() override {
    if (node) node->setDrawableNull();
  }

  void addRef() override {}
  void release() override {}
  bool isPersistent() const override { return false; }
  OdDbObjectId id() const override { return {}; }
  void setGsNode(OdGsCache* newNode) override { node = newNode; }
  OdGsCache* gsNode() const override { return node; }

  /// What subWorldDraw answers.
  bool drawsTheSameInEveryView = false;

 protected:
  std::uint32_t subSetAttributes(OdGiDrawableTraits*) const override { return 0; }
  bool subWorldDraw(OdGiWorldDraw*) const override { return drawsTheSameInEveryView; }
  void subViewportDraw(OdGiViewportDraw* draw) const override {
    if (drawing) drawing(*draw);
  }

 private:
  Drawing drawing;
  OdGsCache* node = nullptr;
};
