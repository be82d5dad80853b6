#include "workbench/view/transient_service.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

#include "platform/sdk/od_gi_drawable.h"

namespace tiepoint::workbench {

/// Hangs on a drawable for all services that show it, which share it; the last one takes it off.
class TransientService::Node : public OdGsCache, public std::enable_shared_from_this<Node> {
 public:
  /// The node on the drawable, a new one when it has none of this kind.
  static std::shared_ptr<Node> on(OdGiDrawable& drawable);

  ~Node() override {
    // Another graphics system may have hung its own in this one's place.
    if (drawable && drawable->gsNode() == this) drawable->setGsNode(nullptr);
  }

  void addHolder(TransientService* service) { holders.insert(service); }
  void removeHolder(TransientService* service) { holders.erase(service); }
  void setDrawableNull() override;

 private:
  void attachTo(OdGiDrawable& candidate);

  /// Null when the node doesn't hang there: then nobody tells when the drawable goes.
  OdGiDrawable* drawable = nullptr;
  std::set<TransientService*> holders;
};

std::shared_ptr<TransientService::Node> TransientService::Node::on(OdGiDrawable& drawable) {
  if (auto* node = dynamic_cast<Node*>(drawable.gsNode())) return node->shared_from_this();
  auto node = std::make_shared<Node>();
  node->attachTo(drawable);
  return node;
}

void TransientService::Node::attachTo(OdGiDrawable& candidate) {
  // The node of another graphics system stays, and a drawable may keep none.
  if (candidate.gsNode()) return;
  candidate.setGsNode(this);
  if (candidate.gsNode() == this) drawable = &candidate;
}

void TransientService::Node::setDrawableNull() {
  // The services let go of this node one by one; it must last until the loop is through.
  const std::shared_ptr<Node> self = shared_from_this();
  const OdGiDrawable* gone = std::exchange(drawable, nullptr);
  for (TransientService* service : std::exchange(holders, {})) service->forget(gone);
}

TransientService::TransientService() = default;

TransientService::~TransientService() {
  for (auto& [drawable, node] : nodes) node->removeHolder(this);
}

void TransientService::addTransient(OdGiDrawable* drawable, int mode, int subMode, int viewGroup, int flags) {
  if (!drawable) return;
  const TransientEntry entry{drawable, mode, subMode, viewGroup, flags};
  if (TransientEntry* shown = find(drawable)) {
    *shown = entry;
    return;
  }
  const std::shared_ptr<Node> node = Node::on(*drawable);
  node->addHolder(this);
  try {
    nodes.emplace(drawable, node);
    entries.push_back(entry);
  } catch (...) {
    nodes.erase(drawable);
    node->removeHolder(this);
    throw;
  }
}

void TransientService::removeTransient(OdGiDrawable* drawable) {
  const auto node = nodes.find(drawable);
  if (node == nodes.end()) return;
  node->second->removeHolder(this);
  forget(drawable);
}

void TransientService::applyView(HostView*, int) {}

View& TransientService::addView() { return cameras.emplace_back(); }

void TransientService::activate(View& view) { active = &*find(view); }

void TransientService::removeView(View& view) {
  const auto found = find(view);
  const bool wasActive = active == &*found;
  cameras.erase(found);
  if (wasActive) active = cameras.empty() ? nullptr : &cameras.back();
}

std::list<View>::iterator TransientService::find(const View& view) {
  const auto found = std::find_if(cameras.begin(), cameras.end(), [&](const View& v) { return &v == &view; });
  if (found == cameras.end()) throw std::invalid_argument("this isn't a view of the document");
  return found;
}

TransientEntry* TransientService::find(const OdGiDrawable* drawable) {
  const auto found =
      std::find_if(entries.begin(), entries.end(), [&](const TransientEntry& e) { return e.drawable == drawable; });
  return found == entries.end() ? nullptr : &*found;
}

void TransientService::forget(const OdGiDrawable* drawable) {
  entries.erase(
      std::remove_if(entries.begin(), entries.end(), [&](const TransientEntry& e) { return e.drawable == drawable; }),
      entries.end());
  nodes.erase(drawable);
}

}  // namespace tiepoint::workbench
